#pragma once
// platform::KeyTap for native Wayland windows, which no X11 grab reaches. Each toolkit gets
// what it supports:
// - GTK 3 (and any toolkit whose bridge forwards keys to the registry) through the AT-SPI
//   keystroke listener, synchronous and allowed to consume: Tab, Esc, Up and Down are
//   answered before the window sees them.
// - GTK 4 forwards no keys at all. A Tab pressed while a suggestion is shown lands in the
//   text, so the tap notices a tab character typed at the caret (on the text's change event,
//   or when the text is read first), takes it out again and reports Tab. Esc and the arrows
//   stay the window's own there.
// Both are registered only while the engine wants keys, so plain typing costs nothing.

#include <QObject>
#include <QString>
#include <optional>

#include "platform/Ax.h"
#include "platform/Keyboard.h"

typedef struct _AtspiDeviceListener AtspiDeviceListener;
typedef struct _AtspiEventListener AtspiEventListener;
typedef struct _AtspiDeviceEvent AtspiDeviceEvent;
typedef struct _AtspiEvent AtspiEvent;

namespace linuxdesk {

class AtspiAx;
class NativeRoute;

class AtspiKeyTap : public QObject, public platform::KeyTap {
public:
    AtspiKeyTap(AtspiAx& ax, NativeRoute& route) : ax_(ax), route_(route) {}
    ~AtspiKeyTap() override;

    bool install(Handler handler) override;
    void setWanted(bool wanted) override;

    // Before an element's text is read: a tab typed into a GTK 4 field while keys are wanted
    // is taken out and reported as Tab (just after). True when one was.
    bool takeBackTab(const platform::Element& element);

private:
    static int onKey(AtspiDeviceEvent* stroke, void* self);
    static void onInsert(AtspiEvent* event, void* self);
    bool key(unsigned keysym, unsigned modifiers);
    void listen(bool on);

    // GTK 4's field and its text when keys became wanted.
    struct Before {
        platform::Element element;
        QString text;
        qint64 caret = 0;
    };

    AtspiAx& ax_;
    NativeRoute& route_;
    Handler handler_;
    AtspiDeviceListener* keys_ = nullptr;
    AtspiEventListener* inserts_ = nullptr;
    bool wanted_ = false;
    bool listening_ = false;
    std::optional<Before> before_;
};

}  // namespace linuxdesk
