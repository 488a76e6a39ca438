#pragma once
// platform::KeyTap as a synchronous X11 key grab on the root window, held only while the
// engine wants keys, for Tab, Esc, Up and Down without modifiers.
//
// Why a grab and not the AT-SPI keystroke listener (ATSPI_KEYLISTENER_SYNCHRONOUS |
// CANCONSUME): the listener sees only keys that a toolkit's bridge forwards to the registry
// and waits on. Tried on the test desktop: a GTK 3 window forwards Tab and honours the
// consumption, but keys for a plain X client (xev) never reach the listener at all. So it
// works only where each application's bridge cooperates, and every forwarded key costs that
// application a bus round trip while the user types. An X11 grab sees the key for every X11 and
// XWayland window first. With GrabModeSync the keyboard stays frozen until Glimmo answers: a key it
// handles is swallowed (AsyncKeyboard, then the grab is let go so that keys it synthesises reach
// the application); any other is replayed (ReplayKeyboard) to the focused window exactly as
// pressed, never re-synthesised. Grabbing only while the engine wants keys keeps plain typing
// untouched.

#include <QObject>
#include <memory>

#include "platform/Keyboard.h"

struct _XDisplay;
class QSocketNotifier;

namespace linuxdesk {

class XTestKeyboard;

class XGrabKeyTap : public QObject, public platform::KeyTap {
    Q_OBJECT
public:
    // keyboard: posts made by the handler are held until the grab has let go (may be null).
    explicit XGrabKeyTap(XTestKeyboard* keyboard);
    ~XGrabKeyTap() override;

    bool install(Handler handler) override;
    void setWanted(bool wanted) override;
    void deliverPending() override { readEvents(); }
    bool wanted() const { return grabbed_; }

private:
    void readEvents();
    void grab(bool on);

    XTestKeyboard* keyboard_;
    _XDisplay* display_ = nullptr;
    std::unique_ptr<QSocketNotifier> notifier_;
    Handler handler_;
    bool grabbed_ = false;
    bool refusedLogged_ = false;
    bool reading_ = false;  // inside readEvents: the handler may change the grab
};

}  // namespace linuxdesk
