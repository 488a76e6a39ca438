#pragma once
// The accessibility bus's address on the X root window (AT_SPI_BUS), where Qt 5 looks for it.
//
// Qt 5 (Debian's 5.15) joins the accessibility bus reliably only when AT_SPI_BUS is on the root
// window as it starts: it then connects at once, whatever the bus's status properties say.
// Without it, Qt 5 asks org.a11y.Bus for the address and reads "IsEnabled" and
// "ScreenReaderEnabled" once; with either on, a check queued by Debian's patch registers the
// application before that answer arrives, on a connection not yet open, and the application
// stays off the bus until it is restarted. It never looks at the properties again (only a new
// owner of org.a11y.Bus makes it ask afresh), and no variable in its environment avoids the
// race. The bus launcher writes the property only when it starts the bus itself with DISPLAY
// set and no Wayland display; a launcher started by D-Bus activation, or in a Wayland session
// (Xwayland's root), leaves it out. So Glimmo writes it: the same address the launcher hands out.

#include <QString>

namespace linuxdesk::x11 {

// Puts address on the root window as AT_SPI_BUS unless it is there already; false without an
// X server.
bool publishAccessibilityBus(const QString& address);

}  // namespace linuxdesk::x11
