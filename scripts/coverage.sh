#!/usr/bin/env bash
# Prints how much of the library the tests reach: lines and branches, for each file and in all.
# Branches that the compiler adds for exceptions do not count.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/progress.sh

build() {
  cmake -S . -B build/coverage -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQX_COVERAGE=ON \
    -DQX_BUILD_TESTS=ON -DQX_BUILD_EXAMPLES=OFF
  cmake --build build/coverage
  find build/coverage -name '*.gcda' -delete  # counts of an earlier run
}

step "Installing what is missing" scripts/setup.sh test
step "Building with counters" build
step "Testing" build/coverage/bin/quorvex_tests
step "Testing the internals" build/coverage/bin/quorvex_internal_tests
step "Making 50,000 random calls" build/coverage/bin/quorvex_random_calls --calls 50000 --seed 2026

report() {
  gcovr --root . --object-directory build/coverage --exclude-throw-branches \
    --exclude-unreachable-branches --filter '(core|dates|indicators|patterns|finance)/' \
    --filter '(datafiles|trading|charting|platform)/' "$@"
}
report --print-summary
report --branches
