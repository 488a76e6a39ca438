#!/usr/bin/env bash
# From the last key to the suggestion on screen: a sentence typed into the GTK test editor
# (ending with a full stop, so the short pause applies), the claude stand-in answering at once,
# the bubble looked for every few milliseconds, below SIZE kilobytes of prose (none by default).
# Prints each run and the median, next to the pause the engine waits by design. With "real",
# the real `claude` program answers instead (see claude-service/), and its own warm answer time
# is measured in the same run, before and after.
#
#   tests/e2e/desktop.sh bench/linux_pause.sh build [RUNS] [SIZE] [real]
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
runs=${2:-15}
kilobytes=${3:-0}
real=${4:-}
. "$(dirname "$0")/glimmo_home.sh" "$build"
stop_standin() { :; }
trap 'kill ${glimmo:-} ${editor:-} 2>/dev/null; stop_standin; rm -rf "$home"' EXIT
if [ "$real" = real ]; then
    . "$(dirname "$0")/claude-service/real_claude.sh" "$build"
    warm_answer "$build" 5
fi
prose "$kilobytes" "$home/document.txt" 'Notes\n\n'
"$build/glimmo-gtk-editor" --text-file "$home/document.txt" >/dev/null & editor=$!
sleep 1.5
"$build/glimmo" >/dev/null 2>&1 & glimmo=$!
sleep 3

bubble() { xdotool search --onlyvisible --pid "$glimmo" --name '^Glimmo$' >/dev/null 2>&1; }
now() { date +%s.%N; }
numbers=$(seq 1 "$runs" | awk '{ split("one two three four five six seven eight nine ten", w, " ");
    print w[($1 - 1) % 10 + 1] "-" int(($1 - 1) / 10) }')
times=()
for n in $numbers; do
    xdotool key ctrl+End Return Return
    xdotool type --delay 20 "the parcel number $n is ready."
    last=$(now)
    until bubble; do
        awk -v a="$last" -v b="$(now)" 'BEGIN { exit !(b - a > 10) }' && { echo "no bubble"; exit 1; }
    done
    shown=$(now)
    times+=("$(awk -v a="$last" -v b="$shown" 'BEGIN { printf "%.3f", b - a }')")
    # The keys are taken a moment after the bubble maps.
    sleep 0.3
    while bubble; do xdotool key Escape; sleep 0.3; done
    # The next claude is started after an answer and takes a moment to be ready.
    [ "$real" = real ] && sleep 2
    sleep 0.5
done
printf '%s\n' "${times[@]}" | sort -n | awk '{ t[NR] = $1 } END {
    printf "runs: %d, last key to suggestion (s): min %.3f, median %.3f, max %.3f; pause 0.300\n",
           NR, t[1], (NR % 2 ? t[(NR + 1) / 2] : (t[NR / 2] + t[NR / 2 + 1]) / 2), t[NR] }'
echo "each: ${times[*]}"
[ "$real" != real ] || warm_answer "$build" 5
