// Every moving statistic over a million elements, with a short and a long period.
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
  for (auto _ : state) {
    call(period);
    benchmark::ClobberMemory();
  }
  countElements(state);
}

void stdDev(benchmark::State& state) {
  run(state, [](int32_t period) { qxStdDevMv(&prices(), &output(), 1, period, 0); });
}

void stdErr(benchmark::State& state) {
  run(state, [](int32_t period) { qxStdErrMv(&prices(), &output(), period, 0); });
}

void dispersion(benchmark::State& state) {
  run(state, [](int32_t period) { qxDispersionMv(&prices(), &output(), period, 0); });
}

void corCoef(benchmark::State& state) {
  run(state, [](int32_t period) { qxCorCoefMv(&prices(), &prices(2), &output(), 1, period, 0); });
}

void covariance(benchmark::State& state) {
  run(state, [](int32_t period) { qxCovarianceMv(&prices(), &prices(2), &output(), period, 0); });
}

void regressionLine(benchmark::State& state) {
  run(state, [](int32_t period) {
    qxRegressionLineMv(&prices(), &output(0), &output(1), period, 0, qxbench::kElements);
  });
}

void rSquared(benchmark::State& state) {
  run(state, [](int32_t period) { qxRSquared(&prices(), &output(), period, 0); });
}

void trueRange(benchmark::State& state) {
  for (auto _ : state) {
    qxTR(&bars(), &output(), 0);
    benchmark::ClobberMemory();
  }
  countElements(state);
}

void bothPeriods(benchmark::internal::Benchmark* bench) {
  bench->Arg(qxbench::kShortPeriod)->Arg(qxbench::kLongPeriod);
}

BENCHMARK(stdDev)->Name("qxStdDevMv")->Apply(bothPeriods);
BENCHMARK(stdErr)->Name("qxStdErrMv")->Apply(bothPeriods);
BENCHMARK(dispersion)->Name("qxDispersionMv")->Apply(bothPeriods);
BENCHMARK(corCoef)->Name("qxCorCoefMv")->Apply(bothPeriods);
BENCHMARK(covariance)->Name("qxCovarianceMv")->Apply(bothPeriods);
BENCHMARK(regressionLine)->Name("qxRegressionLineMv")->Apply(bothPeriods);
BENCHMARK(rSquared)->Name("qxRSquared")->Apply(bothPeriods);
BENCHMARK(trueRange)->Name("qxTR");

}  // namespace
