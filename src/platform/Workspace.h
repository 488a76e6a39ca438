#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

namespace platform {

struct RunningApp {
    qint64 pid = 0;
    QString bundleId;  // the catalogue's identifier where the desktop maps it; empty when none
    QString name;      // localized display name; empty when none
    friend bool operator==(const RunningApp&, const RunningApp&) = default;
};

struct InstalledApp {
    QString bundleId;
    QString name;
    QString iconPath;  // empty when none
    QString iconName;  // the name to look up in the desktop's icon theme; empty when none
};

class Workspace {
public:
    virtual ~Workspace() = default;

    virtual std::optional<RunningApp> frontmost() = 0;
    virtual qint64 ownPid() = 0;
    virtual std::vector<RunningApp> running(const QString& bundleId) = 0;

    virtual bool openUrl(const QString& url) = 0;
    // Opens a file with the application of that identifier (the default one when empty).
    virtual bool openFile(const QString& path, const QString& bundleId) = 0;
    virtual std::optional<InstalledApp> installed(const QString& bundleId) = 0;

    // The identifier (as running() reports it) of the user's default text editor; absent when
    // the desktop names none.
    virtual std::optional<QString> textEditor() = 0;
    // Opens the desktop's accessibility settings; false where the desktop has none known.
    virtual bool openAccessibilitySettings() = 0;

    // Starting with the user's session.
    virtual bool loginItemEnabled() = 0;
    virtual bool setLoginItem(bool enabled) = 0;

    // Applications that show their text only when started with a flag (Chromium's family, the
    // Electron applications) start with it from the user's launchers, for the ones wanted says
    // yes to (by identifier) and for no others. Returns the names of the prepared applications.
    virtual std::vector<QString> prepareLaunchers(
        const std::function<bool(const QString& bundleId)>& wanted) = 0;
    // The names the last preparation returned.
    virtual std::vector<QString> preparedLaunchers() = 0;

    // Glimmo's companion in the desktop's shell (the bubble at the caret of native Wayland
    // windows, the menu in a top bar without a tray), installed and switched on where the
    // desktop has one. True while the shell loads it only at the user's next log-in.
    virtual void prepareCompanion() {}
    virtual bool companionAwaitsLogin() { return false; }
    // One line on what this desktop needs for Glimmo, if it says anything.
    virtual QString desktopNote() { return {}; }
};

}  // namespace platform
