// What the machine can do: one array read and another written, and bare loops with the chains of
// operations that recursive averages cannot avoid.
#include <cmath>
#include <random>

#include "bench/bench_support.h"

namespace qxbench {
namespace {

qxArray randomWalk(int seed) {
  qxArray walk = {};
  qxAllocArray(&walk, kElements);
  std::mt19937 random(static_cast<unsigned>(seed));
  std::normal_distribution<double> change(0.0, 0.01);
  double price = 100.0;
  for (int32_t i = 0; i < kElements; ++i) {
    price *= std::exp(change(random));
    if (price < 1.0 || price > 10000.0) price = 100.0;
    walk.data[i] = price;
  }
  return walk;
}

qxBars randomBars() {
  qxBars set = {};
  qxAllocBars(&set, kElements);
  const qxArray& walk = prices();
  std::mt19937 random(99);
  std::uniform_real_distribution<double> part(0.0, 0.01);
  for (int32_t i = 0; i < kElements; ++i) {
    const double close = walk.data[i];
    const double open = close * (1.0 + part(random) - 0.005);
    set.date.data[i] = 20000.0 + i;
    set.open.data[i] = open;
    set.close.data[i] = close;
    set.high.data[i] = std::fmax(open, close) * (1.0 + part(random));
    set.low.data[i] = std::fmin(open, close) * (1.0 - part(random));
    set.volume.data[i] = std::floor(1e8 * part(random));
    set.openint.data[i] = std::floor(1e7 * part(random));
  }
  return set;
}

qxArray touchedArray() {
  qxArray array = {};
  qxAllocArray(&array, kElements);
  for (int32_t i = 0; i < kElements; ++i) array.data[i] = 1.0;
  return array;
}

void readOneWriteAnother(benchmark::State& state) {
  const double* in = prices().data;
  double* out = output().data;
  for (auto _ : state) {
    for (int32_t i = 0; i < kElements; ++i) out[i] = 2.0 * in[i];
    benchmark::ClobberMemory();
  }
  countElements(state);
}
BENCHMARK(readOneWriteAnother);

void bareExponentialLoop(benchmark::State& state) {
  const double* in = prices().data;
  double* out = output().data;
  const double factor = 2.0 / (static_cast<double>(state.range(0)) + 1.0);
  const double keep = 1.0 - factor;
  for (auto _ : state) {
    double average = out[0] = in[0];
    for (int32_t i = 1; i < kElements; ++i) {
      average = factor * in[i] + keep * average;
      out[i] = average;
    }
    benchmark::ClobberMemory();
  }
  countElements(state);
}
BENCHMARK(bareExponentialLoop)->Arg(kShortPeriod)->Arg(kLongPeriod);

void bareDoubleExponentialLoop(benchmark::State& state) {
  const double* in = prices().data;
  double* out = output().data;
  const double factor = 2.0 / (static_cast<double>(state.range(0)) + 1.0);
  const double keep = 1.0 - factor;
  for (auto _ : state) {
    double e1 = in[0], e2 = in[0];
    for (int32_t i = 1; i < kElements; ++i) {
      e1 = factor * in[i] + keep * e1;
      e2 = factor * e1 + keep * e2;
      out[i] = 2.0 * e1 - e2;
    }
    benchmark::ClobberMemory();
  }
  countElements(state);
}
BENCHMARK(bareDoubleExponentialLoop)->Arg(kShortPeriod)->Arg(kLongPeriod);

void bareWellesLoop(benchmark::State& state) {
  const double* in = prices().data;
  double* out = output().data;
  const auto period = static_cast<double>(state.range(0));
  for (auto _ : state) {
    double average = out[0] = in[0];
    for (int32_t i = 1; i < kElements; ++i) {
      average = (average * (period - 1.0) + in[i]) / period;
      out[i] = average;
    }
    benchmark::ClobberMemory();
  }
  countElements(state);
}
BENCHMARK(bareWellesLoop)->Arg(kShortPeriod)->Arg(kLongPeriod);

}  // namespace

const qxArray& prices(int seed) {
  static const qxArray walks[] = {randomWalk(1), randomWalk(2)};
  return walks[seed == 1 ? 0 : 1];
}

const qxBars& bars() {
  static const qxBars set = randomBars();
  return set;
}

qxArray& output(int index) {
  static qxArray arrays[] = {touchedArray(), touchedArray(), touchedArray(), touchedArray(),
                             touchedArray()};
  return arrays[index];
}

}  // namespace qxbench
