#pragma once
// Where a key symbol is on the keyboard at this moment, for synthetic keys: a key pressed by its
// code gives whatever the user's current layout puts there (Ctrl+V on the US "v" key is Ctrl+K
// in Dvorak), so the key is looked for in the group that is on.

#include <optional>

struct _XDisplay;
struct _XkbDesc;

namespace linuxdesk::x11 {

struct GroupKey {
    unsigned keycode = 0;
    // The group to lock while the key is pressed, when the group that is on has no such key
    // (Cyrillic, Greek); absent when the key is in the group that is on.
    std::optional<int> group;
    // The group locked now, to lock again afterwards.
    int lockedGroup = 0;
};

// The keyboard's groups and the one that is on, read once when made: the user may have
// switched layouts since the last key, but not between the keys of one shortcut.
class GroupKeys {
public:
    explicit GroupKeys(_XDisplay* display);
    ~GroupKeys();
    GroupKeys(const GroupKeys&) = delete;
    GroupKeys& operator=(const GroupKeys&) = delete;

    // The key that gives keysym unshifted: in the group that is on, else in the first other
    // group that has it. Absent when no group has it, or the keyboard could not be read.
    std::optional<GroupKey> find(unsigned long keysym) const;

private:
    _XkbDesc* xkb_ = nullptr;
    int group_ = 0;
    int lockedGroup_ = 0;
};

}  // namespace linuxdesk::x11
