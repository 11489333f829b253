#!/bin/sh
# Installed as a user installs it: the program, the pane bundle beside it, the daemon, the
# desktop entry and the icon land under the prefix, no binary looks into the build folder for
# its libraries, and the installed program runs, headless with a script and drawing its pictures.
#   install.sh BUILD-FOLDER PNG-CHECKER
set -u
build=$1 checker=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unset DISPLAY WAYLAND_DISPLAY
prefix="$work/usr"
cmake --install "$build" --prefix "$prefix" >/dev/null || exit 1
for file in bin/vexto-prefs bin/vexto-plist share/applications/app.vexto.Preferences.desktop \
    share/icons/hicolor/256x256/apps/vexto.png \
    lib/vexto/Vexto.prefPane/Contents/Resources/de.lproj/Localizable.strings \
    lib/vexto/Vexto.prefPane/Contents/Resources/vextodaemon.app/Contents/Linux/vextodaemon; do
    test -e "$prefix/$file" || { echo "not installed: $file"; exit 1; }
done
entry="$prefix/share/applications/app.vexto.Preferences.desktop"
grep -qx "Exec=$prefix/bin/vexto-prefs" "$entry" && grep -qx "TryExec=$prefix/bin/vexto-prefs" "$entry" &&
    grep -qx 'Icon=vexto' "$entry" ||
    { echo "the desktop entry does not start the installed vexto-prefs with its icon:"; cat "$entry"; exit 1; }
if ! desktop-file-validate "$entry"; then
    echo "the desktop entry is not valid"; exit 1
fi
for binary in lib/vexto/vexto-prefs lib/vexto/lib/libvexto_runtime.so \
    lib/vexto/Vexto.prefPane/Contents/Linux/Vexto.so; do
    if readelf -S "$prefix/$binary" | grep -q '\.debug_info'; then
        echo "$binary is installed with its debug information"; exit 1
    fi
done
find "$prefix" -type f | while read -r file; do
    if readelf -d "$file" 2>/dev/null | grep -q "$build"; then
        echo "$file finds its libraries in the build folder"
        exit 1
    fi
done || exit 1

mkdir "$work/home"
printf 'print-window\nquit\n' >"$work/script"
HOME="$work/home" "$(dirname "$0")/../support/own-pid-namespace.sh" \
    dbus-run-session -- "$prefix/bin/vexto-prefs" --headless --script "$work/script" \
    >"$work/out" 2>"$work/err" || { cat "$work/err"; exit 1; }
grep -q '"selectedTab":"triggers"' "$work/out" || { cat "$work/out" "$work/err"; exit 1; }
HOME="$work/home" QT_QPA_PLATFORM=offscreen dbus-run-session -- "$prefix/bin/vexto-prefs" \
    --screenshot "$work/pictures" >/dev/null 2>"$work/err" || { cat "$work/err"; exit 1; }
QT_QPA_PLATFORM=offscreen "$checker" "$work/pictures"/*.png
