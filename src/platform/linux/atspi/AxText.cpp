#include "platform/linux/atspi/AxText.h"

#include <QList>

#include "platform/linux/atspi/Atspi.h"
#include "platform/linux/atspi/KateText.h"

namespace linuxdesk::axtext {

std::optional<platform::Range> selectedRange(const AtRef& element, const QString& text,
                                             OffsetUnit unit,
                                             std::optional<OffsetUnit> selectionUnit) {
    if (const auto sel = at::selection(element)) {
        const qint64 start = toUtf16(text, sel->first, selectionUnit.value_or(unit));
        const qint64 end = toUtf16(text, sel->second, selectionUnit.value_or(unit));
        return platform::Range{start, end - start};
    }
    const auto caret = at::caret(element);
    if (!caret) return std::nullopt;
    return platform::Range{toUtf16(text, *caret, unit), 0};
}

std::optional<QString> selectedText(const AtRef& element, const QString& text, OffsetUnit unit,
                                    std::optional<OffsetUnit> selectionUnit) {
    const auto sel = at::selection(element);
    if (!sel) return at::caret(element) ? std::optional<QString>(QString()) : std::nullopt;
    const qint64 start = toUtf16(text, sel->first, selectionUnit.value_or(unit));
    const qint64 end = toUtf16(text, sel->second, selectionUnit.value_or(unit));
    return text.mid(start, end - start);
}

std::optional<platform::Rect> boundsForRange(const AtRef& element, const QString& text,
                                             const platform::Range& range, OffsetUnit unit,
                                             at::Coords coords) {
    const int start = int(fromUtf16(text, range.location, unit));
    const int end = int(fromUtf16(text, range.end(), unit));
    // A character's rectangle, mended where the editor answers it with no height.
    auto character = [&](int offset) {
        auto r = at::characterExtents(element, offset, coords);
        if (const auto m = r ? kate::mended(element, *r, coords) : std::nullopt) r = m;
        return r;
    };
    // One character is asked as such: KTextEditor's range covers the position after it too,
    // which it answers with a negative size.
    if (end == start + 1) {
        if (auto r = character(start); r && r->height > 0) return r;
    }
    if (end > start) {
        auto r = at::rangeExtents(element, start, end, coords);
        if (r && r->height > 0) return r;
        // Some toolkits answer ranges with nothing; the first character still places it.
        return character(start);
    }
    // An empty range: the left edge of the character there, or the right edge of the last
    // one when the caret sits at the very end.
    if (auto r = character(start); r && r->height > 0) {
        r->width = 0;
        return r;
    }
    if (start > 0) {
        if (auto r = character(start - 1); r && r->height > 0) {
            r->x += r->width;
            r->width = 0;
            return r;
        }
    }
    return std::nullopt;
}

bool setSelectedRange(const AtRef& element, const QString& text, const platform::Range& range,
                      OffsetUnit unit) {
    if (range.location < 0 || range.length < 0 || range.end() > text.size()) return false;
    const int start = int(fromUtf16(text, range.location, unit));
    const int end = int(fromUtf16(text, range.end(), unit));
    if (end == start) return at::setCaret(element, start);
    return at::setSelection(element, start, end);
}

bool replace(const AtRef& element, const QString& text, const platform::Range& range,
             const QString& replacement, OffsetUnit unit) {
    if (range.location < 0 || range.length < 0 || range.end() > text.size()) return false;
    const int start = int(fromUtf16(text, range.location, unit));
    const int end = int(fromUtf16(text, range.end(), unit));
    if (end > start && !at::deleteText(element, start, end)) return false;
    // GTK measures inserted text in UTF-8 bytes, Qt in UTF-16 units.
    const int length =
        unit == OffsetUnit::CodePoint ? int(replacement.toUtf8().size()) : int(replacement.size());
    if (!replacement.isEmpty() && !at::insertText(element, start, replacement, length))
        return false;
    const int inserted = unit == OffsetUnit::CodePoint ? int(replacement.toUcs4().size())
                                                       : int(replacement.size());
    at::setCaret(element, start + inserted);
    return true;
}

}  // namespace linuxdesk::axtext
