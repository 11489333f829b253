#!/usr/bin/env bash
# Builds the pane and its host and shows the pane: in a window when there is a display, otherwise
# rendered offscreen, one picture a tab.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/lib.sh

install_packages "${CORE_PACKAGES[@]}" "${QT_PACKAGES[@]}"
# Only what the window needs; the tests' command builds the rest.
BUILD_TARGET=vexto_app configure_and_build build -DCMAKE_BUILD_TYPE=RelWithDebInfo

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec build/vexto-prefs
fi
pictures="$PWD/build/screenshots"
build/vexto-prefs --screenshot "$pictures"
echo "No display here: the pane was rendered offscreen, one picture a tab, in $pictures"
