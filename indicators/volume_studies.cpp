// Volume studies of single authors: money flow index, Klinger, Williams, Herrick, Sibbet and
// Wilder, and the floor traders' levels. All use the caller's start index as it is.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>

#include "core/indicator_frame.h"
#include "indicators/moving_windows.h"
#include "indicators/smoothing.h"
#include "quorvex.h"

namespace {

// The series of a bar set, and the bars that all those needed by a study hold.
struct Held {
  const double* open;
  const double* high;
  const double* low;
  const double* close;
  const double* volume;
  const double* openint;
  int64_t length;
};

Held heldBars(const qxBars& bars, int32_t length, std::initializer_list<const qxArray*> needed) {
  return {bars.open.data,
          bars.high.data,
          bars.low.data,
          bars.close.data,
          bars.volume.data,
          bars.openint.data,
          qx::heldLength(length, needed)};
}

// Money flow of bar i in the direction of its typical price; `rising` says which direction counts.
double directedFlow(const Held& b, int64_t i, double typical, double before, bool rising) {
  const bool counts = rising ? typical > before : typical < before;
  return counts ? typical * b.volume[i] : 0.0;
}

double typicalPrice(const Held& b, int64_t i) {
  return (b.high[i] + b.low[i] + b.close[i]) / 3.0;
}

// The flows of each bar after `start`, apart for rising and falling typical prices.
void moneyFlows(const Held& b, int64_t start, double* rising, double* falling) {
  for (int64_t i = start + 1; i < b.length; ++i) {
    const double typical = typicalPrice(b, i);
    const double before = typicalPrice(b, i - 1);
    rising[i] = directedFlow(b, i, typical, before, true);
    falling[i] = directedFlow(b, i, typical, before, false);
  }
}

void moneyFlowIndex(const double* rising, const double* falling, int64_t first, int64_t last,
                    int64_t period, double* out) {
  // Each window is added up anew: a running sum would leave traces of flows that have left it.
  qx::byLanes(first, last, [=](auto lanes, int64_t i) {
    constexpr size_t kCount = decltype(lanes)::value;
    const int64_t from = i - period + 1;
    const auto up = qx::windowSums<kCount>(
        from, period, [rising](int64_t j, int64_t, size_t) { return rising[j]; });
    const auto down = qx::windowSums<kCount>(
        from, period, [falling](int64_t j, int64_t, size_t) { return falling[j]; });
    for (size_t lane = 0; lane < kCount; ++lane) {
      const double sum = up[lane] + down[lane];
      out[i + static_cast<int64_t>(lane)] = sum == 0.0 ? 0.0 : 100.0 * up[lane] / sum;
    }
  });
}

// Klinger's volume force, bar by bar.
struct VolumeForce {
  int32_t trend;
  double cumulative;
};

double nextVolumeForce(const Held& b, int64_t i, VolumeForce* state) {
  const double sum = b.high[i] + b.low[i] + b.close[i];
  const double before = b.high[i - 1] + b.low[i - 1] + b.close[i - 1];
  const int32_t trend = sum > before ? 1 : -1;
  const double range = b.high[i] - b.low[i];
  state->cumulative =
      trend == state->trend ? state->cumulative + range : (b.high[i - 1] - b.low[i - 1]) + range;
  state->trend = trend;
  if (state->cumulative == 0.0) return 0.0;
  return b.volume[i] * std::fabs(2.0 * range / state->cumulative - 1.0) * trend * 100.0;
}

void klinger(const Held& b, int64_t first, const qx::Smoothing& fast, const qx::Smoothing& slow,
             const qx::Smoothing& signal, double* koOut, double* signalOut) {
  VolumeForce state = {0, 0.0};
  double average1 = 0.0, average2 = 0.0, line = 0.0;
  for (int64_t i = first; i < b.length; ++i) {
    const double force = nextVolumeForce(b, i, &state);
    const bool seed = i == first;
    average1 = seed ? force : qx::smooth(fast, force, average1);
    average2 = seed ? force : qx::smooth(slow, force, average2);
    koOut[i] = average1 - average2;
    line = seed ? koOut[i] : qx::smooth(signal, koOut[i], line);
    signalOut[i] = line;
  }
}

double williamsChange(const Held& b, int64_t i) {
  const double close = b.close[i];
  const double before = b.close[i - 1];
  if (close > before) return close - std::min(b.low[i], before);
  return close < before ? close - std::max(b.high[i], before) : 0.0;
}

double herrickFlow(const Held& b, int64_t i, double centValue) {
  const double median = (b.high[i] + b.low[i]) / 2.0;
  const double medianBefore = (b.high[i - 1] + b.low[i - 1]) / 2.0;
  const double change = std::fabs(b.openint[i] - b.openint[i - 1]);
  const double smaller = std::min(b.openint[i], b.openint[i - 1]);
  const double share = smaller == 0.0 ? 0.0 : 2.0 * change / smaller;
  return centValue * b.volume[i] * (median - medianBefore) *
         (median > medianBefore ? 1.0 + share : 1.0 - share);
}

double weightedSum(const Held& b, int64_t i) {
  return b.high[i] + b.low[i] + 2.0 * b.close[i];
}

// Volume of a bar split into what buyers and what sellers account for.
struct Pressure {
  double buying;
  double selling;
};

// `weight` is the weighted price of the bar, `before` that of the bar before it.
Pressure pressureOf(double weight, double before, double range, double relativeVolume) {
  if (weight == before) return {relativeVolume, relativeVolume};
  const double smaller = std::min(weight, before);
  double factor = 1.0;
  if (range != 0.0 && smaller > 0.0) {
    factor = std::exp(0.375 * (weight + before) / range * std::fabs(weight - before) / smaller);
  }
  if (weight > before) return {relativeVolume, relativeVolume / factor};
  return {relativeVolume / factor, relativeVolume};
}

double demandOf(const Pressure& p) {
  if (p.buying > p.selling) return 100.0 * (1.0 - p.selling / p.buying);
  return p.selling > p.buying ? 100.0 * (p.buying / p.selling - 1.0) : 0.0;
}

void demandIndex(const Held& b, int64_t s, const qx::Smoothing& average,
                 const qx::Smoothing& pressure, double* out) {
  if (s >= b.length) return;
  double range = b.high[s] - b.low[s];
  double volume = b.volume[s];
  Pressure smoothed = {};
  for (int64_t i = s + 1; i < b.length; ++i) {
    const double twoBarRange =
        std::max(b.high[i], b.high[i - 1]) - std::min(b.low[i], b.low[i - 1]);
    range = qx::smooth(average, twoBarRange, range);
    volume = qx::smooth(average, b.volume[i], volume);
    const double relativeVolume = volume == 0.0 ? 0.0 : b.volume[i] / volume;
    const Pressure bar =
        pressureOf(weightedSum(b, i), weightedSum(b, i - 1), range, relativeVolume);
    if (i == s + 1) {
      smoothed = bar;
    } else {
      smoothed.buying = qx::smooth(pressure, bar.buying, smoothed.buying);
      smoothed.selling = qx::smooth(pressure, bar.selling, smoothed.selling);
    }
    out[i] = demandOf(smoothed);
  }
}

double swing(const Held& bars, int64_t i, double limit) {
  const double close = bars.close[i];
  const double closeBefore = bars.close[i - 1];
  const double openBefore = bars.open[i - 1];
  const double a = std::fabs(bars.high[i] - closeBefore);
  const double b = std::fabs(bars.low[i] - closeBefore);
  const double d = std::fabs(bars.high[i] - bars.low[i]);
  const double e = std::fabs(closeBefore - openBefore);
  double r = d + e / 4.0;
  if (a >= b && a >= d) {
    r = a - b / 2.0 + e / 4.0;
  } else if (b >= a && b >= d) {
    r = b - a / 2.0 + e / 4.0;
  }
  if (r == 0.0 || limit == 0.0) return 0.0;
  const double move =
      (close - closeBefore) + (close - bars.open[i]) / 2.0 + (closeBefore - openBefore) / 4.0;
  return 50.0 * move / r * std::max(a, b) / limit;
}

}  // namespace

