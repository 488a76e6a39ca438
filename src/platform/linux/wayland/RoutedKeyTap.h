#pragma once
// platform::KeyTap of a Wayland session: the X11 grab while an X11 window is frontmost, the
// accessibility bus's keys (AtspiKeyTap) while a native one is.

#include "platform/Keyboard.h"

namespace linuxdesk {

class AtspiKeyTap;
class NativeRoute;
class XGrabKeyTap;

class RoutedKeyTap : public platform::KeyTap {
public:
    RoutedKeyTap(NativeRoute& route, XGrabKeyTap& x11, AtspiKeyTap& native)
        : route_(route), x11_(x11), native_(native) {}
    bool install(Handler handler) override;
    void setWanted(bool wanted) override;
    void requestAccess() override;

private:
    NativeRoute& route_;
    XGrabKeyTap& x11_;
    AtspiKeyTap& native_;
};

}  // namespace linuxdesk
