# tests/e2e/session.sh: what the virtual desktops (desktop.sh, the Wayland ones) share, sourced
# by them: the skip-or-fail rule, a private folder whose processes are stopped on exit, the
# private session bus and the accessibility bus.

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

# session_begin NAME: $work, a private folder, and $pids, the processes stopped (last started,
# first stopped) when the script exits.
session_begin() {
    work=$(mktemp -d "/tmp/$1.XXXXXX")
    pids=()
    trap session_end EXIT
    trap 'exit 130' INT TERM
}
session_end() {
    local i
    for ((i = ${#pids[@]} - 1; i >= 0; i--)); do kill "${pids[i]}" 2>/dev/null; done
    for ((i = ${#pids[@]} - 1; i >= 0; i--)); do wait "${pids[i]}" 2>/dev/null; done
    if declare -F on_session_end >/dev/null; then on_session_end; fi
    rm -rf "$work"
}

# Xwayland under mutter (GNOME Shell too) needs the X sockets' folder to exist, shared and
# sticky; where it does not yet (a machine that never ran an X server), mutter makes it unwritable
# and gives up. Xvfb makes its own.
x11_socket_folder() {
    [ "$(stat -c %a /tmp/.X11-unix 2>/dev/null)" = 1777 ] && return
    mkdir -p /tmp/.X11-unix 2>/dev/null && chmod 1777 /tmp/.X11-unix 2>/dev/null || true
}

# A runtime folder and a session bus of this desktop alone.
session_bus() {
    export XDG_RUNTIME_DIR="$work/runtime"
    mkdir -m 700 -p "$XDG_RUNTIME_DIR"
    local bus
    bus=$(dbus-daemon --session --fork --print-address=1 --print-pid=1 2>"$work/dbus.log") ||
        cannot_start "no session bus ($(tail -n 3 "$work/dbus.log"))"
    DBUS_SESSION_BUS_ADDRESS=$(echo "$bus" | sed -n 1p)
    export DBUS_SESSION_BUS_ADDRESS
    pids+=("$(echo "$bus" | sed -n 2p)")
}

# The accessibility bus, started on the session bus and switched on for every application.
session_a11y() {
    local launcher="" candidate
    for candidate in /usr/libexec/at-spi-bus-launcher /usr/lib/at-spi2-core/at-spi-bus-launcher; do
        [ -x "$candidate" ] && launcher=$candidate && break
    done
    [ -n "$launcher" ] || cannot_start "at-spi-bus-launcher (at-spi2-core) is not installed"

    # GTK 3 registers whenever the accessibility bus answers (unless NO_AT_BRIDGE=1); Qt
    # follows the bus's "IsEnabled" unless told to stay on. Chromium and Electron look at that
    # switch only at launch; ACCESSIBILITY_ENABLED=1 makes them register even when started
    # before it. Their pages need --force-renderer-accessibility besides, which the browser
    # tests pass themselves.
    export NO_AT_BRIDGE=0
    export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
    export ACCESSIBILITY_ENABLED=1
    unset GTK_MODULES

    local ok="" address
    for _ in $(seq 1 50); do
        if dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus \
            org.freedesktop.DBus.Properties.Set string:org.a11y.Status string:IsEnabled \
            variant:boolean:true >/dev/null 2>&1; then
            address=$(dbus-send --session --print-reply=literal --dest=org.a11y.Bus /org/a11y/bus \
                org.a11y.Bus.GetAddress 2>/dev/null | tr -d ' ')
            [ -n "$address" ] && ok=1 && break
        fi
        sleep 0.1
    done
    [ -n "$ok" ] || cannot_start "the accessibility bus (org.a11y.Bus) does not answer"
}

# session_has_name NAME: whether NAME is owned on the session bus.
session_has_name() {
    dbus-send --session --print-reply=literal --dest=org.freedesktop.DBus /org/freedesktop/DBus \
        org.freedesktop.DBus.NameHasOwner "string:$1" 2>/dev/null | grep -q true
}

# session_keyboard PROGRAM: the test keyboard of a Wayland desktop (glimmo-wayland-keys),
# serving until the desktop ends.
session_keyboard() {
    mkfifo "$work/keys"
    "$1" --serve >"$work/keys" 2>"$work/keys.log" &
    pids+=($!)
    local answer=""
    read -r -t 15 answer <"$work/keys" || true
    [ "$answer" = ready ] || cannot_start "no keyboard ($(tail -n 3 "$work/keys.log"))"
}
