#!/usr/bin/env bash
# tests/e2e/gnome-desktop.sh COMMAND [ARGS...]
#
# Runs COMMAND inside a private GNOME Shell desktop: headless gnome-shell with one 1280x800
# virtual monitor, its top bar, Xwayland, a private session bus, an empty private system bus and
# the accessibility bus switched on, with Glimmo's companion extension (companion/) enabled and
# the overview closed. HOME and the XDG folders are private too: what GNOME keeps there
# (settings, extensions) starts fresh. COMMAND gets, as from wayland-desktop.sh,
# WAYLAND_DISPLAY, DISPLAY (Xwayland), XDG_SESSION_TYPE=wayland and GLIMMO_WAYLAND_KEYS, besides
#     "$GLIMMO_GNOME_SCREENSHOT" FILE.png     the whole screen, native windows included
# Everything started here is stopped when COMMAND ends; COMMAND's exit status is returned.
# Skips with 77 when the desktop cannot start, fails with 1 under CI=true, as desktop.sh.
#
# The companion comes from the build tree, $GLIMMO_COMPANION (by default build/companion), in
# the variant of the installed shell's format. Keys: see wayland-desktop.sh; the keyboard of
# the remote-desktop session reaches native and X11 windows alike, through the shell's key
# bindings as a real keyboard's keys do.
#
# Debugging: GNOME_DESKTOP_KEEP=DIR leaves the logs of the shell and of the keyboard in DIR.
set -uo pipefail
here=$(cd "$(dirname "$0")" && pwd)
. "$here/session.sh"

