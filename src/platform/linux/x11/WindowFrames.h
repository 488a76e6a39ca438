#pragma once
// Where a process's windows stand on the X screen, as the X server and the window manager say:
// the facts the accessibility side fits an application's own reports onto (atspi/WindowMapping).

#include <QtGlobal>
#include <vector>

#include "platform/Geometry.h"

struct _XDisplay;

namespace linuxdesk {

class WindowFrames {
public:
    WindowFrames();
    ~WindowFrames();
    WindowFrames(const WindowFrames&) = delete;
    WindowFrames& operator=(const WindowFrames&) = delete;

    // Each client area and the frames that may be the one the application reports.
    struct Frames {
        platform::Rect client;
        std::vector<platform::Rect> candidates;
    };
    // The process's X windows, the active one first.
    std::vector<Frames> of(qint64 pid);

private:
    _XDisplay* display_ = nullptr;
    bool opened_ = false;
};

}  // namespace linuxdesk
