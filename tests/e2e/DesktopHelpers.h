#pragma once
// Small helpers for the tests on the virtual desktop.

#include <gtest/gtest.h>

#include <QProcess>
#include <QRect>
#include <QStandardPaths>
#include <QStringList>
#include <optional>
#include <variant>

#include "TempHome.h"
#include "platform/Ax.h"

namespace desktop {

// A browser (or other program) a test starts: asked to quit when the test ends, and killed when
// it takes longer than quitMs.
class TestProcess {
public:
    explicit TestProcess(int quitMs) : quitMs_(quitMs) {}
    ~TestProcess() {
        process_.terminate();
        if (!process_.waitForFinished(quitMs_)) process_.kill();
        process_.waitForFinished(2000);
    }
    TestProcess(const TestProcess&) = delete;
    TestProcess& operator=(const TestProcess&) = delete;
    bool started() { return process_.waitForStarted(5000); }
    qint64 pid() const { return process_.processId(); }

protected:
    QProcess process_;

private:
    int quitMs_;
};

// The first of these programs on PATH; empty when there is none.
inline QString firstProgram(const QStringList& names) {
    for (const QString& name : names) {
        const QString path = QStandardPaths::findExecutable(name);
        if (!path.isEmpty()) return path;
    }
    return {};
}

// For a test that found no program of package: a failure in CI, which must have it, else a skip
// whose message starts with marker (what the test's SKIP_REGULAR_EXPRESSION looks for). The
// caller returns right after.
inline void missingPackage(const char* marker, const char* package) {
    if (qEnvironmentVariable("CI") == QLatin1String("true"))
        FAIL() << package << " is not installed (./run installs the " << package << " package)";
    GTEST_SKIP() << marker << ": " << package << " is not installed (./run installs the " << package
                 << " package)";
}

// Runs xdotool with these arguments and waits for it.
inline int xdotool(const QStringList& args) {
    return QProcess::execute("xdotool", args);
}

// What a program prints, waited for.
inline QString output(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    p.waitForFinished(10000);
    return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
}

// The keyboard layouts (setxkbmap's "us,dvorak") with group (0 the first) locked on, as a user
// switches layouts; and the group that is on. XkbLockGroup through Python, as no command has it.
inline const char* kXkbGroup = R"(
import ctypes, sys
x = ctypes.cdll.LoadLibrary("libX11.so.6")
x.XOpenDisplay.restype = ctypes.c_void_p
d = ctypes.c_void_p(x.XOpenDisplay(None))
if len(sys.argv) > 1:
    x.XkbLockGroup(d, 0x100, int(sys.argv[1])); x.XSync(d, 0)
state = (ctypes.c_ubyte * 32)()
x.XkbGetState(d, 0x100, state)
print(state[0])
)";
// layouts as the desktops' settings write them, "us,us(dvorak)"; the variant goes apart, since
// newer keyboard data dropped the old layout-name aliases such as plain "dvorak".
inline void setLayout(const QString& layouts, int group) {
    QStringList names, variants;
    for (const QString& layout : layouts.split(',')) {
        names << layout.section('(', 0, 0);
        variants << layout.section('(', 1).chopped(layout.contains('(') ? 1 : 0);
    }
    QProcess::execute("setxkbmap", {"-layout", names.join(','), "-variant", variants.join(',')});
    QProcess::execute("python3", {"-c", kXkbGroup, QString::number(group)});
}
// Layouts as users have them, the group switched on (the last, after typing, as a user
// switches): Dvorak's V is where US has K, Russian has no V at all, AZERTY moves A.
struct SwitchedLayout {
    const char* layouts;
    int group;
};
inline constexpr SwitchedLayout kSwitchedLayouts[] = {
    {"us,us(dvorak)", 1}, {"us,ru", 1}, {"us(dvorak)", 0}, {"fr", 0}};
inline int layoutGroup() {
    return output("python3", {"-c", kXkbGroup}).trimmed().toInt();
}

// Asks the window manager to maximise window (an X window id), as a title bar's button does.
inline void maximise(const QString& window) {
    static const char* script = R"(
import ctypes, sys
x = ctypes.cdll.LoadLibrary("libX11.so.6")
x.XOpenDisplay.restype = ctypes.c_void_p
x.XDefaultRootWindow.restype = ctypes.c_ulong
x.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
x.XInternAtom.restype = ctypes.c_ulong
x.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
x.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long,
                         ctypes.c_void_p]
