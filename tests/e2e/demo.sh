#!/usr/bin/env bash
# tests/e2e/demo.sh [BUILD_DIR]
#
# Shows Glimmo at work where there is no desktop session: starts it on a private virtual
# desktop (desktop.sh), opens the sample GTK editor, types a paragraph with typical mistakes,
# waits for the suggestion, takes a screenshot of the bubble, presses Tab, takes a second one,
# and prints the paragraph before and after and where the screenshots are.
#
# Uses the signed-in `claude` program when there is one; otherwise it says so and the scripted
# stand-in plays a canned answer. Glimmo's settings and log go to a temporary folder, never to
# the user's own.
set -uo pipefail

here=$(cd "$(dirname "$0")" && pwd)
repo=$(cd "$here/../.." && pwd)
build=$(cd "${1:-$repo/build}" && pwd)
paragraph=$(cat "$here/demo-paragraph.txt")

fail() {
    echo "demo: $*" >&2
    exit 1
}

# The places Glimmo itself looks for the program, then PATH.
find_claude() {
    local c
    for c in "$HOME/.local/bin/claude" "$HOME/.claude/local/claude" /opt/homebrew/bin/claude \
        /usr/local/bin/claude; do
        [ -f "$c" ] && [ -x "$c" ] && { echo "$c"; return; }
    done
    if [ -d "$HOME/.nvm/versions/node" ]; then
        while read -r c; do
            [ -f "$c" ] && [ -x "$c" ] && { echo "$c"; return; }
        done < <(ls -1 "$HOME/.nvm/versions/node" | sort -rV | sed "s|.*|$HOME/.nvm/versions/node/&/bin/claude|")
    fi
    command -v claude 2>/dev/null || true
}

if [ "${GLIMMO_DEMO_INSIDE:-}" != 1 ]; then
    for f in glimmo glimmo-gtk-editor glimmo-screenshot tests/support/claude-standin; do
        [ -x "$build/$f" ] || fail "$build/$f is missing; build first (./run does)"
    done

    work=$(mktemp -d /tmp/glimmo-demo.XXXXXX)
    trap 'rm -rf "$work"' EXIT
    out="$build/demo"
    rm -rf "$out" && mkdir -p "$out"

    claude=$(find_claude)
    answer=""
    if [ -n "$claude" ]; then
        answer=$(printf 'Reply with the word OK.' |
            timeout 30 "$claude" -p --model claude-haiku-5-5 2>&1)
        status=$?
    fi
    if [ -n "$claude" ] && [ $status = 0 ] && [[ "$answer" == *OK* ]]; then
        echo "Using the signed-in claude program at $claude."
        # claude keeps its sign-in under the real HOME; Glimmo's own files go elsewhere.
        export XDG_DATA_HOME="$work/data" XDG_CONFIG_HOME="$work/config"
        export GLIMMO_DEMO_CANNED=0
    else
        if [ -z "$claude" ]; then
            why="no claude program found"
        elif [[ "$answer" == *"Not logged in"* ]]; then
            why="the claude program at $claude is not signed in (run it once and sign in)"
        else
            why="the claude program at $claude did not answer a test request"
        fi
        echo "No signed-in claude: $why; the scripted stand-in plays canned answers instead."
        export HOME="$work/home"
        unset XDG_DATA_HOME XDG_CONFIG_HOME
        mkdir -p "$HOME/standin"
        claude="$build/tests/support/claude-standin"
        printf 'answer %s\n' "$(cat "$here/demo-canned-rewrite.txt")" >"$HOME/standin/script"
        export GLIMMO_DEMO_CANNED=1
    fi
    support="${XDG_DATA_HOME:-$HOME/.local/share}/Glimmo"
    mkdir -p "$support"
    echo "$claude" >"$support/claude-path"
    touch "$support/debug.flag"
    # Set up as a user who went through the setup window, so it stays closed during the demo.
    config="${XDG_CONFIG_HOME:-$HOME/.config}/Glimmo"
    mkdir -p "$config"
    [ -f "$config/defaults.json" ] || echo '{"name": "Alex"}' >"$config/defaults.json"
    export GLIMMO_DEMO_SUPPORT="$support" GLIMMO_DEMO_OUT="$out" GLIMMO_DEMO_WORK="$work"
    GLIMMO_DEMO_INSIDE=1 "$here/desktop.sh" "$0" "$build"
    status=$?
    [ $status = 77 ] && fail "the virtual desktop cannot start here (see above)"
    exit $status
fi

# Inside the virtual desktop.
out=$GLIMMO_DEMO_OUT
work=$GLIMMO_DEMO_WORK
log="$GLIMMO_DEMO_SUPPORT/log.txt"
pids=()
trap 'for p in "${pids[@]}"; do kill "$p" 2>/dev/null; done; wait 2>/dev/null' EXIT

# Waits up to $1 seconds for the command after it to succeed.
wait_for() {
    local seconds=$1
    shift
    local end=$((SECONDS + seconds))
    until "$@"; do
        [ $SECONDS -lt $end ] || return 1
        sleep 0.1
    done
}
# Log lines from line $typed on: an answer to a pause in the middle of typing is no answer.
typed=1
in_log() { tail -n +"$typed" "$log" 2>/dev/null | grep -q -- "$1"; }
editor_ready() { grep -q '^ready$' "$work/editor.out"; }
bubble_up() { [ -n "$(xdotool search --onlyvisible --pid "$glimmo" 2>/dev/null)" ]; }
# The editor's text, copied out the way a user would and read by another application.
editor_text() {
    xdotool key ctrl+a ctrl+c
    sleep 0.3
    "$build/glimmo-gtk-editor" --print-clipboard | sed -n 's/^text //p'
    xdotool key End
}

"$build/glimmo" >"$work/glimmo.out" 2>&1 &
glimmo=$!
pids+=($glimmo)
wait_for 15 in_log "started, accessibility" || fail "Glimmo did not start: $(cat "$work/glimmo.out")"

"$build/glimmo-gtk-editor" --title "Sample editor" --text "" >"$work/editor.out" 2>&1 &
pids+=($!)
wait_for 15 editor_ready || fail "the sample editor did not open"
sleep 0.3

echo "Typing into the sample editor..."
xdotool type --delay 8 "$paragraph"
typed=$(($(wc -l <"$log") + 1))
wait_for 45 in_log "chars -> suggestion" || {
    in_log "claude failed after" && fail "claude failed; see $log"
    fail "no suggestion came within 45 seconds; see $log"
}
wait_for 5 bubble_up || fail "the bubble did not show"
sleep 0.5
"$build/glimmo-screenshot" "$out/1-suggestion.png"

xdotool key Tab
sleep 1.5
"$build/glimmo-screenshot" "$out/2-after-tab.png"
after=$(editor_text)

label="Claude's rewrite"
[ "$GLIMMO_DEMO_CANNED" = 1 ] && label="Rewrite (canned answer of the stand-in)"
echo
echo "Typed:"
echo "  $paragraph"
echo "$label, after Tab:"
echo "  $after"
echo
echo "Screenshots:"
echo "  $out/1-suggestion.png   the suggestion bubble at the caret"
echo "  $out/2-after-tab.png    the paragraph after Tab"
[ "$after" != "$paragraph" ] || fail "the paragraph did not change"
