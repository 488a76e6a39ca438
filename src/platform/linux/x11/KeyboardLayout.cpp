#include "platform/linux/x11/KeyboardLayout.h"

#include <QStringList>

#include "platform/linux/x11/XDisplay.h"  // last: Xlib's macros

#include <X11/XKBlib.h>

namespace linuxdesk::x11 {

QString activeLayout() {
    Display* d = x11::open();
    if (!d) return {};
    XkbStateRec state;
    int group = XkbGetState(d, XkbUseCoreKbd, &state) == Success ? state.group : 0;
    // _XKB_RULES_NAMES: rules, model, layouts, variants, options, separated by NULs.
    const QString names = x11::stringProperty(d, DefaultRootWindow(d), "_XKB_RULES_NAMES");
    XCloseDisplay(d);
    const QStringList parts = names.split(QChar(0));
    if (parts.size() < 3) return {};
    const QStringList layouts = parts[2].split(',');
    if (group < 0 || group >= layouts.size()) group = 0;
    return layouts.value(group).trimmed();
}

}  // namespace linuxdesk::x11
