#!/usr/bin/env bash
# Builds everything and runs every test. With --sanitize, the same under ASan and UBSan
# in a separate build folder.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/lib.sh

install_packages "${CORE_PACKAGES[@]}" "${QT_PACKAGES[@]}" "${TEST_PACKAGES[@]}"

# A test that hangs fails after five minutes instead of holding the run.
if [ "${1:-}" = "--sanitize" ]; then
    configure_and_build build-asan -DCMAKE_BUILD_TYPE=Debug -DVEXTO_SANITIZE=ON -DVEXTO_BUILD_BENCH=OFF
    export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp:print_suppressions=0"
    export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
    ctest --test-dir build-asan --output-on-failure --timeout 300 -j "$(nproc)"
else
    configure_and_build build -DCMAKE_BUILD_TYPE=RelWithDebInfo
    ctest --test-dir build --output-on-failure --timeout 300 -j "$(nproc)"
fi
