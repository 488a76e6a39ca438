#pragma once
// Who holds the X clipboard. A paste, and a copy of the user's clipboard before it, are
// requests that its holder answers: a stopped holder (a debugger's, a suspended job's, a
// frozen application's) answers neither, so the copy would hold everything up and the paste
// would wait on it in the target application, and replacing it would lose what it holds.

#include <QtGlobal>
#include <optional>

struct _XDisplay;

namespace linuxdesk::x11 {

class ClipboardOwner {
public:
    ClipboardOwner() = default;
    ~ClipboardOwner();
    ClipboardOwner(const ClipboardOwner&) = delete;
    ClipboardOwner& operator=(const ClipboardOwner&) = delete;

    // The process holding the clipboard, when it is stopped; absent when it runs, when no one
    // holds the clipboard or when it cannot be told.
    std::optional<qint64> stopped();

private:
    _XDisplay* display_ = nullptr;
    bool tried_ = false;
};

// Whether /proc says the process is stopped (by a signal or a tracer).
bool processStopped(qint64 pid);

}  // namespace linuxdesk::x11
