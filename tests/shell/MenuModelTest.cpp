#include <gtest/gtest.h>

#include "rules/AppRules.h"
#include "shell/MenuModel.h"

namespace {

using shell::MenuAction;
using shell::MenuRow;

// One line a row: title, [x] when checked, (off) when disabled; "--" for a separator.
QStringList describe(const std::vector<MenuRow>& rows) {
    QStringList lines;
    for (const MenuRow& row : rows) {
        if (row.separator) {
            lines << "--";
            continue;
        }
        QString line = row.title;
        if (row.checked) line += " [x]";
        if (!row.enabled) line += " (off)";
        lines << line;
    }
    return lines;
}

const MenuRow& rowWith(const std::vector<MenuRow>& rows, MenuAction action) {
    static const MenuRow none;
    for (const MenuRow& row : rows)
        if (row.action == action) return row;
    return none;
}

struct MenuModel : ::testing::Test {
    platform::MemoryDefaults defaults;
    rules::AppRules rules{defaults};
    shell::MenuState state;

    void SetUp() override {
        state.setupFinished = true;
        state.loginEnabled = true;
    }
    std::vector<MenuRow> rows() const { return shell::menuRows(state, rules); }
};

TEST_F(MenuModel, FirstRunWithNothingInFront) {
    state.setupFinished = false;
    state.claudeTrouble = true;  // unfinished setup comes first
    state.loginEnabled = false;
    EXPECT_EQ(describe(rows()),
              QStringList({"Finish setting up Glimmo…", "--", "Suggestions on [x]", "Choose apps…",
                           "--", "About you…", "Open at login", "Quit Glimmo"}));

    state.setupFinished = true;
    state.enabled = false;
    const auto trouble = rows();
    EXPECT_EQ(describe(trouble).mid(0, 3),
              QStringList({"Claude isn't answering: sign in again…", "--", "Suggestions on"}));
    EXPECT_EQ(trouble.front().action, MenuAction::SignInClaude);

    state.claudeTrouble = false;
    EXPECT_EQ(describe(rows()).front(), "Suggestions on");
}

TEST_F(MenuModel, AppInFrontFollowsItsSwitch) {
    state.frontApp = platform::RunningApp{42, "com.tinyspeck.slackmacgap", "Slack"};
    state.frontHost = "example.com";  // not a browser: no site row
    EXPECT_EQ(describe(rows()).mid(1, 2), QStringList({"On in Slack [x]", "Choose apps…"}));

    rules.setApp("com.tinyspeck.slackmacgap", false);
    const MenuRow app = rowWith(rows(), MenuAction::ToggleApp);
    EXPECT_EQ(app.title, "On in Slack");
    EXPECT_FALSE(app.checked);
    EXPECT_EQ(app.value, "com.tinyspeck.slackmacgap");

    // No name: the identifier stands in; no identifier: no row at all.
    state.frontApp = platform::RunningApp{43, "org.example.Notes", ""};
    EXPECT_EQ(rowWith(rows(), MenuAction::ToggleApp).title, "On in org.example.Notes");
    state.frontApp = platform::RunningApp{44, "", "Unknown"};
    EXPECT_EQ(describe(rows()).mid(0, 2), QStringList({"Suggestions on [x]", "Choose apps…"}));
}

TEST_F(MenuModel, LockedPasswordManagerIsAlwaysOff) {
    state.frontApp = platform::RunningApp{7, "com.1password.1password", "1Password"};
    const auto menu = rows();
    EXPECT_EQ(describe(menu).mid(1, 2),
              QStringList({"Always off in 1Password (off)", "Choose apps…"}));
    EXPECT_EQ(menu.at(1).action, MenuAction::None);
}

TEST_F(MenuModel, BrowserHostWithoutItsWwwLabel) {
    state.frontApp = platform::RunningApp{9, "com.google.Chrome", "Google Chrome"};
    state.frontHost = "www.linkedin.com";
    EXPECT_EQ(describe(rows()).mid(1, 2),
              QStringList({"On in Google Chrome [x]", "On on linkedin.com [x]"}));
    EXPECT_EQ(rowWith(rows(), MenuAction::ToggleSite).value, "www.linkedin.com");

    // The site row follows the site's own switch once there is one, else the browser's.
    rules.setSite("www.linkedin.com", false);
    EXPECT_FALSE(rowWith(rows(), MenuAction::ToggleSite).checked);
    EXPECT_TRUE(rowWith(rows(), MenuAction::ToggleApp).checked);
    state.frontHost = "wwwexample.org";
    EXPECT_EQ(rowWith(rows(), MenuAction::ToggleSite).title, "On on wwwexample.org");
    rules.setApp("com.google.Chrome", false);
    EXPECT_FALSE(rowWith(rows(), MenuAction::ToggleSite).checked);

    state.frontHost.reset();
    EXPECT_EQ(rowWith(rows(), MenuAction::ToggleSite).action, MenuAction::None);
}

TEST(SetupFinished, NeedsNameTrustAndClaude) {
    platform::MemoryDefaults defaults;
    EXPECT_FALSE(shell::setupFinished(defaults, true, true));
    defaults.setString("name", "Alex");
    EXPECT_TRUE(shell::setupFinished(defaults, true, true));
    EXPECT_FALSE(shell::setupFinished(defaults, false, true));
    EXPECT_FALSE(shell::setupFinished(defaults, true, false));

    EXPECT_TRUE(shell::suggestionsEnabled(defaults));
    defaults.setString("enabled", "no");
    EXPECT_TRUE(shell::suggestionsEnabled(defaults));
    defaults.setBool("enabled", false);
    EXPECT_FALSE(shell::suggestionsEnabled(defaults));
}

}  // namespace