class Message(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong),
                ("message_type", ctypes.c_ulong), ("format", ctypes.c_int),
                ("data", ctypes.c_long * 5), ("pad", ctypes.c_long * 24)]
d = ctypes.c_void_p(x.XOpenDisplay(None))
atom = lambda name: x.XInternAtom(d, name, 0)
m = Message(type=33, send_event=1, display=d, window=int(sys.argv[1], 0),
            message_type=atom(b"_NET_WM_STATE"), format=32)
m.data[0], m.data[1], m.data[2], m.data[3] = (1, atom(b"_NET_WM_STATE_MAXIMIZED_VERT"),
                                              atom(b"_NET_WM_STATE_MAXIMIZED_HORZ"), 1)
x.XSendEvent(d, x.XDefaultRootWindow(d), 0, (1 << 19) | (1 << 20), ctypes.byref(m))
x.XSync(d, 0)
)";
    QProcess::execute("python3", {"-c", script, window});
}

// The visible window of process pid whose title matches the pattern; empty when there is none.
inline QString windowOf(qint64 pid, const QString& title) {
    return output("xdotool",
                  {"search", "--onlyvisible", "--pid", QString::number(pid), "--name", title})
        .section('\n', 0, 0);
}

// That window as the X server places it (root coordinates); absent while there is none.
inline std::optional<QRect> windowFrame(qint64 pid, const QString& title) {
    const QString id = windowOf(pid, title);
    if (id.isEmpty()) return std::nullopt;
    int x = 0, y = 0, w = 0, h = 0;
    for (const QString& line :
         output("xdotool", {"getwindowgeometry", "--shell", id}).split('\n')) {
        const int value = line.section('=', 1).toInt();
        if (line.startsWith("X=")) x = value;
        if (line.startsWith("Y=")) y = value;
        if (line.startsWith("WIDTH=")) w = value;
        if (line.startsWith("HEIGHT=")) h = value;
    }
    if (w <= 0 || h <= 0) return std::nullopt;  // gone between the two questions
    return QRect(x, y, w, h);
}

// The visible bubble window of process pid.
inline std::optional<QRect> bubbleFrame(qint64 pid) {
    return windowFrame(pid, QStringLiteral("^Glimmo$"));
}

// Runs a program while this process's event loop keeps going (it may have to serve the
// clipboard to that very program); returns its standard output.
inline QString runServing(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    testsupport::waitUntil([&] { return p.state() == QProcess::NotRunning; }, 15000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

// What another application finds on the clipboard, as the GTK editor reports it:
// "targets ...", "text ...", and "image WxH" when there is an image.
inline QString foreignClipboard() {
    return runServing(qEnvironmentVariable("GLIMMO_GTK_EDITOR"), {"--print-clipboard"});
}

// The window whose title matches this pattern (xdotool's regular expression), waited for;
// empty when none shows.
inline QString windowNamed(const QString& title, int timeoutMs) {
    QString id;
    testsupport::waitUntil(
        [&] {
            id = output("xdotool", {"search", "--name", title}).section('\n', 0, 0);
            return !id.isEmpty();
        },
        timeoutMs);
    return id;
}

// A mail application answers no accessibility call while it fetches a paste from our
// clipboard, and waits for it only briefly: a test asks nothing until the paste has had its
// time, serving the clipboard meanwhile.
inline void settle() {
    testsupport::waitUntil([] { return false; }, 1500);
}

// The focused element of a process, waited for; null when none appears in time.
inline platform::Element focusedElement(platform::Ax& ax, qint64 pid, int timeoutMs = 10000) {
    platform::Element found;
    testsupport::waitUntil(
        [&] {
            const platform::Element app = ax.application(pid);
            const auto f = app ? ax.attribute(app, "AXFocusedUIElement") : std::nullopt;
            if (f && std::holds_alternative<platform::Element>(*f))
                found = std::get<platform::Element>(*f);
            return found != nullptr;
        },
        timeoutMs);
    return found;
}

// A string attribute, or "<absent>" (reads well in a failure message).
inline QString string(platform::Ax& ax, const platform::Element& e, const char* name) {
    const auto v = ax.attribute(e, name);
    return v && std::holds_alternative<QString>(*v) ? std::get<QString>(*v)
                                                    : QStringLiteral("<absent>");
}

}  // namespace desktop
