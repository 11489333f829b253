#!/usr/bin/env bash
# Pictures of every tab of the pane in English and German, drawn offscreen from the built
# program with the settings a new user has, for the README.
#   render-pictures.sh [BUILD-FOLDER] [PICTURE-FOLDER]   (build, docs/pictures)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
pictures=${2:-docs/pictures}
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
for language in en_US de_DE; do
    folder="$pictures/${language%_*}"
    rm -rf "$folder"
    # A home of its own and processes of its own: the pictures show the defaults whatever runs on
    # this machine (a daemon of the user's included), and no desktop is reached.
    env -u DISPLAY -u WAYLAND_DISPLAY HOME="$home" LC_ALL="$language.UTF-8" \
        QT_QPA_PLATFORM=offscreen tests/support/own-pid-namespace.sh \
        dbus-run-session -- "$build/vexto-prefs" --screenshot "$folder" 2>/dev/null
done
