#pragma once
// The desktop's accessibility switch: the accessibility bus must answer on the session bus and
// org.a11y.Status "IsEnabled" must be true. That is this desktop's "trusted for accessibility".

#include <QElapsedTimer>

namespace linuxdesk {

class A11yBus {
public:
    // Asked on every poll, so the answer is kept for a moment rather than asked every time.
    bool enabled();
    // Switches "IsEnabled" on. Toolkits start their bridges when they see it change.
    void enable();

private:
    bool query();

    bool last_ = false;
    QElapsedTimer age_;
};

}  // namespace linuxdesk
