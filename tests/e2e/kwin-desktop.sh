#!/usr/bin/env bash
# tests/e2e/kwin-desktop.sh COMMAND [ARGS...]
#
# Runs COMMAND inside a private Plasma-style Wayland desktop: headless KWin (kwin_wayland
# --virtual) with one 1280x800 output and Xwayland, a private session bus (KWin's scripting,
# global shortcuts and window rules live on it) and the accessibility bus switched on, HOME and
# the XDG folders private (kglobalshortcutsrc is read from $XDG_CONFIG_HOME afterwards).
# COMMAND gets WAYLAND_DISPLAY, DISPLAY (Xwayland), XDG_SESSION_TYPE=wayland,
# XDG_CURRENT_DESKTOP=KDE and, as from wayland-desktop.sh, GLIMMO_WAYLAND_KEYS (here the keys go
# through KWin's fake-input protocol), GLIMMO_KWIN_LOG, KWin's output (what scripts print), and
# GLIMMO_KWIN_VERSION.
# Everything started here is stopped when COMMAND ends; COMMAND's exit status is returned.
# Skips with 77 when the desktop cannot start, fails with 1 under CI=true, as desktop.sh.
#
# KWin's permission checks stay on: KWin grants its restricted interfaces to a program whose
# desktop entry names it by path. The built Glimmo gets Glimmo's own launcher entry (fake
# input, for its paste), the test keyboard one of its own, and COMMAND KWin's screenshots
# (ScreenShot2), as a screenshot tool does, and fake input for an engine it runs itself. KWin
# offers screenshots only when it draws with OpenGL: KWin 5.27 does through Mesa's software
# renderer, KWin 6 only with a render node.
#
# KWIN_DESKTOP_SCALE=S scales the output by S, with X11 programs scaling themselves and told
# so through Xft.dpi, as Plasma sets up a high-density screen. KWin 5.27 keeps the desktop
# 1280x800 in its logical pixels, KWin 6 makes it S times that.
#
# Debugging: KWIN_DESKTOP_KEEP=DIR leaves the logs of KWin and of the keyboard in DIR.
set -uo pipefail
here=$(cd "$(dirname "$0")" && pwd)
. "$here/session.sh"

