# Sourced by the desktop benchmarks: a home folder of its own for Glimmo, as a user who finished
# setting up has it (no setup window takes the focus), with the claude stand-in as its claude,
# answering every request at once. Sets and exports HOME; the caller removes $home.
#
#   . bench/glimmo_home.sh BUILD
home=$(mktemp -d /tmp/glimmo-bench.XXXXXX)
mkdir -p "$home/.local/share/Glimmo" "$home/standin" "$home/.config/Glimmo"
printf '%s' "$1/tests/support/claude-standin" >"$home/.local/share/Glimmo/claude-path"
printf '{"name": "Alex"}' >"$home/.config/Glimmo/defaults.json"
printf 'answer The parcel is ready.\n' >"$home/standin/script"
export HOME=$home

# Writes about KILOBYTES of prose paragraphs to FILE, after FIRST.
prose() {
    local p="The quarterly report covers revenue, costs and the outlook for the coming months. "
    awk -v size=$(($1 * 1024)) -v first="${3:-}" -v p="$p$p$p$p$p" 'BEGIN {
        printf "%s", first; for (n = 0; n < size; n += length(p) + 2) printf "%s\n\n", p }' >"$2"
}
