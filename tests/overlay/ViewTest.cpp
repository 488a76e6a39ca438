#include <gtest/gtest.h>

#include <QTest>

#include "overlay/Bubble.h"
#include "overlay/BubbleView.h"
#include "overlay/ReplyView.h"

namespace {

const QStringList three{QStringLiteral("Yes, I can join."), QStringLiteral("Not at 3, sorry."),
                        QStringLiteral("Is there an agenda?")};

}  // namespace

TEST(BubbleView, KeepsItsWidthAndGrowsDownwardsWithLongerText) {
    overlay::BubbleView view;
    view.set(QStringLiteral("Short."), 240, overlay::defaultHint, {});
    EXPECT_EQ(view.sizeHint().width(), 240);
    const int oneLine = view.sizeHint().height();

    view.set(QStringLiteral("A much longer suggestion that cannot possibly fit on one line of a "
                            "bubble this narrow, so it wraps."),
             240, overlay::defaultHint, {});
    EXPECT_EQ(view.sizeHint().width(), 240);
    EXPECT_GT(view.sizeHint().height(), oneLine + 20);
    EXPECT_EQ(view.size(), view.sizeHint());
}

TEST(BubbleView, AMouseClickAnywhereApplies) {
    overlay::BubbleView view;
    int applied = 0;
    view.set(QStringLiteral("Text."), 300, overlay::defaultHint, [&] { ++applied; });
    QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(5, 5));
    QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(295, view.height() - 3));
    EXPECT_EQ(applied, 2);
    QTest::mouseClick(&view, Qt::RightButton, {}, QPoint(50, 10));
    EXPECT_EQ(applied, 2);
}

TEST(ReplyView, AMouseClickOnARowPicksItOnlyThatRow) {
    overlay::ReplyView view;
    std::vector<int> picked;
    view.set(three, 0, true, overlay::replyHint, [&](int i) { picked.push_back(i); });
    for (int i : {2, 0, 1})
        QTest::mouseClick(&view, Qt::LeftButton, {}, view.rowRect(i).center().toPoint());
    // The "…" row, the hint, the outer padding.
    QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(100, int(view.rowRect(2).bottom()) + 10));
    QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(100, view.height() - 5));
    QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(2, 2));
    EXPECT_EQ(picked, (std::vector<int>{2, 0, 1}));

    // Pressed on one row and released on another is no click.
    QTest::mousePress(&view, Qt::LeftButton, {}, view.rowRect(0).center().toPoint());
    QTest::mouseRelease(&view, Qt::LeftButton, {}, view.rowRect(1).center().toPoint());
    EXPECT_EQ(picked.size(), 3u);
}