[ $# -gt 0 ] || { echo "usage: $0 COMMAND [ARGS...]" >&2; exit 2; }

for tool in kwin_wayland Xwayland dbus-daemon dbus-send xprop; do
    command -v "$tool" >/dev/null || cannot_start "$tool is not installed"
done
keys=${GLIMMO_WAYLAND_KEYS:-$here/../../build/glimmo-wayland-keys}
[ -x "$keys" ] || cannot_start "no keyboard: $keys is not built (GLIMMO_TESTS=ON)"
export GLIMMO_WAYLAND_KEYS=$keys

session_begin glimmo-kwin
on_session_end() {
    [ -z "${KWIN_DESKTOP_KEEP:-}" ] && return
    mkdir -p "$KWIN_DESKTOP_KEEP" && cp "$work"/*.log "$KWIN_DESKTOP_KEEP"/
}
# KWin picks its own Qt platform and takes no KDE session's; COMMAND gets the caller's.
caller_qpa=${QT_QPA_PLATFORM-}
unset DISPLAY XAUTHORITY WAYLAND_DISPLAY WAYLAND_SOCKET QT_QPA_PLATFORM
unset KDE_FULL_SESSION KDE_SESSION_VERSION
export XDG_SESSION_TYPE=wayland XDG_CURRENT_DESKTOP=KDE
export HOME=$work/home
export XDG_CONFIG_HOME=$HOME/.config XDG_DATA_HOME=$HOME/.local/share
export XDG_CACHE_HOME=$HOME/.cache XDG_STATE_HOME=$HOME/.local/state
mkdir -p "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME"

# entry NAME PROGRAM LINE: a launcher entry naming PROGRAM by its path, with LINE.
entry() {
    cat >"$XDG_DATA_HOME/applications/$1.desktop" <<EOF
[Desktop Entry]
Type=Application
Name=$1
Exec=$(readlink -f "$(command -v "$2")")
$3
EOF
}
mkdir -p "$XDG_DATA_HOME/applications"
# COMMAND may run Glimmo's engine itself.
entry glimmo-test-command "$1" "X-KDE-DBUS-Restricted-Interfaces=org.kde.KWin.ScreenShot2
X-KDE-Wayland-Interfaces=org_kde_kwin_fake_input"
entry glimmo-test-keyboard "$keys" X-KDE-Wayland-Interfaces=org_kde_kwin_fake_input
glimmo=$(dirname "$keys")/glimmo
[ -x "$glimmo" ] &&
    sed "s|^Exec=.*|Exec=$(readlink -f "$glimmo")|" "$here/../../packaging/glimmo.desktop" \
        >"$XDG_DATA_HOME/applications/glimmo.desktop"
# KWin finds entries in KDE's application cache, which lists those its applications menu
# holds: Plasma's session brings that menu (KDE Frameworks 5 came with one, 6 does not).
mkdir -p "$XDG_CONFIG_HOME/menus"
echo '<Menu><Name>Applications</Name><DefaultAppDirs/><Include><All/></Include></Menu>' \
    >"$XDG_CONFIG_HOME/menus/applications.menu"
for build_cache in kbuildsycoca6 kbuildsycoca5; do
    command -v $build_cache >/dev/null && { $build_cache >"$work/sycoca.log" 2>&1; break; }
done

session_bus
session_a11y
x11_socket_folder

# Debian gives kwin_wayland a file capability (real-time scheduling, or more open files); where
# the machine's bounding set lacks it (containers), the kernel refuses to start it at all. A copy
# has none, and KWin loads its own parts when its name stays kwin_wayland.
kwin_program=$(command -v kwin_wayland)
if ! "$kwin_program" --version >/dev/null 2>&1; then
    mkdir -p "$work/bin" && cp "$kwin_program" "$work/bin/kwin_wayland" &&
        kwin_program=$work/bin/kwin_wayland
fi

# A scaled screen as Plasma sets one up: X11 programs scale themselves, told the scale.
kwin_version=$("$kwin_program" --version 2>/dev/null | sed -n 's/^kwin \([0-9.]*\).*/\1/p')
[ -n "${KWIN_DESKTOP_SCALE:-}" ] &&
    printf '[Xwayland]\nScale=%s\n' "$KWIN_DESKTOP_SCALE" >"$XDG_CONFIG_HOME/kwinrc"

# Software drawing and no lock screen. KWin tells the programs it starts where its displays
# are; one of them reports them here and stays.
mkfifo "$work/displays"
LIBGL_ALWAYS_SOFTWARE=1 \
    "$kwin_program" --virtual --width 1280 --height 800 ${KWIN_DESKTOP_SCALE:+--scale $KWIN_DESKTOP_SCALE} --socket glimmo-kwin --xwayland \
    --no-lockscreen \
    "sh -c 'echo \"\$WAYLAND_DISPLAY \$DISPLAY \$XAUTHORITY\" >$work/displays; while kill -0 \$PPID 2>/dev/null; do sleep 1; done'" \
    >"$work/kwin.log" 2>&1 &
kwin=$!
pids+=("$kwin")
displays=""
read -r -t 30 displays <"$work/displays" || true
read -r WAYLAND_DISPLAY DISPLAY XAUTHORITY <<<"$displays"
[ -n "${WAYLAND_DISPLAY:-}" ] && [ -n "${DISPLAY:-}" ] ||
    cannot_start "KWin did not start ($(grep -v '^$' "$work/kwin.log" | tail -n 3))"
export WAYLAND_DISPLAY DISPLAY
[ -n "${XAUTHORITY:-}" ] && export XAUTHORITY || unset XAUTHORITY
for _ in $(seq 1 100); do
    session_has_name org.kde.KWin && session_has_name org.kde.kglobalaccel && break
    sleep 0.1
done
session_has_name org.kde.kglobalaccel || cannot_start "KWin's global shortcuts are not served"
# Xwayland starts when the first X client connects.
for _ in $(seq 1 100); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && break
    sleep 0.1
done
xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' ||
    cannot_start "Xwayland does not answer on $DISPLAY"

# X11 programs that scale themselves learn the scale as Plasma tells them, through Xft.dpi.
[ -n "${KWIN_DESKTOP_SCALE:-}" ] &&
    xprop -root -f RESOURCE_MANAGER 8s -set RESOURCE_MANAGER \
        "Xft.dpi:	$(awk "BEGIN { print 96 * $KWIN_DESKTOP_SCALE }")"

session_keyboard "$keys"

[ -n "$caller_qpa" ] && export QT_QPA_PLATFORM=$caller_qpa
export GLIMMO_KWIN_LOG=$work/kwin.log
export GLIMMO_KWIN_VERSION=$kwin_version
echo "kwin desktop up: KWin $GLIMMO_KWIN_VERSION, WAYLAND_DISPLAY=$WAYLAND_DISPLAY DISPLAY=$DISPLAY" >&2
"$@"
status=$?
exit $status