[ $# -gt 0 ] || { echo "usage: $0 COMMAND [ARGS...]" >&2; exit 2; }

for tool in gnome-shell Xwayland dbus-daemon dbus-send gsettings xprop; do
    command -v "$tool" >/dev/null || cannot_start "$tool is not installed"
done
/usr/bin/python3 -c 'import gi' 2>/dev/null || cannot_start "python3-gi is not installed"
keys=${GLIMMO_WAYLAND_KEYS:-$here/../../build/glimmo-wayland-keys}
[ -x "$keys" ] || cannot_start "no keyboard: $keys is not built (GLIMMO_TESTS=ON)"
export GLIMMO_WAYLAND_KEYS=$keys
export GLIMMO_GNOME_SCREENSHOT=$here/gnome/screenshot.py

# GNOME Shell 45 changed the extensions' format.
version=$(gnome-shell --version | sed -n 's/^GNOME Shell \([0-9.]*\).*/\1/p')
[ "${version%%.*}" -ge 45 ] 2>/dev/null && variant=45 || variant=43
companion=${GLIMMO_COMPANION:-$here/../../build/companion}/gnome-shell-$variant/glimmo@glimmo.io
[ -f "$companion/extension.js" ] || cannot_start "the companion is not built: $companion"

session_begin glimmo-gnome
on_session_end() {
    [ -z "${GNOME_DESKTOP_KEEP:-}" ] && return
    mkdir -p "$GNOME_DESKTOP_KEEP" && cp "$work"/*.log "$GNOME_DESKTOP_KEEP"/
}
unset DISPLAY XAUTHORITY WAYLAND_DISPLAY WAYLAND_SOCKET
export XDG_SESSION_TYPE=wayland XDG_CURRENT_DESKTOP=GNOME
# Before the buses start: the services they start (dconf keeps the settings) inherit these.
export HOME=$work/home
export XDG_CONFIG_HOME=$HOME/.config XDG_DATA_HOME=$HOME/.local/share
export XDG_CACHE_HOME=$HOME/.cache XDG_STATE_HOME=$HOME/.local/state
mkdir -p "$XDG_CONFIG_HOME" "$XDG_DATA_HOME/gnome-shell/extensions" "$XDG_CACHE_HOME"
cp -r "$companion" "$XDG_DATA_HOME/gnome-shell/extensions/"
# Without a display manager the shell warns once that it cannot lock the screen, over the
# windows' tops; this says it warned already.
touch "$XDG_DATA_HOME/gnome-shell/lock-warning-shown"

session_bus
session_a11y
x11_socket_folder

# The shell gives up without a system bus; an empty one will do (no logind, no accounts).
cat >"$work/system-bus.conf" <<EOF
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <listen>unix:path=$work/system-bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/><allow own="*"/><allow send_destination="*"/><allow receive_sender="*"/>
  </policy>
</busconfig>
EOF
bus=$(dbus-daemon --config-file="$work/system-bus.conf" --fork --print-address=1 --print-pid=1 \
    2>"$work/system-bus.log") || cannot_start "no system bus ($(tail -n 3 "$work/system-bus.log"))"
DBUS_SYSTEM_BUS_ADDRESS=$(echo "$bus" | sed -n 1p)
export DBUS_SYSTEM_BUS_ADDRESS
pids+=("$(echo "$bus" | sed -n 2p)")

# The companion on, and no welcome tour over the first window.
gsettings set org.gnome.shell disable-user-extensions false &&
    gsettings set org.gnome.shell enabled-extensions "['glimmo@glimmo.io']" &&
    gsettings set org.gnome.shell welcome-dialog-last-shown-version "$version" ||
    cannot_start "the shell's settings cannot be written (dconf)"

gnome-shell --headless --wayland --virtual-monitor 1280x800 --wayland-display glimmo-gnome \
    >"$work/gnome-shell.log" 2>&1 &
shell=$!
pids+=("$shell")

# OverviewActive: the overview is open; written, it opens or closes it.
overview() {
    dbus-send --session --print-reply=literal --dest=org.gnome.Shell /org/gnome/Shell \
        "org.freedesktop.DBus.Properties.$1" string:org.gnome.Shell string:OverviewActive \
        ${2:+variant:boolean:$2} 2>/dev/null
}
export WAYLAND_DISPLAY=glimmo-gnome
waiting="the shell"
for _ in $(seq 1 300); do
    kill -0 $shell 2>/dev/null || break
    # The shell tells only its own children where Xwayland is; Xwayland's command line says it.
    if [ -z "${DISPLAY:-}" ]; then
        for child in $(pgrep -P $shell -x Xwayland); do
            read -r -a argv < <(tr '\0' ' ' <"/proc/$child/cmdline")
            for ((i = 0; i < ${#argv[@]}; i++)); do
                case ${argv[i]} in
                :*) DISPLAY=${argv[i]} ;;
                -auth) XAUTHORITY=${argv[i + 1]} ;;
                esac
            done
        done
    fi
    # Started up: the shell's opening animation has ended (closing the overview it opens with
    # before then leaves the shell starting for good, taking no key binding and no click in
    # the top bar), and the companion and the remote desktop are served.
    if [ -n "${DISPLAY:-}" ] && [ -S "$XDG_RUNTIME_DIR/$WAYLAND_DISPLAY" ] &&
        grep -q "GNOME Shell started at" "$work/gnome-shell.log"; then
        waiting="the companion (io.glimmo.Companion)"
        if session_has_name io.glimmo.Companion &&
            session_has_name org.gnome.Mutter.RemoteDesktop; then
            waiting=""
            break
        fi
    fi
    sleep 0.1
done
[ -z "$waiting" ] ||
    cannot_start "$waiting did not start ($(grep -v '^$' "$work/gnome-shell.log" | tail -n 3))"
export DISPLAY XAUTHORITY
xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' ||
    cannot_start "Xwayland does not answer on $DISPLAY"

overview Set false >/dev/null
for _ in $(seq 1 100); do
    overview Get | grep -q false && break
    sleep 0.1
done

session_keyboard "$keys"
# The shell drops the first key of a keyboard it has just been given; that one is a Shift.
"$keys" key shift >/dev/null 2>>"$work/keys.log"

echo "gnome desktop up: GNOME Shell $version, WAYLAND_DISPLAY=$WAYLAND_DISPLAY DISPLAY=$DISPLAY" >&2
"$@"
status=$?
exit $status
