#pragma once
// The tray menu as plain rows, computed from the state of the moment it opens. The tray turns
// the rows into a QMenu; tests read them directly.

#include <QString>
#include <optional>
#include <vector>

#include "platform/Defaults.h"
#include "platform/Workspace.h"

namespace rules {
class AppRules;
}

namespace shell {

enum class MenuAction {
    None,
    ShowSetup,
    SignInClaude,
    Toggle,
    ToggleApp,
    ToggleSite,
    ShowApps,
    EditProfile,
    ToggleLogin,
    Quit
};

struct MenuRow {
    QString title;  // empty for a separator
    MenuAction action = MenuAction::None;
    bool separator = false;
    bool checkable = false;
    bool checked = false;
    bool enabled = true;
    QString value;  // the application identifier or the full host the toggle acts on
};

struct MenuState {
    bool setupFinished = false;
    bool claudeTrouble = false;
    bool enabled = true;  // the global "enabled" switch
    std::optional<platform::RunningApp> frontApp;
    std::optional<QString> frontHost;
    bool loginEnabled = false;
};

std::vector<MenuRow> menuRows(const MenuState& state, const rules::AppRules& rules);

// Finished when a name is saved, accessibility is on and a claude program is found.
bool setupFinished(const platform::Defaults& defaults, bool trusted, bool hasClaude);
// The global switch: a missing or non-boolean value counts as on.
bool suggestionsEnabled(const platform::Defaults& defaults);
// The host as the menu shows it: without a leading "www." label.
QString shownHost(const QString& host);

}  // namespace shell
