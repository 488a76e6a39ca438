#pragma once
// The scripted desktop's key tap. Tests press keys as the user would: while the engine wants
// keys, the handler sees the press first; a key it does not consume (or any key while it does
// not want keys, or before a handler is installed) reaches the focused text box through
// Keyboard::apply, so an unconsumed Tab inserts "\t".

#include <vector>

#include "platform/Keyboard.h"
#include "platform/fake/Keyboard.h"

namespace fake {

class KeyTap : public platform::KeyTap {
public:
    explicit KeyTap(Keyboard& keyboard) : keyboard_(keyboard) {}

    // The user presses a key; true when the handler consumed it.
    bool press(int code, quint64 flags = 0);
    // A key pressed while the engine is busy: it waits, as a grabbed key does, until the
    // engine takes pending keys, then goes as press() does.
    void pressPending(int code, quint64 flags = 0) { pending_.push_back({code, flags}); }

    bool installed() const { return static_cast<bool>(handler_); }
    int installs() const { return installs_; }
    bool wanted() const { return wanted_; }
    int accessRequests() const { return accessRequests_; }

    // platform::KeyTap
    bool install(Handler handler) override;
    void setWanted(bool wanted) override { wanted_ = wanted; }
    void requestAccess() override { ++accessRequests_; }
    void deliverPending() override;

private:
    Keyboard& keyboard_;
    Handler handler_;
    bool wanted_ = false;
    int installs_ = 0;
    int accessRequests_ = 0;
    std::vector<Keyboard::Press> pending_;
};

}  // namespace fake
