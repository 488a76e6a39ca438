#pragma once
// Whether a compositing manager draws the X screen Glimmo's windows are on.

#include <optional>

namespace linuxdesk::x11 {

// Whether a compositing manager holds the screen's _NET_WM_CM_S<n> selection (a bare window
// manager such as openbox on Xvfb does not); absent when Qt is not on X11.
std::optional<bool> compositorRunning();

}  // namespace linuxdesk::x11
