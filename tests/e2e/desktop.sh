#!/usr/bin/env bash
# tests/e2e/desktop.sh COMMAND [ARGS...]
#
# Runs COMMAND inside a private virtual desktop: Xvfb on a free display, openbox, a private
# session bus and the accessibility bus with org.a11y.Status IsEnabled set. Everything started
# here is stopped when COMMAND ends; COMMAND's exit status is returned.
#
# When the desktop cannot start, the reason is printed and the script exits with 77 (the
# "skipped" status ctest is told about), or with 1 when CI=true: there a missing desktop is a
# broken test machine, never a reason to pass.
set -uo pipefail

SKIP=77
cannot_start() {
    echo "VIRTUAL DESKTOP CANNOT START: $*" >&2
    if [ "${CI:-}" = true ]; then
        echo "(CI=true: failing, the end-to-end tests are the product's proof)" >&2
        exit 1
    fi
    echo "(skipping; install the packages listed in ./run to run these tests)" >&2
    exit $SKIP
}

[ $# -gt 0 ] || { echo "usage: $0 COMMAND [ARGS...]" >&2; exit 2; }

for tool in Xvfb openbox dbus-daemon dbus-send xdotool; do
    command -v "$tool" >/dev/null || cannot_start "$tool is not installed"
done
launcher=""
for candidate in /usr/libexec/at-spi-bus-launcher /usr/lib/at-spi2-core/at-spi-bus-launcher; do
    [ -x "$candidate" ] && launcher=$candidate && break
done
[ -n "$launcher" ] || cannot_start "at-spi-bus-launcher (at-spi2-core) is not installed"

work=$(mktemp -d /tmp/glimmo-desktop.XXXXXX)
pids=()
cleanup() {
    local i
    for ((i = ${#pids[@]} - 1; i >= 0; i--)); do kill "${pids[i]}" 2>/dev/null; done
    for ((i = ${#pids[@]} - 1; i >= 0; i--)); do wait "${pids[i]}" 2>/dev/null; done
    rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 130' INT TERM

# A display number Xvfb picks itself, so parallel runs never collide.
mkfifo "$work/displayfd"
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp -noreset \
    3>"$work/displayfd" >"$work/xvfb.log" 2>&1 &
pids+=($!)
display=""
read -r -t 15 display <"$work/displayfd" || true
[ -n "$display" ] || cannot_start "Xvfb did not report a display ($(tail -n 3 "$work/xvfb.log"))"
export DISPLAY=":$display"

export XDG_RUNTIME_DIR="$work/runtime"
mkdir -m 700 -p "$XDG_RUNTIME_DIR"

bus=$(dbus-daemon --session --fork --print-address=1 --print-pid=1 2>"$work/dbus.log") ||
    cannot_start "no session bus ($(tail -n 3 "$work/dbus.log"))"
export DBUS_SESSION_BUS_ADDRESS=$(echo "$bus" | sed -n 1p)
pids+=("$(echo "$bus" | sed -n 2p)")

openbox --sm-disable >"$work/openbox.log" 2>&1 &
pids+=($!)

# Toolkits look for the accessibility bus on their own once it is enabled; these only help the
# ones that also want to be told (Qt, Chromium and Electron).
export NO_AT_BRIDGE=0
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
export ACCESSIBILITY_ENABLED=1
unset GTK_MODULES

enable_a11y() {
    dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus \
        org.freedesktop.DBus.Properties.Set string:org.a11y.Status string:IsEnabled \
        variant:boolean:true >/dev/null 2>&1
}
a11y_address() {
    dbus-send --session --print-reply=literal --dest=org.a11y.Bus /org/a11y/bus \
        org.a11y.Bus.GetAddress 2>/dev/null | tr -d ' '
}
ok=""
for _ in $(seq 1 50); do
    if enable_a11y && [ -n "$(a11y_address)" ]; then ok=1; break; fi
    sleep 0.1
done
[ -n "$ok" ] || cannot_start "the accessibility bus (org.a11y.Bus) does not answer"

# The window manager must manage windows before the tests look for the active one.
for _ in $(seq 1 50); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && break
    sleep 0.1
done

echo "virtual desktop up on $DISPLAY" >&2
"$@"
status=$?
exit $status
