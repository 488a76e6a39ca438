#pragma once
// Lengths and cuts in user-perceived characters (grapheme clusters), as the log and the limits
// on text count them.

#include <QString>

namespace glimmo {

qsizetype graphemeCount(const QString& text);
QString lastGraphemes(const QString& text, qsizetype count);
QString firstGraphemes(const QString& text, qsizetype count);

}  // namespace glimmo
