#!/bin/sh
# Runs a script through the host as a user would, in a fresh home folder, and compares what it
# prints with the expected output and exit status.
#   run-script.sh HOST BUNDLE SCRIPT EXPECTED_OUTPUT EXPECTED_STATUS [CHECK_FILE_PATTERN]
set -u
# Its own session bus and no display: nothing reaches the desktop the tests run in.
unset DISPLAY WAYLAND_DISPLAY
host=$1 bundle=$2 script=$3 expected=$4 status=$5 saved=${6:-}
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
# In a PID namespace of its own, the pane sees only the daemons this script starts, and any it
# leaves running end with the namespace.
HOME=$home "$(dirname "$0")/../support/own-pid-namespace.sh" \
    dbus-run-session -- "$host" --headless --pane "$bundle" --script "$script" >"$home/out" 2>"$home/err"
actual=$?
if [ "$actual" -ne "$status" ]; then
    echo "exit status $actual, expected $status"; cat "$home/err"; exit 1
fi
if ! diff -u "$expected" "$home/out"; then
    cat "$home/err"; exit 1
fi
if [ -n "$saved" ] && ! grep -q "$saved" "$home/Library/Application Support/Vexto/Settings.plist"; then
    echo "the settings file does not hold: $saved"; exit 1
fi
if [ "$status" -ne 0 ]; then
    cat "$home/err" # the message naming the line, for the log
fi
exit 0
