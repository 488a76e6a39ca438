#pragma once
// AT-SPI counts text offsets in the toolkit's own characters: GTK and most others in Unicode
// code points, Qt in UTF-16 code units, and Gecko in UTF-16 units as well (each character
// outside the Basic Multilingual Plane takes two offsets there). Glimmo counts UTF-16 code
// units everywhere, so every offset crossing the bus goes through these conversions.

#include <QString>

namespace linuxdesk {

// CodePointTwice: code points counted over again as though they were UTF-16 units, as
// Chromium reports a selection.
enum class OffsetUnit { CodePoint, Utf16, CodePointTwice };

// The unit a toolkit (its AT-SPI toolkit name: "GTK", "Qt", "Gecko", ...) counts in.
OffsetUnit offsetUnitFor(const QString& toolkit);

// A toolkit offset into text as UTF-16 code units; clamped to the text.
qint64 toUtf16(const QString& text, qint64 offset, OffsetUnit unit);
// A UTF-16 offset as the toolkit's offset; clamped to the text. An offset that falls between
// the two halves of a surrogate pair counts that character as before it.
qint64 fromUtf16(const QString& text, qint64 offset, OffsetUnit unit);

}  // namespace linuxdesk
