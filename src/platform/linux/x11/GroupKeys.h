#pragma once
// Where a key symbol is on the keyboard at this moment, for synthetic keys: a key pressed by its
// code gives whatever the user's current layout puts there (Ctrl+V on the US "v" key is Ctrl+K
// in Dvorak), so the key is looked for in the group that is on.

#include <optional>

struct _XDisplay;

namespace linuxdesk::x11 {

struct GroupKey {
    unsigned keycode = 0;
    // The group to lock while the key is pressed, when the group that is on has no such key
    // (Cyrillic, Greek); absent when the key is in the group that is on.
    std::optional<int> group;
    // The group locked now, to lock again afterwards.
    int lockedGroup = 0;
};

// The key that gives keysym unshifted: in the group that is on, else in the first other group
// that has it. Absent when no group has it.
std::optional<GroupKey> findKey(_XDisplay* display, unsigned long keysym);

}  // namespace linuxdesk::x11
