#include <gtest/gtest.h>

#include <QSet>

#include "main/Constants.h"
#include "rules/Catalogue.h"
#include "rules/LinuxApps.h"

namespace {

using rules::kinds;

// Which kinds are locked or on by default decides what a fresh installation watches.
TEST(Catalogue, OnlyPasswordsLockedAndTheWritingKindsOnByDefault) {
    for (const rules::AppKind& k : kinds()) {
        EXPECT_EQ(k.locked, k.id == "passwords") << k.id.toStdString();
        EXPECT_EQ(k.defaultOn,
                  k.id == "chat" || k.id == "email" || k.id == "docs" || k.id == "browsers")
            << k.id.toStdString();
    }
    EXPECT_EQ(rules::kindWithId("browsers")->apps, glimmo::browsers());
}

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
}

TEST(Catalogue, Lookups) {
    EXPECT_TRUE(rules::match("mail.google.com", "mail.google.com"));
    EXPECT_TRUE(rules::match("a.b.mail.google.com", "google.com"));
    EXPECT_FALSE(rules::match("notgoogle.com", "google.com"));
    EXPECT_FALSE(rules::match("google.com", "mail.google.com"));

    EXPECT_EQ(rules::kindOf("com.microsoft.VSCode")->id, "code");
    EXPECT_FALSE(rules::kindOf("com.figma.Desktop"));
    EXPECT_EQ(rules::kindOfSite("www.notion.so")->id, "docs");
    EXPECT_EQ(rules::kindOfSite("chat.openai.com")->id, "ai");
    EXPECT_FALSE(rules::kindOfSite("www.linkedin.com"));
    EXPECT_FALSE(rules::kindOfSite("google.com"));
}

TEST(Catalogue, LinuxApplicationsByIdInAnyCase) {
    // Linux ids come from WM_CLASS, desktop files and flatpak ids, spelt as each packager likes.
    const std::vector<std::pair<const char*, const char*>> expected{
        {"thunderbird", "email"},
        {"org.mozilla.Thunderbird", "email"},
        {"Alacritty", "code"},
        {"alacritty", "code"},
        {"org.keepassxc.KeePassXC", "passwords"}};
    for (const auto& [app, kind] : expected) {
        const auto found = rules::kindOf(app);
        ASSERT_TRUE(found) << app;
        EXPECT_EQ(found->id, kind) << app;
    }
    for (const char* browser : {"firefox-esr", "org.gnome.Epiphany", "com.google.Chrome"})
        EXPECT_TRUE(rules::isBrowser(browser)) << browser;
    for (const char* other : {"thunderbird", "com.apple.mail", ""})
        EXPECT_FALSE(rules::isBrowser(other)) << other;
}

// What the desktop backend reports of the windows the end-to-end tests open, and of common
// applications, becomes the identifier the rules and the engine know.
TEST(Catalogue, OneTableResolvesWindowNames) {
    using rules::appIdFor;
    EXPECT_EQ(appIdFor({"", "", "", "", "Chromium", "chromium"}), "com.google.Chrome");
    EXPECT_EQ(appIdFor({"", "", "", "", "Slack", "slack"}), "com.tinyspeck.slackmacgap");
    EXPECT_EQ(appIdFor({"org.glimmo.TestEditor", "", "", "", "Glimmo-gtk-editor"}),
              "org.glimmo.TestEditor");
    EXPECT_EQ(appIdFor({"", "", "", "firefox-esr", "firefox", "Navigator"}), "org.mozilla.firefox");
    EXPECT_EQ(appIdFor({"", "", "", "thunderbird", "thunderbird", "Mail"}),
              "org.mozilla.Thunderbird");
    EXPECT_EQ(appIdFor({"", "net.thunderbird.Thunderbird"}), "org.mozilla.Thunderbird");
    EXPECT_EQ(appIdFor({"", "", "", "", "Gnome-terminal", "gnome-terminal-server"}),
              "org.gnome.Terminal");
    // The first name the table knows decides; unknown names fall back to the first given.
    EXPECT_EQ(appIdFor({"org.example.Unknown", "discord", "slack"}), "com.hnc.Discord");
    EXPECT_EQ(appIdFor({"", "org.example.Unknown", "other"}), "org.example.Unknown");
    EXPECT_EQ(appIdFor({"", ""}), "");

    EXPECT_TRUE(rules::linuxNamesOf("com.google.Chrome").contains("chromium"));
    EXPECT_EQ(rules::linuxNamesOf("org.example.Unknown"), QStringList{"org.example.Unknown"});
    EXPECT_TRUE(rules::linuxApps("email").contains("org.mozilla.Thunderbird"));
}

}  // namespace
