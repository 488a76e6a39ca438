#include <gtest/gtest.h>

#include "ax/Paragraph.h"
#include "platform/fake/InputSource.h"

using platform::Range;

namespace {

const QString emoji = QString::fromUtf8("\xF0\x9F\x98\x80");  // two UTF-16 units

TEST(Paragraph, EachSeparatorEndsAParagraphAndIsLeftOut) {
    const QString lf = "one\ntwo\n\nthree";
    EXPECT_EQ(ax::paragraph(lf, 5).text, "two");
    EXPECT_EQ(ax::paragraph(lf, 5).range, (Range{4, 3}));
    EXPECT_EQ(ax::paragraph(lf, 7).range, (Range{4, 3}));  // caret just before the break
    EXPECT_EQ(ax::paragraph(lf, 8).range, (Range{8, 0}));  // the empty line
    EXPECT_EQ(ax::paragraph(lf, 9).text, "three");

    const QString crlf = "one\r\ntwo\r\nthree";
    EXPECT_EQ(ax::paragraph(crlf, 6).range, (Range{5, 3}));
    EXPECT_EQ(ax::paragraph(crlf, 8).range, (Range{5, 3}));
    EXPECT_EQ(ax::paragraph(crlf, 9).range, (Range{5, 3}));  // between CR and LF
    EXPECT_EQ(ax::paragraph(crlf, 10).text, "three");

    EXPECT_EQ(ax::paragraph(QString("one") + QChar(0x2029) + "two", 4).range, (Range{4, 3}));
    // A line separator is not a paragraph separator, only trimmed at the end.
    const QString ls = QString("a") + QChar(0x2028) + "b" + QChar(0x2028);
    EXPECT_EQ(ax::paragraph(ls, 0).range, (Range{0, 3}));
}

TEST(Paragraph, CaretIsClampedAndTrailingBreaksTrimmed) {
    EXPECT_EQ(ax::paragraph("", 3).range, (Range{0, 0}));
    EXPECT_EQ(ax::paragraph("abc", -4).range, (Range{0, 3}));
    EXPECT_EQ(ax::paragraph("abc", 99).range, (Range{0, 3}));
    EXPECT_EQ(ax::paragraph("abc\n", 99).range, (Range{4, 0}));
    // Line separator and vertical tab before the paragraph break are trimmed too.
    EXPECT_EQ(ax::paragraph(QString("abc") + QChar(0x2028) + "\v\n" + "x", 1).text, "abc");
}

TEST(Paragraph, SurrogatePairsAtTheEdgesStayWhole) {
    const QString text = emoji + "mid" + emoji + "\n" + emoji;
    auto first = ax::paragraph(text, 1);  // caret inside the pair
    EXPECT_EQ(first.range, (Range{0, 7}));
    EXPECT_EQ(first.text, emoji + "mid" + emoji);
    auto last = ax::paragraph(text, 9);
    EXPECT_EQ(last.range, (Range{8, 2}));
    EXPECT_EQ(last.text, emoji);
}

// Only the first input language counts (WorthAsking covers the characters).
TEST(Paragraph, ChineseKeyboard) {
    fake::InputSource source;
    EXPECT_FALSE(ax::keyboardIsChinese(source));
    source.setLanguages({"zh-Hans", "en"});
    EXPECT_TRUE(ax::keyboardIsChinese(source));
    source.setLanguages({"en", "zh-Hant"});
    EXPECT_FALSE(ax::keyboardIsChinese(source));
}

}  // namespace
