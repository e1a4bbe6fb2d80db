// Every trend indicator over a million bars, with a short and a long period.
#include "bench/bench_support.h"

namespace {

using qxbench::bars;
using qxbench::countElements;
using qxbench::output;
using qxbench::prices;

// Calls call(period) in a timed loop.
template <typename Call>
void run(benchmark::State& state, Call call) {
  const auto period = static_cast<int32_t>(state.range(0));
  benchmark::DoNotOptimize(bars().barsize);  // made before the clock starts
  for (auto _ : state) {
    for (int i = 0; i < 5; ++i) output(i).firstvalid = 0;
    call(period);
    benchmark::ClobberMemory();
  }
  countElements(state);
}

void directional(benchmark::State& state) {
  run(state, [](int32_t period) { qxDI(&bars(), &output(0), &output(1), period, 0); });
}

void rating(benchmark::State& state) {
  run(state, [](int32_t period) { qxADXR(&bars(), &output(), period, period, period, 0); });
}

void aroon(benchmark::State& state) {
  run(state, [](int32_t period) { qxAroon(&bars(), &output(0), &output(1), period, 0); });
}

void dynamicMomentum(benchmark::State& state) {
  run(state, [](int32_t) { qxDMI(&prices(), &output(), 0); });
}

void parabolic(benchmark::State& state) {
  run(state, [](int32_t) { qxSAR(&bars(), &output(0), &output(1), 0.02, 0.2, 0); });
}

void verticalHorizontal(benchmark::State& state) {
  run(state, [](int32_t period) { qxVHF(&prices(), &output(), period, 0); });
}

void randomWalk(benchmark::State& state) {
  run(state, [](int32_t period) { qxRWI(&bars(), &output(0), &output(1), period, 0); });
}

void zigZag(benchmark::State& state) {
  run(state, [](int32_t percent) { qxZigZag(&prices(), &output(), percent, 0); });
}

void ichimoku(benchmark::State& state) {
  run(state, [](int32_t period) {
    qxIchimokuKinkoHyo(&bars(), &output(0), &output(1), &output(2), &output(3), &output(4), period,
                       3 * period, 6 * period, 0);
  });
}

void trendScore(benchmark::State& state) {
  run(state, [](int32_t period) { qxTrendScore(&prices(), &output(), 1, period, 0); });
}

void fractalEfficiency(benchmark::State& state) {
  run(state, [](int32_t period) { qxPFE(&prices(), &output(), period, 5, 0); });
}

void rangeIndicator(benchmark::State& state) {
  run(state, [](int32_t period) { qxRangeIndicator(&bars(), &output(), period, 3, 0); });
}

void bothPeriods(benchmark::internal::Benchmark* bench) {
  bench->Arg(qxbench::kShortPeriod)->Arg(qxbench::kLongPeriod);
}

BENCHMARK(directional)->Name("qxDI")->Apply(bothPeriods);
BENCHMARK(rating)->Name("qxADXR")->Apply(bothPeriods);
BENCHMARK(aroon)->Name("qxAroon")->Apply(bothPeriods);
BENCHMARK(dynamicMomentum)->Name("qxDMI")->Arg(0);
BENCHMARK(parabolic)->Name("qxSAR")->Arg(0);
BENCHMARK(verticalHorizontal)->Name("qxVHF")->Apply(bothPeriods);
BENCHMARK(randomWalk)->Name("qxRWI")->Apply(bothPeriods);
BENCHMARK(zigZag)->Name("qxZigZag")->Arg(5);
BENCHMARK(ichimoku)->Name("qxIchimokuKinkoHyo")->Apply(bothPeriods);
BENCHMARK(trendScore)->Name("qxTrendScore")->Apply(bothPeriods);
BENCHMARK(fractalEfficiency)->Name("qxPFE")->Apply(bothPeriods);
BENCHMARK(rangeIndicator)->Name("qxRangeIndicator")->Apply(bothPeriods);

}  // namespace
