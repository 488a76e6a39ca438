#pragma once
// platform::Workspace of a Wayland session: the frontmost application comes from NativeRoute
// (an X11 window's or a native one's); everything else is X11Workspace's, as on X11.

#include "platform/Workspace.h"

namespace linuxdesk {

class NativeRoute;
class X11Workspace;

class RoutedWorkspace : public platform::Workspace {
public:
    RoutedWorkspace(NativeRoute& route, X11Workspace& x11) : route_(route), x11_(x11) {}
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
        const std::function<bool(const QString& bundleId)>& wanted) override;
    std::vector<QString> preparedLaunchers() override;
    void prepareCompanion() override;
    bool companionAwaitsLogin() override;
    QString desktopNote() override;

private:
    NativeRoute& route_;
    X11Workspace& x11_;
};

}  // namespace linuxdesk
