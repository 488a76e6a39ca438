#pragma once

#include <QString>

#include "platform/Geometry.h"
#include "platform/InputSource.h"

namespace ax {

struct Paragraph {
    platform::Range range;  // UTF-16 units, trailing line breaks excluded
    QString text;
};

// The paragraph that holds the caret (clamped to the text).
Paragraph paragraph(const QString& text, qint64 caret);

// The current keyboard input source is for Chinese (its first language begins with "zh").
bool keyboardIsChinese(platform::InputSource& source);

// At least one ideograph in U+4E00..U+9FFF or U+3400..U+4DBF.
bool hasCJK(const QString& text);

}  // namespace ax
