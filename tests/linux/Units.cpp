// The backend's pure pieces: offset conversion.
#include <gtest/gtest.h>

#include "platform/linux/TextOffsets.h"

using namespace linuxdesk;

TEST(TextOffsets, CodePointsAroundEmojiAndCjk) {
    // "a😀b你c": code points a0 😀1 b2 你3 c4; UTF-16 a0 😀1-2 b3 你4 c5.
    const QString text = QStringLiteral("a\U0001F600b\u4F60c");
    const qint64 points[] = {0, 1, 2, 3, 4, 5};
    const qint64 units[] = {0, 1, 3, 4, 5, 6};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(toUtf16(text, points[i], OffsetUnit::CodePoint), units[i]) << i;
        EXPECT_EQ(fromUtf16(text, units[i], OffsetUnit::CodePoint), points[i]) << i;
    }
    // Between the halves of the emoji: the emoji counts as before.
    EXPECT_EQ(fromUtf16(text, 2, OffsetUnit::CodePoint), 2);
    // Out of range clamps.
    EXPECT_EQ(toUtf16(text, 99, OffsetUnit::CodePoint), text.size());
    EXPECT_EQ(toUtf16(text, -3, OffsetUnit::CodePoint), 0);
    EXPECT_EQ(fromUtf16(text, 99, OffsetUnit::CodePoint), 5);
}

TEST(TextOffsets, Utf16ToolkitsPassThroughAndClamp) {
    const QString text = QStringLiteral("\U0001F600\U0001F600x");
    EXPECT_EQ(toUtf16(text, 2, OffsetUnit::Utf16), 2);
    EXPECT_EQ(fromUtf16(text, 4, OffsetUnit::Utf16), 4);
    EXPECT_EQ(toUtf16(text, 9, OffsetUnit::Utf16), 5);
    EXPECT_EQ(offsetUnitFor("Qt"), OffsetUnit::Utf16);
    EXPECT_EQ(offsetUnitFor("Gecko"), OffsetUnit::Utf16);
    EXPECT_EQ(offsetUnitFor("GTK"), OffsetUnit::CodePoint);
    EXPECT_EQ(offsetUnitFor("Chromium"), OffsetUnit::CodePoint);
    EXPECT_EQ(offsetUnitFor(""), OffsetUnit::CodePoint);
}

TEST(TextOffsets, LoneSurrogatesCountAsOneCharacter) {
    QString text = QStringLiteral("ab");
    text.insert(1, QChar(0xD83D));  // a high surrogate with nothing after it
    EXPECT_EQ(toUtf16(text, 2, OffsetUnit::CodePoint), 2);
    EXPECT_EQ(fromUtf16(text, 3, OffsetUnit::CodePoint), 3);
}
