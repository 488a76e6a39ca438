#pragma once
// The tray item and everything hung on it: the icon (refreshed every 2 seconds), the menu that is
// rebuilt each time it opens, and the actions of its rows.

#include <QObject>
#include <QTimer>
#include <memory>

#include "platform/Platform.h"
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
         Windows& windows, QObject* parent = nullptr);
    ~Tray() override;

    // Puts the item in the tray with its menu; false when the desktop has no tray at all.
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

    engine::Glimmo& engine_;
    platform::Platform& platform_;
    rules::AppRules& rules_;
    Windows& windows_;
    std::unique_ptr<QMenu> menu_;
    QSystemTrayIcon* item_ = nullptr;
    QTimer iconTimer_;
};

}  // namespace shell
