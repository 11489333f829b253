#!/usr/bin/env bash
# Opening and closing the pane headless next to plistutil converting the same settings file,
# and next to the floor of an open (bench/OpenFloor.cpp), as whole processes, alternating:
# bash bench/headless-open.sh [RUNS] (after a build).
set -euo pipefail
cd "$(dirname "$0")/.."
runs=${1:-300}
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
echo quit >"$home/quit.vexto"
HOME=$home build/vexto-prefs --headless --script "$home/quit.vexto" >/dev/null 2>&1
settings="$home/Library/Application Support/Vexto/Settings.plist"
echo "settings file: $(stat -c %s "$settings") bytes"
HOME=$home build/bench/vexto_process_compare "$runs" \
    vexto-prefs "$PWD/build/vexto-prefs" --headless --script "$home/quit.vexto" -- \
    plistutil plistutil -i "$settings" -o "$home/out.plist"
HOME=$home build/bench/vexto_process_compare "$runs" \
    vexto-prefs "$PWD/build/vexto-prefs" --headless --script "$home/quit.vexto" -- \
    floor "$PWD/build/bench/vexto_open_floor" "$settings" \
    "$PWD/build/Vexto.prefPane/Contents/Resources/en.lproj/Localizable.strings"
