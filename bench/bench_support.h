// Data shared by the benchmarks: a million elements, made alike in every run.
#ifndef QUORVEX_BENCH_BENCH_SUPPORT_H
#define QUORVEX_BENCH_BENCH_SUPPORT_H

#include <benchmark/benchmark.h>

#include <cstddef>

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

// One study over a million elements; those without a period are run once.
struct Study {
  const char* name;
  bool hasPeriod;
  void (*call)(int32_t period);
};

// Registers every study of a table with the short and the long period. Returns their number, so
// that a constant can be initialised with it.
template <size_t N>
size_t registerStudies(const Study (&studies)[N]) {
  for (const Study& study : studies) {
    auto* bench = benchmark::RegisterBenchmark(
        study.name, [call = study.call, periodic = study.hasPeriod](benchmark::State& state) {
          const auto period = periodic ? static_cast<int32_t>(state.range(0)) : 0;
          for (auto _ : state) {
            call(period);
            benchmark::ClobberMemory();
          }
          countElements(state);
        });
    if (study.hasPeriod) bench->Arg(kShortPeriod)->Arg(kLongPeriod);
  }
  return N;
}

}  // namespace qxbench

#endif  // QUORVEX_BENCH_BENCH_SUPPORT_H
