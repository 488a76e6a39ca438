#pragma once
// Where the bubble goes for a native Wayland window. Its text positions come relative to its
// own window, and no Wayland client learns where another's window is: the compositor companion
// tells it, and the caret is then placed exactly. Without a companion, rather than a guess
// that lands anywhere, the bubble sits at one fixed place: centred at the bottom of the main
// screen, just above its panels.

#include "platform/Geometry.h"
#include "platform/Screens.h"

namespace linuxdesk {

// A caret rectangle that the bubble's placement turns into that place: the widest bubble
// centred, narrower ones from the same left edge, all above the caret.
platform::Rect nativeCaret(const platform::Screen& screen);

// A rectangle in a window's own coordinates, in the compositor's global ones: the window's
// surface origin plus the offset at the window's scale. The X display Glimmo's windows use
// shares those coordinates.
platform::Rect inCompositor(const platform::Rect& inWindow, const platform::Rect& surface,
                            double scale);

}  // namespace linuxdesk
