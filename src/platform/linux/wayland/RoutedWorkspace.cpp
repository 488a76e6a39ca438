#include "platform/linux/wayland/RoutedWorkspace.h"

#include "platform/linux/wayland/NativeRoute.h"
#include "platform/linux/x11/X11Workspace.h"

namespace linuxdesk {

std::optional<platform::RunningApp> RoutedWorkspace::frontmost() {
    return route_.frontmost();
}
qint64 RoutedWorkspace::ownPid() {
    return x11_.ownPid();
}
std::vector<platform::RunningApp> RoutedWorkspace::running(const QString& bundleId) {
    return x11_.running(bundleId);
}
bool RoutedWorkspace::openUrl(const QString& url) {
    return x11_.openUrl(url);
}
bool RoutedWorkspace::openFile(const QString& path, const QString& bundleId) {
    return x11_.openFile(path, bundleId);
}
std::optional<platform::InstalledApp> RoutedWorkspace::installed(const QString& bundleId) {
    return x11_.installed(bundleId);
}
std::optional<QString> RoutedWorkspace::textEditor() {
    return x11_.textEditor();
}
bool RoutedWorkspace::openAccessibilitySettings() {
    return x11_.openAccessibilitySettings();
}
bool RoutedWorkspace::loginItemEnabled() {
    return x11_.loginItemEnabled();
}
bool RoutedWorkspace::setLoginItem(bool enabled) {
    return x11_.setLoginItem(enabled);
}
std::vector<QString> RoutedWorkspace::prepareLaunchers(
    const std::function<bool(const QString& bundleId)>& wanted) {
    return x11_.prepareLaunchers(wanted);
}
std::vector<QString> RoutedWorkspace::preparedLaunchers() {
    return x11_.preparedLaunchers();
}

void RoutedWorkspace::prepareCompanion() {
    x11_.prepareCompanion();
}
bool RoutedWorkspace::companionAwaitsLogin() {
    return x11_.companionAwaitsLogin();
}

QString RoutedWorkspace::desktopNote() {
    // Plasma's KWin takes Glimmo's script while Glimmo runs; its launcher entry, which every
    // install writes, lets it type for the user.
    if (qEnvironmentVariable("XDG_CURRENT_DESKTOP").contains(QLatin1String("KDE")))
        return QStringLiteral("On Plasma there is nothing more to set up.");
    return {};
}

}  // namespace linuxdesk
