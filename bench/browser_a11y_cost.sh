#!/usr/bin/env bash
# browser_a11y_cost.sh: what Chromium's accessibility modes cost on a heavy page.
#
# For each mode (no accessibility switch, then each --force-renderer-accessibility bundle that
# still shows editable fields with their caret and selection) Chromium is started on a locally
# generated heavy page: 5,000 paragraphs, 300 links, 200 inputs, a contenteditable editor
# holding the focus, and a script changing the DOM a little every 100 ms. A small AT-SPI client
# listens for focus and caret events meanwhile, as the writing assistant does, and (except in
# the *-passive modes) asks the caret's character box on them at most every 300 ms. That
# question matters: it makes Chromium add inline text boxes for the whole page even under
# =basic. Measured, summed over the browser process and all its descendants:
#   load    CPU seconds (user+system) in the first LOAD_S seconds after launch
#   idle    CPU seconds over IDLE_S seconds with the page open and nobody touching it
#   active  CPU seconds over ACTIVE_S seconds of scripted typing in the editor and wheel scrolling
#   PSS/RSS MB, sum of /proc/PID/smaps_rollup, at the end of the idle and of the active phase
#   events  focus + caret events the client received in the active phase (0: page not exposed)
#   boxes   non-empty character boxes the client got during the run
# Modes run round-robin, RUNS rounds; the table gives min/median/max per mode.
#
# Run from the project root, on the virtual desktop (it needs its X display and accessibility
# bus):
#   tests/e2e/desktop.sh bench/browser_a11y_cost.sh
# Settings (environment): RUNS=3 LOAD_S=20 IDLE_S=30 ACTIVE_S=30, CHROMIUM=/usr/bin/chromium,
# MODES, a subset of "off basic-passive basic form-controls complete bare onscreen" (bare: the
# switch without a value; onscreen: --enable-features=AccessibilityOnScreenAXMode, no switch).
# Everything runs under nice -n 10, one browser at a time; about 90 s per mode and round.
set -uo pipefail

RUNS=${RUNS:-3}
LOAD_S=${LOAD_S:-20}
IDLE_S=${IDLE_S:-30}
ACTIVE_S=${ACTIVE_S:-30}
MODES=${MODES:-off basic-passive basic form-controls complete bare onscreen}
CHROMIUM=${CHROMIUM:-/usr/bin/chromium}
PY=/usr/bin/python3   # the system interpreter, which has the AT-SPI bindings

[ -n "${DISPLAY:-}" ] || { echo "no DISPLAY: run me inside tests/e2e/desktop.sh" >&2; exit 2; }
command -v xdotool >/dev/null || { echo "xdotool is missing" >&2; exit 2; }
[ -x "$CHROMIUM" ] || { echo "no Chromium at $CHROMIUM" >&2; exit 2; }

mode_flags() {
    case $1 in
        off) ;;
        basic|basic-passive) echo --force-renderer-accessibility=basic ;;
        form-controls) echo --force-renderer-accessibility=form-controls ;;
        complete) echo --force-renderer-accessibility=complete ;;
        bare) echo --force-renderer-accessibility ;;
        onscreen) echo --enable-features=AccessibilityOnScreenAXMode ;;
        *) echo "unknown mode $1" >&2; exit 2 ;;
    esac
}

tmp=$(mktemp -d /tmp/a11y-cost.XXXXXX)
server="" browser="" listener=""
cleanup() {
    for p in $listener $browser $server; do kill "$p" 2>/dev/null; done
    for p in $listener $browser $server; do wait "$p" 2>/dev/null; done
    rm -rf "$tmp"
}
trap cleanup EXIT
trap 'exit 130' INT TERM

# The heavy page.
mkdir -p "$tmp/www"
"$PY" - "$tmp/www/heavy.html" <<'PY'
import random, sys
random.seed(7)
words = ("time person year way day thing man world life hand part child eye woman place work "
         "week case point government company number group problem fact").split()
def sentence(n):
    return " ".join(random.choice(words) for _ in range(n)).capitalize() + "."
out = ['<!doctype html><html><head><meta charset="utf-8"><title>heavy</title>',
       '<style>body{font:15px sans-serif;margin:16px} #ed{border:1px solid #888;padding:6px;'
       'min-height:120px;width:700px} .hot{background:#ffe}</style></head><body>',
       '<div id="clock">0</div>',
       '<div id="ed" contenteditable="true">']
