#pragma once
// The real Linux desktop: one of each backend part, handed out together as a
// platform::Platform. Needs a QGuiApplication (the clipboard and the screens come from Qt).
//
//     platform::JsonDefaults defaults(platform::JsonDefaults::standardPath());
//     platform::SystemClock clock;
//     linuxdesk::Desktop desktop;
//     Glimmo engine(desktop.platform(defaults, clock));

#include <memory>

#include "platform/Platform.h"
#include "platform/TopBarMenu.h"

namespace linuxdesk {

class AtspiAx;
class X11Workspace;
class XTestKeyboard;
class XGrabKeyTap;

class Desktop {
public:
    Desktop();
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    // The parts, bound to the given defaults and clock; valid while this object lives. In a
    // Wayland session they serve native windows as well (see RoutedAx.h).
    platform::Platform platform(platform::Defaults& defaults, platform::Clock& clock);

    // Whether an X display answers (Wayland-only sessions have none: keys, the tap and the
    // frontmost application are then out of reach).
    bool hasDisplay() const;
    // Whether the session is a Wayland one (its X display, if any, is Xwayland).
    static bool waylandSession();

    AtspiAx& ax();
    X11Workspace& workspace();
    XTestKeyboard& keyboard();
    XGrabKeyTap& keyTap();
    // The top bar's menu, where the compositor's companion offers one.
    platform::TopBarMenu& topBarMenu();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace linuxdesk
