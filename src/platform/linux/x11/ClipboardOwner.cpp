#include "platform/linux/x11/ClipboardOwner.h"

#include <QFile>

#include "platform/linux/x11/XDisplay.h"

namespace linuxdesk::x11 {

ClipboardOwner::~ClipboardOwner() {
    if (display_) XCloseDisplay(display_);
}

std::optional<qint64> ClipboardOwner::stopped() {
    if (!display_ && !tried_) {
        tried_ = true;
        display_ = open();
    }
    if (!display_) return std::nullopt;
    const Window owner = XGetSelectionOwner(display_, XInternAtom(display_, "CLIPBOARD", False));
    if (owner == 0) return std::nullopt;
    const auto pid = windowPid(display_, owner);
    takeError();
    if (!pid || !processStopped(*pid)) return std::nullopt;
    return pid;
}

bool processStopped(qint64 pid) {
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly)) return false;
    // "pid (name) S ...": the name may hold spaces and parentheses; the state follows the last.
    const QByteArray line = stat.read(4096);
    const int close = line.lastIndexOf(')');
    if (close < 0 || close + 2 >= line.size()) return false;
    const char state = line.at(close + 2);
    return state == 'T' || state == 't';
}

}  // namespace linuxdesk::x11
