#pragma once

#include <QString>

#include "platform/InputSource.h"

namespace engine {

// Whether a paragraph is prose worth a rewrite: long enough, not too long, several words, no
// lower-case contraction (those are usually casual chat), and for Chinese enough ideographs and
// no half-typed pinyin before the caret.
bool worthAsking(const QString& paragraph, const QString& text, qint64 caret,
                 platform::InputSource& inputSource);

}  // namespace engine
