#include "overlay/Placement.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "overlay/Style.h"

namespace overlay {

double bubbleWidth(double measured) {
    return std::clamp(std::ceil(measured) + 26, minBubbleWidth, maxBubbleWidth);
}

double measureLine(const QString& text) {
    return QFontMetricsF(style::systemFont(style::textSize)).horizontalAdvance(text);
}

platform::Rect caretStrip(const platform::Rect& caret) {
    if (caret.height <= 60) return caret;
    return {caret.x, caret.y, caret.width, 22};
}

namespace {

// The rule below is stated with y growing upwards from the bottom of the first screen, where
// "below the visible frame" is a plain comparison. Desktop rectangles are mirrored into that
// system here and the result mirrored back.
platform::Rect flip(const platform::Rect& r, double h) {
    return {r.x, h - (r.y + r.height), r.width, r.height};
}

// Half-open on the far edges, so a point on the border between two screens has one owner.
bool contains(const platform::Rect& r, double x, double y) {
    return x >= r.x && x < r.x + r.width && y >= r.y && y < r.y + r.height;
}

}  // namespace

std::optional<platform::Rect> placeFrame(const platform::Rect& caretRect,
                                         const platform::Size& size,
                                         const std::vector<platform::Screen>& screens,
                                         const std::optional<platform::Screen>& main) {
    const platform::Rect caret = caretStrip(caretRect);
    const double h = screens.empty() ? 0 : screens.front().frame.height;
    const double bottom = h - (caret.y + caret.height);
    const double top = h - caret.y;

    std::optional<platform::Rect> visible;
    for (const auto& screen : screens) {
        if (contains(flip(screen.frame, h), caret.x, bottom)) {
            visible = flip(screen.visible, h);
            break;
        }
    }
    if (!visible && main) visible = flip(main->visible, h);
    if (!visible) return std::nullopt;

    const double fw = size.width, fh = size.height;
    double y = bottom - fh - 6;
    if (y < visible->y) y = top + 6;
    double x = caret.x - 12;
    if (x <= visible->x + 8) x = visible->x + 8;
    if (visible->x + visible->width - fw - 8 < x) x = visible->x + visible->width - fw - 8;
    return flip({x, y, fw, fh}, h);
}

}  // namespace overlay
