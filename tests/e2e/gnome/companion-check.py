#!/usr/bin/python3
# tests/e2e/gnome/companion-check.py BUILD_DIR [PICTURES_DIR]: drives the GNOME Shell companion
# as Glimmo does, from inside the GNOME desktop:
#     tests/e2e/gnome-desktop.sh tests/e2e/gnome/companion-check.py build /tmp/pictures
# With native GTK 3 and GTK 4 editors it checks the focused window, the keys taken, passed on
# and given back, the menu in the top bar (clicked with a remote-desktop pointer), that a caller
# other than Glimmo is refused and that Glimmo leaving the bus ends everything. It prints which
# rectangle of the window the toolkit's window coordinates on the accessibility bus start from.
# Exits 1 when a check fails.
import json
import os
import queue
import subprocess
import sys
import tempfile
import threading
import time

import gi

gi.require_version("Atspi", "2.0")
gi.require_version("GdkPixbuf", "2.0")
from gi.repository import Atspi, GdkPixbuf, Gio, GLib  # noqa: E402

build = sys.argv[1]
pictures = sys.argv[2] if len(sys.argv) > 2 else tempfile.mkdtemp()
os.makedirs(pictures, exist_ok=True)
failures = []


def check(what, ok, detail=""):
    print(("ok   " if ok else "FAIL ") + what + (f" ({detail})" if detail else ""), flush=True)
    if not ok:
        failures.append(what)


def pump(seconds, until=lambda: False):
    end = time.monotonic() + seconds
    context = GLib.MainContext.default()
    while True:
        done = until()
        if done or time.monotonic() >= end:
            return done
        context.iteration(False)
        time.sleep(0.01)


class Glimmo:
    """A connection that owns io.glimmo.Glimmo and records the companion's signals."""

    def __init__(self, own=True):
        address = Gio.dbus_address_get_for_bus_sync(Gio.BusType.SESSION)
        self.bus = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        self.signals = []
        self.bus.signal_subscribe(None, "io.glimmo.Companion", None, "/io/glimmo/Companion",
                                  None, Gio.DBusSignalFlags.NONE,
                                  lambda *a: self.signals.append((a[4], a[5].unpack())))
        if own:
            self.name("RequestName", "(su)", ("io.glimmo.Glimmo", 4))
            pump(1)  # the companion sees the new owner

    def name(self, method, signature, args):
        return self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                  "org.freedesktop.DBus", method, GLib.Variant(signature, args),
                                  None, Gio.DBusCallFlags.NONE, -1, None)

    def call(self, method, signature=None, args=None):
        reply = self.bus.call_sync("io.glimmo.Companion", "/io/glimmo/Companion",
                                   "io.glimmo.Companion", method,
                                   GLib.Variant(signature, args) if signature else None, None,
                                   Gio.DBusCallFlags.NONE, 5000, None)
        return reply.unpack()

    def take(self, name):
        taken = [args for signal, args in self.signals if signal == name]
        self.signals = [s for s in self.signals if s[0] != name]
        return taken


class Editor:
    """A test editor and the lines it prints (key presses it got)."""

    def __init__(self, program):
        env = dict(os.environ, GDK_BACKEND="wayland")
        self.process = subprocess.Popen([os.path.join(build, program), "--text", "M"],
                                        env=env, stdout=subprocess.PIPE, text=True)
        self.lines = queue.Queue()
        threading.Thread(target=lambda: [self.lines.put(line.strip())
                                         for line in self.process.stdout], daemon=True).start()

    def wait(self, line, seconds=5):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            try:
                if self.lines.get(timeout=0.1).startswith(line):
                    return True
            except queue.Empty:
                pass
        return False

    def keys(self):
        """The keys it got since the last call, once they had time to arrive."""
        time.sleep(0.7)
        lines = [self.lines.get() for _ in range(self.lines.qsize())]
        return [line.split()[1] for line in lines if line.startswith("key ")]

    def stop(self):
        self.process.terminate()
        self.process.wait()


def press(*keys):
    subprocess.run([os.environ["GLIMMO_WAYLAND_KEYS"], "key", *keys], check=True)


def screenshot(name):
    path = os.path.join(pictures, name)
    subprocess.run([os.environ["GLIMMO_GNOME_SCREENSHOT"], path], check=True)
    return GdkPixbuf.Pixbuf.new_from_file(path)


