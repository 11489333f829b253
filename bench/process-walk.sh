#!/usr/bin/env bash
# Looking for the daemon in the process list, as whole processes, alternating: the pane's walk
# next to pgrep -x (after a build): bash bench/process-walk.sh [RUNS]
set -euo pipefail
cd "$(dirname "$0")/.."
runs=${1:-500}
# Both look for a daemon that runs, as the pane does while it runs.
home=$(mktemp -d)
HOME=$home DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent \
    build/Vexto.prefPane/Contents/Resources/vextodaemon.app/Contents/Linux/vextodaemon 2>/dev/null &
daemon=$!
trap 'kill $daemon; rm -rf "$home"' EXIT
sleep 0.2
echo "processes: $(ls /proc | grep -c '^[0-9]')"
build/bench/vexto_process_walk_bench --benchmark_min_time=0.5
build/bench/vexto_process_compare "$runs" \
    vexto-walk "$PWD/build/bench/vexto_process_walk_bench" --find vextodaemon -- \
    pgrep pgrep -x vextodaemon
