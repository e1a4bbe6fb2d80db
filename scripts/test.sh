#!/usr/bin/env bash
# The whole test run: formatting, the tests on Linux, under the sanitizers and on Windows (under
# Wine), both compilers, static analysis, fuzzers. Installs what is missing. Ends in a line that
# counts the tests.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/progress.sh

passed=0 failed=0 skipped=0

# Adds up what a GoogleTest program printed.
count_tests() {
  local n
  n=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) test.*/\1/p' "$step_log" | tail -n 1)
  passed=$((passed + ${n:-0}))
  n=$(sed -n 's/^\[  SKIPPED \] \([0-9]*\) test.*/\1/p' "$step_log" | tail -n 1)
  skipped=$((skipped + ${n:-0}))
}

# run_tests NAME COMMAND...: a step whose tests are counted.
run_tests() {
  step "$@"
  count_tests
}

format_check() { git ls-files '*.cpp' '*.c' '*.h' | xargs clang-format --dry-run -Werror; }

clang_build() {
  cmake -S . -B build/clang -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_C_COMPILER=clang \
    -DCMAKE_CXX_COMPILER=clang++ -DQX_BUILD_TESTS=OFF
  cmake --build build/clang
}

tidy() {
  git ls-files 'core/*.cpp' 'dates/*.cpp' 'indicators/*.cpp' 'patterns/*.cpp' 'finance/*.cpp' \
    'datafiles/*.cpp' 'trading/*.cpp' 'charting/*.cpp' 'platform/platform_posix.cpp' |
    grep -v gdi_painter.cpp | xargs -P "$(nproc)" -n 4 clang-tidy -p build/clang --quiet
}

build() { cmake --preset "$1" -DQX_BUILD_TESTS=ON && cmake --build --preset "$1"; }

# Runs a Windows program from its own folder, beside the DLL, with a display of its own.
on_windows() {
  (cd build/windows/bin && timeout 600 xvfb-run -a wine "$@")
}

start_wine() {
  mkdir -p "$WINEPREFIX"
  xvfb-run -a wineboot --init
}

native_bits() { build/native/bin/quorvex_same_bits samples/sp500-daily.csv >build/native/bits.txt; }
windows_bits() {
  on_windows ./quorvex_same_bits.exe "$PWD/samples/sp500-daily.csv" >build/windows/bits.txt
}

step "Installing what is missing" scripts/setup.sh test
step "Checking the format" format_check
step "Comparing the records with their list" scripts/list_records.py --check

step "Building for Linux" build native
run_tests "Testing on Linux" build/native/bin/quorvex_tests
run_tests "Testing the internals on Linux" build/native/bin/quorvex_internal_tests

step "Building with the sanitizers" build asan
run_tests "Testing with the sanitizers" build/asan/bin/quorvex_tests
run_tests "Testing the internals with the sanitizers" build/asan/bin/quorvex_internal_tests
step "Making 600,000 random calls with the sanitizers" build/asan/bin/quorvex_random_calls \
  --calls 600000 --seed 2026

export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" WINEPREFIX=$PWD/build/wine
step "Building for Windows" build windows
step "Starting Wine" start_wine
run_tests "Testing on Windows" on_windows ./quorvex_tests.exe
run_tests "Testing the internals on Windows" on_windows ./quorvex_internal_tests.exe

step "Comparing the exported names" scripts/check_exports.py build/native/libquorvex.so \
  build/windows/bin/quorvex.dll
for client in quorvex_client_c99 quorvex_client_cpp17; do
  step "Running $client on Linux" build/native/bin/$client
  step "Running $client on Windows" on_windows ./$client.exe
done

step "Computing over the sample prices on Linux" native_bits
step "Computing over the sample prices on Windows" windows_bits
step "Comparing what both computed" scripts/compare_bits.py build/native/bits.txt \
  build/windows/bits.txt

step "Building with clang" clang_build
step "Analysing with clang-tidy" tidy

step "Fuzzing every reader and parser" scripts/fuzz.sh 20

echo "$passed passed, $failed failed, $skipped skipped"
