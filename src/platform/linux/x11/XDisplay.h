#pragma once
// Xlib connections of the backend. Each part that needs X opens its own connection, so the key
// grab's events never wait behind another part's round trips. Xlib's default error handler
// ends the process; the one installed here only notes the error, since a window that vanished
// between two requests is an everyday event.

#include <QString>
#include <optional>
#include <vector>

// Last: Xlib defines macros (None, Bool, KeyPress, ...) that clash with later Qt headers.
#include <X11/Xlib.h>

namespace linuxdesk::x11 {

// A new connection to $DISPLAY, or null when there is none.
Display* open();

// Whether any X error arrived since the last call (and forgets it).
bool takeError();

std::optional<Window> windowProperty(Display* d, Window w, const char* name);
std::optional<long> cardinalProperty(Display* d, Window w, const char* name);
std::vector<Window> windowListProperty(Display* d, Window w, const char* name);
std::vector<long> cardinalListProperty(Display* d, Window w, const char* name);
QString stringProperty(Display* d, Window w, const char* name);  // UTF8_STRING or STRING
// WM_CLASS as (instance, class).
std::pair<QString, QString> wmClass(Display* d, Window w);
// The process of the client that made the window: X-Resource first (it cannot be forged
// and works for windows of other hosts' clients), then _NET_WM_PID.
std::optional<qint64> windowPid(Display* d, Window w);

}  // namespace linuxdesk::x11
