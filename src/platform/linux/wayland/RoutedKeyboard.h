#pragma once
// platform::Keyboard of a Wayland session: XTest for an X11 window; for a native window, which
// no synthetic key reaches, NativeEdit turns the engine's paste into an edit, or, in a web
// browser's window, the compositor companion presses the paste itself.

#include <functional>

#include "platform/Keyboard.h"

namespace linuxdesk {

class Companion;
class NativeEdit;
class NativeRoute;
class XTestKeyboard;

class RoutedKeyboard : public platform::Keyboard {
public:
    RoutedKeyboard(NativeRoute& route, XTestKeyboard& x11, NativeEdit& edit, Companion& companion)
        : route_(route), x11_(x11), edit_(edit), companion_(companion) {}
    void post(int code, quint64 flags) override;
    // Called once the companion was asked to paste.
    void onPaste(std::function<void()> pasted) { pasted_ = std::move(pasted); }

private:
    NativeRoute& route_;
    XTestKeyboard& x11_;
    NativeEdit& edit_;
    Companion& companion_;
    std::function<void()> pasted_;
};

}  // namespace linuxdesk
