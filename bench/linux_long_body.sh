#!/usr/bin/env bash
# A long mail body's shape in a page: an editable box of BLOCKS paragraphs (a long quoted
# thread) in Firefox, read through the same path as Thunderbird's message body (both Gecko).
# Glimmo's CPU over 30 s with the caret in the empty reply paragraph, before anything is typed
# (the application has announced no change yet); then a sentence is typed there, and the time
# from the last key to the suggestion and the CPU over 60 s at rest with the suggestion shown
# are printed. Each CPU figure is also given per 0.3 s engine tick.
#
#   tests/e2e/desktop.sh bench/linux_long_body.sh build [BLOCKS]
set -euo pipefail
build=$(cd "${1:-build}" && pwd)
blocks=${2:-3000}
. "$(dirname "$0")/glimmo_home.sh" "$build"
trap 'kill ${glimmo:-} ${firefox:-} 2>/dev/null; rm -rf "$home"' EXIT
mkdir -p "$home/profile"
cat >"$home/profile/user.js" <<'PREFS'
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.startup.homepage_override.mstone", "ignore");
user_pref("browser.aboutwelcome.enabled", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);
user_pref("app.update.disabledForTesting", true);
PREFS
{
    printf '<!doctype html><meta charset="utf-8"><title>Reply</title><div contenteditable="true">'
    printf '<p>Thanks, see below.</p><p><br></p>'
    awk -v n="$blocks" 'BEGIN { for (i = 1; i <= n; i++)
        printf "<p>&gt; Line %d of the quoted thread, as long as an ordinary line of mail.</p>", i }'
    printf '</div><script>const d = document.querySelector("div"); d.focus();'
    printf 'getSelection().collapse(d.children[1], 0);</script>'
} >"$home/reply.html"

firefox-esr --no-remote --new-instance --profile "$home/profile" --width 1000 --height 700 \
    "file://$home/reply.html" >/dev/null 2>&1 & firefox=$!
sleep 8
"$build/glimmo" >/dev/null 2>&1 & glimmo=$!
sleep 4

bubble() { xdotool search --onlyvisible --pid "$glimmo" --name '^Glimmo$' >/dev/null 2>&1; }
ticks=$(getconf CLK_TCK)
cpu() { awk '{print $14 + $15}' "/proc/$glimmo/stat"; }
share() { awk -v t="$1" -v hz="$ticks" -v s="$2" 'BEGIN {
    printf "%.2f %% of one core (%.2f ms a tick)", 100 * t / hz / s, 1000 * t / hz / s * 0.3 }'; }
before=$(cpu)
sleep 30
untouched=$(share $(($(cpu) - before)) 30)
xdotool type --delay 20 "the parcel is ready."
last=$(date +%s.%N)
for _ in $(seq 1 3000); do bubble && break; done
shown=$(date +%s.%N)
bubble || { echo "no suggestion"; exit 1; }
sleep 2
before=$(cpu)
sleep 60
awk -v a="$last" -v b="$shown" -v n="$blocks" -v u="$untouched" \
    -v r="$(share $(($(cpu) - before)) 60)" 'BEGIN {
    printf "%d quoted blocks: at rest before typing %s;\n", n, u
    printf "  last key to suggestion %.3f s; at rest with the suggestion shown %s\n", b - a, r }'
