#pragma once
// platform::Keyboard of a Wayland session: XTest for an X11 window; for a native window, which
// no synthetic key reaches, NativeEdit turns the engine's paste into an edit.

#include "platform/Keyboard.h"

namespace linuxdesk {

class NativeEdit;
class NativeRoute;
class XTestKeyboard;

class RoutedKeyboard : public platform::Keyboard {
public:
    RoutedKeyboard(NativeRoute& route, XTestKeyboard& x11, NativeEdit& edit)
        : route_(route), x11_(x11), edit_(edit) {}
    void post(int code, quint64 flags) override;

private:
    NativeRoute& route_;
    XTestKeyboard& x11_;
    NativeEdit& edit_;
};

}  // namespace linuxdesk
