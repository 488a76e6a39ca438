#pragma once
// The hints' only markup: a segment between a pair of "**" is bold. The markers are removed;
// an unpaired last "**" stays as written.

#include <QList>
#include <QString>
#include <QTextLayout>

namespace overlay {

struct StyledText {
    QString text;
    QList<QTextLayout::FormatRange> formats;
};

StyledText boldMarkup(const QString& marked);

// The plain text of a marked-up hint, as it reads on screen.
inline QString unmarked(const QString& marked) {
    return boldMarkup(marked).text;
}

}  // namespace overlay
