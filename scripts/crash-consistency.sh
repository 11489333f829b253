#!/usr/bin/env bash
# Kills the pane with SIGKILL at random moments while it saves, KILLS times (default 1000), in a
# private home folder. After every kill the settings file must read as a dictionary; a kill that
# left temporary files behind is followed by one more start of the pane, after which none may be
# left. Prints the counts; exits 1 when a file was unreadable or a leftover survived a load.
#   bash scripts/crash-consistency.sh [KILLS]
set -euo pipefail
cd "$(dirname "$0")/.."
kills=${1:-1000}
host=build/vexto-prefs
plist=build/vexto-plist
[ -x "$host" ] && [ -x "$plist" ] || { echo "build first: bash scripts/test.sh"; exit 2; }

home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
folder="$home/Library/Application Support/Vexto"
settings="$folder/Settings.plist"

# Every line saves at once: a check box flipped back and forth.
script="$home/saving.vexto"
for _ in $(seq 200); do
    echo "click wrapAroundScrollingButton"
done >"$script"

leftovers() { find "$folder" -maxdepth 1 -name 'Settings.plist.??????' 2>/dev/null | wc -l; }
is_dictionary() { "$plist" print "$settings" 2>/dev/null | head -c 1 | grep -q '{'; }

unreadable=0 left_after_kill=0 left_after_load=0
for i in $(seq "$kills"); do
    HOME=$home "$host" --headless --script "$script" >/dev/null 2>&1 &
    pid=$!
    sleep "0.0$(printf '%02d' $((RANDOM % 60)))"
    kill -KILL "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
    if [ -e "$settings" ] && ! is_dictionary; then
        unreadable=$((unreadable + 1))
        echo "kill $i: the settings file does not read as a dictionary"
        cp "$settings" "$home/unreadable-$i"
    fi
    if [ "$(leftovers)" -gt 0 ]; then
        left_after_kill=$((left_after_kill + 1))
        echo quit | HOME=$home "$host" --headless --script - >/dev/null 2>&1
        if [ "$(leftovers)" -gt 0 ]; then
            left_after_load=$((left_after_load + 1))
            echo "kill $i: temporary files survived the next load"
        fi
    fi
done
echo "$kills kills: $unreadable unreadable settings files; $left_after_kill kills left temporary" \
     "files, $left_after_load of them survived the next load"
[ "$unreadable" -eq 0 ] && [ "$left_after_load" -eq 0 ]
