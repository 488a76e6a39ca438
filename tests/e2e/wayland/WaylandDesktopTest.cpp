// The Wayland desktop as the tests of native applications use it: a test editor running
// natively (GDK_BACKEND=wayland) takes text and named keys typed through the remote-desktop
// keyboard, and AT-SPI reads the result.
#include <gtest/gtest.h>

#include "DesktopHelpers.h"
#include "GtkEditor.h"
#include "TempHome.h"
#include "WaylandKeys.h"
#include "platform/linux/AtspiAx.h"

using namespace platform;
using testsupport::waitUntil;

namespace {

void typesInto(const QString& program) {
    testsupport::TempHome home;
    linuxdesk::AtspiAx ax;
    ASSERT_TRUE(ax.trusted());
    GtkEditor editor({"--text", "old"}, program);
    ASSERT_TRUE(editor.ready()) << qPrintable(program);
    const Element field = desktop::focusedElement(ax, editor.pid());
    ASSERT_TRUE(field);
    auto value = [&] { return desktop::string(ax, field, "AXValue"); };

    // Select all replaces "old"; characters outside ASCII, a tab and a line break come through.
    const QString text = QStringLiteral("Hi, w\u00F6rld: (1+1)=2 \u4F60 \U0001F600!\tTab\nLine");
    ASSERT_TRUE(desktop::waylandKeys("ctrl+a"));
    ASSERT_TRUE(desktop::waylandType(text));
    EXPECT_TRUE(waitUntil([&] { return value() == text; }, 5000)) << qPrintable(value());

    ASSERT_TRUE(desktop::waylandKeys("BackSpace BackSpace shift+Home"));
    ASSERT_TRUE(desktop::waylandType("X"));
    const QString edited = text.left(text.indexOf('\n') + 1) + "X";
    EXPECT_TRUE(waitUntil([&] { return value() == edited; }, 5000)) << qPrintable(value());
    EXPECT_TRUE(editor.keys().contains("Home 1")) << qPrintable(editor.keys().join(", "));
}

}  // namespace

TEST(WaylandDesktop, TypesIntoANativeGtk3Editor) {
    typesInto(qEnvironmentVariable("GLIMMO_GTK_EDITOR"));
}

TEST(WaylandDesktop, TypesIntoANativeGtk4Editor) {
    typesInto(qEnvironmentVariable("GLIMMO_GTK4_EDITOR"));
}
