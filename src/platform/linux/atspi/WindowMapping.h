#pragma once
// Where an application's reported rectangles really are on the screen.
//
// Toolkits answer "screen" coordinates in their own way: GTK 3, Qt, Chromium and Gecko give
// true positions; GTK 4 gives positions relative to its window; LibreOffice places its content
// as though its menu bar were not above it; a scaled application counts in its own units. So
// the application's answers are compared with the X server's (x11/WindowFrames): what it
// reports for its top-level against where that window is (its client area, the window
// manager's frame around it, or the drawn frame inside a window with client-side decorations),
// which gives a scale and an offset. Where the element's own top-level is not among the
// application's windows (content embedded in a toolkit's window), the box of the same size in
// the window's tree says where that content really is. Each element's answer is kept briefly:
// windows move.

#include <QElapsedTimer>
#include <QString>
#include <map>
#include <optional>
#include <vector>

#include "platform/Geometry.h"
#include "platform/linux/atspi/AtRef.h"
#include "platform/linux/x11/WindowFrames.h"

namespace linuxdesk {

// true position = (reported + shift) * scale + offset, in device pixels of the X screen.
struct ReportedToScreen {
    double shiftX = 0, shiftY = 0;
    double scale = 1;
    double offsetX = 0, offsetY = 0;
    // Where the application's window coordinates start, in its screen coordinates.
    double windowX = 0, windowY = 0;

    platform::Rect apply(const platform::Rect& reported) const;
    bool identity() const;
};

// Fits the reported frame of a window onto the first candidate frame of the same shape
// (same size at some scale); absent when none fits.
std::optional<ReportedToScreen> fitFrame(const platform::Rect& reported,
                                         const std::vector<platform::Rect>& candidates);

class WindowMapping {
public:
    // The conversion for rectangles reported by the application that element belongs to.
    ReportedToScreen of(const AtRef& element);

private:
    ReportedToScreen measure(const AtRef& element);

    struct Known {
        ReportedToScreen map;
        QElapsedTimer age;
    };

    WindowFrames frames_;
    std::map<QString, Known> known_;  // by element
};

}  // namespace linuxdesk
