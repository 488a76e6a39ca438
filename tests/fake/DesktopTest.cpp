// Handles of the fake desktop behave like AT-SPI's: a fresh one on every read, compared by the
// element they name. Its text boxes, clipboard and key tap are checked through the ax and engine
// tests that use them.
#include <gtest/gtest.h>

#include "platform/fake/Desktop.h"

using namespace platform;

namespace {

TEST(FakeDesktop, HandlesAreFreshButNameTheSameElement) {
    fake::Desktop desk;
    auto field = desk.openField("com.example.app", "text");
    auto& ax = desk.platform().ax;
    auto app = ax.application(desk.frontApp()->pid());
    auto a = std::get<Element>(*ax.attribute(app, "AXFocusedUIElement"));
    auto b = std::get<Element>(*ax.attribute(app, "AXFocusedUIElement"));
    EXPECT_NE(a, b);
    EXPECT_TRUE(ax.same(a, b));
    EXPECT_TRUE(ax.same(a, field->handle()));
    EXPECT_FALSE(ax.same(a, nullptr));
    auto window = std::get<Element>(*ax.attribute(app, "AXFocusedWindow"));
    auto parent = std::get<Element>(*ax.attribute(a, "AXParent"));
    EXPECT_TRUE(ax.same(window, parent));
    auto children = std::get<ElementList>(*ax.attribute(window, "AXChildren"));
    ASSERT_EQ(children.size(), 1u);
    EXPECT_TRUE(ax.same(children[0], a));
    // A removed element reads as gone.
    field->parent()->clearChildren();
    desk.frontApp()->focus(nullptr);
    field.reset();
    EXPECT_FALSE(ax.attribute(a, "AXValue"));
}

}  // namespace
