#include "platform/linux/x11/WindowFrames.h"

#include "platform/linux/x11/XDisplay.h"  // last: Xlib's macros

namespace linuxdesk {

WindowFrames::WindowFrames() = default;

WindowFrames::~WindowFrames() {
    if (display_) XCloseDisplay(display_);
}

std::vector<WindowFrames::Frames> WindowFrames::of(qint64 pid) {
    std::vector<Frames> out;
    if (!opened_) {
        opened_ = true;
        display_ = x11::open();
    }
    if (!display_) return out;
    const Window root = DefaultRootWindow(display_);
    std::vector<Window> windows;
    if (const auto active = x11::windowProperty(display_, root, "_NET_ACTIVE_WINDOW"))
        windows.push_back(*active);
    for (Window w : x11::windowListProperty(display_, root, "_NET_CLIENT_LIST"))
        if (windows.empty() || w != windows.front()) windows.push_back(w);

    for (Window w : windows) {
        if (x11::windowPid(display_, w) != pid) continue;
        XWindowAttributes attributes;
        int x = 0, y = 0;
        Window child = 0;
        if (!XGetWindowAttributes(display_, w, &attributes) ||
            !XTranslateCoordinates(display_, w, root, 0, 0, &x, &y, &child))
            continue;
        const platform::Rect client{double(x), double(y), double(attributes.width),
                                    double(attributes.height)};
        std::vector<platform::Rect> candidates;
        // The window manager's frame (left, right, top, bottom) around the client.
        const auto frame = x11::cardinalListProperty(display_, w, "_NET_FRAME_EXTENTS");
        if (frame.size() == 4)
            candidates.push_back({client.x - frame[0], client.y - frame[2],
                                  client.width + frame[0] + frame[1],
                                  client.height + frame[2] + frame[3]});
        candidates.push_back(client);
        // The frame a toolkit draws itself inside the window, when it names its margin.
        const auto csd = x11::cardinalListProperty(display_, w, "_GTK_FRAME_EXTENTS");
        if (csd.size() == 4)
            candidates.push_back({client.x + csd[0], client.y + csd[2],
                                  client.width - csd[0] - csd[1], client.height - csd[2] - csd[3]});
        out.push_back({client, candidates});
    }
    (void)x11::takeError();
    return out;
}

}  // namespace linuxdesk
