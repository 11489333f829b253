#!/bin/sh
# Files that are not regular files in the place of the files the pane reads (a FIFO, a folder, a
# link to a device): the pane reads none of them, never waits on one, and keeps the settings file
# aside with the reason, as it does with a damaged one.
#   non-regular-files.sh HOST BUNDLE
set -u
unset DISPLAY WAYLAND_DISPLAY
host=$1 bundle=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
printf 'print-setting "Panel Delay"\nselect-tab about\nprint-control checkNowButton\nquit\n' \
    >"$work/script.vexto"
failures=0
for kind in fifo folder device; do
    home="$work/$kind"
    support="$home/Library/Application Support/Vexto"
    mkdir -p "$support" "$home/Library/Preferences"
    for file in "$support/Settings.plist" "$home/Library/Preferences/app.vexto.preferences.plist" \
        "$support/UpdateFeed.plist"; do
        case $kind in
        fifo) mkfifo "$file" ;;
        folder) mkdir "$file" ;;
        device) ln -s /dev/zero "$file" ;;
        esac
    done
    HOME=$home timeout 20 "$(dirname "$0")/../support/own-pid-namespace.sh" \
        "$host" --headless --pane "$bundle" --script "$work/script.vexto" >"$home/out" 2>"$home/err"
    status=$?
    case $kind in
    fifo) reason="is a FIFO" ;;
    folder) reason="is a directory" ;;
    device) reason="is a device" ;;
    esac
    if [ "$status" -ne 0 ] || ! grep -q '"value":200' "$home/out" ||
        ! grep -q "settings file could not be used (cannot be read ($reason)); kept it as" "$home/err" ||
        ! ls "$support" | grep -q 'Settings.plist.damaged-'; then
        echo "$kind: status $status"; cat "$home/out" "$home/err"
        failures=$((failures + 1))
    fi
done
[ "$failures" -eq 0 ]
