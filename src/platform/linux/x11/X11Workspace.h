#pragma once
// platform::Workspace on an X11 session (XWayland included): the active window says which
// application is frontmost; desktop entries give names, icons and launches.

#include <QElapsedTimer>

#include "platform/Workspace.h"
#include "platform/linux/identity/AppIdentity.h"
#include "platform/linux/identity/DesktopEntries.h"
#include "platform/linux/identity/ReadableLaunchers.h"
#include "platform/linux/identity/ShellCompanion.h"

struct _XDisplay;

namespace linuxdesk {

class X11Workspace : public platform::Workspace {
public:
    X11Workspace();
    ~X11Workspace() override;
    X11Workspace(const X11Workspace&) = delete;
    X11Workspace& operator=(const X11Workspace&) = delete;

    std::optional<platform::RunningApp> frontmost() override;
    qint64 ownPid() override;
    std::vector<platform::RunningApp> running(const QString& bundleId) override;
    bool openUrl(const QString& url) override;
    bool openFile(const QString& path, const QString& bundleId) override;
    std::optional<platform::InstalledApp> installed(const QString& bundleId) override;
    std::optional<QString> textEditor() override;
    bool openAccessibilitySettings() override;
    bool loginItemEnabled() override;
    bool setLoginItem(bool enabled) override;
    std::vector<QString> prepareLaunchers(
        const std::function<bool(const QString& bundleId)>& wanted) override {
        return launchers_.prepare(wanted);
    }
    std::vector<QString> preparedLaunchers() override { return launchers_.prepared(); }
    void prepareCompanion() override { companion_.prepare(); }
    bool companionAwaitsLogin() override { return companion_.awaitsLogin(); }

    // The autostart entry's path: $XDG_CONFIG_HOME/autostart/glimmo.desktop.
    static QString loginItemPath();

private:
    std::optional<platform::RunningApp> appOf(unsigned long window);
    std::optional<DesktopEntry> entryFor(const QString& bundleId);

    // The active window's application, kept while the same window stays active: the window's
    // process and class never change, and asking costs three round trips on every poll.
    struct Last {
        unsigned long window = 0;
        std::optional<platform::RunningApp> app;
        QElapsedTimer age;
    };

    _XDisplay* display_ = nullptr;
    Last last_;
    DesktopEntries entries_;
    AppIdentity identity_{entries_};
    ReadableLaunchers launchers_;
    ShellCompanion companion_;
};

}  // namespace linuxdesk
