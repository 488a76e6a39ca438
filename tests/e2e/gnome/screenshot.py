#!/usr/bin/python3
# tests/e2e/gnome/screenshot.py FILE.png: saves the whole screen of the GNOME desktop
# (gnome-desktop.sh) as a PNG, native windows included, which an X11 screenshot through
# Xwayland would leave black. GNOME Shell takes screenshots only for a caller that owns one of
# a few names; owning org.gnome.Screenshot, as the GNOME Screenshot application does, is enough.
import os
import sys

from gi.repository import Gio, GLib

if len(sys.argv) != 2:
    sys.exit("usage: screenshot.py FILE.png")
path = os.path.abspath(sys.argv[1])
bus = Gio.bus_get_sync(Gio.BusType.SESSION)
owned = bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                      "RequestName", GLib.Variant("(su)", ("org.gnome.Screenshot", 4)),
                      GLib.VariantType("(u)"), Gio.DBusCallFlags.NONE, -1).unpack()[0]
if owned != 1:
    sys.exit("org.gnome.Screenshot is owned by another program")
ok, _ = bus.call_sync("org.gnome.Shell.Screenshot", "/org/gnome/Shell/Screenshot",
                      "org.gnome.Shell.Screenshot", "Screenshot",
                      GLib.Variant("(bbs)", (False, False, path)), GLib.VariantType("(bs)"),
                      Gio.DBusCallFlags.NONE, 20000).unpack()
sys.exit(0 if ok else 1)
