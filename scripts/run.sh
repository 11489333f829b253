#!/usr/bin/env bash
# Builds the pane's tools and runs them on the shipped defaults file.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/lib.sh

install_packages "${CORE_PACKAGES[@]}"
configure_and_build build -DCMAKE_BUILD_TYPE=RelWithDebInfo

defaults=resources/KRVXDefaultSettings.plist
build/apps/vexto-plist/vexto-plist lint "$defaults"
build/apps/vexto-plist/vexto-plist print "$defaults"
