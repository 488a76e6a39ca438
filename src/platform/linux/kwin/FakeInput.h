#pragma once
// Keys pressed for the focused window through KWin's fake-input protocol
// (org_kde_kwin_fake_input), on a Wayland connection of its own: the one way a program may type
// into Plasma's native windows without asking the user each session. KWin offers the protocol
// to programs whose installed desktop entry names it (X-KDE-Wayland-Interfaces) and to every
// program when its permission checks are off (tests).
//
// The protocol speaks of key codes; each keysym is looked up in the keyboard layout KWin gives
// its clients, so that Control+V is pressed on whichever key gives "v" there.

#include <cstdint>
#include <memory>
#include <vector>

namespace linuxdesk {

class FakeInput {
public:
    FakeInput();
    ~FakeInput();
    FakeInput(const FakeInput&) = delete;
    FakeInput& operator=(const FakeInput&) = delete;

    // Whether KWin offers the protocol to this program.
    bool available() const;
    // One key event; a keysym of the layout's shifted level is pressed with Shift. True once
    // KWin has it.
    bool key(std::uint32_t keysym, bool pressed);
    // Presses the keys in order and releases them in reverse; true once KWin has every event.
    bool press(const std::vector<std::uint32_t>& keysyms);
    // The pointer moved by (dx, dy) and the left button clicked, for the tests' keyboard.
    bool moveBy(double dx, double dy);
    bool click();

    struct State;  // public for the protocol's callbacks, opaque elsewhere

private:
    std::unique_ptr<State> s_;
};

}  // namespace linuxdesk
