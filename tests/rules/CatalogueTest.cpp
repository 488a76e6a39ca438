#include <gtest/gtest.h>

#include <QSet>

#include "main/Constants.h"
#include "platform/LinuxApps.h"
#include "rules/Catalogue.h"
#include "rules/LinuxApps.h"

namespace {

using rules::kinds;

TEST(Catalogue, NoApplicationOrSiteInTwoKinds) {
    QSet<QString> apps, sites, linuxIds;
    for (const rules::AppKind& k : kinds()) {
        for (const QString& a : k.apps) EXPECT_FALSE(apps.contains(a)) << a.toStdString();
        for (const QString& s : k.sites) EXPECT_FALSE(sites.contains(s)) << s.toStdString();
        apps.unite(QSet<QString>(k.apps.begin(), k.apps.end()));
        sites.unite(QSet<QString>(k.sites.begin(), k.sites.end()));
    }
    QSet<QString> catalogueLower;
    for (const QString& a : apps) catalogueLower << a.toLower();
    for (const rules::AppKind& k : kinds()) {
        for (const QString& a : rules::linuxApps(k.id)) {
            const QString lower = a.toLower();
            EXPECT_FALSE(catalogueLower.contains(lower)) << a.toStdString();
            EXPECT_FALSE(linuxIds.contains(lower)) << a.toStdString();
            linuxIds << lower;
        }
    }
    // Site switches apply in the applications the browsers kind lists.
    EXPECT_EQ(rules::kindWithId("browsers")->apps, glimmo::browsers());
}

// A site matches its own name and the names below it, never a longer name ending the same.
TEST(Catalogue, SiteLookups) {
    EXPECT_FALSE(rules::match("notgoogle.com", "google.com"));
    EXPECT_FALSE(rules::match("google.com", "mail.google.com"));
    EXPECT_EQ(rules::kindOfSite("a.mail.google.com")->id, "email");
    EXPECT_FALSE(rules::kindOfSite("google.com"));
}

TEST(Catalogue, LinuxApplicationsByIdInAnyCase) {
    // Linux ids come from WM_CLASS, desktop files and flatpak ids, spelt as each packager likes.
    for (const char* app : {"Alacritty", "alacritty", "ALACRITTY"}) {
        const auto found = rules::kindOf(app);
        ASSERT_TRUE(found) << app;
        EXPECT_EQ(found->id, "code") << app;
    }
    EXPECT_TRUE(rules::isBrowser("Firefox-ESR"));
    EXPECT_FALSE(rules::isBrowser(""));
}

// What the desktop backend reports of the windows the end-to-end tests open, and of common
// applications, becomes the identifier the rules and the engine know.
TEST(Catalogue, OneTableResolvesWindowNames) {
    using platform::appIdFor;
    EXPECT_EQ(appIdFor({"", "", "", "", "Chromium", "chromium"}), "com.google.Chrome");
    EXPECT_EQ(appIdFor({"org.glimmo.TestEditor", "", "", "", "Glimmo-gtk-editor"}),
              "org.glimmo.TestEditor");
    EXPECT_EQ(appIdFor({"", "net.thunderbird.Thunderbird"}), "org.mozilla.Thunderbird");
    // The first name the table knows decides; unknown names fall back to the first given.
    EXPECT_EQ(appIdFor({"org.example.Unknown", "discord", "slack"}), "com.hnc.Discord");
    EXPECT_EQ(appIdFor({"", "org.example.Unknown", "other"}), "org.example.Unknown");
    EXPECT_EQ(appIdFor({"", ""}), "");

    EXPECT_EQ(platform::linuxNamesOf("org.example.Unknown"), QStringList{"org.example.Unknown"});
}

}  // namespace
