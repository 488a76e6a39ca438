// The rest of the fake desktop: handles, derived attributes, quirks, clipboard, tap, workspace.
#include <gtest/gtest.h>

#include "platform/Keys.h"
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

TEST(FakeDesktop, TextFieldAttributesAndQuirks) {
    fake::Desktop desk;
    auto field = desk.openField("x", "ab\ncd");
    auto& ax = desk.platform().ax;
    auto el = field->handle();
    EXPECT_TRUE(ax.setAttribute(el, "AXSelectedTextRange", Range{3, 2}));
    EXPECT_EQ(std::get<QString>(*ax.attribute(el, "AXSelectedText")), "cd");
    // Out of range selections are clamped, as applications do.
    EXPECT_TRUE(ax.setAttribute(el, "AXSelectedTextRange", Range{4, 9}));
    EXPECT_EQ(field->selection(), (Range{4, 1}));
    auto rect = std::get<Rect>(*ax.parameterized(el, "AXBoundsForRange", Range{4, 1}));
    EXPECT_EQ(rect, (Rect{100 + 4 + 8, 200 + 4 + 16, 8, 16}));
    EXPECT_FALSE(ax.attribute(el, "AXTextInputMarkedRange"));
    field->setMarked(Range{3, 2});
    EXPECT_EQ(std::get<Range>(*ax.attribute(el, "AXTextInputMarkedRange")), (Range{3, 2}));

    field->quirks().refuseSelection = true;
    EXPECT_FALSE(ax.setAttribute(el, "AXSelectedTextRange", Range{0, 0}));
    field->quirks() = {};
    field->quirks().ignoreSelection = true;
    EXPECT_TRUE(ax.setAttribute(el, "AXSelectedTextRange", Range{0, 0}));
    EXPECT_EQ(field->selection(), (Range{4, 1}));
    field->quirks().zeroBounds = true;
    EXPECT_EQ(std::get<Rect>(*ax.parameterized(el, "AXBoundsForRange", Range{0, 1})), Rect{});
    field->quirks().noBounds = true;
    EXPECT_FALSE(ax.parameterized(el, "AXBoundsForRange", Range{0, 1}));
    EXPECT_EQ(desk.ax().writes("AXSelectedTextRange").size(), 4u);

    field->setReadCost(0.25);
    const double before = desk.clock().now();
    ax.attribute(el, "AXValue");
    EXPECT_DOUBLE_EQ(desk.clock().now() - before, 0.25);
}

TEST(FakeDesktop, ClipboardSavesAndRestoresEveryRepresentation) {
    fake::Desktop desk;
    auto& board = desk.clipboard();
    ClipContents user{ClipItem{{{"image/png", QByteArray("\x89PNG\0\1", 6)}, {"text/plain", "x"}}},
                      ClipItem{{{"text/html", "<b>y</b>"}}}};
    board.setItems(user);
    auto saved = desk.platform().clipboard.save();
    desk.platform().clipboard.writeTransientText("temp");
    EXPECT_TRUE(board.transient());
    EXPECT_EQ(board.text(), "temp");
    desk.platform().clipboard.restore(saved);
    EXPECT_EQ(board.items(), user);
    desk.platform().clipboard.writeText("keep");
    EXPECT_FALSE(board.transient());
    ASSERT_EQ(board.writes().size(), 2u);
    EXPECT_TRUE(board.writes()[0].transient);
    EXPECT_EQ(board.writes()[1].text, "keep");
}

TEST(FakeDesktop, KeyTapDeliversUnconsumedKeysToTheField) {
    fake::Desktop desk;
    auto field = desk.openField("x", "a");
    auto& tap = desk.keyTap();
    int seen = 0;
    tap.setRefusing(true);
    EXPECT_FALSE(desk.platform().keyTap.install([](int, quint64) { return true; }));
    tap.setRefusing(false);
    ASSERT_TRUE(desk.platform().keyTap.install([&](int code, quint64) {
        ++seen;
        return code == key::Esc;
    }));
    EXPECT_FALSE(tap.press(key::Tab));  // not wanted: the handler is not asked
    EXPECT_EQ(seen, 0);
    EXPECT_EQ(field->text(), "a\t");
    desk.platform().keyTap.setWanted(true);
    EXPECT_TRUE(tap.press(key::Esc));
    EXPECT_FALSE(tap.press(key::Tab));
    EXPECT_EQ(seen, 2);
    EXPECT_EQ(field->text(), "a\t\t");
    EXPECT_EQ(tap.pressed().size(), 3u);
    EXPECT_TRUE(desk.keyboard().posted().empty());
}

TEST(FakeDesktop, WorkspaceFrontmostAndHiddenApplications) {
    fake::Desktop desk;
    auto& slack = desk.addApp("com.tinyspeck.slackmacgap", "Slack", 77);
    EXPECT_FALSE(desk.platform().workspace.frontmost());
    desk.setFrontmost(77);
    EXPECT_EQ(desk.platform().workspace.frontmost()->name, "Slack");
    slack.setExposed(false);
    EXPECT_EQ(desk.platform().ax.application(77), nullptr);
    EXPECT_EQ(desk.platform().workspace.running("com.tinyspeck.slackmacgap").size(), 1u);
    desk.platform().workspace.openUrl("https://example.org");
    EXPECT_EQ(desk.workspace().openedUrls(), QStringList{"https://example.org"});
}

}  // namespace
