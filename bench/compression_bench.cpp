// Compression of a million bars, and the transforms of a series.
#include "bench/bench_support.h"

namespace {

using qxbench::bars;
using qxbench::countElements;
using qxbench::output;
using qxbench::prices;

qxBars copyOfBars() {
  qxBars copy = {};
  qxCopyBars(&bars(), &copy);
  return copy;
}

// The merges may write to their source, so it is a copy that no other benchmark sees.
qxBars* source() {
  static qxBars set = copyOfBars();
  return &set;
}

// A destination with room for every bar, touched so that page faults are not timed.
qxBars* merged() {
  static qxBars set = copyOfBars();
  return &set;
}

void periods(benchmark::State& state) {
  const auto period = static_cast<int32_t>(state.range(0));
  merged();
  for (auto _ : state) benchmark::DoNotOptimize(qxGroupBarsPeriods(source(), merged(), period, 0));
  countElements(state);
}

void byDate(benchmark::State& state) {
  const auto frequency = static_cast<int32_t>(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(qxGroupBarsDate(source(), merged(), frequency, 0, 0));
  }
  countElements(state);
}

void byTime(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(qxGroupBarsTime(source(), merged(), 300, 0, 0));
  countElements(state);
}

void groupArray(benchmark::State& state) {
  for (auto _ : state) {
    qxReSizeArray(&output(), qxbench::kElements);
    benchmark::DoNotOptimize(qxGroupArray(&bars(), &prices(), &output(), QX_FREQ_MONTHLY));
  }
  qxReSizeArray(&output(), qxbench::kElements);
  countElements(state);
}

void multAdd(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(qxMultAddArray(&prices(), &output(), 2, 1, 0));
  countElements(state);
}

void scale(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(qxScaleArray(&prices(), &output(), 0, 0, 0, 100, 0, 0));
  }
  countElements(state);
}

BENCHMARK(periods)
    ->Name("qxGroupBarsPeriods")
    ->Arg(qxbench::kShortPeriod)
    ->Arg(qxbench::kLongPeriod);
BENCHMARK(byDate)->Name("qxGroupBarsDate")->DenseRange(QX_FREQ_DAILY, QX_FREQ_YEARLY);
BENCHMARK(byTime)->Name("qxGroupBarsTime/five minutes");
BENCHMARK(groupArray)->Name("qxGroupArray/monthly");
BENCHMARK(multAdd)->Name("qxMultAddArray");
BENCHMARK(scale)->Name("qxScaleArray");

}  // namespace
