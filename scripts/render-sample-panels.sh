#!/usr/bin/env bash
# Draws the reference daemon's sample panel offscreen for the built-in look and for every preset
# layout in the built bundle, one picture each, as the README shows them.
#   render-sample-panels.sh [BUILD-FOLDER] [PICTURE-FOLDER]   (build, docs/samples)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
pictures=${2:-docs/samples}
resources="$build/Vexto.prefPane/Contents/Resources"
daemon="$resources/vextodaemon.app/Contents/Linux/vextodaemon"
mkdir -p "$pictures"
empty=$(mktemp)
trap 'rm -f "$empty"' EXIT
# No settings of its own: the look the pane starts with.
printf '<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0">\n<dict/>\n</plist>\n' >"$empty"
"$daemon" --render-sample "$empty" "$pictures/Default.png"
for layout in "$resources"/*.vextolayout; do
    name=$(basename "$layout" .vextolayout)
    "$daemon" --render-sample "$layout" "$pictures/${name// /-}.png"
done
