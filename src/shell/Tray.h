#pragma once
// The tray item and everything hung on it: the icon (refreshed every 2 seconds), the menu that is
// rebuilt each time it opens, and the actions of its rows. Where the desktop has no tray but
// its top bar can hold a menu (GNOME with Glimmo's companion), the same rows go there.

#include <QObject>
#include <QTimer>
#include <memory>

#include "platform/Platform.h"
#include "platform/TopBarMenu.h"
#include "shell/MenuModel.h"

class QMenu;
class QSystemTrayIcon;

namespace engine {
class Glimmo;
}
namespace rules {
class AppRules;
}

namespace shell {

class Windows;

class Tray : public QObject {
    Q_OBJECT
public:
    Tray(engine::Glimmo& engine, platform::Platform& platform, rules::AppRules& rules,
         Windows& windows, platform::TopBarMenu* topBar = nullptr, QObject* parent = nullptr);
    ~Tray() override;

    // Puts the item in the tray with its menu, or in the top bar where there is no tray; false
    // when the desktop has neither.
    bool show();
    // Starts the 2-second icon refresh.
    void startIconTimer();

    MenuState state() const;
    bool setupFinished() const;
    void refreshIcon();
    void rebuildMenu();

    // The actions of the menu.
    void toggle();
    void toggleApp(const QString& app);
    void toggleSite(const QString& host);
    void toggleLogin();
    void signInClaude();
    void editProfile();
    // Ends the waiting claude process, so the next request starts one with the current profile.
    void endWarm();

    QMenu* menu() const { return menu_.get(); }

signals:
    void quitRequested();

private:
    void run(const MenuRow& row);
    // The top bar's menu while the desktop has no tray: shown, updated or taken away.
    void showInTopBar();
    bool useTopBar() const;

    engine::Glimmo& engine_;
    platform::Platform& platform_;
    rules::AppRules& rules_;
    Windows& windows_;
    std::unique_ptr<QMenu> menu_;
    QSystemTrayIcon* item_ = nullptr;
    QTimer iconTimer_;
    platform::TopBarMenu* topBar_ = nullptr;
    std::vector<MenuRow> topBarRows_;     // what the top bar shows, by index
    std::optional<int> topBarIconState_;  // the icon's state the top bar has

};

}  // namespace shell
