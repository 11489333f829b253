#!/usr/bin/env bash
# The font menu rebuilt in the pane next to fc-list listing the same fonts as a whole process
# (after a build): bash bench/font-menu.sh [RUNS]
set -euo pipefail
cd "$(dirname "$0")/.."
runs=${1:-200}
echo "fonts: $(fc-list | wc -l) faces in $(fc-list : family | sort -u | wc -l) families"
build/bench/vexto_font_menu_bench --benchmark_min_time=1
# fc-list as a whole process, next to a process that does nothing (the floor of starting one).
build/bench/vexto_process_compare "$runs" \
    fc-list fc-list : family style postscriptname fullname -- \
    nothing true
