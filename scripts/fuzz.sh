#!/usr/bin/env bash
# Builds the fuzzers and runs each of them for a number of seconds, two at a time, from its corpus:
# `fuzz.sh 60`, or `fuzz.sh 60 computrac date_texts` for some of them. An input that fails stays in
# build/fuzz/findings.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/progress.sh

seconds=${1:?usage: fuzz.sh SECONDS [TARGET...]}
targets=("${@:2}")
if [ ${#targets[@]} -eq 0 ]; then
  targets=(fuzz/corpus/*)
  targets=("${targets[@]##*/}")
fi

build_fuzzers() {
  cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_C_COMPILER=clang \
    -DCMAKE_CXX_COMPILER=clang++ -DQX_SANITIZE=ON -DQX_BUILD_FUZZ=ON -DQX_BUILD_TESTS=OFF \
    -DQX_BUILD_EXAMPLES=OFF
  cmake --build build/fuzz --target qx_fuzzers
}

# Files of the fuzzers live in memory where the system has a folder for that.
scratch=$(mktemp -d -p "$([ -w /dev/shm ] && echo /dev/shm || echo "${TMPDIR:-/tmp}")")
trap 'rm -rf "$step_log" "$scratch"' EXIT
export TMPDIR=$scratch

# Runs one fuzzer on a copy of its corpus and prints a line about it.
fuzz() {
  local name=$1 seconds=$2 log=$TMPDIR/$1.log
  mkdir -p "$TMPDIR/$name" build/fuzz/findings
  if build/fuzz/bin/fuzz_"$name" -max_total_time="$seconds" -timeout=10 -max_len=4096 \
    -print_final_stats=1 -artifact_prefix="build/fuzz/findings/$name-" \
    "$TMPDIR/$name" fuzz/corpus/"$name" >"$log" 2>&1 </dev/null; then
    printf '%-20s ok  %10d inputs\n' "$name" \
      "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")"
  else
    printf '%-20s FAILED\n' "$name"
    tail -n 40 "$log"
    return 1
  fi
}
export -f fuzz

step "Building the fuzzers" build_fuzzers
printf '%s\n' "${targets[@]}" | xargs -P 2 -I{} bash -c "fuzz {} $seconds"
