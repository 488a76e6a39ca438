#pragma once
// platform::KeyTap of a Wayland session: the X11 grab while an X11 window is frontmost, the
// compositor companion's keys (CompanionKeyTap) while a native one is, or the accessibility
// bus's keys (AtspiKeyTap) where no companion answers.

#include "platform/Keyboard.h"

namespace linuxdesk {

class AtspiKeyTap;
class Companion;
class CompanionKeyTap;
class NativeRoute;
class XGrabKeyTap;

class RoutedKeyTap : public platform::KeyTap {
public:
    RoutedKeyTap(NativeRoute& route, XGrabKeyTap& x11, AtspiKeyTap& native, Companion& companion,
                 CompanionKeyTap& companionTap)
        : route_(route),
          x11_(x11),
          native_(native),
          companion_(companion),
          companionTap_(companionTap) {}
    bool install(Handler handler) override;
    void setWanted(bool wanted) override;
    void requestAccess() override;

private:
    NativeRoute& route_;
    XGrabKeyTap& x11_;
    AtspiKeyTap& native_;
    Companion& companion_;
    CompanionKeyTap& companionTap_;
};

}  // namespace linuxdesk
