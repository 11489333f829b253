#!/usr/bin/env bash
# Looking for the daemon in the process list by a walk, as whole processes, alternating: the
# pane's walk next to pgrep -x, which always reads every process (after a build):
#   bash bench/process-walk.sh [RUNS] [PROCESSES]
# Three cases, labelled: the daemon early in the list (the walk stops there, pgrep does not), the
# daemon last, and a name no process has (both read everything: the like-for-like figure). The
# bench runs in a PID namespace of its own with PROCESSES (default 300) waiting processes it
# starts, so nothing of the machine's, the user's daemon included, changes its figures.
set -euo pipefail
cd "$(dirname "$0")/.."
if [ -z "${VEXTO_BENCH_OWN_PIDS:-}" ]; then
    VEXTO_BENCH_OWN_PIDS=1 exec tests/support/own-pid-namespace.sh bash "$0" "$@"
fi
runs=${1:-500}
count=${2:-300}
daemon=build/Vexto.prefPane/Contents/Resources/vextodaemon.app/Contents/Linux/vextodaemon
home=$(mktemp -d)
started=()
cleanup() {
    [ ${#started[@]} -eq 0 ] || kill "${started[@]}" 2>/dev/null || true
    rm -rf "$home"
}
trap cleanup EXIT
start_daemon() {
    HOME=$home DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent "$daemon" >/dev/null 2>&1 &
    started+=($!)
    sleep 0.2
}
start_waiting() {
    for ((i = 0; i < count; i++)); do
        sleep 3600 &
        started+=($!)
    done
}
compare() { # LABEL STATUS NAME
    echo "== $1"
    build/bench/vexto_process_compare --status "$2" "$runs" \
        vexto-walk "$PWD/build/bench/vexto_process_walk_bench" --find "$3" -- \
        pgrep pgrep -x "$3"
}
start_daemon
start_waiting
echo "processes: $(ls /proc | grep -c '^[0-9]')"
build/bench/vexto_process_walk_bench --benchmark_min_time=0.5
compare "the daemon early in the list" 0 vextodaemon
compare "a name no process has (every process read by both)" 1 vexto-no-such-process
kill "${started[0]}"
start_daemon
compare "the daemon last in the list" 0 vextodaemon
