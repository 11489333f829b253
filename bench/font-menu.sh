#!/usr/bin/env bash
# The font menu next to fontconfig, like with like (after a build): bash bench/font-menu.sh [RUNS]
# In-process: the pane's rebuild of the menu, its reading of the installed fonts, and
# fontconfig's bare listing of the same properties. As whole processes, alternating: a headless
# open that builds the menu against one that does not (their difference is the menu, fonts read
# included), beside fc-list against a process that does nothing (the difference is fc-list's work).
set -euo pipefail
cd "$(dirname "$0")/.."
if [ -z "${VEXTO_BENCH_OWN_PIDS:-}" ]; then
    VEXTO_BENCH_OWN_PIDS=1 exec tests/support/own-pid-namespace.sh bash "$0" "$@"
fi
runs=${1:-200}
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
echo "fonts: $(fc-list | wc -l) faces in $(fc-list : family | sort -u | wc -l) families"
build/bench/vexto_font_menu_bench --benchmark_min_time=1
printf 'select-tab appearance\nprint-control fontsPopUpButton\nquit\n' >"$home/menu.vexto"
printf 'select-tab appearance\nquit\n' >"$home/open.vexto"
HOME=$home build/vexto-prefs --headless --script "$home/open.vexto" >/dev/null 2>&1
host() { echo "$PWD/build/vexto-prefs" --headless --script "$home/$1.vexto"; }
echo "== the menu, as whole processes: open and build it, against open alone"
HOME=$home build/bench/vexto_process_compare "$runs" open+menu $(host menu) -- open $(host open)
echo "== fc-list, as whole processes: against a process that does nothing"
build/bench/vexto_process_compare "$runs" \
    fc-list fc-list : family style postscriptname fullname weight slant width -- nothing true
