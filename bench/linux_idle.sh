#!/usr/bin/env bash
# The program at rest on the virtual desktop: the GTK test editor's text view focused with a
# paragraph already answered, then Glimmo's CPU over 60 idle seconds (share of one core) and
# its resident memory, without the claude child.
#
#   tests/e2e/desktop.sh bench/linux_idle.sh build
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
home=$(mktemp -d /tmp/glimmo-bench.XXXXXX)
trap 'kill $glimmo $editor 2>/dev/null; rm -rf "$home"' EXIT
mkdir -p "$home/.local/share/Glimmo" "$home/standin"
printf '%s' "$build/tests/support/claude-standin" >"$home/.local/share/Glimmo/claude-path"
export HOME=$home

"$build/glimmo-gtk-editor" --text "" >/dev/null & editor=$!
sleep 1.5
"$build/glimmo" >/dev/null 2>&1 & glimmo=$!
sleep 2
xdotool type --delay 30 "this are a sentence with mistake."
sleep 4  # answered and shown; from here on nothing changes

ticks=$(getconf CLK_TCK)
cpu() { awk '{print $14 + $15}' "/proc/$glimmo/stat"; }
before=$(cpu)
sleep 60
after=$(cpu)
rss=$(awk '/VmRSS/ {print $2}' "/proc/$glimmo/status")
awk -v t=$((after - before)) -v hz="$ticks" -v rss="$rss" 'BEGIN {
    printf "idle CPU over 60 s: %.2f %% of one core\nresident memory: %.1f MB\n",
           100 * t / hz / 60, rss / 1024 }'
