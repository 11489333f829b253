#!/bin/sh
# The feedback line's arrow, pressed through a script as a person clicks it: the mail address
# reaches xdg-open (a stand-in first on PATH writes down what it is given), and a click on the
# text beside it opens nothing.
#   feedback-arrow.sh HOST BUNDLE
set -u
# Its own session bus and no display: nothing reaches the desktop the tests run in.
unset DISPLAY WAYLAND_DISPLAY
host=$1 bundle=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin" "$work/home"
cat >"$work/bin/xdg-open" <<STANDIN
#!/bin/sh
echo "\$@" >>"$work/opened"
STANDIN
chmod +x "$work/bin/xdg-open"
cat >"$work/script.vexto" <<'SCRIPT'
select-tab about
print-control feedbackTextField
click feedbackTextField
wait 0.5
SCRIPT
HOME=$work/home PATH=$work/bin:$PATH "$(dirname "$0")/../support/own-pid-namespace.sh" \
    dbus-run-session -- "$host" --headless --pane "$bundle" \
    --script "$work/script.vexto" >"$work/out" 2>"$work/err" || { cat "$work/err"; exit 1; }
grep -q '"class":"KRVXLinkTextField"' "$work/out" || { echo "not a link field:"; cat "$work/out"; exit 1; }
grep -q '"link":"mailto:support@vexto.app?subject=Vexto%203.1%20(310/' "$work/out" ||
    { echo "no link shown:"; cat "$work/out"; exit 1; }
grep -q '"actionButtonToolTip":"support@vexto.app"' "$work/out" || { echo "no arrow tip"; exit 1; }
opened=$(cat "$work/opened" 2>/dev/null)
case "$opened" in
mailto:support@vexto.app\?subject=Vexto%203.1%20\(310/*) ;;
*) echo "xdg-open was given: '$opened'"; exit 1 ;;
esac
