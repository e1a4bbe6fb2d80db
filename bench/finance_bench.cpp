// Options, strategies and bonds valued per second.
#include "bench/bench_support.h"

namespace {

constexpr double kToday = 40000.0;

void blackScholes(benchmark::State& state) {
  const qxOptionLeg leg = {0, 100, static_cast<int32_t>(state.range(0)), kToday + 180};
  double price = 80.0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(qxBlackScholes(&leg, price, 5.0, 0.04, kToday));
    price = price > 120.0 ? 80.0 : price + 0.01;
  }
  state.SetItemsProcessed(state.iterations());
}

void bullCall(benchmark::State& state) {
  qxOptionStrategy strategy = {};
  strategy.price = 100;
  strategy.long1 = {5, 100, QX_OPTION_CALL, kToday};
  strategy.short1 = {2, 110, QX_OPTION_CALL, kToday};
  for (auto _ : state) {
    benchmark::DoNotOptimize(qxBullCall(&strategy));
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations());
}

void bondPricing(benchmark::State& state) {
  const qxBond bond = {1000, 990, 60, 2, kToday + 3650};
  for (auto _ : state) benchmark::DoNotOptimize(qxBondPricing(&bond, 5.0, kToday));
  state.SetItemsProcessed(state.iterations());
}

void bondDuration(benchmark::State& state) {
  const qxBond bond = {1000, 990, 60, 2, kToday + 3650};
  for (auto _ : state) benchmark::DoNotOptimize(qxBondDuration(&bond, 5.0, kToday));
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(blackScholes)->Name("qxBlackScholes")->Arg(QX_OPTION_CALL)->Arg(QX_OPTION_PUT);
BENCHMARK(bullCall)->Name("qxBullCall");
BENCHMARK(bondPricing)->Name("qxBondPricing/ten years");
BENCHMARK(bondDuration)->Name("qxBondDuration/ten years");

}  // namespace
