#include "platform/linux/x11/X11Workspace.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QUrl>
#include <algorithm>
#include <set>

#include "main/Paths.h"
#include "platform/LinuxApps.h"
#include "platform/linux/identity/DesktopSettings.h"
#include "platform/linux/x11/XDisplay.h"

namespace linuxdesk {

namespace {

// The Exec line of a desktop entry with its field codes: files for %f/%F/%u/%U, nothing for
// the others (icon, name and location codes only decorate a launch).
QStringList execArguments(const QString& exec, const QString& file) {
    QStringList out;
    bool placed = false;
    for (QString arg : QProcess::splitCommand(exec)) {
        if (arg == "%f" || arg == "%F" || arg == "%u" || arg == "%U") {
            if (!file.isEmpty()) out << file;
            placed = true;
            continue;
        }
        if (arg.size() == 2 && arg.startsWith('%')) continue;
        arg.replace("%%", "%");
        out << arg;
    }
    if (!placed && !file.isEmpty()) out << file;
    return out;
}

}  // namespace

X11Workspace::X11Workspace() : display_(x11::open()) {}

X11Workspace::~X11Workspace() {
    if (display_) XCloseDisplay(display_);
}

qint64 X11Workspace::ownPid() {
    return QCoreApplication::applicationPid();
}

std::optional<platform::RunningApp> X11Workspace::appOf(unsigned long window) {
    const auto pid = x11::windowPid(display_, window);
    if (!pid) return std::nullopt;
    WindowFacts facts;
    facts.pid = *pid;
    facts.gtkAppId = x11::stringProperty(display_, window, "_GTK_APPLICATION_ID");
    std::tie(facts.wmInstance, facts.wmClass) = x11::wmClass(display_, window);
    return identity_.resolve(facts);
}

std::optional<platform::RunningApp> X11Workspace::frontmost() {
    if (!display_) return std::nullopt;
    const auto active =
        x11::windowProperty(display_, DefaultRootWindow(display_), "_NET_ACTIVE_WINDOW");
    if (!active) return std::nullopt;
    // Window ids are reused only after a window is gone; a few seconds bound that risk.
    if (last_.window == *active && last_.app && last_.age.elapsed() < 5000) return last_.app;
    // Mutter 48 names a window of its own active (1x1, off screen) while a native Wayland window
    // has the focus: only a window the manager lists as a client is an application's (every
    // manager that names the active window keeps that list; it is empty when no X11 client runs).
    const auto clients =
        x11::windowListProperty(display_, DefaultRootWindow(display_), "_NET_CLIENT_LIST");
    if (std::find(clients.begin(), clients.end(), *active) == clients.end()) {
        x11::takeError();
        return std::nullopt;
    }
    auto app = appOf(*active);
    x11::takeError();
    last_.window = *active;
    last_.app = app;
    last_.age.start();
    return app;
}

std::vector<platform::RunningApp> X11Workspace::running(const QString& bundleId) {
    std::vector<platform::RunningApp> out;
    if (!display_) return out;
    std::set<qint64> seen;
    for (Window w :
         x11::windowListProperty(display_, DefaultRootWindow(display_), "_NET_CLIENT_LIST")) {
        auto app = appOf(w);
        if (app && app->bundleId == bundleId && seen.insert(app->pid).second) out.push_back(*app);
    }
    x11::takeError();
    return out;
}

bool X11Workspace::openUrl(const QString& url) {
    return QDesktopServices::openUrl(QUrl(url));
}

std::optional<DesktopEntry> X11Workspace::entryFor(const QString& bundleId) {
    if (bundleId.isEmpty()) return std::nullopt;
    for (const QString& name : platform::linuxNamesOf(bundleId)) {
        if (auto e = entries_.byId(name)) return e;
        if (auto e = entries_.byWmClass({name})) return e;
    }
    return std::nullopt;
}

bool X11Workspace::openFile(const QString& path, const QString& bundleId) {
    if (bundleId.isEmpty()) return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    const auto entry = entryFor(bundleId);
    if (!entry || entry->exec.isEmpty()) return false;
    QStringList args = execArguments(entry->exec, path);
    if (args.isEmpty()) return false;
    const QString program = args.takeFirst();
    return QProcess::startDetached(program, args);
}

std::optional<platform::InstalledApp> X11Workspace::installed(const QString& bundleId) {
    const auto entry = entryFor(bundleId);
    if (!entry) return std::nullopt;
    // An absolute Icon is a file, not a theme name.
    const bool file = QFileInfo(entry->icon).isAbsolute();
    return platform::InstalledApp{bundleId, entry->name, DesktopEntries::iconPath(entry->icon),
                                  file ? QString() : entry->icon};
}

std::optional<QString> X11Workspace::textEditor() {
    const auto id = defaultApplication(QStringLiteral("text/plain"));
    if (!id) return std::nullopt;
    // Under the identifier running() reports for the editor's windows.
    return platform::appIdFor({*id});
}

bool X11Workspace::openAccessibilitySettings() {
    return linuxdesk::openAccessibilitySettings();
}

QString X11Workspace::loginItemPath() {
    QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (config.isEmpty()) config = glimmo::homeDir() + "/.config";
    return config + "/autostart/glimmo.desktop";
}

bool X11Workspace::loginItemEnabled() {
    QFile f(loginItemPath());
    if (!f.open(QIODevice::ReadOnly)) return false;
    const QByteArray content = f.readAll();
    return !content.contains("\nHidden=true") &&
           !content.contains("X-GNOME-Autostart-enabled=false");
}

bool X11Workspace::setLoginItem(bool enabled) {
    const QString path = loginItemPath();
    if (!enabled) return !QFileInfo::exists(path) || QFile::remove(path);
    QDir().mkpath(QFileInfo(path).absolutePath());
    QString exec = QCoreApplication::applicationFilePath();
    if (exec.contains(' ')) exec = '"' + exec + '"';
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly)) return false;
    f.write("[Desktop Entry]\nType=Application\nName=Glimmo\nComment=Writing assistant\nExec=" +
            exec.toUtf8() + "\nIcon=glimmo\nTerminal=false\nX-GNOME-Autostart-enabled=true\n");
    return f.commit();
}

}  // namespace linuxdesk
