#pragma once

#include <QtGlobal>
#include <functional>

namespace platform {

// Synthetic key presses: each post is a key-down then a key-up with the same flags.
class Keyboard {
public:
    virtual ~Keyboard() = default;
    virtual void post(int code, quint64 flags) = 0;
};

// Sees key-downs before the focused application does. The handler answers true to swallow the
// key. The engine says when it wants keys at all, so the tap can stay out of the way otherwise.
class KeyTap {
public:
    using Handler = std::function<bool(int code, quint64 flags)>;
    virtual ~KeyTap() = default;
    // False when the desktop refuses the tap; the engine tries again later.
    virtual bool install(Handler handler) = 0;
    virtual void setWanted(bool wanted) = 0;
    // Hands the handler, now, any key pressed while wanted that it has not seen yet.
    virtual void deliverPending() {}
    // Asks the user for whatever permission the tap lacks.
    virtual void requestAccess() {}
};

}  // namespace platform
