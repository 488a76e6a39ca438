#include "engine/WorthAsking.h"

#include <QRegularExpression>

#include "ax/Conversation.h"
#include "ax/Paragraph.h"
#include "main/Constants.h"

namespace engine {
namespace {

int hanCount(const QString& text) {
    int n = 0;
    for (const char32_t c : text.toUcs4())
        if ((c >= 0x4E00 && c <= 0x9FFF) || (c >= 0x3400 && c <= 0x4DBF)) ++n;
    return n;
}

// Words are the runs between white space of any kind: a no-break space or an ideographic space
// separates words as a plain space does.
int wordCount(const QString& text) {
    int words = 0;
    bool inWord = false;
    for (const QChar c : text) {
        const bool space = c.isSpace();
        if (!space && !inWord) ++words;
        inWord = !space;
    }
    return words;
}

}  // namespace

bool worthAsking(const QString& paragraph, const QString& text, qint64 caret,
                 platform::InputSource& inputSource) {
    const QString t = paragraph.trimmed();
    if (ax::graphemeCount(t) < 6) return false;
    if (t.size() > glimmo::maxAskLength) return false;
    if (!ax::hasCJK(t)) {
        static const QRegularExpression contraction(QStringLiteral("[a-z]'[a-z]"));
        if (contraction.match(t).hasMatch()) return false;
        return wordCount(t) >= 3;
    }
    if (hanCount(t) < 4) return false;
    if (!ax::keyboardIsChinese(inputSource)) return true;
    // With a Chinese input method, Latin letters right before the caret are pinyin still being
    // turned into characters.
    static const QRegularExpression pinyin(QStringLiteral("[A-Za-z']+$"));
    const QString before = text.left(qMin<qint64>(qMax<qint64>(caret, 0), text.size()));
    return !pinyin.match(before).hasMatch();
}

}  // namespace engine
