#!/usr/bin/env bash
# tests/e2e/wayland-desktop.sh COMMAND [ARGS...]
#
# Runs COMMAND inside a private GNOME-style Wayland desktop: headless mutter with one 1280x800
# virtual monitor and Xwayland, a private session bus and the accessibility bus switched on
# (as desktop.sh). COMMAND gets WAYLAND_DISPLAY (native applications; GTK picks it on its own,
# or force it with GDK_BACKEND=wayland), DISPLAY (Xwayland: X11 clients such as Glimmo's own
# windows with QT_QPA_PLATFORM=xcb) and XDG_SESSION_TYPE=wayland. Everything started here is
# stopped when COMMAND ends; COMMAND's exit status is returned. Skips with 77 when the desktop
# cannot start, fails with 1 under CI=true, as desktop.sh.
#
# Keys: headless mutter has no keyboard and Xwayland's XTest reaches X11 windows only, so
# xdotool cannot type into native windows. Keys go through one long-lived remote-desktop
# session served by glimmo-wayland-keys (started here; $GLIMMO_WAYLAND_KEYS names it, by
# default build/glimmo-wayland-keys, built with GLIMMO_TESTS=ON):
#     "$GLIMMO_WAYLAND_KEYS" type 'Some text, ünïcödé too'
#     "$GLIMMO_WAYLAND_KEYS" key ctrl+a Tab shift+Tab Escape Return
# Each call returns once mutter has every event (the application may still be reading them).
# ASCII is typed with its keys; other characters through GTK's Ctrl+Shift+U code entry, which
# only GTK applications understand. C++ tests: tests/e2e/WaylandKeys.h.
#
# Debugging: WAYLAND_DESKTOP_KEEP=DIR leaves the logs of mutter and of the keyboard in DIR.
set -uo pipefail
here=$(cd "$(dirname "$0")" && pwd)
. "$here/session.sh"

[ $# -gt 0 ] || { echo "usage: $0 COMMAND [ARGS...]" >&2; exit 2; }

for tool in mutter Xwayland dbus-daemon dbus-send xprop; do
    command -v "$tool" >/dev/null || cannot_start "$tool is not installed"
done
keys=${GLIMMO_WAYLAND_KEYS:-$here/../../build/glimmo-wayland-keys}
[ -x "$keys" ] || cannot_start "no keyboard: $keys is not built (GLIMMO_TESTS=ON)"
export GLIMMO_WAYLAND_KEYS=$keys

session_begin glimmo-wayland
on_session_end() {
    [ -z "${WAYLAND_DESKTOP_KEEP:-}" ] && return
    mkdir -p "$WAYLAND_DESKTOP_KEEP" && cp "$work"/*.log "$WAYLAND_DESKTOP_KEEP"/
}
# The caller's displays do not leak into this desktop.
unset DISPLAY XAUTHORITY WAYLAND_DISPLAY WAYLAND_SOCKET
export XDG_SESSION_TYPE=wayland

session_bus
session_a11y
x11_socket_folder

# Mutter tells the programs it starts where its displays are; one of them reports them here
# and stays until mutter ends (mutter stops when that program ends).
mkfifo "$work/displays"
GSETTINGS_BACKEND=memory mutter --headless --wayland --virtual-monitor 1280x800 \
    --wayland-display glimmo-wayland -- \
    sh -c 'echo "$WAYLAND_DISPLAY $DISPLAY $XAUTHORITY" >"$0"; while kill -0 "$PPID" 2>/dev/null; do sleep 1; done' \
    "$work/displays" >"$work/mutter.log" 2>&1 &
pids+=($!)
displays=""
read -r -t 30 displays <"$work/displays" || true
read -r WAYLAND_DISPLAY DISPLAY XAUTHORITY <<<"$displays"
[ -n "${WAYLAND_DISPLAY:-}" ] && [ -n "${DISPLAY:-}" ] ||
    cannot_start "mutter did not start ($(tail -n 3 "$work/mutter.log"))"
export WAYLAND_DISPLAY DISPLAY XAUTHORITY

# Ready: Xwayland answers and mutter manages its windows, and the remote desktop is served.
ready=""
for _ in $(seq 1 100); do
    if [ -S "$XDG_RUNTIME_DIR/$WAYLAND_DISPLAY" ] &&
        xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' &&
        session_has_name org.gnome.Mutter.RemoteDesktop; then
        ready=1
        break
    fi
    sleep 0.1
done
[ -n "$ready" ] || cannot_start "mutter is not ready ($(tail -n 3 "$work/mutter.log"))"

session_keyboard "$keys"

echo "wayland desktop up: WAYLAND_DISPLAY=$WAYLAND_DISPLAY DISPLAY=$DISPLAY" >&2
"$@"
status=$?
exit $status
