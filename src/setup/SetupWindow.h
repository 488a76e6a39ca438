#pragma once
// The setup window: a SetupView on a new Setup, refreshed once at once and then every second
// while it is open, with claude's install started when it is missing. The window deletes
// itself when closed; a verification or an install still running keeps the model until it
// has finished.

#include <QWidget>
#include <functional>

#include "setup/Setup.h"

namespace setup {

struct SetupHooks {
    std::function<void()> onSaved = [] {};   // the profile changed
    std::function<void()> showApps = [] {};  // "Choose apps…"
    std::function<void()> tryIt = [] {};     // "Try it now"
    // Brings the window in front of the desktop's settings once a step completes.
    std::function<void(QWidget*)> bringToFront = [](QWidget* w) {
        w->show();
        w->raise();
        w->activateWindow();
    };
};

// A new top-level window, not yet shown.
QWidget* makeSetupWindow(Setup::Desk desk, SetupHooks hooks);

}  // namespace setup
