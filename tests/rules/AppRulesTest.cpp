#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>

#include "platform/Defaults.h"
#include "rules/AppRules.h"
#include "rules/Catalogue.h"

namespace {

using platform::BoolMap;
using rules::AppRules;

const QString slack = "com.tinyspeck.slackmacgap";
const QString chrome = "com.google.Chrome";
const QString safari = "com.apple.Safari";
const QString figma = "com.figma.Desktop";
const QString onePassword = "com.1password.1password";
const QString terminal = "com.apple.Terminal";
const QString xcode = "com.apple.dt.Xcode";

rules::AppKind kind(const char* id) {
    return *rules::kindWithId(id);
}

// Rules over an empty store.
struct FreshRules : ::testing::Test {
    platform::MemoryDefaults d;
    AppRules r{d};
};

TEST_F(FreshRules, FreshInstallation) {
    EXPECT_TRUE(r.isOn(slack, std::nullopt));
    EXPECT_TRUE(r.isOn(chrome, QString("www.linkedin.com")));
    EXPECT_FALSE(r.isOn(terminal, std::nullopt));
    EXPECT_FALSE(r.isOn(chrome, QString("chatgpt.com")));
    EXPECT_FALSE(r.isOn(onePassword, std::nullopt));
    EXPECT_TRUE(r.isOn(figma, std::nullopt));
    // Nothing is written by merely loading a fresh store.
    EXPECT_FALSE(d.value("appOn"));
    EXPECT_FALSE(d.value("rulesMigrated"));
}

TEST_F(FreshRules, LockedKindStaysOff) {
    r.setApp(onePassword, true);
    r.setKind(kind("passwords"), true);
    EXPECT_FALSE(r.isOn(onePassword, std::nullopt));
    EXPECT_FALSE(r.appState(onePassword));
    EXPECT_FALSE(r.isOn(kind("passwords")));
    // Even a stored entry is never read for a locked kind.
    r.setAppOn({{onePassword, true}});
    EXPECT_FALSE(r.isOn(onePassword, QString("mail.google.com")));
}

TEST_F(FreshRules, SiteRulesComeFirstInBrowsersOnly) {
    EXPECT_TRUE(r.isOn(chrome, QString("mail.google.com")));
    r.setKind(kind("email"), false);
    EXPECT_FALSE(r.isOn(chrome, QString("mail.google.com")));
    r.setKind(kind("email"), true);

    r.setApp(chrome, false);
    EXPECT_FALSE(r.isOn(chrome, QString("www.linkedin.com")));
    EXPECT_TRUE(r.isOn(chrome, QString("mail.google.com")));
    EXPECT_TRUE(r.isOn(safari, QString("www.linkedin.com")));

    r.setKind(kind("browsers"), false);
    EXPECT_FALSE(r.isOn(safari, QString("www.linkedin.com")));
    EXPECT_FALSE(r.isOn("firefox-esr", QString("www.linkedin.com")));
    EXPECT_TRUE(r.isOn("firefox-esr", QString("docs.google.com")));

    // Outside a browser the host is ignored.
    r.setSite("app.slack.com", false);
    EXPECT_TRUE(r.isOn(slack, QString("app.slack.com")));
    EXPECT_FALSE(r.isOn(chrome, QString("app.slack.com")));
}

TEST_F(FreshRules, SetAppKeepsOnlyDifferences) {
    r.setApp(slack, true);
    EXPECT_TRUE(r.appOn().empty());
    r.setApp(slack, false);
    EXPECT_EQ(r.appOn(), (BoolMap{{slack, false}}));
    r.setApp(slack, true);
    EXPECT_TRUE(r.appOn().empty());

    r.setApp(figma, false);
    EXPECT_EQ(r.appOn(), (BoolMap{{figma, false}}));
    r.setOtherOn(false);
    r.setApp(figma, false);
    EXPECT_TRUE(r.appOn().empty());
    EXPECT_FALSE(r.isOn(figma, std::nullopt));
    EXPECT_EQ(d.boolValue("otherOn"), false);
}

TEST_F(FreshRules, SetSiteChoosesTheListedName) {
    r.setSite("inbox.mail.google.com", false);
    EXPECT_EQ(r.siteOn(), (BoolMap{{"mail.google.com", false}}));
    EXPECT_EQ(r.siteState("mail.google.com"), false);
    r.setSite("inbox.mail.google.com", true);
    EXPECT_TRUE(r.siteOn().empty());

    // An unlisted host is recorded under itself, even when it matches the current state.
    r.setSite("www.linkedin.com", true);
    EXPECT_EQ(r.siteOn(), (BoolMap{{"www.linkedin.com", true}}));
    r.setSite("www.linkedin.com", false);
    EXPECT_EQ(r.siteOn(), (BoolMap{{"www.linkedin.com", false}}));
}

TEST_F(FreshRules, LongestMatchingSiteKeyWins) {
    r.setSiteOn({{"google.com", false}, {"docs.google.com", true}, {"a.docs.google.com", false}});
    EXPECT_EQ(r.siteState("x.a.docs.google.com"), false);
    EXPECT_EQ(r.siteState("b.docs.google.com"), true);
    EXPECT_EQ(r.siteState("mail.google.com"), false);
    EXPECT_EQ(r.siteState("docs.google.com.evil.example"), std::nullopt);

    r.setSite("b.docs.google.com", false);  // recorded under docs.google.com
    EXPECT_EQ(r.siteOn().at("docs.google.com"), false);
    r.setSite("b.docs.google.com", true);  // equals the docs kind: removed
    EXPECT_FALSE(r.siteOn().count("docs.google.com"));
    EXPECT_EQ(r.siteOn().at("google.com"), false);
}

TEST_F(FreshRules, SetKindClearsItsOwnEntries) {
    r.setAppOn({{"com.apple.mail", false}, {"com.microsoft.Outlook", false}, {slack, false}});
    r.setSiteOn({{"mail.google.com", false},
                 {"outlook.live.com", false},
                 {"x.outlook.office.com", true},
                 {"app.slack.com", false}});
    r.setKind(kind("email"), false);
    EXPECT_EQ(r.kindOn(), (BoolMap{{"email", false}}));
    EXPECT_EQ(r.appOn(), (BoolMap{{slack, false}}));
    EXPECT_EQ(r.siteOn(), (BoolMap{{"x.outlook.office.com", true}, {"app.slack.com", false}}));
    EXPECT_EQ(d.boolMap("appOn"), r.appOn());
    EXPECT_EQ(d.boolMap("siteOn"), r.siteOn());
    EXPECT_FALSE(r.isOn("com.apple.mail", std::nullopt));
}

// Linux-only applications follow their kind like the catalogue's own: a kind switched off and
// on again takes back the user's switches of all its applications.
TEST_F(FreshRules, KindsOverLinuxOnlyApplications) {
    const QString thunderbird = "org.mozilla.Thunderbird";
    EXPECT_TRUE(r.isOn(thunderbird, std::nullopt));
    EXPECT_FALSE(r.isOn("org.gnome.Terminal", std::nullopt));
    r.setApp(thunderbird, false);
    r.setApp("evolution", false);  // a name the table knows, as stored by an earlier build
    r.setApp("kitty", true);
    EXPECT_FALSE(r.isOn(thunderbird, std::nullopt));
    r.setKind(kind("email"), false);
    r.setKind(kind("email"), true);
    EXPECT_TRUE(r.isOn(thunderbird, std::nullopt));
    EXPECT_TRUE(r.isOn("evolution", std::nullopt));
    EXPECT_EQ(r.appOn(), (BoolMap{{"kitty", true}}));
}

TEST(AppRules, EveryChangeIsPersistedAndAnnounced) {
    platform::MemoryDefaults d;
    int changes = 0;
    {
        AppRules r(d);
        QObject::connect(&r, &AppRules::changed, [&] { ++changes; });
        r.setKind(kind("ai"), true);
        r.setApp(terminal, true);
        r.setSite("github.com", true);
        r.setOtherOn(false);
        r.setKindOn(r.kindOn());
    }
    EXPECT_EQ(changes, 5);
    AppRules again(d);
    EXPECT_EQ(again.kindOn(), (BoolMap{{"ai", true}}));
    EXPECT_EQ(again.appOn(), (BoolMap{{terminal, true}}));
    EXPECT_EQ(again.siteOn(), (BoolMap{{"github.com", true}}));
    EXPECT_FALSE(again.otherOn());
    EXPECT_TRUE(again.isOn(chrome, QString("claude.ai")));
}

TEST(AppRules, MalformedStoredValues) {
    platform::MemoryDefaults d;
    d.setValue("kindOn", QJsonObject{{"chat", false}, {"email", "off"}});
    d.setValue("appOn", QJsonArray{slack});
    d.setValue("siteOn", QJsonObject{{"mail.google.com", false}, {"unknown.example", true}});
    d.setValue("otherOn", "no");
    AppRules r(d);
    EXPECT_TRUE(r.kindOn().empty());
    EXPECT_TRUE(r.appOn().empty());
    EXPECT_EQ(r.siteOn().size(), 2u);
    EXPECT_TRUE(r.otherOn());
    EXPECT_TRUE(r.isOn(slack, std::nullopt));

    // Unknown kind ids are kept and ignored.
    platform::MemoryDefaults e;
    e.setBoolMap("kindOn", {{"games", false}, {"chat", false}});
    AppRules s(e);
    EXPECT_EQ(s.kindOn().size(), 2u);
    EXPECT_FALSE(s.isOn(slack, std::nullopt));
}

TEST(AppRules, MigrationFromPausedRunsOnce) {
    platform::MemoryDefaults d;
    d.setStringList("paused", {terminal, slack});
    {
        AppRules r(d);
        EXPECT_EQ(r.appOn().at(slack), false);
        EXPECT_FALSE(r.appOn().count(terminal));
        EXPECT_EQ(r.appOn().at(xcode), true);
        EXPECT_EQ(r.appOn().at(onePassword), true);  // stored, never read: the kind is locked
        EXPECT_FALSE(r.isOn(onePassword, std::nullopt));
        EXPECT_TRUE(r.isOn(xcode, std::nullopt));
        EXPECT_EQ(d.boolValue("rulesMigrated"), true);
        EXPECT_EQ(d.boolMap("appOn"), r.appOn());
        r.setApp(xcode, false);
    }
    AppRules again(d);
    EXPECT_FALSE(again.appOn().count(xcode));
    EXPECT_EQ(d.stringList("paused"), QStringList({terminal, slack}));
}

TEST(AppRules, NoMigrationWithoutAListOfStrings) {
    platform::MemoryDefaults d;
    d.setValue("paused", QJsonArray{terminal, 3});
    AppRules r(d);
    EXPECT_TRUE(r.appOn().empty());
    EXPECT_FALSE(d.value("rulesMigrated"));

    platform::MemoryDefaults e;
    e.setStringList("paused", {slack});
    e.setBool("rulesMigrated", true);
    AppRules s(e);
    EXPECT_TRUE(s.appOn().empty());
}

}  // namespace
