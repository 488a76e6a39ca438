#pragma once
// Who a window belongs to: its names, from what the window and its process say about
// themselves, and the display name of its desktop entry.

#include <QString>
#include <map>

#include "platform/Workspace.h"
#include "platform/linux/identity/DesktopEntries.h"
#include "platform/linux/identity/ProcessNames.h"

namespace linuxdesk {

struct WindowFacts {
    qint64 pid = 0;
    QString gtkAppId;    // _GTK_APPLICATION_ID
    QString wmInstance;  // WM_CLASS, first string
    QString wmClass;     // WM_CLASS, second string
};

class AppIdentity {
public:
    explicit AppIdentity(DesktopEntries& entries) : entries_(entries) {}

    // Identifier: what the rules' table of Linux applications makes of the window's names (the
    // GTK application id, the Flatpak or Snap id, the desktop entry's id, the WM_CLASS class and
    // instance, in that order of preference).
    // Name: the desktop entry's localized Name, else the WM_CLASS class.
    platform::RunningApp resolve(const WindowFacts& facts);
    // A process known by nothing but its names (a native Wayland window tells nothing about
    // itself): the launcher's desktop entry, the scope's application id, the sandbox, then the
    // executable. Name: the desktop entry's, else the executable's.
    platform::RunningApp resolve(qint64 pid, const ProcessNames& names);

    // The sandbox a process runs in, read from /proc; empty when none.
    static QString flatpakId(qint64 pid);
    static QString snapName(qint64 pid);

private:
    std::optional<DesktopEntry> entryFor(const WindowFacts& facts, const QString& flatpak,
                                         const QString& snap);

    DesktopEntries& entries_;
    std::map<QString, platform::RunningApp> cache_;
};

}  // namespace linuxdesk
