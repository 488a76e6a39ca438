#pragma once
// Glimmo's side of its companion inside the compositor: where the focused window is, the four
// keys while something is on screen, and Glimmo's menu in the top bar where no tray exists.
// GNOME Shell runs an extension of Glimmo's (GnomeCompanion), KWin a script of Glimmo's
// (KWinCompanion); a desktop with neither has an absent companion.

#include <QObject>
#include <QString>
#include <memory>
#include <optional>

#include "platform/Geometry.h"

namespace linuxdesk {

class Companion : public QObject {
    Q_OBJECT
public:
    // The companion of the compositor this session runs.
    static std::unique_ptr<Companion> forSession();

    // Whether a companion is there (it comes and goes with the compositor and the extension).
    virtual bool present() const = 0;
    // Whether it draws Glimmo's menu in a top bar (GNOME has no tray).
    virtual bool drawsMenu() const { return false; }

    struct Window {
        qint64 pid = 0;
        bool wayland = false;
        // The window the toolkit draws, without its shadows and inside any title bar the
        // compositor adds (GTK 4 counts from here).
        platform::Rect frame;
        platform::Rect buffer;  // its whole surface, shadows included
        double scale = 1;
    };
    // The focused window; absent without a companion or a focused window.
    virtual std::optional<Window> focusedWindow() = 0;

    // Tab, Esc and the arrows taken before any window sees them while wanted.
    void wantKeys(bool wanted) {
        if (wanted == keysWanted_) return;
        keysWanted_ = wanted;
        takeKeys(wanted);
    }
    virtual void passKey(const QString& key) = 0;
    // "ctrl+v" or "ctrl+a", pressed for the focused window.
    virtual void pressShortcut(const QString& shortcut) = 0;

    virtual void setMenu(const QString& /*iconPath*/, const QString& /*rowsJson*/) {}
    virtual void hideMenu() {}

signals:
    void presentChanged(bool present);
    // One of "Tab", "Escape", "Up", "Down", taken while keys are wanted.
    void keyPressed(const QString& key);
    void menuOpening();
    void menuActivated(int row);

protected:
    using QObject::QObject;

    bool keysWanted() const { return keysWanted_; }
    // Asks the compositor to take the keys, or to give them back.
    virtual void takeKeys(bool wanted) = 0;
    // A key the compositor took: the engine's while keys are wanted; one that crossed the
    // letting go is handed on to the window.
    void taken(const QString& key) {
        if (keysWanted_)
            emit keyPressed(key);
        else
            passKey(key);
    }

private:
    bool keysWanted_ = false;
};

class NativeRoute;
// Whether the frontmost native window is edited as on X11, by selection, clipboard and a real
// paste, which the companion presses: a web browser's, whose page editors ignore text put in
// any other way.
bool pastesForReal(const NativeRoute& route, const Companion& companion);

}  // namespace linuxdesk
