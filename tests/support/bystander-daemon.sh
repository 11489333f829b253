#!/bin/sh
# A daemon of the same user that no test started, as another run's or the user's own would be:
# `start` leaves one running (a program named vextodaemon that only waits), `check` fails unless
# it outlived every test that ran meanwhile, then ends it by its PID.
#   bystander-daemon.sh start|check FOLDER
set -u
folder=$2
case $1 in
start)
    rm -rf "$folder" && mkdir -p "$folder" || exit 1
    cp /bin/sleep "$folder/vextodaemon" || exit 1
    setsid "$folder/vextodaemon" 3600 </dev/null >/dev/null 2>&1 &
    echo $! >"$folder/pid"
    ;;
check)
    pid=$(cat "$folder/pid" 2>/dev/null) || { echo "no bystander was started"; exit 1; }
    name=$(cat "/proc/$pid/comm" 2>/dev/null)
    kill "$pid" 2>/dev/null
    rm -rf "$folder"
    if [ "$name" != vextodaemon ]; then
        echo "a test ended a daemon it had not started (PID $pid)"; exit 1
    fi
    ;;
esac
