#include <gtest/gtest.h>

#include "overlay/Bubble.h"
#include "overlay/Markup.h"

namespace {

QStringList boldParts(const overlay::StyledText& styled) {
    QStringList parts;
    for (const auto& range : styled.formats) {
        EXPECT_EQ(range.format.fontWeight(), QFont::Bold);
        parts << styled.text.mid(range.start, range.length);
    }
    return parts;
}

}  // namespace

TEST(Markup, PairsOfStarsMarkBoldSegments) {
    const auto hint = overlay::boldMarkup(overlay::defaultHint);
    EXPECT_EQ(hint.text, QStringLiteral("Tab to use · keep typing to ignore"));
    EXPECT_EQ(boldParts(hint), QStringList{QStringLiteral("Tab")});

    const auto reply = overlay::boldMarkup(overlay::replyHint);
    EXPECT_EQ(reply.text, QStringLiteral("↑ ↓ to choose · Tab to insert · Esc to hide"));
    EXPECT_EQ(boldParts(reply),
              (QStringList{QStringLiteral("↑ ↓"), QStringLiteral("Tab"), QStringLiteral("Esc")}));

    const auto copied = overlay::boldMarkup(QStringLiteral("Copied · press **⌘V** to paste"));
    EXPECT_EQ(copied.text, QStringLiteral("Copied · press ⌘V to paste"));
    EXPECT_EQ(boldParts(copied), QStringList{QStringLiteral("⌘V")});
}

TEST(Markup, UnpairedOrEmptyMarkers) {
    EXPECT_EQ(overlay::unmarked(QStringLiteral("plain")), QStringLiteral("plain"));
    EXPECT_EQ(overlay::unmarked(QStringLiteral("a ** b")), QStringLiteral("a ** b"));
    const auto odd = overlay::boldMarkup(QStringLiteral("**a** b **c"));
    EXPECT_EQ(odd.text, QStringLiteral("a b **c"));
    EXPECT_EQ(boldParts(odd), QStringList{QStringLiteral("a")});
    const auto empty = overlay::boldMarkup(QStringLiteral("x****y"));
    EXPECT_EQ(empty.text, QStringLiteral("xy"));
    EXPECT_TRUE(empty.formats.isEmpty());
}
