#pragma once
// platform::KeyTap as a synchronous X11 key grab on the root window, held only while the
// engine wants keys, for Tab, Esc, Up and Down without modifiers.
//
// Why a grab and not the AT-SPI keystroke listener: the listener sees keys only through each
// toolkit's bridge, which forwards them to the registry and waits for the verdict. GTK 3 does
// that, but Chromium and Electron never forward keys, GTK 4 does not either, and a slow verdict
// stalls the application's typing. An X11 grab sees the key for every X11 and XWayland window
// before the application does. With GrabModeSync the keyboard stays frozen until Glimmo
// answers: a key it handles is swallowed (AsyncKeyboard, then the grab is let go so keys it
// synthesises reach the application); any other is replayed (ReplayKeyboard) to the focused
// window exactly as it was pressed, never re-synthesised.

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
