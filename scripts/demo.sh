#!/usr/bin/env bash
# Installs what is missing, builds the library and runs the main job on the sample prices.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/progress.sh

build_demo() {
  cmake --preset native -DQX_BUILD_TESTS=OFF
  cmake --build --preset native --target quorvex_demo
}

step "Installing what is missing" scripts/setup.sh build
step "Building the library and the demo" build_demo
if [ $# -eq 0 ]; then
  set -- samples sp500-daily.csv
fi
build/native/bin/quorvex_demo "$@"
