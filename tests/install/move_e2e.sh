#!/usr/bin/env bash
# move_e2e.sh BUILD_DIR: the built program, installed as a bundle in a temporary folder and
# started there with a temporary home, copies itself to ~/.local/opt/Glimmo, writes its launcher
# entry and relaunches the copy with -setup; the copy, started again, stays.
set -euo pipefail
build=$1
tmp=$(mktemp -d /tmp/glimmo-move.XXXXXX)
pids=()
cleanup() {
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
    rm -rf "$tmp"
}
trap cleanup EXIT
failed=0
check() {  # check DESCRIPTION COMMAND...
    if "${@:2}"; then echo "ok: $1"; else echo "FAILED: $1"; failed=$((failed + 1)); fi
}
wait_for() {  # wait_for SECONDS COMMAND...
    local end=$((SECONDS + $1))
    until "${@:2}"; do [ $SECONDS -lt $end ] || return 1; sleep 0.2; done
}

cmake --install "$build" --prefix "$tmp/Downloads/Glimmo" >/dev/null
export HOME=$tmp/home QT_QPA_PLATFORM=offscreen
unset XDG_DATA_HOME XDG_CONFIG_HOME DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS
mkdir -p "$HOME"
dest=$HOME/.local/opt/Glimmo
log=$HOME/.local/share/Glimmo/log.txt

# Started from the download: it installs, relaunches and quits by itself.
check "the download quits after the move" timeout 20 "$tmp/Downloads/Glimmo/bin/glimmo"
check "the move is logged" grep -q " moved into Applications$" "$log"
check "the copy's program is executable" test -x "$dest/bin/glimmo"
check "the launcher entry names the copy" \
    grep -qx "Exec=\"$dest/bin/glimmo\"" "$HOME/.local/share/applications/glimmo.desktop"
check "the terminal link" test "$(readlink "$HOME/.local/bin/glimmo")" = "$dest/bin/glimmo"

copy_pid() { pgrep -f -x "$dest/bin/glimmo -setup" | head -1; }
has_copy() { [ -n "$(copy_pid)" ]; }
check "the copy started with -setup" wait_for 10 has_copy
pid=$(copy_pid || true)
[ -n "$pid" ] && pids+=("$pid")

# The installed copy started again stays where it is.
lines=$(grep -c "moved into Applications" "$log")
[ -n "$pid" ] && kill "$pid" && wait_for 10 sh -c "! kill -0 $pid 2>/dev/null"
"$dest/bin/glimmo" >/dev/null 2>&1 &
pids+=($!)
sleep 3
check "the installed copy keeps running" kill -0 "${pids[-1]}"
check "and does not move again" test "$(grep -c "moved into Applications" "$log")" = "$lines"

[ $failed -eq 0 ]
