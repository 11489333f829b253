#!/usr/bin/env bash
# Opening and closing the pane headless next to plistutil converting the same settings file,
# and next to the floor of an open (bench/OpenFloor.cpp), as whole processes, alternating:
#   bash bench/headless-open.sh [RUNS] [EXTRA-PROCESSES]  (after a build)
# With EXTRA-PROCESSES, that many more processes of this user wait meanwhile (started here and
# ended by their PIDs), as on a busy desktop. VEXTO_BEFORE=OTHER-BUILD-FOLDER adds that build's
# pane beside this one (an older build, say, that walked the process list to find its daemon).
# The bench runs in a PID namespace of its own: the user's own daemon, if one runs, is neither
# seen nor restarted by the panes it opens, and changes nothing.
set -euo pipefail
cd "$(dirname "$0")/.."
if [ -z "${VEXTO_BENCH_OWN_PIDS:-}" ]; then
    VEXTO_BENCH_OWN_PIDS=1 exec tests/support/own-pid-namespace.sh bash "$0" "$@"
fi
runs=${1:-300}
extra=${2:-0}
home=$(mktemp -d)
extras=()
cleanup() {
    [ ${#extras[@]} -eq 0 ] || kill "${extras[@]}" 2>/dev/null || true
    rm -rf "$home"
}
trap cleanup EXIT
for ((i = 0; i < extra; i++)); do
    sleep 3600 &
    extras+=($!)
done
echo quit >"$home/quit.vexto"
HOME=$home build/vexto-prefs --headless --script "$home/quit.vexto" >/dev/null 2>&1
settings="$home/Library/Application Support/Vexto/Settings.plist"
strings="$PWD/build/Vexto.prefPane/Contents/Resources/en.lproj/Localizable.strings"
echo "settings file: $(stat -c %s "$settings") bytes; processes seen: $(ls /proc | grep -c '^[0-9]')"
compare() {
    HOME=$home build/bench/vexto_process_compare "$runs" \
        vexto-prefs "$PWD/build/vexto-prefs" --headless --script "$home/quit.vexto" -- "$@"
}
compare plistutil plistutil -i "$settings" -o "$home/out.plist"
# The floor of an open that finds its daemon without a walk, and of one that walks twice.
compare floor "$PWD/build/bench/vexto_open_floor" "$settings" "$strings" 0
compare floor-walking "$PWD/build/bench/vexto_open_floor" "$settings" "$strings" 2
if [ -n "${VEXTO_BEFORE:-}" ]; then
    compare before "$VEXTO_BEFORE/vexto-prefs" --headless --script "$home/quit.vexto"
fi
