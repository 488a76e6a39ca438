#include "platform/linux/x11/AccessibilityBusAtom.h"

#include <QByteArray>

#include "platform/linux/x11/XDisplay.h"  // last: Xlib's macros

#include <X11/Xatom.h>

namespace linuxdesk::x11 {

bool publishAccessibilityBus(const QString& address) {
    Display* d = x11::open();
    if (!d) return false;
    const Window root = DefaultRootWindow(d);
    if (stringProperty(d, root, "AT_SPI_BUS") != address) {
        const QByteArray bytes = address.toUtf8();
        XChangeProperty(d, root, XInternAtom(d, "AT_SPI_BUS", False), XA_STRING, 8,
                        PropModeReplace, reinterpret_cast<const unsigned char*>(bytes.constData()),
                        int(bytes.size()));
    }
    XCloseDisplay(d);  // flushes the change
    return !takeError();
}

}  // namespace linuxdesk::x11
