#include "platform/linux/atspi/TextOffsets.h"

#include <algorithm>

namespace linuxdesk {

namespace {

// Whether the text holds any surrogate; without one, every unit counts the same. The same text
// is asked about several times a tick (caret, selection, bounds), so the answer for the last
// one is kept, with the text itself: holding it keeps its buffer, which tells it apart.
bool hasSurrogates(const QString& text) {
    static QString last;
    static bool answer = false;
    if (text.constData() == last.constData() && text.size() == last.size()) return answer;
    last = text;
    answer = std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSurrogate(); });
    return answer;
}

}  // namespace

OffsetUnit offsetUnitFor(const QString& toolkit) {
    const QString t = toolkit.toLower();
    if (t == QLatin1String("qt") || t == QLatin1String("gecko")) return OffsetUnit::Utf16;
    return OffsetUnit::CodePoint;
}

qint64 toUtf16(const QString& text, qint64 offset, OffsetUnit unit) {
    const qint64 size = text.size();
    if (offset <= 0) return 0;
    if (unit == OffsetUnit::Utf16 || !hasSurrogates(text)) return std::min(offset, size);
    if (unit == OffsetUnit::CodePointTwice)
        return toUtf16(text, toUtf16(text, offset, OffsetUnit::CodePoint), OffsetUnit::CodePoint);
    qint64 i = 0;
    for (qint64 points = 0; points < offset && i < size; ++points) {
        const bool pair =
            text.at(i).isHighSurrogate() && i + 1 < size && text.at(i + 1).isLowSurrogate();
        i += pair ? 2 : 1;
    }
    return i;
}

qint64 fromUtf16(const QString& text, qint64 offset, OffsetUnit unit) {
    const qint64 size = text.size();
    offset = std::clamp<qint64>(offset, 0, size);
    if (unit == OffsetUnit::Utf16 || !hasSurrogates(text)) return offset;
    if (unit == OffsetUnit::CodePointTwice)
        return fromUtf16(text, fromUtf16(text, offset, OffsetUnit::CodePoint),
                         OffsetUnit::CodePoint);
    qint64 points = 0;
    for (qint64 i = 0; i < offset; ++i) {
        if (!(text.at(i).isLowSurrogate() && i > 0 && text.at(i - 1).isHighSurrogate())) ++points;
    }
    return points;
}

}  // namespace linuxdesk
