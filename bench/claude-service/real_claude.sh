# Sourced by the desktop benchmarks after glimmo_home.sh: the real `claude` program (its npm
# package, installed once into BUILD/bench-claude) as Glimmo's claude, talking to standin.py on
# the loopback instead of its service. Defines warm_answer BUILD RUNS, which prints the
# program's own warm answer time with Glimmo's arguments and prompt, and stop_standin, for the
# caller's EXIT trap.
#
#   . bench/claude-service/real_claude.sh BUILD
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
cache="$1/bench-claude"
if [ ! -x "$cache/node_modules/.bin/claude" ]; then
    mkdir -p "$cache"
    npm install --silent --no-audit --no-fund --prefix "$cache" @anthropic-ai/claude-code >&2
fi
coproc standin { python3 "$here/standin.py"; }
read -r port <&"${standin[0]}"
stop_standin() { [ -n "${standin_PID:-}" ] && kill "$standin_PID" 2>/dev/null; }
cat >"$home/claude" <<WRAP
#!/bin/sh
export ANTHROPIC_BASE_URL=http://127.0.0.1:$port ANTHROPIC_API_KEY=sk-standin
export CLAUDE_CODE_DISABLE_NONESSENTIAL_TRAFFIC=1
exec "$cache/node_modules/.bin/claude" "\$@"
WRAP
chmod +x "$home/claude"
printf '%s' "$home/claude" >"$home/.local/share/Glimmo/claude-path"
warm_answer() {
    "$1/glimmo" -printPrompt >"$home/prompt.txt"
    model=$(grep -o 'claude-[a-z0-9-]*' "$here/../../src/main/Constants.h" | head -n 1)
    python3 "$here/warm_answer.py" "$home/claude" "$home/prompt.txt" "$model" "$2"
}
