#pragma once
// The desktop's accessibility switch: the accessibility bus must answer on the session bus and
// org.a11y.Status "IsEnabled" must be true. That is this desktop's "trusted for accessibility".

#include <QElapsedTimer>

namespace linuxdesk {

class A11yBus {
public:
    // Asked on every poll, so the answer is kept for a moment rather than asked every time.
    bool enabled();
    // Switches "IsEnabled" on. GTK and Qt start their bridges when they see it change.
    // "ScreenReaderEnabled" is left alone: on GNOME it starts the Orca screen reader, and
    // Chromium and Electron want a launch flag (--force-renderer-accessibility) or
    // ACCESSIBILITY_ENABLED=1 in their environment rather than this switch.
    void enable();

private:
    bool query();

    bool last_ = false;
    QElapsedTimer age_;
};

}  // namespace linuxdesk
