// Installed applications from the desktop entries of a temporary data folder.
#include <gtest/gtest.h>

#include "DataFolder.h"
#include "platform/linux/x11/X11Workspace.h"
#include "rules/Catalogue.h"
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

// KDE names its desktop entries by reverse domain; each application shows under its kind.
TEST(InstalledApps, KdeApplicationsUnderTheirKinds) {
    DataFolder data;
    for (const char* id : {"org.kde.kwrite", "org.kde.kate", "org.kde.kmail2",
                           "org.kde.konversation", "org.kde.neochat", "org.kde.konsole",
                           "org.kde.yakuake"})
        data.entry(id, QString(id).section('.', 2));

    linuxdesk::X11Workspace workspace;
    auto namesIn = [&](const char* kind) {
        QStringList out;
        for (const auto& app : installedApps(workspace, setup::kindApps(*rules::kindWithId(kind))))
            out << app.name;
        return out;
    };
    EXPECT_EQ(namesIn("docs"), (QStringList{"kwrite", "kate"}));
    EXPECT_EQ(namesIn("email"), QStringList{"kmail2"});
    EXPECT_EQ(namesIn("chat"), (QStringList{"neochat", "konversation"}));
    EXPECT_EQ(namesIn("code"), (QStringList{"konsole", "yakuake"}));
}
