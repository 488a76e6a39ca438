// The frontmost application and its identity over X11 (the login item is checked through the
// tray, end to end).
#include <gtest/gtest.h>

#include <QCoreApplication>

#include "DesktopHelpers.h"
#include "GtkEditor.h"
#include "TempHome.h"
#include "platform/linux/x11/X11Workspace.h"

using testsupport::waitUntil;

namespace {

std::optional<platform::RunningApp> frontmostIs(linuxdesk::X11Workspace& ws, qint64 pid) {
    std::optional<platform::RunningApp> app;
    waitUntil(
        [&] {
            app = ws.frontmost();
            return app && app->pid == pid;
        },
        5000);
    return app;
}

}  // namespace

TEST(Workspace, FrontmostEditorByPidWithItsGtkIdentity) {
    testsupport::TempHome home;
    GtkEditor editor;
    ASSERT_TRUE(editor.ready());
    linuxdesk::X11Workspace ws;
    auto app = frontmostIs(ws, editor.pid());
    ASSERT_TRUE(app);
    EXPECT_EQ(app->bundleId, "org.glimmo.TestEditor");
    EXPECT_EQ(app->name, "Glimmo-gtk-editor");  // no desktop entry: the WM_CLASS class
    EXPECT_NE(ws.ownPid(), editor.pid());
    EXPECT_EQ(ws.ownPid(), QCoreApplication::applicationPid());
    auto running = ws.running("org.glimmo.TestEditor");
    ASSERT_EQ(running.size(), 1u);
    EXPECT_EQ(running[0].pid, editor.pid());
    EXPECT_TRUE(ws.running("com.tinyspeck.slackmacgap").empty());
}

TEST(Workspace, CatalogueIdentityAndDesktopEntryName) {
    testsupport::TempHome home;
    // A desktop entry found by its StartupWMClass gives the localized display name.
    home.write(".local/share/applications/chat-client.desktop",
               "[Desktop Entry]\nType=Application\nName=Chat Client\nExec=true %U\n"
               "StartupWMClass=slack\n");
    GtkEditor editor({"--app-id", "com.example.Chat", "--prgname", "slack"});
    ASSERT_TRUE(editor.ready());
    linuxdesk::X11Workspace ws;
    auto app = frontmostIs(ws, editor.pid());
    ASSERT_TRUE(app);
    EXPECT_EQ(app->bundleId, "com.tinyspeck.slackmacgap");
    EXPECT_EQ(app->name, "Chat Client");
    auto installed = ws.installed("com.tinyspeck.slackmacgap");
    ASSERT_TRUE(installed);
    EXPECT_EQ(installed->name, "Chat Client");
    EXPECT_FALSE(ws.installed("com.hnc.Discord"));
}
