#include <gtest/gtest.h>

#include <QSet>

#include "main/Constants.h"
#include "rules/Catalogue.h"
#include "rules/LinuxApps.h"

namespace {

using rules::kinds;

TEST(Catalogue, RowsAsGiven) {
    QStringList ids;
    std::vector<std::pair<qsizetype, qsizetype>> counts;
    for (const rules::AppKind& k : kinds()) {
        ids << k.id;
        counts.emplace_back(k.apps.size(), k.sites.size());
    }
    EXPECT_EQ(ids, QStringList({"chat", "email", "docs", "browsers", "ai", "code", "passwords"}));
    const std::vector<std::pair<qsizetype, qsizetype>> expected{{10, 4}, {4, 4}, {8, 3}, {11, 0},
                                                                {4, 5},  {9, 1}, {5, 0}};
    EXPECT_EQ(counts, expected);

    EXPECT_EQ(kinds()[3].apps, glimmo::browsers());
    EXPECT_EQ(glimmo::browsers().mid(0, 8), glimmo::chromiumBrowsers());
    EXPECT_EQ(glimmo::browsers().last(), "org.mozilla.firefox");
    for (const rules::AppKind& k : kinds()) {
        EXPECT_EQ(k.locked, k.id == "passwords") << k.id.toStdString();
        EXPECT_EQ(k.defaultOn,
                  k.id == "chat" || k.id == "email" || k.id == "docs" || k.id == "browsers")
            << k.id.toStdString();
    }
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

TEST(Catalogue, CommonLinuxApplications) {
    const std::vector<std::pair<const char*, const char*>> expected{
        {"org.mozilla.Thunderbird", "email"},
        {"thunderbird", "email"},
        {"org.gnome.Evolution", "email"},
        {"org.gnome.Geary", "email"},
        {"chromium", "browsers"},
        {"firefox-esr", "browsers"},
        {"org.gnome.Epiphany", "browsers"},
        {"org.gnome.Terminal", "code"},
        {"org.kde.konsole", "code"},
        {"kitty", "code"},
        {"Alacritty", "code"},
        {"alacritty", "code"},
        {"code", "code"},
        {"Code", "code"},
        {"org.keepassxc.KeePassXC", "passwords"},
        {"com.bitwarden.desktop", "passwords"},
        {"org.gnome.seahorse.Application", "passwords"},
        {"org.gnome.TextEditor", "docs"},
        {"libreoffice-writer", "docs"},
        {"org.telegram.desktop", "chat"}};
    for (const auto& [app, kind] : expected) {
        const auto found = rules::kindOf(app);
        ASSERT_TRUE(found) << app;
        EXPECT_EQ(found->id, kind) << app;
    }
    for (const char* browser : {"chromium", "firefox-esr", "org.gnome.Epiphany", "firefox",
                                "com.google.Chrome", "org.mozilla.firefox"})
        EXPECT_TRUE(rules::isBrowser(browser)) << browser;
    for (const char* other : {"thunderbird", "com.apple.mail", "kitty", ""})
        EXPECT_FALSE(rules::isBrowser(other)) << other;
}

}  // namespace
