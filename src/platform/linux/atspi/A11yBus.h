#pragma once
// The desktop's accessibility switch: the accessibility bus must answer on the session bus and
// org.a11y.Status "IsEnabled" must be true. That is this desktop's "trusted for accessibility".
// While it is, the bus's address is also kept on the X root window, where Qt 5 needs it.

#include <QElapsedTimer>
#include <QString>

namespace linuxdesk {

class A11yBus {
public:
    // Asked on every poll, so the answer is kept for a moment rather than asked every time.
    bool enabled();
    // Switches "IsEnabled" on; the bus launcher keeps it in the desktop's toolkit-accessibility
    // setting and announces the change. Qt 6 starts its bridge on that announcement (Qt 5
    // needs the bus on the X root window, see x11's AccessibilityBusAtom); GTK 3
    // registers whenever the bus answers, switch or not. Chromium and Electron look at it only
    // at launch (ACCESSIBILITY_ENABLED=1 in their environment does the same), and then show
    // bare windows: their pages need --force-renderer-accessibility. "ScreenReaderEnabled" is
    // left alone: on GNOME it starts the Orca screen reader, and it gives them no pages either.
    void enable();

private:
    bool query();

    bool last_ = false;
    QString published_;  // the bus address last put on the X root window
    QElapsedTimer age_;
};

}  // namespace linuxdesk
