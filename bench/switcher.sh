#!/usr/bin/env bash
# vextodaemon next to alttab, each on a display of its own under openbox with the same windows:
# time from Super+Tab to the panel's first picture, time of a further step, peak memory, and
# wakeups in ten idle seconds (voluntary context switches).
#   bench/switcher.sh [ROUNDS] [WINDOW-COUNTS...]   (defaults: 15 rounds; 20 and 200 windows)
# Needs the build in build/ and the alttab package (apt-get install alttab).
set -euo pipefail
cd "$(dirname "$0")/.."
# Both on one private session bus, where the daemon meets its pane.
if [ -z "${VEXTO_BENCH_BUS:-}" ]; then
    VEXTO_BENCH_BUS=1 exec dbus-run-session -- "$0" "$@"
fi
rounds=${1:-15}
shift || true
counts=("${@:-20 200}")
# shellcheck disable=SC2206
counts=(${counts[*]})
build=$PWD/build
daemon=$build/Vexto.prefPane/Contents/Resources/vextodaemon.app/Contents/Linux/vextodaemon
timing=$build/bench/vexto_switcher_timing
windows=$build/tests/daemon/vexto-test-windows
command -v alttab >/dev/null || { echo "alttab is not installed"; exit 1; }

work=$(mktemp -d)
pids=()
cleanup() {
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
    rm -rf "$work"
}
trap cleanup EXIT

switches() { awk '/^voluntary_ctxt_switches/ {print $2}' "/proc/$1/status"; }
peak() { awk '/^VmHWM/ {printf "%.1f MiB", $2 / 1024}' "/proc/$1/status"; }

# One switcher on a fresh display: NAME COUNT COMMAND...
measure() {
    local name=$1 count=$2
    shift 2
    mkfifo "$work/displayfd"
    Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$work/displayfd" >/dev/null 2>&1 &
    local xvfb=$!
    pids+=("$xvfb")
    read -r number <"$work/displayfd"
    rm "$work/displayfd"
    export DISPLAY=":$number"
    openbox --sm-disable >/dev/null 2>&1 &
    local openbox=$!
    pids+=("$openbox")
    until xprop -root _NET_CLIENT_LIST 2>/dev/null | grep -q WINDOW; do sleep 0.05; done
    local wanted=()
    for i in $(seq 1 "$count"); do wanted+=("App$((i % 12)):window $i"); done
    "$windows" --ready-fd 3 "${wanted[@]}" 3>"$work/ids" >/dev/null 2>&1 &
    local clients=$!
    pids+=("$clients")
    until [ -s "$work/ids" ]; do sleep 0.05; done
    rm "$work/ids"
    "$@" >/dev/null 2>&1 &
    local switcher=$!
    pids+=("$switcher")
    sleep 2
    local result
    result=$("$timing" "$rounds" 5)
    local before after
    before=$(switches "$switcher")
    sleep 10
    after=$(switches "$switcher")
    printf '| %s | %s | %s | %s | %s |\n' "$name" "$count" "$result" "$(peak "$switcher")" \
        "$((after - before))"
    kill "$switcher" "$clients" "$openbox" "$xvfb" 2>/dev/null || true
    wait "$switcher" "$clients" "$openbox" "$xvfb" 2>/dev/null || true
}

export HOME=$work/home
settings="$HOME/Library/Application Support/Vexto"
mkdir -p "$settings"
# Super+Tab with the panel at once, as alttab shows it.
cat >"$settings/Settings.plist" <<'PLIST'
<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict>
<key>Cycle All Windows</key><dict>
<key>Forward</key><dict><key>Key Code</key><string>48</string><key>Modifiers</key><string>1048576</string></dict>
</dict>
<key>Panel Delay</key><integer>0</integer>
</dict></plist>
PLIST

echo "| switcher | windows | timing (medians) | peak memory | wakeups in 10 s idle |"
echo "|---|---|---|---|---|"
for count in "${counts[@]}"; do
    measure vextodaemon "$count" "$daemon"
    measure alttab "$count" alttab -w 1 -d 1 -mk Super_L -kk Tab
done
