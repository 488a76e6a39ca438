#include "ax/Paragraph.h"

#include <algorithm>

namespace ax {

namespace {

bool separates(char16_t c) {
    return c == u'\n' || c == u'\r' || c == u'\u2029';
}

bool isNewline(char16_t c) {
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

}  // namespace

Paragraph paragraph(const QString& text, qint64 caret) {
    const qint64 size = text.size();
    const char16_t* units = reinterpret_cast<const char16_t*>(text.utf16());
    caret = std::clamp<qint64>(caret, 0, size);
    // A caret inside a CRLF belongs to the paragraph that the pair ends.
    if (caret > 0 && caret < size && units[caret - 1] == u'\r' && units[caret] == u'\n') --caret;

    qint64 start = caret;
    while (start > 0 && !separates(units[start - 1])) --start;
    qint64 end = caret;
    while (end < size && !separates(units[end])) ++end;
    if (end < size) {
        // Include the separator, then drop every trailing line break below.
        end += (units[end] == u'\r' && end + 1 < size && units[end + 1] == u'\n') ? 2 : 1;
    }
    // Newline units are never surrogates, so this cannot split a pair.
    while (end > start && isNewline(units[end - 1])) --end;
    return {{start, end - start}, text.mid(start, end - start)};
}

bool keyboardIsChinese(platform::InputSource& source) {
    const QStringList languages = source.languages();
    return !languages.isEmpty() && languages.front().startsWith(QLatin1String("zh"));
}

bool hasCJK(const QString& text) {
    // Both blocks lie in the basic plane: no surrogate pair can hold one of them.
    for (QChar c : text) {
        const char16_t u = c.unicode();
        if ((u >= 0x4E00 && u <= 0x9FFF) || (u >= 0x3400 && u <= 0x4DBF)) return true;
    }
    return false;
}

}  // namespace ax
