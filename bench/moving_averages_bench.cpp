// Every moving average over a million elements, with a short and a long period.
#include "bench/bench_support.h"

namespace {

using qxbench::countElements;
using qxbench::output;
using qxbench::prices;

template <typename Call>
void run(benchmark::State& state, Call call) {
  const qxArray& in = prices();
  qxArray& out = output();
  const auto period = static_cast<int32_t>(state.range(0));
  benchmark::DoNotOptimize(qxbench::bars().barsize);  // made before the clock starts
  for (auto _ : state) {
    out.firstvalid = 0;
    call(&in, &out, period);
    benchmark::ClobberMemory();
  }
  countElements(state);
}

template <int32_t (*average)(const qxArray*, qxArray*, int32_t, int32_t)>
void withPeriod(benchmark::State& state) {
  run(state, [](const qxArray* in, qxArray* out, int32_t period) { average(in, out, period, 0); });
}

template <int32_t (*average)(const qxArray*, qxArray*, double, int32_t)>
void withFactor(benchmark::State& state) {
  run(state, [](const qxArray* in, qxArray* out, int32_t period) { average(in, out, period, 0); });
}

void t3(benchmark::State& state) {
  run(state,
      [](const qxArray* in, qxArray* out, int32_t period) { qxT3(in, out, period, 0.7, 3, 0); });
}

void vidya(benchmark::State& state) {
  run(state,
      [](const qxArray* in, qxArray* out, int32_t period) { qxVIDYA(in, out, 9, period, 0); });
}

void volAdjusted(benchmark::State& state) {
  run(state, [](const qxArray* in, qxArray* out, int32_t period) {
    qxVolAdjustedMA(in, &qxbench::bars().volume, out, period, 0);
  });
}

void bothPeriods(benchmark::internal::Benchmark* bench) {
  bench->Arg(qxbench::kShortPeriod)->Arg(qxbench::kLongPeriod);
}

BENCHMARK(withPeriod<qxSimpleMA>)->Name("qxSimpleMA")->Apply(bothPeriods);
BENCHMARK(withPeriod<qxMovingSum>)->Name("qxMovingSum")->Apply(bothPeriods);
BENCHMARK(withPeriod<qxWeightedMA>)->Name("qxWeightedMA")->Apply(bothPeriods);
BENCHMARK(withPeriod<qxTriangularMA>)->Name("qxTriangularMA")->Apply(bothPeriods);
BENCHMARK(withPeriod<qxLstSqrMA>)->Name("qxLstSqrMA")->Apply(bothPeriods);
BENCHMARK(volAdjusted)->Name("qxVolAdjustedMA")->Apply(bothPeriods);
BENCHMARK(withFactor<qxExpMA>)->Name("qxExpMA")->Apply(bothPeriods);
BENCHMARK(withFactor<qxDEMA>)->Name("qxDEMA")->Apply(bothPeriods);
BENCHMARK(withFactor<qxTEMA>)->Name("qxTEMA")->Apply(bothPeriods);
BENCHMARK(withFactor<qxZeroLagExpMA>)->Name("qxZeroLagExpMA")->Apply(bothPeriods);
BENCHMARK(t3)->Name("qxT3")->Apply(bothPeriods);
BENCHMARK(withPeriod<qxWellesMA>)->Name("qxWellesMA")->Apply(bothPeriods);
BENCHMARK(withPeriod<qxWellesSum>)->Name("qxWellesSum")->Apply(bothPeriods);
BENCHMARK(withPeriod<qxCMO>)->Name("qxCMO")->Apply(bothPeriods);
BENCHMARK(vidya)->Name("qxVIDYA")->Apply(bothPeriods);

}  // namespace
