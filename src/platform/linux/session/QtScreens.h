#pragma once
// platform::Screens from Qt's screen list, the primary screen first, in Qt's device-independent
// pixels: the X11 root's pixels divided by Glimmo's own scale (QT_SCALE_FACTOR, Xft.dpi).

#include "platform/Screens.h"

namespace linuxdesk {

class QtScreens : public platform::Screens {
public:
    std::vector<platform::Screen> screens() override;
    std::optional<platform::Screen> main() override;
    // On X11, whether a compositing manager holds the screen's _NET_WM_CM_S<n> selection (a bare
    // window manager such as openbox on Xvfb does not). Asked afresh each time, since a
    // compositor may start or quit at any moment and the question is one round trip. Qt on
    // Wayland blends every window, so anything but X11 counts as composited.
    bool composited() override;
};

}  // namespace linuxdesk
