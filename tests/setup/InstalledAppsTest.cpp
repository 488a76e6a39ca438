// Installed applications from the desktop entries of a temporary data folder.
#include <gtest/gtest.h>

#include "DataFolder.h"
#include "platform/linux/x11/X11Workspace.h"
#include "setup/AppIdentity.h"

using setup::installedApps;

TEST(InstalledApps, FromDesktopEntriesOncePerName) {
    DataFolder data;
    const QString icon = data.write(".local/share/icons/hicolor/48x48/apps/firefox-esr.png", "");
    data.entry("firefox-esr", "Firefox ESR", "Icon=firefox-esr\n");
    // One product from two packagings: the distribution's and the Flatpak's.
    data.entry("chromium", "Chromium", "Icon=chromium\n");
    data.entry("org.chromium.Chromium", "Chromium", "Icon=org.chromium.Chromium\n");
    data.entry("thunderbird", "Thunderbird", "Icon=/opt/thunderbird/icon.png\n");

    linuxdesk::X11Workspace workspace;
    const auto apps = installedApps(
        workspace, {"com.apple.Safari", "com.google.Chrome", "com.google.Chrome.canary",
                    "org.mozilla.firefox", "org.mozilla.Thunderbird", "org.chromium.Chromium"});
    ASSERT_EQ(apps.size(), 3u);
    EXPECT_EQ(apps[0].id, "com.google.Chrome");
    EXPECT_EQ(apps[0].name, "Chromium");
    EXPECT_EQ(apps[0].iconName, "org.chromium.Chromium");
    EXPECT_EQ(apps[1],
              (setup::AppIdentity{"org.mozilla.firefox", "Firefox ESR", icon, "firefox-esr"}));
    // An absolute Icon is a file, and one that does not exist is none.
    EXPECT_EQ(apps[2], (setup::AppIdentity{"org.mozilla.Thunderbird", "Thunderbird", "", ""}));
}
