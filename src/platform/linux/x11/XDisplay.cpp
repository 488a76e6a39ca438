#include "platform/linux/x11/XDisplay.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <X11/extensions/XRes.h>

#include <atomic>

namespace linuxdesk::x11 {

namespace {

std::atomic<bool> sawError{false};

int noteError(Display*, XErrorEvent*) {
    sawError = true;
    return 0;
}

// Reads a property's raw items; format 32 items come as longs, as Xlib delivers them.
struct Property {
    unsigned char* data = nullptr;
    unsigned long count = 0;
    int format = 0;
    Atom type = 0;
    ~Property() {
        if (data) XFree(data);
    }
};

bool read(Display* d, Window w, const char* name, Atom wanted, Property& p) {
    if (!d || !w) return false;
    const Atom atom = XInternAtom(d, name, True);
    if (atom == 0) return false;
    unsigned long after = 0;
    const int status = XGetWindowProperty(d, w, atom, 0, 1 << 16, False, wanted, &p.type, &p.format,
                                          &p.count, &after, &p.data);
    return status == Success && p.data && p.count > 0;
}

}  // namespace

Display* open() {
    static bool installed = false;
    if (!installed) {
        XSetErrorHandler(&noteError);
        installed = true;
    }
    return XOpenDisplay(nullptr);
}

bool takeError() {
    return sawError.exchange(false);
}

std::optional<Window> windowProperty(Display* d, Window w, const char* name) {
    Property p;
    if (!read(d, w, name, XA_WINDOW, p) || p.format != 32) return std::nullopt;
    const Window value = static_cast<Window>(reinterpret_cast<unsigned long*>(p.data)[0]);
    if (value == 0) return std::nullopt;
    return value;
}

std::optional<long> cardinalProperty(Display* d, Window w, const char* name) {
    Property p;
    if (!read(d, w, name, XA_CARDINAL, p) || p.format != 32) return std::nullopt;
    return reinterpret_cast<long*>(p.data)[0];
}

std::vector<Window> windowListProperty(Display* d, Window w, const char* name) {
    Property p;
    std::vector<Window> out;
    if (!read(d, w, name, XA_WINDOW, p) || p.format != 32) return out;
    auto* items = reinterpret_cast<unsigned long*>(p.data);
    for (unsigned long i = 0; i < p.count; ++i) out.push_back(static_cast<Window>(items[i]));
    return out;
}

std::vector<long> cardinalListProperty(Display* d, Window w, const char* name) {
    Property p;
    std::vector<long> out;
    if (!read(d, w, name, XA_CARDINAL, p) || p.format != 32) return out;
    auto* items = reinterpret_cast<long*>(p.data);
    out.assign(items, items + p.count);
    return out;
}

QString stringProperty(Display* d, Window w, const char* name) {
    Property p;
    if (!read(d, w, name, AnyPropertyType, p) || p.format != 8) return {};
    return QString::fromUtf8(reinterpret_cast<const char*>(p.data), int(p.count));
}

std::pair<QString, QString> wmClass(Display* d, Window w) {
    XClassHint hint{nullptr, nullptr};
    if (!d || !w || !XGetClassHint(d, w, &hint)) return {};
    std::pair<QString, QString> out{QString::fromLocal8Bit(hint.res_name ? hint.res_name : ""),
                                    QString::fromLocal8Bit(hint.res_class ? hint.res_class : "")};
    if (hint.res_name) XFree(hint.res_name);
    if (hint.res_class) XFree(hint.res_class);
    return out;
}

std::optional<qint64> windowPid(Display* d, Window w) {
    if (!d || !w) return std::nullopt;
    int event = 0, error = 0;
    if (XResQueryExtension(d, &event, &error)) {
        XResClientIdSpec query{w, XRES_CLIENT_ID_PID_MASK};
        long count = 0;
        XResClientIdValue* values = nullptr;
        if (XResQueryClientIds(d, 1, &query, &count, &values) == Success) {
            std::optional<qint64> pid;
            for (long i = 0; i < count && !pid; ++i) {
                const pid_t p = XResGetClientPid(&values[i]);
                if (p > 0) pid = p;
            }
            XResClientIdsDestroy(count, values);
            if (pid) return pid;
        }
    }
    const auto pid = cardinalProperty(d, w, "_NET_WM_PID");
    if (pid && *pid > 0) return qint64(*pid);
    return std::nullopt;
}

}  // namespace linuxdesk::x11
