#include "platform/linux/x11/Compositor.h"

#include <QByteArray>
#include <QGuiApplication>

#include "platform/linux/x11/XDisplay.h"  // last: Xlib's macros

namespace linuxdesk::x11 {

std::optional<bool> compositorRunning() {
    const auto* app = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    const auto* native = app ? app->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    Display* display = native ? native->display() : nullptr;
    if (!display) return std::nullopt;
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(DefaultScreen(display));
    // Without the atom no compositor has ever run on this server.
    const Atom selection = XInternAtom(display, name.constData(), True);
    return selection != 0 && XGetSelectionOwner(display, selection) != 0;
}

}  // namespace linuxdesk::x11
