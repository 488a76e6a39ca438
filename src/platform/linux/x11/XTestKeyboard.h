#pragma once
// platform::Keyboard with XTest. The engine speaks of Command, Option and the paragraph moves;
// here Command is Control, Option-Up/Down is Control-Up/Down (GTK's and Qt's paragraph
// moves), other Option keys are Alt, and Forward Delete is Delete.

#include <QtGlobal>
#include <functional>
#include <utility>
#include <vector>

#include "platform/Keyboard.h"

struct _XDisplay;

namespace linuxdesk {

class XTestKeyboard : public platform::Keyboard {
public:
    XTestKeyboard();
    ~XTestKeyboard() override;
    XTestKeyboard(const XTestKeyboard&) = delete;
    XTestKeyboard& operator=(const XTestKeyboard&) = delete;

    bool available() const { return display_ != nullptr; }
    void post(int code, quint64 flags) override;

    // While held, posts are kept and sent in order on release. The key tap holds them while
    // its grab has the keyboard frozen: keys sent then would reach the grab, not the
    // application.
    void hold() { ++held_; }
    void release();

    // Called once a paste key (Control+V) went out.
    void onPaste(std::function<void()> pasted) { pasted_ = std::move(pasted); }
    // Asked before a paste key goes out; true when the paste was made another way, and the key
    // is then not pressed.
    void insteadOfPaste(std::function<bool()> instead) { instead_ = std::move(instead); }

private:
    void send(int code, quint64 flags);
    void waitForModifiersUp();

    _XDisplay* display_ = nullptr;
    int held_ = 0;
    std::function<void()> pasted_;
    std::function<bool()> instead_;
    std::vector<std::pair<int, quint64>> pending_;
};

}  // namespace linuxdesk
