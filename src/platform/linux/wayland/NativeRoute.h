#pragma once
// Which backend serves the focused application in a Wayland session. Windows that run through
// Xwayland are X11 windows: the X server names the active one, and the X11 parts serve it
// exactly as on an X11 session. A native Wayland window is invisible to the X server (the
// active window is then None), so its application is the one that last reported a focus or a
// window activation on the accessibility bus, and its names come from its process.

#include <QElapsedTimer>
#include <QString>
#include <optional>

#include "platform/Ax.h"
#include "platform/Workspace.h"
#include "platform/linux/atspi/AtRef.h"
#include "platform/linux/identity/AppIdentity.h"
#include "platform/linux/identity/DesktopEntries.h"

namespace linuxdesk {

class AtspiAx;
class X11Workspace;

class NativeRoute {
public:
    NativeRoute(X11Workspace& x11, AtspiAx& ax) : x11_(x11), ax_(ax) {}

    // The frontmost application, and with it the decision which backend serves it.
    std::optional<platform::RunningApp> frontmost();

    // Whether the application frontmost at the last ask is a native Wayland one.
    bool native() const { return front_.has_value(); }
    // Whether an element belongs to that native application.
    bool owns(const platform::Element& element) const;
    // Its focused element; null when not native or nothing is focused.
    platform::Element focused();
    // Whether it is a web browser (Gecko or Chromium), whose page editors take text only from a
    // real paste.
    bool web() const { return front_ && front_->web; }
    // Its display name, for the log.
    QString name() const { return front_ ? front_->app.name : QString(); }

private:
    // The application whose window is active: before any focus was heard (the window was
    // focused before Glimmo listened), or when the one heard last is no longer active.
    AtRef activeApplication();
    static bool hasActiveWindow(const AtRef& app);
    // Whether a search may run now: at most once a second.
    bool searchDue();

    struct Front {
        QString bus;
        platform::RunningApp app;
        bool web = false;
    };

    X11Workspace& x11_;
    AtspiAx& ax_;
    DesktopEntries entries_;
    AppIdentity identity_{entries_};
    std::optional<Front> front_;
    AtRef overruled_;  // the latest focus heard, found no longer active
    AtRef standIn_;    // the application found active instead
    QElapsedTimer lastSearch_;
};

}  // namespace linuxdesk
