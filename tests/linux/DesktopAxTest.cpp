// AT-SPI through platform::Ax against the GTK test editor on the virtual desktop.
#include <gtest/gtest.h>

#include <QProcess>

#include "DesktopHelpers.h"
#include "GtkEditor.h"
#include "TempHome.h"
#include "platform/linux/atspi/AtspiAx.h"

using namespace platform;
using testsupport::waitUntil;

namespace {

// Emoji outside the BMP and CJK ideographs: GTK counts code points, Glimmo UTF-16 units.
const QString kText = QStringLiteral("Hello \U0001F600 world\n\n\u4F60\u597D there\nend");

struct AxOnEditor : ::testing::Test {
    testsupport::TempHome home;  // the backend logs
    linuxdesk::AtspiAx ax;

    Element focusedOf(qint64 pid) { return desktop::focusedElement(ax, pid); }
    QString string(const Element& e, const char* name) { return desktop::string(ax, e, name); }
    std::optional<Range> range(const Element& e) {
        auto v = ax.attribute(e, "AXSelectedTextRange");
        if (!v || !std::holds_alternative<Range>(*v)) return std::nullopt;
        return std::get<Range>(*v);
    }
    // Selects in UTF-16 units whatever the toolkit counts in: the emoji, then the caret just
    // after the two ideographs.
    void selectsAcrossEmojiAndCjk(const Element& field) {
        // "\U0001F600 world" starts at 6 and spans 2 + 6 UTF-16 units.
        ASSERT_TRUE(ax.setAttribute(field, "AXSelectedTextRange", Range{6, 8}));
        ASSERT_TRUE(waitUntil(
            [&] {
                return range(field) == Range{6, 8};
            },
            2000))
            << range(field).value_or(Range{-1, -1}).location;
        EXPECT_EQ(string(field, "AXSelectedText"), QStringLiteral("\U0001F600 world"));
        const qint64 afterCjk = kText.indexOf(QStringLiteral(" there"));
        ASSERT_TRUE(ax.setAttribute(field, "AXSelectedTextRange", Range{afterCjk, 0}));
        ASSERT_TRUE(waitUntil([&] { return range(field) == Range{afterCjk, 0}; }, 2000));
        EXPECT_EQ(string(field, "AXSelectedText"), "");
    }
};

}  // namespace

TEST_F(AxOnEditor, ReadsAndSelectsInATextViewWithEmojiAndCjk) {
    ASSERT_TRUE(ax.trusted());
    GtkEditor editor({"--text", kText});
    ASSERT_TRUE(editor.ready());
    Element field = focusedOf(editor.pid());
    ASSERT_TRUE(field);

    EXPECT_EQ(string(field, "AXRole"), "AXTextArea");
    EXPECT_EQ(string(field, "AXValue"), kText);
    EXPECT_TRUE(ax.same(field, std::get<Element>(*ax.attribute(ax.application(editor.pid()),
                                                               "AXFocusedUIElement"))));

    selectsAcrossEmojiAndCjk(field);
    if (HasFatalFailure()) return;

    // Bounds in screen coordinates: inside the field, the second ideograph right of the first.
    auto frameOf = [&](const Element& e) {
        auto p = std::get<Point>(*ax.attribute(e, "AXPosition"));
        auto s = std::get<Size>(*ax.attribute(e, "AXSize"));
        return Rect{p.x, p.y, s.width, s.height};
    };
    const Rect frame = frameOf(field);
    EXPECT_GT(frame.width, 100);
    const qint64 afterCjk = kText.indexOf(QStringLiteral(" there"));
    auto first = ax.parameterized(field, "AXBoundsForRange", Range{afterCjk - 2, 1});
    auto second = ax.parameterized(field, "AXBoundsForRange", Range{afterCjk - 1, 1});
    ASSERT_TRUE(first && second);
    const Rect a = std::get<Rect>(*first), b = std::get<Rect>(*second);
    EXPECT_GT(a.height, 0);
    EXPECT_GT(b.x, a.x);
    EXPECT_DOUBLE_EQ(a.y, b.y);
    EXPECT_GE(a.x, frame.x);
    EXPECT_GE(a.y, frame.y);
    EXPECT_LE(a.y + a.height, frame.y + frame.height);
    // The emoji is one character for GTK: its two UTF-16 units give one glyph's box.
    auto emoji = ax.parameterized(field, "AXBoundsForRange", Range{6, 2});
    auto letterAfter = ax.parameterized(field, "AXBoundsForRange", Range{9, 1});
    ASSERT_TRUE(emoji && letterAfter);
    EXPECT_LT(std::get<Rect>(*emoji).x, std::get<Rect>(*letterAfter).x);

    // Up the tree to the window, which the application names as its focused window.
    auto app = ax.application(editor.pid());
    auto window = ax.attribute(app, "AXFocusedWindow");
    ASSERT_TRUE(window);
    EXPECT_EQ(string(std::get<Element>(*window), "AXRole"), "AXWindow");
    EXPECT_EQ(string(std::get<Element>(*window), "AXTitle"), "Glimmo test editor");
    Element up = field;
    bool reached = false;
    for (int i = 0; i < 20 && up; ++i) {
        if (ax.same(up, std::get<Element>(*window))) reached = true;
        auto p = ax.attribute(up, "AXParent");
        up = p ? std::get<Element>(*p) : nullptr;
    }
    EXPECT_TRUE(reached);
}

TEST_F(AxOnEditor, EntryAndPasswordRolesAndFocusEvents) {
    ASSERT_TRUE(ax.trusted());
    GtkEditor editor({"--focus", "entry"});
    ASSERT_TRUE(editor.ready());
    Element entry = focusedOf(editor.pid());
    ASSERT_TRUE(entry);
    EXPECT_EQ(string(entry, "AXRole"), "AXTextField");
    EXPECT_EQ(string(entry, "AXPlaceholderValue"), "Subject");
    EXPECT_EQ(string(entry, "AXValue"), "");
    EXPECT_EQ(range(entry), (Range{0, 0}));

    // The next field gets the focus by keyboard: the tracker hears it.
    const int heard = ax.focus().eventsHeard();
    desktop::xdotool({"key", "Tab"});
    ASSERT_TRUE(waitUntil([&] { return ax.focus().eventsHeard() > heard; }, 5000));
    ASSERT_TRUE(waitUntil(
        [&] {
            auto f = ax.attribute(ax.application(editor.pid()), "AXFocusedUIElement");
            return f && string(std::get<Element>(*f), "AXRole") == "AXSecureTextField";
        },
        5000));
    auto password =
        std::get<Element>(*ax.attribute(ax.application(editor.pid()), "AXFocusedUIElement"));
    EXPECT_EQ(string(password, "AXSubrole"), "AXSecureTextField");
    EXPECT_FALSE(ax.same(entry, password));
}

TEST_F(AxOnEditor, QtCountsUtf16UnitsAndStillReadsTheSame) {
    ASSERT_TRUE(ax.trusted());
    GtkEditor editor({kText}, qEnvironmentVariable("GLIMMO_QT_EDITOR"));
    ASSERT_TRUE(editor.ready());
    Element field = focusedOf(editor.pid());
    ASSERT_TRUE(field);
    EXPECT_EQ(string(field, "AXRole"), "AXTextArea");
    EXPECT_EQ(string(field, "AXValue"), kText);
    selectsAcrossEmojiAndCjk(field);
}
