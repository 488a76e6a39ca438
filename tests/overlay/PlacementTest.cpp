#include <gtest/gtest.h>

#include "overlay/Placement.h"

using overlay::placeFrame;
using platform::Rect;
using platform::Screen;

namespace {

// A 1920 by 1080 primary screen with a 40-point panel along its bottom.
const Screen primary{{0, 0, 1920, 1080}, {0, 0, 1920, 1040}};
const platform::Size panel{300, 60};

Rect place(const Rect& caret, const std::vector<Screen>& screens = {primary},
           std::optional<Screen> main = primary, platform::Size size = panel) {
    const auto frame = placeFrame(caret, size, screens, main);
    EXPECT_TRUE(frame.has_value());
    return frame.value_or(Rect{});
}

}  // namespace

TEST(WidthRule, RoundsUpAddsPaddingAndClamps) {
    EXPECT_EQ(overlay::bubbleWidth(100), 240);
    EXPECT_EQ(overlay::bubbleWidth(300), 326);
    EXPECT_EQ(overlay::bubbleWidth(2000), 460);
    EXPECT_EQ(overlay::bubbleWidth(214.2), 241);
    EXPECT_EQ(overlay::bubbleWidth(214), 240);
}

TEST(WidthRule, MeasuresOneUnbrokenLine) {
    const QString word = QStringLiteral("deck ");
    const double one = overlay::measureLine(word);
    EXPECT_GT(one, 10);
    EXPECT_LT(one, 60);
    // However long, a text is measured on one line, never wrapped.
    EXPECT_NEAR(overlay::measureLine(word.repeated(40)), 40 * one, 40 * 0.5);
    EXPECT_EQ(overlay::bubbleWidth(overlay::measureLine(word.repeated(40))), 460);
}

TEST(Placement, TallCaretKeepsItsTopStrip) {
    EXPECT_EQ(overlay::caretStrip({500, 300, 400, 61}), (Rect{500, 300, 400, 22}));
    EXPECT_EQ(overlay::caretStrip({500, 300, 400, 60}), (Rect{500, 300, 400, 60}));
    // Placed 6 below the strip, not below the whole field.
    EXPECT_EQ(place({500, 300, 400, 61}).y, 328);
    EXPECT_EQ(place({500, 300, 400, 60}).y, 366);
}

TEST(Placement, BelowTheCaretUnlessThatCrossesTheVisibleBottom) {
    EXPECT_EQ(place({500, 300, 2, 18}), (Rect{488, 324, 300, 60}));
    // Ending exactly on the visible bottom still fits below.
    EXPECT_EQ(place({500, 956, 2, 18}).y, 980);
    // One point lower crosses into the panel at the bottom: above, 6 over the caret's top.
    EXPECT_EQ(place({500, 957, 2, 18}).y, 957 - 6 - 60);
    // There is no clamp at the top.
    const Screen low{{0, 0, 1920, 1080}, {0, 0, 1920, 100}};
    EXPECT_EQ(place({500, 50, 2, 18}, {low}, low).y, -16);
}

TEST(Placement, ClampedToTheVisibleSidesRightEdgeLast) {
    EXPECT_EQ(place({3, 300, 2, 18}).x, 8);
    EXPECT_EQ(place({25, 300, 2, 18}).x, 13);
    EXPECT_EQ(place({1900, 300, 2, 18}).x, 1920 - 300 - 8);
    // A visible frame that starts right of a side panel.
    const Screen docked{{0, 0, 1920, 1080}, {64, 0, 1856, 1080}};
    EXPECT_EQ(place({70, 300, 2, 18}, {docked}, docked).x, 72);
    // Narrower than the panel plus margins: the right edge wins.
    const Screen narrow{{0, 0, 300, 1080}, {0, 0, 300, 1080}};
    EXPECT_EQ(place({100, 300, 2, 18}, {narrow}, narrow, {460, 60}).x, 300 - 460 - 8);
}

TEST(Placement, UsesTheScreenUnderTheCaretsBottomLeftCorner) {
    // A taller screen to the right, without a bottom panel.
    const Screen right{{1920, 0, 1920, 1200}, {1920, 0, 1920, 1200}};
    const std::vector<Screen> both{primary, right};
    // The primary's visible frame would push it above and to x 1612.
    EXPECT_EQ(place({2500, 1100, 2, 18}, both), (Rect{2488, 1124, 300, 60}));
    EXPECT_EQ(place({1930, 300, 2, 18}, both).x, 1928);
    // On the border between the two, the point belongs to the right screen.
    EXPECT_EQ(place({1920, 300, 2, 18}, both).x, 1928);
    EXPECT_EQ(place({1919, 300, 2, 18}, both).x, 1612);

    // A screen above the primary, at negative coordinates, with a top bar.
    const Screen above{{0, -1024, 1280, 1024}, {0, -1000, 1280, 1000}};
    const std::vector<Screen> stacked{primary, above};
    EXPECT_EQ(place({1250, -500, 2, 18}, stacked), (Rect{1280 - 308, -476, 300, 60}));
    EXPECT_EQ(place({100, -60, 2, 18}, stacked).y, -60 - 66);
}

TEST(Placement, OutsideEveryScreenUsesTheMainOneAndNoScreenGivesNothing) {
    const Screen right{{1920, 0, 1920, 1200}, {1920, 0, 1920, 1200}};
    EXPECT_EQ(place({-5000, 300, 2, 18}, {primary, right}, right).x, 1928);
    EXPECT_EQ(place({500, 300, 2, 18}, {}, primary), (Rect{488, 324, 300, 60}));
    EXPECT_FALSE(placeFrame({500, 300, 2, 18}, panel, {}, std::nullopt));
    EXPECT_FALSE(placeFrame({-5000, 300, 2, 18}, panel, {primary}, std::nullopt));
}
