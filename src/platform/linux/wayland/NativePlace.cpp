#include "platform/linux/wayland/NativePlace.h"

namespace linuxdesk {

namespace {

// The bubble's widest and the placement's offsets: it starts 12 points left of the caret and
// goes 6 points above it when there is no room below.
constexpr double kWidestBubble = 460;
constexpr double kLeftOfCaret = 12;
constexpr double kAboveBottom = 40;
constexpr double kCaretHeight = 20;

}  // namespace

platform::Rect nativeCaret(const platform::Screen& screen) {
    const platform::Rect& v = screen.visible;
    const double x = v.x + (v.width - kWidestBubble) / 2 + kLeftOfCaret;
    return platform::Rect{x, v.y + v.height - kAboveBottom, 1, kCaretHeight};
}

platform::Rect inCompositor(const platform::Rect& inWindow, const platform::Rect& surface,
                            double scale) {
    return {surface.x + inWindow.x * scale, surface.y + inWindow.y * scale, inWindow.width * scale,
            inWindow.height * scale};
}

}  // namespace linuxdesk
