#include "platform/linux/atspi/TextOffsets.h"

#include <algorithm>

namespace linuxdesk {

OffsetUnit offsetUnitFor(const QString& toolkit) {
    const QString t = toolkit.toLower();
    if (t == QLatin1String("qt") || t == QLatin1String("gecko")) return OffsetUnit::Utf16;
    return OffsetUnit::CodePoint;
}

qint64 toUtf16(const QString& text, qint64 offset, OffsetUnit unit) {
    const qint64 size = text.size();
    if (offset <= 0) return 0;
    if (unit == OffsetUnit::Utf16) return std::min(offset, size);
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
    if (unit == OffsetUnit::Utf16) return offset;
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
