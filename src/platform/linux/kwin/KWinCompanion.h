#pragma once
// The companion in Plasma's Wayland session: a script of Glimmo's that KWin runs
// (companion/kwin), loaded over D-Bus when Glimmo starts and unloaded when it quits, which
// tells Glimmo where the active window is; the keys through KDE's global shortcuts; keys
// handed back and pastes pressed through KWin's fake-input protocol. Plasma has a tray, so
// nothing is drawn in a top bar.

#include <QDBusContext>
#include <QString>

#include "platform/linux/kwin/FakeInput.h"
#include "platform/linux/kwin/KdeShortcuts.h"
#include "platform/linux/wayland/Companion.h"

namespace linuxdesk {

class KWinCompanion : public Companion, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "io.glimmo.KWin")
public:
    // Whether KWin is the compositor of this (Wayland) session.
    static bool running();
    // The script $GLIMMO_KWIN_COMPANION names, or the one beside the program (a build) or in
    // its share folder (installed); empty if none has it.
    static QString scriptPath(const QString& binDir);

    explicit KWinCompanion(const QString& script, QObject* parent = nullptr);
    ~KWinCompanion() override;

    bool present() const override { return present_; }
    std::optional<Window> focusedWindow() override { return window_; }
    void passKey(const QString& key) override;
    void pressShortcut(const QString& shortcut) override;

public slots:
    // Called by the script: the active window as JSON, see companion/kwin/companion.js.
    Q_SCRIPTABLE void ActiveWindow(const QString& json);

protected:
    void takeKeys(bool wanted) override;

private:
    void load(const QString& script, int attempt);
    void unload();

    KdeShortcuts shortcuts_;
    FakeInput fakeInput_;
    bool present_ = false;
    bool loaded_ = false;
    std::optional<Window> window_;
};

}  // namespace linuxdesk
