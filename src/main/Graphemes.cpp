// Cuts by user-perceived characters, so that an emoji or an accented letter is never halved.
#include <QTextBoundaryFinder>

#include "main/Graphemes.h"

namespace glimmo {

qsizetype graphemeCount(const QString& text) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() != -1) ++count;
    return count;
}

QString lastGraphemes(const QString& text, qsizetype count) {
    if (count <= 0) return {};
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    finder.toEnd();
    qsizetype position = text.size();
    for (qsizetype i = 0; i < count; ++i) {
        position = finder.toPreviousBoundary();
        if (position <= 0) return text;
    }
    return text.mid(position);
}

QString firstGraphemes(const QString& text, qsizetype count) {
    if (count <= 0) return {};
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype position = 0;
    for (qsizetype i = 0; i < count; ++i) {
        position = finder.toNextBoundary();
        if (position < 0 || position >= text.size()) return text;
    }
    return text.left(position);
}

}  // namespace glimmo
