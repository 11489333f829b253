#!/bin/sh
# The reference daemon on a display of its own: asked for a sample, it logs that it shows one and
# maps its panel window, then unmaps it about two seconds later.
#   sample-window.sh DAEMON-BUNDLE
set -u
work=$(mktemp -d)
xvfb=
cleanup() {
    [ -n "$xvfb" ] && kill "$xvfb" 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 1' INT TERM HUP
mkfifo "$work/displayfd"
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$work/displayfd" >/dev/null 2>&1 &
xvfb=$!
read -r number <"$work/displayfd"
export DISPLAY=":$number"
unset WAYLAND_DISPLAY
export HOME="$work/home"
mkdir -p "$HOME/Library/Application Support/Vexto"
printf '<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0">\n<dict>\n<key>Item Height</key>\n<real>64</real>\n</dict>\n</plist>\n' \
    >"$HOME/Library/Application Support/Vexto/Settings.plist"
log="$HOME/Library/Logs/vextodaemon.log"
# A copy of its own: the other host tests end the daemons that run from the build's bundle. It
# keeps its place in the pane's bundle, from where it finds the shared runtime.
app="$work/Vexto.prefPane/Contents/Resources/vextodaemon.app"
mkdir -p "$(dirname "$app")"
cp -r "$1" "$app"
ln -s "$(cd "$1/../../../../lib" && pwd)" "$work/lib"
daemon="$app/Contents/Linux/vextodaemon"

# Within its own session bus, as the pane and the daemon meet on one. Nothing started here keeps
# the test's output open: it goes to a file, shown when the test fails.
dbus-run-session -- sh -s "$daemon" "$log" >"$work/out" 2>&1 <<'SESSION' || { cat "$work/out"; exit 1; }
daemon=$1 log=$2
"$daemon" 2>/dev/null &
pid=$!
# Gone before the next test looks for daemons by name.
trap 'kill $pid 2>/dev/null; wait $pid 2>/dev/null' EXIT
waitfor() { # TEXT SECONDS
    tries=0
    until grep -q "$1" "$log" 2>/dev/null; do
        tries=$((tries + 1))
        [ "$tries" -gt $(($2 * 10)) ] && { echo "the log never said: $1"; cat "$log"; exit 1; }
        sleep 0.1
    done
}
mapped() { xwininfo -root -children | grep '"vextodaemon"' | awk '{print $1}' |
    while read -r id; do xwininfo -id "$id" | grep -q IsViewable && echo "$id"; done; }
waitfor "started" 10
dbus-send --session --type=signal /org/vexto/DistributedNotificationCenter \
    org.vexto.DistributedNotificationCenter.Posted \
    "string:app.vexto.preferences: Update Daemon" boolean:true string:Dummy
waitfor "showing a sample panel" 10
[ -n "$(mapped)" ] || { echo "no sample window is shown"; exit 1; }
sleep 3
[ -z "$(mapped)" ] || { echo "the sample window is still shown"; exit 1; }
SESSION
