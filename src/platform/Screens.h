#pragma once

#include <optional>
#include <vector>

#include "platform/Geometry.h"

namespace platform {

// Frames in desktop coordinates (top-left origin of the primary screen, y downwards). The
// visible frame leaves out panels and docks.
struct Screen {
    Rect frame;
    Rect visible;
};

class Screens {
public:
    virtual ~Screens() = default;
    // The primary screen first; empty when the desktop reports none.
    virtual std::vector<Screen> screens() = 0;
    virtual std::optional<Screen> main() = 0;
    // Whether a compositor blends windows with what lies beneath them. Without one, the
    // see-through parts of a window (rounded corners, soft shadows) show black.
    virtual bool composited() { return true; }
};

}  // namespace platform
