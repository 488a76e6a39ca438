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

std::optional<GroupKey> findKey(Display* display, unsigned long keysym) {
    if (!display || keysym == NoSymbol) return std::nullopt;
    XkbStateRec state;
    if (XkbGetState(display, XkbUseCoreKbd, &state) != Success) return std::nullopt;
    // Read afresh each time: the user may have switched layouts since the last key.
    XkbDescPtr xkb = XkbGetMap(display, XkbKeyTypesMask | XkbKeySymsMask, XkbUseCoreKbd);
    if (!xkb) return std::nullopt;
    std::optional<GroupKey> found;
    if (auto kc = keyIn(xkb, state.group, keysym, true)) {
        found = GroupKey{*kc, std::nullopt, state.locked_group};
    } else {
        for (int g = 0; g < XkbNumKbdGroups && !found; ++g) {
            if (g == state.group) continue;
            if (auto other = keyIn(xkb, g, keysym, false))
                found = GroupKey{*other, g, state.locked_group};
        }
    }
    XkbFreeKeyboard(xkb, 0, True);
    return found;
}

}  // namespace linuxdesk::x11
