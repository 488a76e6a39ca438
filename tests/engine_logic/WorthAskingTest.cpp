#include <gtest/gtest.h>

#include "engine/WorthAsking.h"

namespace {

struct Languages : platform::InputSource {
    QStringList list;
    QStringList languages() override { return list; }
};

bool worth(const QString& paragraph, Languages& source, const QString& text = {},
           qint64 caret = -1) {
    const QString field = text.isEmpty() ? paragraph : text;
    return engine::worthAsking(paragraph, field, caret < 0 ? field.size() : caret, source);
}

TEST(WorthAsking, LatinTextNeedsSixCharactersAndThreeWords) {
    Languages en;
    EXPECT_FALSE(worth("a b c", en));  // 5 characters
    EXPECT_TRUE(worth("a b cd", en));  // 6 characters, 3 words
    EXPECT_FALSE(worth("Supercalifragilistic expialidocious", en));
    EXPECT_TRUE(worth("  we are needing it  \n", en));  // blanks around do not count
    // Grapheme clusters, not code units: three flags are three characters.
    EXPECT_FALSE(worth(QString::fromUtf8("🇫🇷 🇩🇪"), en));
    // Every kind of white space separates words: no-break, em and ideographic spaces.
    EXPECT_TRUE(worth(QString::fromUtf8("we\u00a0are\u2003needing\u3000it"), en));
    EXPECT_FALSE(worth(QString::fromUtf8("we\u200bare needing"), en));  // zero width is no space
}

TEST(WorthAsking, LowerCaseContractionsAreLeftAlone) {
    Languages en;
    EXPECT_FALSE(worth("we don't need this now", en));
    EXPECT_TRUE(worth("I'm going to the meeting", en));  // capital before the apostrophe
    EXPECT_TRUE(worth("we dont need this now", en));
}

TEST(WorthAsking, LengthLimitIsInCodeUnits) {
    Languages en;
    QString words;
    while (words.size() < 1200) words += "word ";
    EXPECT_TRUE(worth(words.left(1200), en));
    EXPECT_FALSE(worth(words.left(1199) + QString::fromUtf8("é").repeated(2), en));
}

TEST(WorthAsking, ChineseNeedsFourIdeographsAndNoPinyinBeforeTheCaret) {
    Languages en;
    Languages zh;
    zh.list = {"zh-Hans"};
    EXPECT_FALSE(worth(QString::fromUtf8("我们明"), en));        // under six characters anyway
    EXPECT_FALSE(worth(QString::fromUtf8("我们明 ok ok"), en));  // three ideographs
    EXPECT_TRUE(worth(QString::fromUtf8("我们明天开会"), en));
    EXPECT_TRUE(worth(QString::fromUtf8("我们明天开会"), zh));
    const QString typing = QString::fromUtf8("我们明天开会 kai'hui");
    EXPECT_TRUE(worth(typing, en));
    EXPECT_FALSE(worth(typing, zh));
    // Only the text up to the caret matters.
    EXPECT_TRUE(worth(typing, zh, typing, 6));
}

}  // namespace
