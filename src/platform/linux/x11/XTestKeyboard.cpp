#include "platform/linux/x11/XTestKeyboard.h"

#include <QElapsedTimer>
#include <QThread>
#include <array>

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

// At most Control, Alt and Shift; a fixed array, as GCC 14 misreads a small vector's growth
// here (-Wfree-nonheap-object).
struct Modifiers {
    std::array<KeySym, 3> syms{};
    int count = 0;
    void add(KeySym sym) { syms[size_t(count++)] = sym; }
};

Modifiers modifiersOf(int code, quint64 flags) {
    using namespace platform;
    Modifiers out;
    const bool paragraphMove = code == key::Up || code == key::Down;
    if (flags & (flag::Command | flag::Control) || (paragraphMove && flags & flag::Option))
        out.add(XK_Control_L);
    if (flags & flag::Option && !paragraphMove) out.add(XK_Alt_L);
    if (flags & flag::Shift) out.add(XK_Shift_L);
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
    if (instead_ && code == platform::key::V && flags == platform::flag::Command && instead_())
        return;
    const x11::GroupKeys keyboard(display_);
    const auto key = keyboard.find(keysymOf(code));
    if (!key) return;
    const Modifiers wanted = modifiersOf(code, flags);
    std::array<KeyCode, 3> mods{};
    int held = 0;
    for (int i = 0; i < wanted.count; ++i) {
        const KeySym m = wanted.syms[size_t(i)];
        const auto mod = keyboard.find(m);
        if (const KeyCode c = mod ? mod->keycode : XKeysymToKeycode(display_, m))
            mods[size_t(held++)] = c;
    }
    if (held > 0) waitForModifiersUp();
    // A key only another group has (V under a Cyrillic layout) is pressed in that group, and
    // the user's group is locked again straight after; the server keeps the order.
    if (key->group) XkbLockGroup(display_, XkbUseCoreKbd, unsigned(*key->group));
    for (int i = 0; i < held; ++i) XTestFakeKeyEvent(display_, mods[size_t(i)], True, CurrentTime);
    XTestFakeKeyEvent(display_, key->keycode, True, CurrentTime);
    XTestFakeKeyEvent(display_, key->keycode, False, CurrentTime);
    for (int i = held - 1; i >= 0; --i)
        XTestFakeKeyEvent(display_, mods[size_t(i)], False, CurrentTime);
    if (key->group) XkbLockGroup(display_, XkbUseCoreKbd, unsigned(key->lockedGroup));
    XFlush(display_);
    if (pasted_ && code == platform::key::V && flags == platform::flag::Command) pasted_();
}

}  // namespace linuxdesk
