#pragma once
// Glimmo's side of the companion inside the compositor (the GNOME Shell extension in
// companion/): where the focused window is, the four keys while something is on screen, and
// Glimmo's menu in the top bar where no tray exists. Calls are short and answered by the
// compositor itself, which is never a stuck application; a compositor that does not answer in
// time counts as no companion for that call.

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <optional>

#include "platform/Geometry.h"

namespace linuxdesk {

class Companion : public QObject {
    Q_OBJECT
public:
    static const char* const serviceName;

    explicit Companion(QObject* parent = nullptr);

    // Whether a companion is on the bus (it comes and goes with the shell and the extension).
    bool present() const { return present_; }

    struct Window {
        qint64 pid = 0;
        bool wayland = false;
        platform::Rect frame;   // what the user sees as the window
        platform::Rect buffer;  // its whole surface, shadows included
        double scale = 1;
    };
    // The focused window; absent without a companion or a focused window. Kept for a moment,
    // since placing the bubble asks several times in a row.
    std::optional<Window> focusedWindow();

    void wantKeys(bool wanted);
    void passKey(const QString& key);
    // "ctrl+v" or "ctrl+a", pressed for the focused window.
    void pressShortcut(const QString& shortcut);

    void setMenu(const QString& iconPath, const QString& rowsJson);
    void hideMenu();

signals:
    void presentChanged(bool present);
    void keyPressed(const QString& key);
    void menuOpening();
    void menuActivated(int row);

private slots:
    void onKeyPressed(const QString& key);
    void onMenuOpening();
    void onMenuActivated(int row);

private:
    void appeared();
    void greeted(const QDBusMessage& answer);
    void call(const char* method, const QVariantList& args = {});

    QDBusServiceWatcher watcher_;
    bool present_ = false;
    bool keysWanted_ = false;
    std::optional<Window> window_;
    QElapsedTimer windowAge_;
};

class NativeRoute;
// Whether the frontmost native window is edited as on X11, by selection, clipboard and a real
// paste, which the companion presses: a web browser's, whose page editors ignore text put in
// any other way.
bool pastesForReal(const NativeRoute& route, const Companion& companion);

}  // namespace linuxdesk