out += ['<p>%s %s</p>' % (sentence(12), sentence(10)) for _ in range(6)]
out.append('</div><nav>')
out += ['<a href="#s%d">Section link %d</a> ' % (i, i) for i in range(300)]
out.append('</nav><form>')
out += ['<label>Field %d <input name="f%d" value="v%d"></label> ' % (i, i, i) for i in range(200)]
out.append('</form><main>')
for i in range(5000):
    if i % 50 == 0:
        out.append('<h2 id="s%d">Section %d</h2>' % (i // 50, i // 50))
    out.append('<p>%s %s</p>' % (sentence(14), sentence(12)))
out.append('</main><ul id="feed"></ul>')
out.append('''<script>
const paras = document.querySelectorAll('main p'), clock = document.getElementById('clock');
const feed = document.getElementById('feed');
let n = 0;
setInterval(() => {
  n++;
  clock.textContent = 'tick ' + n;
  const p = paras[(n * 7919) % paras.length];
  p.classList.toggle('hot');
  paras[(n * 104729) % paras.length].firstChild.textContent = 'Updated ' + n + ' ' + p.textContent.slice(0, 60);
  const li = document.createElement('li'); li.textContent = 'item ' + n; feed.appendChild(li);
  if (feed.children.length > 20) feed.firstChild.remove();
}, 100);
window.addEventListener('load', () => {
  const ed = document.getElementById('ed');
  ed.focus();
  const r = document.createRange(); r.selectNodeContents(ed.lastElementChild); r.collapse(false);
  getSelection().removeAllRanges(); getSelection().addRange(r);
});
</script></body></html>''')
open(sys.argv[1], "w").write("\n".join(out))
PY

# An AT-SPI client listening for focus and caret events, as the assistant does; with "extents" it
# also asks, at most every 300 ms, the caret offset and the character box at the caret (the
# assistant places its bubble there). It writes "events boxes" (boxes = non-empty answers).
cat >"$tmp/listen.py" <<'PY'
import sys, time, warnings
warnings.filterwarnings("ignore")
import gi
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib
ask = len(sys.argv) > 2 and sys.argv[2] == "extents"
count, boxes, last = [0], [0], [0.0]
def on_event(ev):
    count[0] += 1
    if not ask or time.monotonic() - last[0] < 0.3:
        return
    last[0] = time.monotonic()
    try:
        text = ev.source.get_text_iface()
        if text is None:
            return
        caret = text.get_caret_offset()
        if caret >= text.get_character_count():
            caret -= 1  # at the end of the text: the box of the last character
        if caret >= 0:
            box = text.get_character_extents(caret, Atspi.CoordType.SCREEN)
            if box.width > 0 and box.height > 0:
                boxes[0] += 1
            elif len(sys.argv) > 3:
                print("empty", caret, box.x, box.y, box.width, box.height, file=sys.stderr, flush=True)
    except Exception as e:  # noqa: BLE001
        if len(sys.argv) > 3:
            print("error", e, file=sys.stderr, flush=True)
listener = Atspi.EventListener.new(on_event)
for kind in ("object:state-changed:focused", "object:text-caret-moved"):
    listener.register(kind)
def dump():
    with open(sys.argv[1], "w") as f:
        f.write("%d %d" % (count[0], boxes[0]))
    return True
GLib.timeout_add(500, dump)
Atspi.event_main()
PY

port=$((20000 + RANDOM % 20000))
(cd "$tmp/www" && exec nice -n 10 "$PY" -m http.server --bind 127.0.0.1 "$port") \
    >"$tmp/http.log" 2>&1 &
server=$!
sleep 1

# "pid ticks" for ROOT and all its descendants (utime + stime, clock ticks).
tree_ticks() {
    cat /proc/[0-9]*/stat 2>/dev/null | awk -v root="$1" '
        { i = index($0, ") "); split(substr($0, i + 2), f, " ");
          pid = $1; ppid[pid] = f[2]; ticks[pid] = f[12] + f[13] }
        END { keep[root] = 1; changed = 1
              while (changed) { changed = 0
                  for (p in ppid) if (!(p in keep) && (ppid[p] in keep)) { keep[p] = 1; changed = 1 } }
              for (p in keep) if (p in ticks) print p, ticks[p] }'
}
# Sum of Pss and Rss (kB) over ROOT and its descendants.
tree_mem() {
    local pss=0 rss=0 p
    for p in $(tree_ticks "$1" | cut -d' ' -f1); do
        read -r a b < <(awk '/^Rss:/{r=$2} /^Pss:/{s=$2} END{print s+0, r+0}' \
            "/proc/$p/smaps_rollup" 2>/dev/null || echo "0 0")
        pss=$((pss + ${a:-0})); rss=$((rss + ${b:-0}))
    done
    echo "$pss $rss"
}
# CPU seconds used by ROOT's tree over SECONDS seconds, sampled each second so processes that
# end meanwhile keep their last count. Runs COMMAND (if any) in the background meanwhile.
declare -A seen_start seen_last
cpu_over() {
    local root=$1 secs=$2 p t; shift 2
    seen_start=() seen_last=()
    while read -r p t; do seen_start[$p]=$t; seen_last[$p]=$t; done < <(tree_ticks "$root")
    local end work="" left
    end=$(awk -v n="$EPOCHREALTIME" -v s="$secs" 'BEGIN{printf "%.3f", n + s}')
    if [ $# -gt 0 ]; then "$@" & work=$!; fi
    while left=$(awk -v e="$end" -v n="$EPOCHREALTIME" 'BEGIN{d = e - n; if (d > 0) printf "%.3f", (d > 1 ? 1 : d)}') &&
        [ -n "$left" ]; do
        sleep "$left"
        while read -r p t; do seen_last[$p]=$t; done < <(tree_ticks "$root")
    done
    [ -n "$work" ] && { kill "$work" 2>/dev/null; wait "$work" 2>/dev/null; }
    local sum=0
    for p in "${!seen_last[@]}"; do sum=$((sum + seen_last[$p] - ${seen_start[$p]:-0})); done
    awk -v t="$sum" -v hz="$(getconf CLK_TCK)" 'BEGIN{printf "%.2f", t / hz}'
}
# The scripted phase: type into the focused editor, scroll the page with the wheel, repeat.
active_script() {
    while true; do
        xdotool type --delay 60 "quick brown fox jumps " 2>/dev/null
        xdotool mousemove 600 500 click --repeat 8 --delay 80 5 2>/dev/null
        xdotool type --delay 60 "over the lazy dog. " 2>/dev/null
        xdotool mousemove 600 500 click --repeat 8 --delay 80 4 2>/dev/null
    done
}

results="$tmp/results"
: >"$results"
for run in $(seq 1 "$RUNS"); do
    for mode in $MODES; do
        profile="$tmp/profile-$mode-$run"
        mkdir -p "$profile"
        # shellcheck disable=SC2046
        nice -n 10 "$CHROMIUM" --no-sandbox --disable-gpu --no-first-run \
            --disable-background-networking --disable-component-update --disable-sync \
            --no-default-browser-check --password-store=basic --window-size=1200,760 \
            --user-data-dir="$profile" $(mode_flags "$mode") \
            "http://127.0.0.1:$port/heavy.html" >"$profile.log" 2>&1 &
        browser=$!
        echo "0 0" >"$tmp/events"
        kind=extents; [ "${mode%-passive}" != "$mode" ] && kind=passive
        nice -n 10 "$PY" "$tmp/listen.py" "$tmp/events" "$kind" ${LISTEN_DEBUG:-} >/dev/null 2>>"${LISTEN_LOG:-/dev/null}" &
        listener=$!
        sleep 0.2
        load=$(cpu_over "$browser" "$LOAD_S")
        win=$(xdotool search --onlyvisible --pid "$browser" 2>/dev/null | head -1)
        [ -n "$win" ] && xdotool windowactivate --sync "$win" 2>/dev/null
        idle=$(cpu_over "$browser" "$IDLE_S")
        read -r pss_idle rss_idle < <(tree_mem "$browser")
        read -r ev0 _ <"$tmp/events"
        active=$(cpu_over "$browser" "$ACTIVE_S" active_script)
        read -r pss_act rss_act < <(tree_mem "$browser")
        read -r ev1 boxes <"$tmp/events"
        nproc=$(tree_ticks "$browser" | wc -l)
        kill "$listener" "$browser" 2>/dev/null
        wait "$listener" "$browser" 2>/dev/null
        listener="" browser=""
        rm -rf "$profile" "$profile.log"
        line="$mode $load $idle $active $((pss_idle / 1024)) $((rss_idle / 1024)) $((pss_act / 1024)) $((rss_act / 1024)) $((ev1 - ev0)) $boxes $nproc"
        echo "$line" >>"$results"
        echo "run $run: $line" >&2
        sleep 2
    done
done

echo "Chromium $("$CHROMIUM" --version 2>/dev/null | awk '{print $2}'), $RUNS runs per mode, heavy page;" \
    "CPU s over ${LOAD_S}s load / ${IDLE_S}s idle / ${ACTIVE_S}s typing+scrolling; MB summed over all processes"
awk -v modes="$MODES" '
    function stat(vals, n,    a, i, j, t, med) {
        split(vals, a, " ")
        for (i = 1; i <= n; i++) for (j = i + 1; j <= n; j++) if (a[j] + 0 < a[i] + 0) { t = a[i]; a[i] = a[j]; a[j] = t }
        med = (n % 2) ? a[(n + 1) / 2] : (a[n / 2] + a[n / 2 + 1]) / 2
        return sprintf("%s/%s/%s", a[1], med, a[n])
    }
    { n[$1]++; for (c = 2; c <= 11; c++) v[$1, c] = v[$1, c] " " $c }
    END {
        printf "%-18s %-18s %-18s %-18s %-15s %-15s %-15s %-12s %-12s %s\n", "mode (min/med/max)", "load CPU s",
            "idle CPU s", "active CPU s", "PSS MB idle", "PSS MB active", "RSS MB active", "events", "boxes", "N"
        split(modes, m, " ")
        for (k = 1; k in m; k++) { x = m[k]; if (!(x in n)) continue
            printf "%-18s %-18s %-18s %-18s %-15s %-15s %-15s %-12s %-12s %d\n", x,
                stat(v[x, 2], n[x]), stat(v[x, 3], n[x]), stat(v[x, 4], n[x]), stat(v[x, 5], n[x]),
                stat(v[x, 7], n[x]), stat(v[x, 8], n[x]), stat(v[x, 9], n[x]), stat(v[x, 10], n[x]), n[x] }
    }' "$results"