def pixel(pixbuf, x, y):
    data, offset = pixbuf.get_pixels(), y * pixbuf.get_rowstride() + x * pixbuf.get_n_channels()
    return tuple(data[offset:offset + 3])


def icon_in_top_bar(picture):
    """The centre of the test icon's magenta in the top bar, or None."""
    found = [(x, y) for y in range(32) for x in range(1280)
             if pixel(picture, x, y) == (255, 0, 255)]
    return tuple(sum(c) // len(found) for c in zip(*found)) if found else None


def dark_pixels(pixbuf, box):
    """Black and dark grey pixels in BOX: a glyph's ink, not a shadow over the blue desktop."""
    x0, y0, w, h = box
    colors = [pixel(pixbuf, x, y) for y in range(max(0, y0), y0 + h)
              for x in range(max(0, x0), x0 + w)]
    return sum(1 for c in colors if max(c) < 90 and max(c) - min(c) < 30)


def first_character(pid):
    """The accessible text of the application PID's text view: its first character's box in
    window coordinates."""
    desktop = Atspi.get_desktop(0)
    for i in range(desktop.get_child_count()):
        app = desktop.get_child_at_index(i)
        if app and app.get_process_id() == pid:
            stack = [app]
            while stack:
                node = stack.pop()
                if node.get_role() in (Atspi.Role.TEXT, Atspi.Role.PARAGRAPH) and \
                        node.get_state_set().contains(Atspi.StateType.MULTI_LINE):
                    r = node.get_character_extents(0, Atspi.CoordType.WINDOW)
                    return (r.x, r.y, r.width, r.height)
                stack.extend(node.get_child_at_index(j) for j in range(node.get_child_count()))
    return None


def window_checks(glimmo, stranger, program):
    print(f"-- {program}", flush=True)
    editor = Editor(program)
    check("the editor shows", editor.wait("ready"))
    pump(0.5)
    window = glimmo.call("FocusedWindow")[0]
    check("FocusedWindow is the editor", window.get("pid") == editor.process.pid, str(window))
    check("it is a native window", window.get("wayland") is True)

    # Where the first character really is on the screen: within the box the accessibility bus
    # gives, placed at the frame's or at the buffer's top-left.
    char = first_character(editor.process.pid)
    check("the accessibility bus gives the text's character boxes", char is not None)
    if char:
        picture = screenshot(f"gnome-{program}.png")
        ink = {rect: dark_pixels(picture, (x + char[0], y + char[1], char[2], char[3]))
               for rect, x, y in (("frame", window["x"], window["y"]),
                                  ("buffer", window["bufferX"], window["bufferY"]))}
        check("the character is where one of the rectangles puts it",
              sorted(ink.values())[0] == 0 < sorted(ink.values())[1], f"dark pixels: {ink}")
        print(f"     {program}: window coordinates start at the "
              f"{max(ink, key=ink.get)}'s top-left", flush=True)

    glimmo.call("WantKeys", "(b)", (True,))
    glimmo.take("KeyPressed")
    for key in ("Tab", "Escape", "Up", "Down"):
        press(key)
        check(f"{key} is taken", pump(3, lambda: glimmo.take("KeyPressed") == [(key,)]))
    check("the editor got none of them", editor.keys() == [])
    check("the other caller heard nothing", not pump(0.3, lambda: bool(stranger.signals)))

    press("shift+Tab")
    check("Shift+Tab goes to the editor", "ISO_Left_Tab" in editor.keys())
    check("and is not taken", glimmo.take("KeyPressed") == [])

    for key in ("Tab", "Up"):
        glimmo.call("PassKey", "(s)", (key,))
        check(f"PassKey({key}) reaches the editor", editor.keys() == [key])
        check("and is not reported as a press", glimmo.take("KeyPressed") == [])
    press("Tab")
    check("the next Tab is taken again", pump(3, lambda: glimmo.take("KeyPressed") == [("Tab",)])
          and editor.keys() == [])

    glimmo.call("WantKeys", "(b)", (False,))
    press("Tab")
    check("after WantKeys(false) Tab goes to the editor", editor.keys() == ["Tab"])
    check("and is not taken", glimmo.take("KeyPressed") == [])
    return editor


def menu_checks(glimmo, editor):
    print("-- menu", flush=True)
    icon = os.path.join(pictures, "glimmo-check-icon.svg")
    with open(icon, "w") as f:
        f.write('<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16">'
                '<rect width="16" height="16" fill="#ff00ff"/></svg>')
    rows = [{"title": "Pause", "checkable": True, "checked": True, "enabled": True},
            {"separator": True},
            {"title": "Not now", "enabled": False},
            {"title": "Settings…", "enabled": True}]
    glimmo.call("SetMenu", "(ss)", (icon, json.dumps(rows)))
    pump(0.5)
    spot = icon_in_top_bar(screenshot("gnome-menu-icon.png"))
    check("the icon is in the top bar", spot is not None, str(spot))
    if not spot:
        return icon, rows

    # A pointer of its own: relative moves are not accelerated, so a long move into the corner
    # and one of the icon's offset lands on it (the bottom-right corner: the top-left one opens
    # the overview).
    bus = glimmo.bus
    session = bus.call_sync("org.gnome.Mutter.RemoteDesktop", "/org/gnome/Mutter/RemoteDesktop",
                            "org.gnome.Mutter.RemoteDesktop", "CreateSession", None, None,
                            Gio.DBusCallFlags.NONE, -1, None).unpack()[0]

    def pointer(method, signature=None, args=None):
        bus.call_sync("org.gnome.Mutter.RemoteDesktop", session,
                      "org.gnome.Mutter.RemoteDesktop.Session", method,
                      GLib.Variant(signature, args) if signature else None, None,
                      Gio.DBusCallFlags.NONE, -1, None)

    def click(x, y):
        pointer("NotifyPointerMotionRelative", "(dd)", (5000.0, 5000.0))
        pointer("NotifyPointerMotionRelative", "(dd)", (x - 1279.0, y - 799.0))
        pump(0.2)
        pointer("NotifyPointerButton", "(ib)", (0x110, True))
        pointer("NotifyPointerButton", "(ib)", (0x110, False))

    pointer("Start")
    pump(0.5)
    pointer("NotifyPointerMotionRelative", "(dd)", (1.0, 1.0))  # the seat learns the device
    pump(0.5)
    click(*spot)
    check("clicking the icon opens the menu", pump(3, lambda: glimmo.take("MenuOpening") != []))
    pump(0.5)
    screenshot("gnome-menu-open.png")
    rows[0]["checked"] = False
    rows[3]["title"] = "Settings changed while open"
    glimmo.call("SetMenu", "(ss)", (icon, json.dumps(rows)))
    pump(0.5)
    # The last row is at the bottom of the menu, which hangs below the icon.
    picture = screenshot("gnome-menu-updated.png")
    background = pixel(picture, spot[0], 50)
    bottom = max(y for y in range(50, 400) if pixel(picture, spot[0], y) == background)
    click(spot[0], bottom - 24)
    check("clicking a row reports it", pump(3, lambda: glimmo.take("MenuActivated") == [(3,)]))
    check("the editor got no key meanwhile", editor.keys() == [])

    glimmo.call("HideMenu")
    pump(0.5)
    check("HideMenu removes the icon", icon_in_top_bar(screenshot("gnome-menu-hidden.png")) is None)
    return icon, rows


def main():
    glimmo = Glimmo()
    stranger = Glimmo(own=False)
    hello = glimmo.call("Hello")
    check("Hello", hello[0] == 1, str(hello))
    try:
        stranger.call("FocusedWindow")
        check("a caller not owning io.glimmo.Glimmo is refused", False)
    except GLib.Error as e:
        check("a caller not owning io.glimmo.Glimmo is refused",
              "AccessDenied" in e.message, e.message)

    window_checks(glimmo, stranger, "glimmo-gtk4-editor").stop()
    editor = window_checks(glimmo, stranger, "glimmo-gtk-editor")
    icon, rows = menu_checks(glimmo, editor)

    print("-- Glimmo leaves", flush=True)
    glimmo.call("SetMenu", "(ss)", (icon, json.dumps(rows)))
    glimmo.call("WantKeys", "(b)", (True,))
    glimmo.name("ReleaseName", "(s)", ("io.glimmo.Glimmo",))
    pump(1)
    press("Tab")
    check("the keys are given back", editor.keys() == ["Tab"])
    check("the icon goes", icon_in_top_bar(screenshot("gnome-glimmo-left.png")) is None)
    editor.stop()
    print(f"{len(failures)} checks failed" if failures else "all checks passed", flush=True)
    return 1 if failures else 0


sys.exit(main())
