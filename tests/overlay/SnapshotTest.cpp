#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

#include "overlay/Bubble.h"
#include "overlay/ReplyView.h"
#include "shell/SnapshotUI.h"

TEST(SnapshotUI, WritesBothViewsOnATransparentGround) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    EXPECT_EQ(shell::runSnapshotUI(dir.path()), 0);

    const QImage bubble(dir.filePath(QStringLiteral("ui-bubble.png")));
    ASSERT_FALSE(bubble.isNull());
    EXPECT_EQ(bubble.width(), 400);
    EXPECT_TRUE(bubble.hasAlphaChannel());
    // Rounded corners leave the very corner clear; the middle of the card is opaque.
    EXPECT_EQ(bubble.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(bubble.pixelColor(399, bubble.height() - 1).alpha(), 0);
    EXPECT_EQ(bubble.pixelColor(200, 2).alpha(), 255);

    const QImage replies(dir.filePath(QStringLiteral("ui-replies.png")));
    ASSERT_FALSE(replies.isNull());
    EXPECT_EQ(replies.width(), 460);
    EXPECT_EQ(replies.pixelColor(0, 0).alpha(), 0);

    // The first row is tinted, the second is not: compare a spot left of each row's text.
    overlay::ReplyView layout;
    layout.set({QStringLiteral("x"), QStringLiteral("y")}, 0, false, overlay::replyHint, {});
    const int y0 = int(layout.rowRect(0).center().y()), y1 = int(layout.rowRect(1).center().y());
    EXPECT_NE(replies.pixel(10, y0), replies.pixel(10, y1));
    EXPECT_EQ(replies.pixel(10, y1), replies.pixel(10, replies.height() - 3));
}

TEST(SnapshotUI, AMissingFolderIsSkippedQuietly) {
    QTemporaryDir dir;
    const QString missing = dir.filePath(QStringLiteral("not-there"));
    EXPECT_EQ(shell::runSnapshotUI(missing), 0);
    EXPECT_FALSE(QDir(missing).exists());
}
