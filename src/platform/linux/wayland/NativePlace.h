#pragma once
// Where the bubble goes for a native Wayland window. Its text positions come relative to its
// own window, and no Wayland client learns where another's window is, so the caret's place on
// the screen is unknown. Rather than a guess that lands anywhere, the bubble sits at one fixed
// place: centred at the bottom of the main screen, just above its panels.

#include "platform/Geometry.h"
#include "platform/Screens.h"

namespace linuxdesk {

// A caret rectangle that the bubble's placement turns into that place: the widest bubble
// centred, narrower ones from the same left edge, all above the caret.
platform::Rect nativeCaret(const platform::Screen& screen);

}  // namespace linuxdesk
