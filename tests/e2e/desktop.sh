#!/usr/bin/env bash
# tests/e2e/desktop.sh COMMAND [ARGS...]
#
# Runs COMMAND inside a private virtual desktop: Xvfb on a free display, openbox, a private
# session bus and the accessibility bus with org.a11y.Status IsEnabled set. Everything started
# here is stopped when COMMAND ends; COMMAND's exit status is returned.
#
# When the desktop cannot start, the reason is printed and the script exits with 77 (the
# "skipped" status ctest is told about), or with 1 when CI=true: there a missing desktop is a
# broken test machine, never a reason to pass. The Wayland desktop is wayland-desktop.sh.
set -uo pipefail
. "$(dirname "$0")/session.sh"

[ $# -gt 0 ] || { echo "usage: $0 COMMAND [ARGS...]" >&2; exit 2; }

for tool in Xvfb openbox dbus-daemon dbus-send xdotool; do
    command -v "$tool" >/dev/null || cannot_start "$tool is not installed"
done

session_begin glimmo-desktop

# A display number Xvfb picks itself, so parallel runs never collide.
mkfifo "$work/displayfd"
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp -noreset \
    3>"$work/displayfd" >"$work/xvfb.log" 2>&1 &
pids+=($!)
display=""
read -r -t 15 display <"$work/displayfd" || true
[ -n "$display" ] || cannot_start "Xvfb did not report a display ($(tail -n 3 "$work/xvfb.log"))"
export DISPLAY=":$display"

session_bus

openbox --sm-disable >"$work/openbox.log" 2>&1 &
pids+=($!)

session_a11y

# The window manager must manage windows before the tests look for the active one.
for _ in $(seq 1 50); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && break
    sleep 0.1
done

echo "virtual desktop up on $DISPLAY" >&2
"$@"
status=$?
exit $status
