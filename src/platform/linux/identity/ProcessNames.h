#pragma once
// The names a process goes by when no window of it says who it is (a native Wayland window has
// no WM_CLASS or _NET_WM_PID to read): what its launcher, its systemd scope and its executable
// tell about it, read from its /proc folder.

#include <QString>

namespace linuxdesk {

struct ProcessNames {
    QString desktopId;  // the launcher's desktop entry (GIO_LAUNCHED_DESKTOP_FILE), without .desktop
    QString scopeId;    // the application id in its systemd scope or service name
    QString exe;        // the executable's file name
};

// procRoot: where the process folders are (/proc; tests give a folder of their own).
ProcessNames processNames(qint64 pid, const QString& procRoot = QStringLiteral("/proc"));

// The application id in a cgroup path's last systemd unit: app[-<launcher>]-<id>-<n>.scope or
// app[-<launcher>]-<id>[@<n>].service, with "\x2d" standing for a dash inside the id.
QString scopeAppId(const QString& cgroup);

}  // namespace linuxdesk