int32_t qxMoneyFlowIndex(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const Held held = heldBars(*bars, length, {&bars->high, &bars->low, &bars->close, &bars->volume});
  qx::ScratchArrays<2> flows(length);
  if (flows.status != QX_SUCCESS) return flows.status;
  moneyFlows(held, s, flows[0].data, flows[1].data);
  moneyFlowIndex(flows[0].data, flows[1].data, s + period, held.length - 1, period, out->data);
  return qx::markFirstValid(s + period, {out});
}

int32_t qxKO(const qxBars* bars, qxArray* koOut, qxArray* signalOut, int32_t period1,
             int32_t period2, int32_t signalPeriod, int32_t start) {
  if (period1 < 1 || period2 < 1 || signalPeriod < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {koOut, signalOut});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const Held held = heldBars(*bars, length, {&bars->high, &bars->low, &bars->close, &bars->volume});
  klinger(held, s + 1, qx::smoothingOf(period1), qx::smoothingOf(period2),
          qx::smoothingOf(signalPeriod), koOut->data, signalOut->data);
  return qx::markFirstValid(s + 1, {koOut, signalOut});
}

int32_t qxWilliamsAD(const qxBars* bars, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const Held held = heldBars(*bars, length, {&bars->high, &bars->low, &bars->close});
  double line = 0.0;
  for (int64_t i = s + 1; i < held.length; ++i) {
    line += williamsChange(held, i);
    out->data[i] = line;
  }
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxHerrickPayoffIndex(const qxBars* bars, qxArray* out, double centValue, double factor,
                             int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const Held held =
      heldBars(*bars, length, {&bars->high, &bars->low, &bars->volume, &bars->openint});
  double index = 0.0;
  for (int64_t i = s + 1; i < held.length; ++i) {
    const double flow = herrickFlow(held, i, centValue);
    index = index + (flow / 100000.0 - index) * factor / 100.0;
    out->data[i] = index;
  }
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxDemandIdx(const qxBars* bars, qxArray* out, int32_t period, int32_t smoothPeriod,
                    int32_t start) {
  if (period < 1 || smoothPeriod < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const Held held = heldBars(*bars, length, {&bars->high, &bars->low, &bars->close, &bars->volume});
  demandIndex(held, s, qx::smoothingOf(period), qx::smoothingOf(smoothPeriod), out->data);
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxSwingIndex(const qxBars* bars, qxArray* out, double limit, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const Held held = heldBars(*bars, length, {&bars->open, &bars->high, &bars->low, &bars->close});
  for (int64_t i = s + 1; i < held.length; ++i) out->data[i] = swing(held, i, limit);
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxAccumSwingIndex(const qxBars* bars, qxArray* out, double limit, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const Held held = heldBars(*bars, length, {&bars->open, &bars->high, &bars->low, &bars->close});
  double sum = 0.0;
  for (int64_t i = s + 1; i < held.length; ++i) {
    sum += swing(held, i, limit);
    out->data[i] = sum;
  }
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxCFTPP(const qxBars* bars, qxArray* pivot, qxArray* r1, qxArray* r2, qxArray* s1,
                qxArray* s2, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {pivot, r1, r2, s1, s2});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const Held held = heldBars(*bars, length, {&bars->high, &bars->low, &bars->close});
  // A bar's levels come from the bar before it, which must be held; the bar itself need not.
  for (int64_t i = s + 1; i < length && i - 1 < held.length; ++i) {
    const double high = held.high[i - 1];
    const double low = held.low[i - 1];
    const double level = (high + low + held.close[i - 1]) / 3.0;
    const double range = high - low;
    pivot->data[i] = level;
    r1->data[i] = 2.0 * level - low;
    r2->data[i] = level + range;
    s1->data[i] = 2.0 * level - high;
    s2->data[i] = level - range;
  }
  return qx::markFirstValid(s + 1, {pivot, r1, r2, s1, s2});
}
