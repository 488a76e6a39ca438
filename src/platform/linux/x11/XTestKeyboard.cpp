#include "platform/linux/x11/XTestKeyboard.h"

#include <QElapsedTimer>
#include <QThread>

#include "platform/Keys.h"
#include "platform/linux/x11/GroupKeys.h"
#include "platform/linux/x11/XDisplay.h"

#include <X11/XKBlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace linuxdesk {

namespace {

// The user may still hold the modifiers of the shortcut that led here; a synthetic
// Control-V with their Shift still down would be Control-Shift-V. Wait that long at most.
constexpr int kModifierWaitMs = 500;

KeySym keysymOf(int code) {
    switch (code) {
        case platform::key::A:
            return XK_a;
        case platform::key::V:
            return XK_v;
        case platform::key::Tab:
            return XK_Tab;
        case platform::key::Esc:
            return XK_Escape;
        case platform::key::ForwardDelete:
            return XK_Delete;
        case platform::key::Right:
            return XK_Right;
        case platform::key::Down:
            return XK_Down;
        case platform::key::Up:
            return XK_Up;
        default:
            return NoSymbol;
    }
}

std::vector<KeySym> modifiersOf(int code, quint64 flags) {
    using namespace platform;
    std::vector<KeySym> out;
    const bool paragraphMove = code == key::Up || code == key::Down;
    if (flags & (flag::Command | flag::Control) || (paragraphMove && flags & flag::Option))
        out.push_back(XK_Control_L);
    if (flags & flag::Option && !paragraphMove) out.push_back(XK_Alt_L);
    if (flags & flag::Shift) out.push_back(XK_Shift_L);
    return out;
}

}  // namespace

XTestKeyboard::XTestKeyboard() : display_(x11::open()) {
    int event, error, major, minor;
    if (display_ && !XTestQueryExtension(display_, &event, &error, &major, &minor)) {
        XCloseDisplay(display_);
        display_ = nullptr;
    }
}

XTestKeyboard::~XTestKeyboard() {
    if (display_) XCloseDisplay(display_);
}

void XTestKeyboard::post(int code, quint64 flags) {
    if (held_ > 0) {
        pending_.emplace_back(code, flags);
        return;
    }
    send(code, flags);
}

void XTestKeyboard::release() {
    if (held_ > 0 && --held_ > 0) return;
    auto pending = std::move(pending_);
    pending_.clear();
    for (const auto& [code, flags] : pending) send(code, flags);
}

void XTestKeyboard::waitForModifiersUp() {
    XModifierKeymap* map = XGetModifierMapping(display_);
    if (!map) return;
    std::vector<KeyCode> codes;
    for (int index : {ShiftMapIndex, ControlMapIndex, Mod1MapIndex, Mod4MapIndex}) {
        for (int k = 0; k < map->max_keypermod; ++k) {
            const KeyCode c = map->modifiermap[index * map->max_keypermod + k];
            if (c) codes.push_back(c);
        }
    }
    XFreeModifiermap(map);
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < kModifierWaitMs) {
        char keys[32];
        XQueryKeymap(display_, keys);
        bool down = false;
        for (KeyCode c : codes) down = down || (keys[c / 8] & (1 << (c % 8)));
        if (!down) return;
        QThread::msleep(10);
    }
}

void XTestKeyboard::send(int code, quint64 flags) {
    if (!display_) return;
    const auto key = x11::findKey(display_, keysymOf(code));
    if (!key) return;
    std::vector<KeyCode> mods;
    for (KeySym m : modifiersOf(code, flags)) {
        const auto mod = x11::findKey(display_, m);
        if (const KeyCode c = mod ? mod->keycode : XKeysymToKeycode(display_, m)) mods.push_back(c);
    }
    if (!mods.empty()) waitForModifiersUp();
    // A key only another group has (V under a Cyrillic layout) is pressed in that group, and
    // the user's group is locked again straight after; the server keeps the order.
    if (key->group) XkbLockGroup(display_, XkbUseCoreKbd, unsigned(*key->group));
    for (KeyCode m : mods) XTestFakeKeyEvent(display_, m, True, CurrentTime);
    XTestFakeKeyEvent(display_, key->keycode, True, CurrentTime);
    XTestFakeKeyEvent(display_, key->keycode, False, CurrentTime);
    for (auto it = mods.rbegin(); it != mods.rend(); ++it)
        XTestFakeKeyEvent(display_, *it, False, CurrentTime);
    if (key->group) XkbLockGroup(display_, XkbUseCoreKbd, unsigned(key->lockedGroup));
    XFlush(display_);
    if (pasted_ && code == platform::key::V && flags == platform::flag::Command) pasted_();
}

}  // namespace linuxdesk
