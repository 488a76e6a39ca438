#include <gtest/gtest.h>

#include "TempHome.h"
#include "platform/JsonDefaults.h"
#include "rules/RulesCheck.h"

namespace {

TEST(RulesCheck, FreshStore) {
    testsupport::TempHome home;
    const QString path = platform::JsonDefaults::standardPath();
    {
        platform::JsonDefaults d(path);
        rules::AppRules r(d);
        const QStringList expected{
            "on  Slack",
            "off Terminal",
            "off Claude app",
            "off 1Password",
            "on  Figma (other app)",
            "on  Chrome · mail.google.com",
            "off Chrome · chatgpt.com",
            "on  Chrome · www.linkedin.com",
            "off Safari · claude.ai",
            "after Chrome off: linkedin off gmail on",
            "after chatgpt.com on: on",
            "restored: yes",
        };
        EXPECT_EQ(rules::rulesCheck(r), expected);
    }
    platform::JsonDefaults reread(path);
    EXPECT_EQ(reread.boolMap("appOn"), platform::BoolMap{});
    EXPECT_EQ(reread.boolMap("siteOn"), platform::BoolMap{});
}

TEST(RulesCheck, ReflectsSavedSwitches) {
    platform::MemoryDefaults d;
    d.setBoolMap("kindOn", {{"chat", false}});
    d.setBool("otherOn", false);
    d.setBoolMap("siteOn", {{"chatgpt.com", true}});
    rules::AppRules r(d);
    const QStringList lines = rules::rulesCheck(r);
    ASSERT_EQ(lines.size(), 12);
    EXPECT_EQ(lines[0], "off Slack");
    EXPECT_EQ(lines[4], "off Figma (other app)");
    EXPECT_EQ(lines[6], "on  Chrome · chatgpt.com");
    EXPECT_EQ(lines[11], "restored: yes");
    EXPECT_EQ(r.siteOn(), platform::BoolMap{});
}

}  // namespace
