#pragma once
// Which element has the keyboard focus in each application, learnt from the applications' own
// "object:state-changed:focused" events. Walking a tree on every poll would cost hundreds of
// bus calls, so the tree is searched only to resynchronise: when nothing was heard from an
// application yet, or the element last heard of has lost the focus without telling.

#include <QElapsedTimer>
#include <QString>
#include <map>

#include "platform/linux/atspi/AtRef.h"

namespace linuxdesk {

class FocusTracker {
public:
    FocusTracker() = default;
    ~FocusTracker();
    FocusTracker(const FocusTracker&) = delete;
    FocusTracker& operator=(const FocusTracker&) = delete;

    // Listens for focus events; true once listening. Needs the accessibility bus.
    bool start();
    // The focused element of an application (its application element); null when none.
    AtRef focused(const AtRef& application);
    // Also listens for window activations (GTK 3 reports them there as well as by focus).
    bool followActivation();
    // The element of the latest focus gained or window activated, in any application: where
    // the X server cannot say which window is active (a native Wayland one), this does.
    const AtRef& latest() const { return latest_; }
    // Number of focus events heard so far (for tests and diagnostics).
    int eventsHeard() const { return events_; }

private:
    static void onEvent(AtspiEvent* event, void* self);
    void heard(AtspiEvent* event);
    AtRef search(const AtRef& application);

    struct Entry {
        AtRef element;
        AtRef before;        // the element focused before, in case `element` is a stand-in
        bool judged = true;  // whether `element` was checked for being a stand-in
        QElapsedTimer lastSearch;
        QElapsedTimer lastCheck;  // when the element's focused state was last confirmed
    };
    void passOverStandIn(Entry& entry);
    std::map<QString, Entry> byBus_;  // bus name of the application -> its focus
    AtspiEventListener* listener_ = nullptr;
    bool activation_ = false;
    AtRef latest_;
    int events_ = 0;
};

}  // namespace linuxdesk
