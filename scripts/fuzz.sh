#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (ASan + UBSan) and runs each on a copy of its seed
# corpus for SECONDS seconds (default 20). Any finding stops with a non-zero status and leaves the
# input in build-fuzz/findings/. Run it longer, for example `bash scripts/fuzz.sh 3600`, or one
# target only with FUZZ_TARGETS=fuzz_property_list.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/lib.sh

install_packages "${CORE_PACKAGES[@]}" "${FUZZ_PACKAGES[@]}"
seconds=${1:-20}
targets=${FUZZ_TARGETS:-fuzz_property_list fuzz_archived_colour fuzz_strings_table fuzz_script_parser
                        fuzz_tiff_header fuzz_quoted_text fuzz_net_wm_icon fuzz_shortcut_configs}

CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DVEXTO_FUZZ=ON -DVEXTO_BUILD_QT=OFF -DVEXTO_BUILD_TESTS=OFF -DVEXTO_BUILD_BENCH=OFF >/dev/null
# shellcheck disable=SC2086
cmake --build build-fuzz --target $targets

declare -A corpus=([fuzz_property_list]=property-list [fuzz_archived_colour]=archived-colour
                   [fuzz_strings_table]=strings-table [fuzz_script_parser]=script
                   [fuzz_tiff_header]=tiff-header [fuzz_quoted_text]=quoted-text
                   [fuzz_net_wm_icon]=net-wm-icon [fuzz_shortcut_configs]=shortcut-config)
mkdir -p build-fuzz/findings
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
for target in $targets; do
    work="build-fuzz/corpus/${corpus[$target]}"
    mkdir -p "$work"
    log="build-fuzz/$target.log"
    if ! "build-fuzz/tests/fuzz/$target" -max_total_time="$seconds" -rss_limit_mb=2048 \
        -timeout=10 -max_len=16384 -artifact_prefix=build-fuzz/findings/ -print_final_stats=1 \
        "$work" "tests/fuzz/corpus/${corpus[$target]}" >"$log" 2>&1; then
        tail -40 "$log"
        echo "$target: finding, see build-fuzz/findings/ and $log"
        exit 1
    fi
    runs=$(grep -oE 'stat::number_of_executed_units: *[0-9]+' "$log" | grep -oE '[0-9]+$' || echo "?")
    echo "$target: $runs executions in ${seconds} s, no finding"
done
