#include <gtest/gtest.h>

#include "platform/Defaults.h"
#include "rules/RulesCheck.h"

namespace {

// The fresh store's lines, and that the program's -rulesTest leaves the stored switches as they
// were, are checked by running the program.
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
