#include "platform/linux/x11/GroupKeys.h"

#include "platform/linux/x11/XDisplay.h"  // last: Xlib's macros

#include <X11/XKBlib.h>

namespace linuxdesk::x11 {

namespace {

// The key's group for the keyboard's group, as the server folds groups a key does not have
// (the default: wrap around).
int keyGroup(XkbDescPtr xkb, int keycode, int group) {
    const int groups = XkbKeyNumGroups(xkb, keycode);
    return groups > 0 ? group % groups : -1;
}

std::optional<unsigned> keyIn(XkbDescPtr xkb, int group, KeySym sym, bool folded) {
    for (int kc = xkb->min_key_code; kc <= xkb->max_key_code; ++kc) {
        const int g = folded ? keyGroup(xkb, kc, group)
                             : (group < XkbKeyNumGroups(xkb, kc) ? group : -1);
        if (g >= 0 && XkbKeyGroupWidth(xkb, kc, g) > 0 && XkbKeySymEntry(xkb, kc, 0, g) == sym)
            return unsigned(kc);
    }
    return std::nullopt;
}

}  // namespace

GroupKeys::GroupKeys(Display* display) {
    XkbStateRec state;
    if (!display || XkbGetState(display, XkbUseCoreKbd, &state) != Success) return;
    group_ = state.group;
    lockedGroup_ = state.locked_group;
    xkb_ = XkbGetMap(display, XkbKeyTypesMask | XkbKeySymsMask, XkbUseCoreKbd);
}

GroupKeys::~GroupKeys() {
    if (xkb_) XkbFreeKeyboard(xkb_, 0, True);
}

std::optional<GroupKey> GroupKeys::find(unsigned long keysym) const {
    if (!xkb_ || keysym == NoSymbol) return std::nullopt;
    if (auto kc = keyIn(xkb_, group_, keysym, true))
        return GroupKey{*kc, std::nullopt, lockedGroup_};
    for (int g = 0; g < XkbNumKbdGroups; ++g) {
        if (g == group_) continue;
        if (auto other = keyIn(xkb_, g, keysym, false)) return GroupKey{*other, g, lockedGroup_};
    }
    return std::nullopt;
}

}  // namespace linuxdesk::x11
