#!/usr/bin/env bash
# A signed-out claude on the virtual desktop: the GTK test editor focused, one sentence typed,
# and a claude stand-in that answers every request as the signed-out program does. Counts the
# claude processes Glimmo starts in each minute and Glimmo's own CPU after the first minute.
#
#   tests/e2e/desktop.sh bench/linux_signed_out.sh build [MINUTES]
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
minutes=${2:-3}
home=$(mktemp -d /tmp/glimmo-bench.XXXXXX)
trap 'kill $glimmo $editor 2>/dev/null; rm -rf "$home"' EXIT
mkdir -p "$home/.local/share/Glimmo" "$home/standin"
printf '%s' "$build/tests/support/claude-standin" >"$home/.local/share/Glimmo/claude-path"
# The real program needs about a second to start and then reports that it is not signed in.
printf 'startup 0.8\nerror Not logged in \302\267 Please run /login\nexit 1\n' \
    >"$home/standin/script"
export HOME=$home

"$build/glimmo-gtk-editor" --text "" >/dev/null & editor=$!
sleep 1.5
"$build/glimmo" >/dev/null 2>&1 & glimmo=$!
sleep 2
xdotool type --delay 30 "this are a sentence with mistake."

starts() { [ -f "$home/standin/runs" ] && wc -l <"$home/standin/runs" || echo 0; }
cpu() { awk '{print $14 + $15}' "/proc/$glimmo/stat"; }
ticks=$(getconf CLK_TCK)
previous=$(starts)
for minute in $(seq 1 "$minutes"); do
    [ "$minute" = 2 ] && cpu_from=$(cpu)
    sleep 60
    now=$(starts)
    echo "minute $minute: $((now - previous)) claude starts"
    previous=$now
done
if [ "$minutes" -gt 1 ]; then
    awk -v t=$(($(cpu) - cpu_from)) -v hz="$ticks" -v m=$((minutes - 1)) 'BEGIN {
        printf "Glimmo CPU after the first minute: %.2f %% of one core\n", 100 * t / hz / (60 * m) }'
fi
log="$home/.local/share/Glimmo/log.txt"
echo "log lines: $(wc -l <"$log")"
# When each failure was logged, in seconds after the first.
grep 'claude failed after' "$log" | while read -r stamp _; do date -d "$stamp" +%s.%N; done |
    awk 'NR == 1 {first = $1} {printf "%s%.1f", (NR > 1 ? " " : "failures at: "), $1 - first}
         END {print ""}'

