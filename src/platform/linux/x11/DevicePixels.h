#pragma once
// From the X screen's device pixels, which applications report in, to Qt's device-independent
// pixels, which Glimmo's windows and platform::Screens count in (the root's pixels divided by
// Glimmo's own scale: QT_SCALE_FACTOR, Xft.dpi).

#include "platform/Geometry.h"

namespace linuxdesk {

// Qt keeps each screen's top-left where it is and scales the rest from there.
platform::Rect fromDevicePixels(const platform::Rect& r);

// The right edge of the X display, in its device pixels; 0 without Qt's screens.
double deviceRight();

}  // namespace linuxdesk
