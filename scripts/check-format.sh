#!/usr/bin/env bash
# Fails when a C++ file differs from the checked-in .clang-format; `clang-format -i` mends it.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/lib.sh

install_packages "${FORMAT_PACKAGES[@]}"
git ls-files -z '*.cpp' '*.hpp' | xargs -0 clang-format --dry-run --Werror
echo "formatting: every file as .clang-format says"
