#!/usr/bin/env bash
# The program at rest on the virtual desktop: the GTK test editor's text view focused with a
# paragraph already answered below SIZE kilobytes of prose (none by default), then Glimmo's CPU
# over 60 idle seconds (share of one core) and its resident memory, without the claude child.
#
#   tests/e2e/desktop.sh bench/linux_idle.sh build [SIZE]
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
kilobytes=${2:-0}
. "$(dirname "$0")/glimmo_home.sh" "$build"
trap 'kill ${glimmo:-} ${editor:-} 2>/dev/null; rm -rf "$home"' EXIT
prose "$kilobytes" "$home/document.txt"
"$build/glimmo-gtk-editor" --text-file "$home/document.txt" >/dev/null & editor=$!
sleep 1.5
"$build/glimmo" >/dev/null 2>&1 & glimmo=$!
sleep 2
xdotool key ctrl+End
xdotool type --delay 30 "this are a sentence with mistake."
sleep 4  # answered and shown; from here on nothing changes

ticks=$(getconf CLK_TCK)
cpu() { awk '{print $14 + $15}' "/proc/$glimmo/stat"; }
before=$(cpu)
sleep 60
after=$(cpu)
rss=$(awk '/VmRSS/ {print $2}' "/proc/$glimmo/status")
awk -v t=$((after - before)) -v hz="$ticks" -v rss="$rss" -v size="$(stat -c %s "$home/document.txt")" 'BEGIN {
    printf "document: %d bytes before the typed paragraph\n", size
    printf "idle CPU over 60 s: %.2f %% of one core\nresident memory: %.1f MB\n",
           100 * t / hz / 60, rss / 1024 }'
