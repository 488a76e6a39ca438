#include "shell/MenuModel.h"

#include "main/Constants.h"
#include "rules/AppRules.h"

namespace shell {

bool setupFinished(const platform::Defaults& defaults, bool trusted, bool hasClaude) {
    return !defaults.string(QStringLiteral("name")).value_or(QString()).isEmpty() && trusted &&
           hasClaude;
}

bool suggestionsEnabled(const platform::Defaults& defaults) {
    return defaults.boolValue(QStringLiteral("enabled")).value_or(true);
}

QString shownHost(const QString& host) {
    return host.startsWith(QStringLiteral("www.")) ? host.mid(4) : host;
}

std::vector<MenuRow> menuRows(const MenuState& state, const rules::AppRules& rules) {
    std::vector<MenuRow> rows;
    const auto add = [&rows](QString title, MenuAction action) -> MenuRow& {
        rows.push_back(MenuRow{std::move(title), action});
        return rows.back();
    };
    const auto separator = [&rows] { rows.push_back(MenuRow{{}, MenuAction::None, true}); };

    if (!state.setupFinished) {
        add(QStringLiteral("Finish setting up Glimmo…"), MenuAction::ShowSetup);
        separator();
    } else if (state.claudeTrouble) {
        add(QStringLiteral("Claude isn't answering: sign in again…"), MenuAction::SignInClaude);
        separator();
    }

    MenuRow& toggle = add(QStringLiteral("Suggestions on"), MenuAction::Toggle);
    toggle.checkable = true;
    toggle.checked = state.enabled;

    if (state.frontApp && !state.frontApp->bundleId.isEmpty()) {
        const QString id = state.frontApp->bundleId;
        const QString name = state.frontApp->name.isEmpty() ? id : state.frontApp->name;
        const auto kind = rules.kindOf(id);
        const bool locked = kind && kind->locked;
        MenuRow& app =
            add((locked ? QStringLiteral("Always off in ") : QStringLiteral("On in ")) + name,
                locked ? MenuAction::None : MenuAction::ToggleApp);
        app.checkable = true;
        app.checked = rules.appState(id);
        app.enabled = !locked;
        app.value = id;

        if (glimmo::browsers().contains(id) && state.frontHost) {
            MenuRow& site =
                add(QStringLiteral("On on ") + shownHost(*state.frontHost), MenuAction::ToggleSite);
            site.checkable = true;
            site.checked = rules.isOn(id, *state.frontHost);
            site.value = *state.frontHost;
        }
    }

    add(QStringLiteral("Choose apps…"), MenuAction::ShowApps);
    separator();
    add(QStringLiteral("About you…"), MenuAction::EditProfile);
    MenuRow& login = add(QStringLiteral("Open at login"), MenuAction::ToggleLogin);
    login.checkable = true;
    login.checked = state.loginEnabled;
    add(QStringLiteral("Quit Glimmo"), MenuAction::Quit);
    return rows;
}

}  // namespace shell
