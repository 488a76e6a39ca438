#include "platform/linux/x11/XGrabKeyTap.h"

#include <QSocketNotifier>

#include "main/Log.h"
#include "platform/Keys.h"
#include "platform/linux/x11/XDisplay.h"
#include "platform/linux/x11/XTestKeyboard.h"

#include <X11/XKBlib.h>
#include <X11/keysym.h>

namespace linuxdesk {

namespace {

struct Grabbed {
    KeySym sym;
    int code;
};
constexpr Grabbed kKeys[] = {{XK_Tab, platform::key::Tab},
                             {XK_Escape, platform::key::Esc},
                             {XK_Up, platform::key::Up},
                             {XK_Down, platform::key::Down}};

// Caps Lock and Num Lock change the event state but not the key's meaning: grab the key
// under each combination of them.
constexpr unsigned kLocks[] = {0, LockMask, Mod2Mask, LockMask | Mod2Mask};

quint64 flagsOf(unsigned state) {
    quint64 f = 0;
    if (state & ShiftMask) f |= platform::flag::Shift;
    if (state & ControlMask) f |= platform::flag::Control;
    if (state & Mod1Mask) f |= platform::flag::Option;
    if (state & Mod4Mask) f |= platform::flag::Command;
    return f;
}

}  // namespace

XGrabKeyTap::XGrabKeyTap(XTestKeyboard* keyboard) : keyboard_(keyboard) {}

XGrabKeyTap::~XGrabKeyTap() {
    notifier_.reset();
    if (display_) {
        grab(false);
        XCloseDisplay(display_);
    }
}

bool XGrabKeyTap::install(Handler handler) {
    if (!display_) {
        display_ = x11::open();
        if (!display_) return false;
        notifier_ =
            std::make_unique<QSocketNotifier>(ConnectionNumber(display_), QSocketNotifier::Read);
        connect(notifier_.get(), &QSocketNotifier::activated, this, &XGrabKeyTap::readEvents);
    }
    handler_ = std::move(handler);
    return true;
}

void XGrabKeyTap::setWanted(bool wanted) {
    if (!display_ || wanted == grabbed_) return;
    grab(wanted);
}

void XGrabKeyTap::grab(bool on) {
    const Window root = DefaultRootWindow(display_);
    x11::takeError();
    for (const auto& k : kKeys) {
        const KeyCode code = XKeysymToKeycode(display_, k.sym);
        if (!code) continue;
        for (unsigned locks : kLocks) {
            if (on)
                XGrabKey(display_, code, locks, root, False, GrabModeAsync, GrabModeSync);
            else
                XUngrabKey(display_, code, locks, root);
        }
    }
    XSync(display_, False);
    grabbed_ = on;
    if (on && x11::takeError() && !refusedLogged_) {
        // Another client holds one of these keys; the others still work.
        refusedLogged_ = true;
        glimmo::log(QStringLiteral("keyboard grab partly refused by another client"));
    }
    // XSync may have queued events the socket will not announce again.
    if (!reading_) readEvents();
}

void XGrabKeyTap::readEvents() {
    if (!display_ || reading_) return;
    reading_ = true;
    while (XPending(display_) > 0) {
        XEvent event;
        XNextEvent(display_, &event);
        if (event.type != KeyPress) continue;
        const XKeyEvent& key = event.xkey;
        const KeySym sym = XkbKeycodeToKeysym(display_, KeyCode(key.keycode), 0, 0);
        int code = -1;
        for (const auto& k : kKeys)
            if (k.sym == sym) code = k.code;
        // Tab and Esc are the engine's whenever it asks for keys, and what they do (select the
        // paragraph, paste) needs the application focused again: while the grab holds the
        // keyboard, the focused window has been told it lost the focus, and Firefox then
        // ignores a selection. So they let go first, and the rare one the engine turns down is
        // typed again.
        if (code == platform::key::Tab || code == platform::key::Esc) {
            XAllowEvents(display_, AsyncKeyboard, key.time);
            XUngrabKeyboard(display_, key.time);
            XSync(display_, False);
            if (handler_ && !handler_(code, flagsOf(key.state)) && keyboard_)
                keyboard_->post(code, 0);
            continue;
        }
        bool consumed = false;
        const bool held = code >= 0 && handler_ && keyboard_;
        if (held) keyboard_->hold();
        if (code >= 0 && handler_) consumed = handler_(code, flagsOf(key.state));
        if (consumed) {
            XAllowEvents(display_, AsyncKeyboard, key.time);
            XUngrabKeyboard(display_, key.time);
        } else {
            XAllowEvents(display_, ReplayKeyboard, key.time);
        }
        XSync(display_, False);
        if (held) keyboard_->release();
    }
    reading_ = false;
}

}  // namespace linuxdesk
