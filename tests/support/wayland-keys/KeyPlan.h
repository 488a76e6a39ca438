#pragma once
// What glimmo-wayland-keys presses for a text or for named keys, as X keysyms with press and
// release, before anything is sent to the compositor.

#include <QString>
#include <optional>
#include <vector>

namespace waylandkeys {

struct KeyEvent {
    quint32 keysym;
    bool pressed;
    friend bool operator==(const KeyEvent&, const KeyEvent&) = default;
};
using KeyEvents = std::vector<KeyEvent>;

// Text as typed: printable ASCII by its own key ("A" and "!" with Shift, which the compositor
// adds), a line break as Return, a tab as Tab. Any other character has no key in the session's
// keymap (the compositor drops such keysyms without a word), so it is entered the way GTK
// applications take any code point: Ctrl+Shift+U, its hexadecimal digits, space.
KeyEvents eventsForText(const QString& text);

// Key combinations separated by white space, as xdotool writes them: "Tab", "shift+Tab",
// "ctrl+a Return". Absent when a name is unknown.
std::optional<KeyEvents> eventsForKeys(const QString& keys);

}  // namespace waylandkeys
