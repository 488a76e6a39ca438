// The paragraph at the caret of a 1 MB text, caret in the middle.
#include <QString>

#include "ax/Paragraph.h"
#include "ax_timing.h"

int main() {
    // About 1 MB of UTF-16: 2048 paragraphs of 256 characters each.
    const QString line = QString(255, QChar(u'x')) + QChar(u'\n');
    QString text;
    text.reserve(line.size() * 2048);
    for (int i = 0; i < 2048; ++i) text += line;
    // One long paragraph of the same size: the worst case, every unit scanned.
    const QString single(text.size(), QChar(u'y'));

    volatile qint64 sink = 0;
    bench::report("paragraph, 1 MB in 256-char paragraphs", bench::medianMicros(7, 20000, [&] {
                      sink = sink + ax::paragraph(text, text.size() / 2).range.length;
                  }));
    bench::report("paragraph, 1 MB as one paragraph", bench::medianMicros(7, 50, [&] {
                      sink = sink + ax::paragraph(single, single.size() / 2).range.length;
                  }));
    return sink == -1;
}
