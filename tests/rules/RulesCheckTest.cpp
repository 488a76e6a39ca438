#include <gtest/gtest.h>

#include "platform/Defaults.h"
#include "rules/RulesCheck.h"

namespace {

// That the program's -rulesTest leaves the stored switches as they were is checked by running it.
TEST(RulesCheck, FreshStore) {
    platform::MemoryDefaults d;
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
