#!/bin/sh
# The daemon as a user meets it: started for real on a private session bus, on a display of its
# own managed by openbox, with windows of the test's own and keys pressed through XTEST.
#   x11-daemon.sh DAEMON-BUNDLE TEST-WINDOWS SCREEN-COLOURS
set -u
work=$(mktemp -d)
pids=
cleanup() {
    for pid in $pids; do kill "$pid" 2>/dev/null; done
    rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 1' INT TERM HUP
mkfifo "$work/displayfd"
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$work/displayfd" >/dev/null 2>&1 &
pids="$!"
read -r number <"$work/displayfd"
export DISPLAY=":$number"
unset WAYLAND_DISPLAY XDG_SESSION_TYPE
export HOME="$work/home"
folder="$HOME/Library/Application Support/Vexto"
mkdir -p "$folder"
# Super+Tab, as the pane writes it; openbox holds the default Alt+Tab.
cat >"$folder/Settings.plist" <<'PLIST'
<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict>
<key>Cycle All Windows</key><dict>
<key>Forward</key><dict><key>Key Code</key><string>48</string><key>Modifiers</key><string>1048576</string><key>Visual Representation</key><string>⌘⇥</string></dict>
</dict>
<key>Panel Delay</key><integer>300</integer>
<key>Show Previews</key><true/>
<key>Preview Delay</key><integer>1000</integer>
<key>Preview Border Color</key><data>BAtzdHJlYW10eXBlZIHoA4QBQISEhAdOU0NvbG9yAISECE5TT2JqZWN0AIWEAWMBhARmZmZmAQABAYY=</data>
</dict></plist>
PLIST
# A copy of its own: the other tests end the daemons that run from the build's bundle.
app="$work/Vexto.prefPane/Contents/Resources/vextodaemon.app"
mkdir -p "$(dirname "$app")"
cp -r "$1" "$app"
cp "$1/../KRVXDefaultSettings.plist" "$(dirname "$app")/"
ln -s "$(cd "$1/../../../../lib" && pwd)" "$work/lib"

openbox --sm-disable >/dev/null 2>&1 &
pids="$pids $!"
until xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; do sleep 0.1; done
# Mail and Term apart, where nothing covers them: without a compositing manager only a window
# nothing covers can be previewed.
"$2" --ready-fd 3 "Big:below:big" "Mail:inbox:x=20,y=20" "Term:shell:x=700,y=20" \
    3>"$work/ids" >/dev/null 2>&1 &
pids="$pids $!"
until [ -s "$work/ids" ]; do sleep 0.1; done
read -r big mail term <"$work/ids"

dbus-run-session -- sh -s "$app/Contents/Linux/vextodaemon" "$big" "$mail" "$term" "$3" \
    >"$work/out" 2>&1 <<'SESSION' || { cat "$work/out"; exit 1; }
daemon=$1 big=$2 mail=$3 term=$4 colours=$5
log="$HOME/Library/Logs/vextodaemon.log"
fail() { echo "$1"; cat "$log"; exit 1; }
active() { printf '%d\n' "$(xprop -root _NET_ACTIVE_WINDOW | awk '{print $NF}')"; }
becomes() { # WINDOW WHAT
    tries=0
    until [ "$(active)" = "$1" ]; do
        tries=$((tries + 1))
        [ "$tries" -gt 30 ] && fail "$2: the active window is $(active), not $1"
        sleep 0.1
    done
}
shown() { xwininfo -root -children | grep '"vextodaemon"' | awk '{print $1}' |
    while read -r id; do xwininfo -id "$id" | grep -q IsViewable && echo "$id"; done; }
# The preview's border, in the magenta the settings give it: a frame of four pixels.
previewed() { [ "$("$colours" ff00ff)" -gt 400 ]; }
waitfor() { # TEXT
    tries=0
    until grep -q "$1" "$log" 2>/dev/null; do
        tries=$((tries + 1))
        [ "$tries" -gt 100 ] && fail "the log never said: $1"
        sleep 0.1
    done
}

xdotool windowactivate --sync "$mail"
xdotool windowactivate --sync "$term"
"$daemon" 2>/dev/null &
pid=$!
# Gone before the next test looks for daemons by name.
trap 'kill $pid 2>/dev/null; wait $pid 2>/dev/null' EXIT
waitfor "started"
sleep 0.3

# A quick press and release goes back to the window used before, and shows no panel.
xdotool keydown super key Tab keyup super
becomes "$mail" "a quick Super+Tab"
[ -z "$(shown)" ] || fail "a quick switch showed the panel"

# Held, the panel shows after its delay and not before; the release switches.
xdotool keydown super key Tab
[ -z "$(shown)" ] || fail "the panel showed before its delay"
sleep 0.6
[ -n "$(shown)" ] || fail "the panel never showed while the keys were held"
previewed && fail "the preview showed before its delay"
sleep 1
previewed || fail "no preview framed in its border colour after its delay"
xdotool key Tab
sleep 0.2
previewed && fail "the preview of the window left stayed after a step"
xdotool keyup super
becomes "$big" "two steps"
sleep 0.2
[ -z "$(shown)" ] || fail "the panel stayed after the switch"
previewed && fail "the preview stayed after the switch"

# A sample lies over the big window and lets its clicks through.
xdotool windowactivate --sync "$mail"
dbus-send --session --type=signal /org/vexto/DistributedNotificationCenter \
    org.vexto.DistributedNotificationCenter.Posted \
    "string:app.vexto.preferences: Update Daemon" boolean:true string:Dummy
waitfor "showing a sample panel"
sleep 0.3
[ -n "$(shown)" ] || fail "no sample is shown"
previewed || fail "the sample shows no preview in the border colour"
xdotool mousemove 512 384 click 1
becomes "$big" "a click on the sample"
kill "$pid"
wait "$pid"

# In a Wayland session it says that cycling needs X11, and grabs nothing.
WAYLAND_DISPLAY=wayland-test "$daemon" 2>/dev/null &
pid=$!
waitfor "window cycling needs an X11 session"
xdotool keydown super key Tab keyup super
sleep 0.5
[ "$(active)" = "$big" ] || fail "a daemon in a Wayland session switched windows"
SESSION
