#pragma once
// The X server's keyboard layout in use.

#include <QString>

namespace linuxdesk::x11 {

// The layout of the keyboard's active group ("de", "fr", ...); empty without an X server.
QString activeLayout();

}  // namespace linuxdesk::x11
