#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include "overlay/Bubble.h"
#include "overlay/BubblePanel.h"
#include "overlay/Placement.h"

using overlay::Bubble;
using overlay::Shown;
using platform::Rect;

namespace {

struct FakeScreens : platform::Screens {
    std::vector<platform::Screen> list{{{0, 0, 1920, 1080}, {0, 0, 1920, 1040}}};
    bool blended = true;
    bool composited() override { return blended; }
    std::vector<platform::Screen> screens() override { return list; }
    std::optional<platform::Screen> main() override {
        if (list.empty()) return std::nullopt;
        return list.front();
    }
};

std::vector<overlay::BubblePanel*> panels() {
    std::vector<overlay::BubblePanel*> found;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* panel = dynamic_cast<overlay::BubblePanel*>(widget)) found.push_back(panel);
    return found;
}

const Rect caret{500, 300, 2, 18};
const QStringList three{QStringLiteral("One."), QStringLiteral("Two."), QStringLiteral("Three.")};

// A bubble over one 1920 by 1080 screen with a panel at its bottom, and the one window it shows in.
struct BubbleWindow : ::testing::Test {
    void SetUp() override { ASSERT_EQ(panels().size(), 1u); }
    overlay::BubblePanel& panel() { return *panels().front(); }

    FakeScreens screens;
    Bubble bubble{screens};
};

}  // namespace

TEST_F(BubbleWindow, ShowsASuggestionAtItsPlaceWithoutTakingFocus) {
    overlay::BubblePanel& panel = this->panel();
    EXPECT_FALSE(bubble.visible());

    const QString text = QStringLiteral("I need the deck before tomorrow.");
    bubble.show(text, overlay::defaultHint, caret, {});
    ASSERT_TRUE(bubble.visible());
    const Shown& shown = bubble.shown();
    EXPECT_EQ(shown.kind, Shown::Kind::Suggestion);
    // The card sits exactly on the frame, below the caret; the shadow band lies outside it.
    const QRect card(panel.bubble().mapToGlobal(QPoint(0, 0)), panel.bubble().size());
    EXPECT_EQ(card, QRect(488, 324, int(shown.frame.width), int(shown.frame.height)));
    EXPECT_TRUE(panel.bubble().isVisible());
    EXPECT_FALSE(panel.replies().isVisible());

    const int margin = overlay::BubblePanel::shadowMargin;
    EXPECT_EQ(panel.geometry(), card.adjusted(-margin, -margin, margin, margin));
    EXPECT_TRUE(panel.mask().isEmpty());

    EXPECT_FALSE(panel.isActiveWindow());
    EXPECT_EQ(QApplication::activeWindow(), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), nullptr);
}

TEST_F(BubbleWindow, WithoutACompositorTheWindowIsTheCardCutToItsShape) {
    screens.blended = false;
    overlay::BubblePanel& panel = this->panel();
    bubble.showReplies(three, 0, false, caret, {});
    const Rect frame = bubble.shown().frame;
    EXPECT_EQ(panel.geometry(), QRect(488, 324, 460, int(frame.height)));
    EXPECT_TRUE(panel.mask().contains(QPoint(230, 20)));
    EXPECT_FALSE(panel.mask().contains(QPoint(0, 0)));
    EXPECT_FALSE(panel.mask().contains(QPoint(459, int(frame.height) - 1)));

    screens.blended = true;
    bubble.showReplies(three, 0, false, caret, {});
    EXPECT_EQ(panel.geometry().width(), 460 + 2 * overlay::BubblePanel::shadowMargin);
    EXPECT_TRUE(panel.mask().isEmpty());
}

TEST_F(BubbleWindow, ReusesOnePanelAcrossShowsAndSwitchesViews) {
    overlay::BubblePanel& panel = this->panel();

    bubble.show(QStringLiteral("Short"), overlay::defaultHint, caret, {});
    const QString longer = QStringLiteral(
        "A streamed suggestion that has grown past the least "
        "width of the bubble …");
    bubble.show(longer, overlay::defaultHint, {600, 400, 2, 18}, {});
    EXPECT_GT(bubble.shown().frame.width, 240);
    EXPECT_EQ(bubble.shown().frame.x, 588);

    bubble.showReplies(three, 1, true, caret, {});
    const Shown& shown = bubble.shown();
    EXPECT_EQ(shown.kind, Shown::Kind::Replies);
    EXPECT_TRUE(shown.text.isEmpty());
    EXPECT_EQ(shown.frame.width, 460);
    EXPECT_TRUE(panel.replies().isVisible());
    EXPECT_FALSE(panel.bubble().isVisible());

    bubble.show(QStringLiteral("Back"), overlay::defaultHint, caret, {});
    EXPECT_EQ(bubble.shown().kind, Shown::Kind::Suggestion);
    EXPECT_TRUE(bubble.shown().options.isEmpty());
    EXPECT_TRUE(panel.bubble().isVisible());
    EXPECT_EQ(panels().size(), 1u);
}

TEST_F(BubbleWindow, ClicksReachTheCallbacksOfWhatIsShownUntilHidden) {
    int applied = 0;
    std::vector<int> picked;
    bubble.click(-1);  // nothing shown
    bubble.show(QStringLiteral("Text"), overlay::defaultHint, caret, [&] { ++applied; });
    bubble.click(0);
    bubble.click(-1);
    EXPECT_EQ(applied, 1);

    bubble.showReplies(three, 0, true, caret, [&](int i) { picked.push_back(i); });
    bubble.click(-1);
    bubble.click(2);
    bubble.click(3);  // the "…" row
    bubble.click(0);
    EXPECT_EQ(applied, 1);
    EXPECT_EQ(picked, (std::vector<int>{2, 0}));

    bubble.hide();
    bubble.hide();  // hiding what is hidden is harmless
    EXPECT_FALSE(bubble.visible());
    EXPECT_EQ(bubble.shown().kind, Shown::Kind::Nothing);
    bubble.click(1);
    EXPECT_EQ(picked.size(), 2u);
}

TEST_F(BubbleWindow, CallbacksMayShowOrHideAgain) {
    std::function<void(int)> pick = [&](int i) {
        bubble.showReplies(three, i, false, caret, pick);
    };
    bubble.showReplies(three, 0, false, caret, pick);
    {
        overlay::ReplyView& view = panel().replies();
        QTest::mouseClick(&view, Qt::LeftButton, {}, view.rowRect(2).center().toPoint());
    }
    EXPECT_EQ(bubble.shown().selected, 2);

    bubble.show(QStringLiteral("Text"), overlay::defaultHint, caret, [&] { bubble.hide(); });
    overlay::BubbleView& view = panel().bubble();
    QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(10, 10));
    EXPECT_FALSE(bubble.visible());
}

TEST_F(BubbleWindow, StaysHiddenWithoutAnyScreen) {
    screens.list.clear();
    int applied = 0;
    bubble.show(QStringLiteral("Text"), overlay::defaultHint, caret, [&] { ++applied; });
    EXPECT_FALSE(bubble.visible());
    EXPECT_EQ(bubble.shown().kind, Shown::Kind::Nothing);
    bubble.click(-1);
    EXPECT_EQ(applied, 0);

    screens.list = {{{0, 0, 1920, 1080}, {0, 0, 1920, 1040}}};
    bubble.showReplies(three, 0, false, caret, {});
    EXPECT_TRUE(bubble.visible());
    screens.list.clear();
    bubble.showReplies(three, 1, false, caret, {});
    EXPECT_FALSE(bubble.visible());
    EXPECT_EQ(bubble.shown().kind, Shown::Kind::Nothing);
}
