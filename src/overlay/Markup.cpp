#include "overlay/Markup.h"

#include <QFont>
#include <QTextCharFormat>

namespace overlay {

StyledText boldMarkup(const QString& marked) {
    static const QString marker = QStringLiteral("**");
    StyledText out;
    qsizetype from = 0;
    while (true) {
        const qsizetype open = marked.indexOf(marker, from);
        const qsizetype close = open < 0 ? -1 : marked.indexOf(marker, open + 2);
        if (close < 0) break;
        out.text += marked.mid(from, open - from);
        const QString bold = marked.mid(open + 2, close - open - 2);
        if (!bold.isEmpty()) {
            QTextLayout::FormatRange range;
            range.start = int(out.text.size());
            range.length = int(bold.size());
            range.format.setFontWeight(QFont::Bold);
            out.formats.append(range);
            out.text += bold;
        }
        from = close + 2;
    }
    out.text += marked.mid(from);
    return out;
}

}  // namespace overlay
