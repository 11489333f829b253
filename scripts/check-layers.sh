#!/usr/bin/env bash
# Fails on an include against the direction of the layers:
#   foundation <- settings, and
#   foundation <- ports <- toolkit <- widgets <- system, hotkeys <- pane (and settings) <- backends (platform)
#   and the Qt front <- apps; the daemon (apps/vextodaemon) sees the settings and the panel but
#   never the pane or its system layer,
# and on a library used outside the one place it belongs (libplist in the codec, Qt in the front
# and the apps, the Linux libraries in the Linux backends).
set -euo pipefail
cd "$(dirname "$0")/.."

# Folders each layer may include from.
allowed_for() {
    case "$1" in
    src/foundation*) echo "foundation" ;;
    src/settings*) echo "foundation settings" ;;
    src/ports*) echo "foundation ports" ;;
    src/toolkit*) echo "foundation ports toolkit" ;;
    src/widgets*) echo "foundation ports toolkit widgets" ;;
    src/system*) echo "foundation ports toolkit widgets system" ;;
    src/hotkeys*) echo "foundation ports toolkit widgets hotkeys" ;;
    src/pane*) echo "foundation settings ports toolkit widgets system hotkeys pane" ;;
    src/platform*) echo "foundation ports toolkit platform" ;;
    src/qt*) echo "foundation ports toolkit platform qt" ;;
    apps/vextodaemon/cycling/*) echo "foundation settings ports toolkit cycling" ;;
    apps/vextodaemon/xserver/*) echo "foundation settings ports toolkit platform cycling xserver" ;;
    apps/vextodaemon/panel/*) echo "foundation settings ports toolkit widgets cycling panel" ;;
    apps/vextodaemon/*) echo "foundation settings ports toolkit widgets platform qt cycling panel xserver" ;;
    apps/*) echo "foundation ports toolkit platform qt" ;;
    esac
}

failures=0
while IFS= read -r file; do
    allowed=$(allowed_for "$file")
    while IFS= read -r folder; do
        if [[ " $allowed " != *" $folder "* ]]; then
            echo "$file includes $folder/, which lies above it"
            failures=$((failures + 1))
        fi
    done < <(grep -oE '^#include "[a-z]+/' "$file" | sed -E 's/#include "([a-z]+)\//\1/' | sort -u)
done < <(git ls-files 'src/*.cpp' 'src/*.hpp' 'apps/*.cpp' 'apps/*.hpp')

only_in() { # PATTERN ALLOWED-PATH-REGEX WHAT
    local hits
    hits=$(git ls-files 'src/*.cpp' 'src/*.hpp' 'apps/*.cpp' 'apps/*.hpp' |
        xargs grep -lE "^#include <($1)" | grep -vE "$2" || true)
    if [ -n "$hits" ]; then
        echo "$3 used outside its place:"
        echo "$hits"
        failures=$((failures + 1))
    fi
}
only_in 'plist/' '^src/foundation/PropertyListCodec\.cpp$' "libplist"
only_in 'Q[A-Za-z]+>|QtCore|QtWidgets|QtGui' '^(src/qt/|apps/)' "Qt"
only_in 'systemd/|xkbcommon/|fontconfig/|X11/|tiffio|libxml/|gio/' '^src/platform/linux/' "A Linux library"
only_in 'xcb/' '^(src/platform/linux/|apps/vextodaemon/xserver/)' "xcb"

if [ "$failures" -ne 0 ]; then
    exit 1
fi
echo "layers: every include points down"
