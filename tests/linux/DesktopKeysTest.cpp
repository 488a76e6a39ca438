// Synthetic keys with XTest and the key tap's grab, against the GTK text view.
#include <gtest/gtest.h>

#include "DesktopHelpers.h"
#include "GtkEditor.h"
#include "TempHome.h"
#include "platform/Keys.h"
#include "platform/linux/atspi/AtspiAx.h"
#include "platform/linux/session/QtClipboard.h"
#include "platform/linux/x11/XGrabKeyTap.h"
#include "platform/linux/x11/XTestKeyboard.h"

using namespace platform;
using testsupport::waitUntil;

namespace {

struct KeysOnEditor : ::testing::Test {
    testsupport::TempHome home;
    linuxdesk::AtspiAx ax;
    linuxdesk::XTestKeyboard keyboard;

    Element field(const GtkEditor& editor) { return desktop::focusedElement(ax, editor.pid()); }
    QString value(const Element& f) { return desktop::string(ax, f, "AXValue"); }
    QString selected(const Element& f) { return desktop::string(ax, f, "AXSelectedText"); }
    Range range(const Element& f) {
        auto v = ax.attribute(f, "AXSelectedTextRange");
        return v ? std::get<Range>(*v) : Range{-1, -1};
    }
};

}  // namespace

TEST_F(KeysOnEditor, SelectAllAndPasteReplaceTheText) {
    ASSERT_TRUE(keyboard.available());
    GtkEditor editor({"--text", ""});
    ASSERT_TRUE(editor.ready());
    Element f = field(editor);
    ASSERT_TRUE(f);
    desktop::xdotool({"type", "--delay", "20", "Typed words"});
    ASSERT_TRUE(waitUntil([&] { return value(f) == "Typed words"; }));

    keyboard.post(key::A, flag::Command);
    ASSERT_TRUE(waitUntil([&] { return range(f) == Range{0, 11}; }));

    const QString rewrite = QStringLiteral("Pasted \U0001F600 \u4F60\u597D.");
    linuxdesk::QtClipboard clipboard;
    clipboard.writeTransientText(rewrite);
    keyboard.post(key::V, flag::Command);
    EXPECT_TRUE(waitUntil([&] { return value(f) == rewrite; })) << value(f).toStdString();
    // The caret after the paste, in UTF-16 units past the emoji.
    EXPECT_TRUE(waitUntil([&] { return range(f) == Range{rewrite.size(), 0}; }));
}

TEST_F(KeysOnEditor, ParagraphMovesAreControlArrowsAndForwardDeleteIsDelete) {
    // GTK 3's Control-Up and Control-Down go to the previous paragraph's start and the next
    // paragraph's end (Qt and Chromium stop at the current one's ends), so this checks the
    // mapping where every toolkit agrees: from a paragraph's start up, and down in the last
    // paragraph. The engine checks what a keyboard selection picked before it pastes.
    GtkEditor editor({"--text", "one two\nthree four five"});
    ASSERT_TRUE(editor.ready());
    Element f = field(editor);
    ASSERT_TRUE(f);
    ASSERT_TRUE(ax.setAttribute(f, "AXSelectedTextRange", Range{8, 0}));
    keyboard.post(key::Up, flag::Option);
    ASSERT_TRUE(waitUntil([&] { return range(f) == Range{0, 0}; })) << range(f).location;

    // The engine's keyboard selection of a paragraph: one right, extend to its end.
    ASSERT_TRUE(ax.setAttribute(f, "AXSelectedTextRange", Range{8, 0}));
    keyboard.post(key::Right, 0);
    keyboard.post(key::Down, flag::Shift | flag::Option);
    ASSERT_TRUE(waitUntil([&] { return selected(f) == "hree four five"; }))
        << selected(f).toStdString();
    keyboard.post(key::Right, 0);
    ASSERT_TRUE(waitUntil([&] { return range(f) == Range{23, 0}; })) << range(f).location;

    ASSERT_TRUE(ax.setAttribute(f, "AXSelectedTextRange", Range{7, 0}));
    keyboard.post(key::ForwardDelete, 0);
    EXPECT_TRUE(waitUntil([&] { return value(f) == "one twothree four five"; }))
        << value(f).toStdString();
}

TEST_F(KeysOnEditor, TapConsumesWantedKeysAndPassesEverythingElse) {
    GtkEditor editor({"--text", "abc"});
    ASSERT_TRUE(editor.ready());
    Element f = field(editor);
    ASSERT_TRUE(f);
    ASSERT_TRUE(ax.setAttribute(f, "AXSelectedTextRange", Range{3, 0}));

    linuxdesk::XGrabKeyTap tap(&keyboard);
    std::vector<std::pair<int, quint64>> seen;
    // Tab is handled, and its handling posts Command-A (as applying a suggestion posts keys);
    // Down is wanted but not handled here.
    ASSERT_TRUE(tap.install([&](int code, quint64 flags) {
        seen.emplace_back(code, flags);
        if (code != key::Tab) return false;
        keyboard.post(key::A, flag::Command);
        return true;
    }));
    tap.setWanted(true);
    editor.clearKeys();

    desktop::xdotool({"key", "Tab"});
    ASSERT_TRUE(waitUntil([&] { return range(f) == Range{0, 3}; })) << range(f).location;
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0], std::make_pair(key::Tab, quint64(0)));
    EXPECT_EQ(value(f), "abc");  // no tab character reached the view
    EXPECT_FALSE(editor.keys().contains("Tab 0"));
    EXPECT_TRUE(waitUntil([&] { return editor.keys().contains("a 4"); }));  // Control-A

    // Shift-Tab is never the engine's; an unhandled Down is replayed to the view.
    ASSERT_TRUE(ax.setAttribute(f, "AXSelectedTextRange", Range{3, 0}));
    editor.clearKeys();
    desktop::xdotool({"key", "shift+Tab", "Down"});
    EXPECT_TRUE(waitUntil([&] {
        const QStringList k = editor.keys();
        return k.contains("ISO_Left_Tab 1") && k.contains("Down 0");
    })) << editor.keys().join(", ").toStdString();
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[1].first, key::Down);

    // Not wanted: Tab goes straight to the view and the handler hears nothing.
    tap.setWanted(false);
    editor.clearKeys();
    desktop::xdotool({"key", "Tab"});
    EXPECT_TRUE(waitUntil([&] { return editor.keys().contains("Tab 0"); }));
    EXPECT_EQ(seen.size(), 2u);
}
