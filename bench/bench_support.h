// Data shared by the benchmarks: a million elements, made alike in every run.
#ifndef QUORVEX_BENCH_BENCH_SUPPORT_H
#define QUORVEX_BENCH_BENCH_SUPPORT_H

#include <benchmark/benchmark.h>

#include "quorvex.h"

namespace qxbench {

inline constexpr int32_t kElements = 1000000;
inline constexpr int32_t kShortPeriod = 10;
inline constexpr int32_t kLongPeriod = 200;

// A random walk of positive prices; `seed` picks the walk.
const qxArray& prices(int seed = 1);

// Bars around such a walk, with volumes.
const qxBars& bars();

// An output of a million elements, allocated once and touched, so that page faults are not timed.
qxArray& output(int index = 0);

// Elements per second, from the loop's iterations.
inline void countElements(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * kElements);
}

}  // namespace qxbench

#endif  // QUORVEX_BENCH_BENCH_SUPPORT_H
