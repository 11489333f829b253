#!/bin/sh
# Pictures of every tab, drawn offscreen, as a person takes them of their own settings: every
# picture is drawn and holds something, and the settings on disk are the same bytes afterwards,
# with no temporary home left behind.
#   screenshots.sh HOST BUNDLE PNG-CHECKER
set -u
# Its own session bus and no display: nothing reaches the desktop the tests run in.
unset DISPLAY WAYLAND_DISPLAY
host=$1 bundle=$2 checker=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
folder="$work/home/Library/Application Support/Vexto"
mkdir -p "$folder" "$work/tmp"
cat >"$folder/Settings.plist" <<'PLIST'
<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0">
<dict>
	<key>Last Tab</key>
	<string>windows</string>
</dict>
</plist>
PLIST
cp "$folder/Settings.plist" "$work/before"
HOME=$work/home TMPDIR=$work/tmp dbus-run-session -- "$host" --pane "$bundle" --screenshot "$work/shots" \
    >"$work/out" 2>"$work/err" || { cat "$work/err"; exit 1; }
for tab in triggers panel appearance windows about; do
    test -f "$work/shots/$tab.png" || { echo "no picture of $tab"; exit 1; }
done
"$checker" "$work/shots"/*.png || exit 1
cmp "$work/before" "$folder/Settings.plist" || { echo "the settings were rewritten"; exit 1; }
test "$(ls "$folder")" = "Settings.plist" || { echo "files added:"; ls "$folder"; exit 1; }
! ls "$work/tmp" | grep -q vexto-home || { echo "left behind:"; ls "$work/tmp"; exit 1; }
