#pragma once
// Glimmo's icon and menu in the desktop's own top bar, for desktops that have no tray (GNOME
// without the AppIndicator extension), shown there by the compositor's companion.

#include <QImage>
#include <QString>
#include <functional>
#include <vector>

namespace platform {

struct MenuItem {
    QString title;
    bool separator = false;
    bool checkable = false;
    bool checked = false;
    bool enabled = true;
};

class TopBarMenu {
public:
    virtual ~TopBarMenu() = default;
    // Whether a top bar can show the menu now; it may come later (see onAvailable).
    virtual bool available() const = 0;
    // Shows the icon with these items, or updates what is shown.
    virtual void show(const QImage& icon, const std::vector<MenuItem>& items) = 0;
    virtual void hide() = 0;
    // The user opened the menu (the items may be brought up to date), chose the item at an
    // index, or the top bar came or went.
    virtual void onOpening(std::function<void()> handler) = 0;
    virtual void onChosen(std::function<void(int index)> handler) = 0;
    virtual void onAvailable(std::function<void(bool available)> handler) = 0;
};

}  // namespace platform
