// Volume and open interest: on-balance forms, accumulation, volume indexes, ease of movement.
// Functions over bars use the caller's start index as it is, raised by no first valid index.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/indicator_frame.h"
#include "indicators/moving_windows.h"
#include "indicators/smoothing.h"
#include "quorvex.h"

namespace {

// Adds nothing to any number, not even to a zero of either sign. A sum that begins with it has its
// first term as first value.
constexpr double kNothing = -0.0;

// `amount` with the sign of the close's change: plus on an up bar, minus on a down bar. Otherwise
// kNothing.
double signedAmount(const double* close, const double* amount, int64_t i) {
  if (close[i] > close[i - 1]) return amount[i];
  return close[i - 1] > close[i] ? -amount[i] : kNothing;
}

// The sum of the signed amounts of the bars from + 1 .. to, added to `balance` in that order.
double balanceOver(const double* close, const double* amount, int64_t from, int64_t to,
                   double balance) {
  for (int64_t i = from + 1; i <= to; ++i) balance += signedAmount(close, amount, i);
  return balance;
}

// Whole numbers whose magnitudes add up to less than 2^53 have the same sum in any order.
bool sumsExactly(const double* terms, const double* seeds, int64_t from, int64_t to) {
  double magnitude = 0.0;
  for (int64_t i = from; i <= to; ++i) {
    const double seed = seeds == nullptr ? 0.0 : seeds[i];
    if (std::floor(terms[i]) != terms[i] || std::floor(seed) != seed) return false;
    magnitude += std::fabs(terms[i]) + std::fabs(seed);
  }
  return magnitude < 9007199254740992.0;
}

// out[i] = seeds[i - changes] + terms[i - changes + 1] + ... + terms[i] for i = start + changes
// .. last, added in that order; no seeds count as 0. The terms may be overwritten.
void movingBalance(double* terms, const double* seeds, int64_t changes, int64_t start, int64_t last,
                   double* out) {
  const int64_t first = start + changes;
  if (first > last) return;
  if (sumsExactly(terms, seeds, start, last)) {
    for (int64_t i = start + 1; i <= last; ++i) terms[i] += terms[i - 1];
    for (int64_t i = first; i <= last; ++i) {
      const double seed = seeds == nullptr ? 0.0 : seeds[i - changes];
      out[i] = seed + (terms[i] - terms[i - changes]);
    }
    return;
  }
  qx::byLanes(first, last, [=](auto lanes, int64_t i) {
    constexpr size_t kCount = decltype(lanes)::value;
    const double* window = terms + (i - changes);
    qx::Lanes<kCount> sums = {};
    if (seeds != nullptr) std::copy_n(seeds + (i - changes), kCount, sums.begin());
    for (int64_t k = 1; k <= changes; ++k) {
      for (size_t lane = 0; lane < kCount; ++lane) {
        sums[lane] += window[k + static_cast<int64_t>(lane)];
      }
    }
    std::copy(sums.begin(), sums.end(), out + i);
  });
}

// The prices and volumes that the accumulation line needs, and the bars that all of them hold.
struct Accumulation {
  const double* high;
  const double* low;
  const double* close;
  const double* volume;
  int64_t length;
};

Accumulation accumulationOf(const qxBars& bars, int32_t length) {
  return {bars.high.data, bars.low.data, bars.close.data, bars.volume.data,
          qx::heldLength(length, {&bars.high, &bars.low, &bars.close, &bars.volume})};
}

// The volume weighted by where the close lies in the bar's range, -1 at the low to +1 at the high.
// A bar without range follows the close's change; the start bar, wherever it lies, counts as up.
double moneyFlow(const Accumulation& bars, int64_t i, int64_t start) {
  const double high = bars.high[i];
  const double low = bars.low[i];
  const double close = bars.close[i];
  if (high != low) {
    return ((close - low) - (high - close)) / (high - low) * bars.volume[i];
  }
  const double location = i == start || close >= bars.close[i - 1] ? 1.0 : -1.0;
  return location * bars.volume[i];
}

// The change of the close relative to the one before, summed over the bars that `counts` names.
template <typename Counts>
void volumeIndex(const double* close, int64_t start, int64_t length, double* out, Counts counts) {
  double index = 0.0;
  for (int64_t i = start + 1; i < length; ++i) {
    if (counts(i)) index += (close[i] - close[i - 1]) / close[i - 1];
    out[i] = index;
  }
}

double rank(double close, double closeBefore, double volume, double volumeBefore) {
  if (close >= closeBefore && volume >= volumeBefore) return 1.0;
  if (close >= closeBefore && volume < volumeBefore) return 2.0;
  return close < closeBefore && volume < volumeBefore ? 3.0 : 4.0;
}

}  // namespace

int32_t qxOBV(const qxBars* bars, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const int64_t n = qx::heldLength(length, {&bars->close, &bars->volume});
  double balance = 0.0;
  for (int64_t i = s + 1; i < n; ++i) {
    balance += signedAmount(bars->close.data, bars->volume.data, i);
    out->data[i] = balance;
  }
  return qx::markFirstValid(s + 1, {out});
}

double qxOBVol(const qxBars* bars, int32_t from, int32_t to) {
  if (bars == nullptr) return 0.0;
  const int32_t n = qx::heldLength(bars->barsize, {&bars->close, &bars->volume});
  return balanceOver(bars->close.data, bars->volume.data, std::max(from, 0), std::min(to, n - 1),
                     0.0);
}

int32_t qxOBVolMv(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  if (period < 0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const int64_t n = qx::heldLength(length, {&bars->close, &bars->volume});
  qx::ScratchArrays<1> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  double* terms = scratch[0].data;
  for (int64_t i = s + 1; i < n; ++i) {
    terms[i] = signedAmount(bars->close.data, bars->volume.data, i);
  }
  movingBalance(terms, nullptr, period, s, n - 1, out->data);
  return qx::markFirstValid(s + period, {out});
}

double qxOBOi(const qxBars* bars, int32_t from, int32_t to) {
  if (bars == nullptr) return 0.0;
  const int32_t n = qx::heldLength(bars->barsize, {&bars->close, &bars->openint});
  const int32_t first = std::max(from, 0);
  if (first >= n) return 0.0;
  return balanceOver(bars->close.data, bars->openint.data, first, std::min(to, n - 1),
                     bars->openint.data[first]);
}

int32_t qxOBOiMv(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const int64_t n = qx::heldLength(length, {&bars->close, &bars->openint});
  qx::ScratchArrays<1> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  double* terms = scratch[0].data;
  for (int64_t i = s + 1; i < n; ++i) {
    terms[i] = signedAmount(bars->close.data, bars->openint.data, i);
  }
  // Kept: one change fewer than qxOBVolMv spans, and the open interest before the first of them.
  movingBalance(terms, bars->openint.data, int64_t{period} - 1, s, n - 1, out->data);
  return qx::markFirstValid(s + period - 1, {out});
}

int32_t qxOBVolExp(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const int64_t n = qx::heldLength(length, {&bars->close, &bars->volume});
  const qx::Smoothing smoothing = qx::smoothingOf(period);
  double balance = 0.0, average = 0.0;
  for (int64_t i = s + 1; i < n; ++i) {
    balance += signedAmount(bars->close.data, bars->volume.data, i);
    average = i == s + 1 ? balance : qx::smooth(smoothing, balance, average);
    out->data[i] = average;
  }
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxAccumDist(const qxBars* bars, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const Accumulation held = accumulationOf(*bars, length);
  double line = kNothing;
  for (int64_t i = s; i < held.length; ++i) {
    line += moneyFlow(held, i, s);
    out->data[i] = line;
  }
  return qx::markFirstValid(s, {out});
}

int32_t qxAccumulate(const qxArray* in, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  double sum = kNothing;
  for (int64_t i = s; i < length; ++i) {
    sum += in->data[i];
    out->data[i] = sum;
  }
  return qx::markFirstValid(s, {out});
}

int32_t qxChaikinMoneyFlow(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const Accumulation held = accumulationOf(*bars, length);
  qx::ScratchArrays<2> scratch(static_cast<int32_t>(held.length));
  if (scratch.status != QX_SUCCESS) return scratch.status;
  qxArray& flow = scratch[0];
  qxArray& volume = scratch[1];
  for (int64_t i = s; i < held.length; ++i) flow.data[i] = moneyFlow(held, i, s);
  qxMovingSum(&flow, &flow, period, start);
  qxMovingSum(&bars->volume, &volume, period, start);
  for (int64_t i = s + period - 1; i < held.length; ++i) {
    out->data[i] = volume.data[i] == 0.0 ? 0.0 : flow.data[i] / volume.data[i];
  }
  return qx::markFirstValid(s + period - 1, {out});
}

int32_t qxChaikinOscillator(const qxBars* bars, qxArray* out, int32_t period1, int32_t period2,
                            int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const Accumulation held = accumulationOf(*bars, length);
  const qx::Smoothing smoothing1 = qx::smoothingOf(period1);
  const qx::Smoothing smoothing2 = qx::smoothingOf(period2);
  double line = kNothing, average1 = 0.0, average2 = 0.0;
  for (int64_t i = s; i < held.length; ++i) {
    line += moneyFlow(held, i, s);
    average1 = i == s ? line : qx::smooth(smoothing1, line, average1);
    average2 = i == s ? line : qx::smooth(smoothing2, line, average2);
    out->data[i] = average1 - average2;
  }
  return qx::markFirstValid(s, {out});
}

int32_t qxNVI(const qxBars* bars, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const int64_t n = qx::heldLength(length, {&bars->close, &bars->volume});
  const double* volume = bars->volume.data;
  volumeIndex(bars->close.data, s, n, out->data,
              [volume](int64_t i) { return volume[i - 1] > volume[i]; });
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxPVI(const qxBars* bars, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const int64_t n = qx::heldLength(length, {&bars->close, &bars->volume});
  const double* volume = bars->volume.data;
  volumeIndex(bars->close.data, s, n, out->data,
              [volume](int64_t i) { return volume[i] > volume[i - 1]; });
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxPVT(const qxBars* bars, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const int64_t n = qx::heldLength(length, {&bars->close, &bars->volume});
  const double* close = bars->close.data;
  double trend = 0.0;
  for (int64_t i = s + 1; i < n; ++i) {
    trend += bars->volume.data[i] * (close[i] - close[i - 1]) / close[i - 1];
    out->data[i] = trend;
  }
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxPVO(const qxBars* bars, qxArray* out, int32_t period1, int32_t period2, int32_t method,
              int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qxArray volume = bars->volume;
  volume.size = qx::heldLength(length, {&volume});
  return qxPriceOscillatorPct(&volume, out, period1, period2, method, start);
}

int32_t qxPVrank(const qxBars* bars, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const int64_t n = qx::heldLength(length, {&bars->close, &bars->volume});
  const double* close = bars->close.data;
  const double* volume = bars->volume.data;
  for (int64_t i = s + 1; i < n; ++i) {
    out->data[i] = rank(close[i], close[i - 1], volume[i], volume[i - 1]);
  }
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxArmsEMV(const qxBars* bars, qxArray* out, int32_t volDivisor, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const int64_t n = qx::heldLength(length, {&bars->high, &bars->low, &bars->volume});
  const double* high = bars->high.data;
  const double* low = bars->low.data;
  const double* volume = bars->volume.data;
  for (int64_t i = s + 1; i < n; ++i) {
    if (!(volume[i] > 0.0) || high[i] == low[i]) continue;
    const double box = (volume[i] / volDivisor) / (high[i] - low[i]);
    const double move = (high[i] + low[i]) / 2.0 - (high[i - 1] + low[i - 1]) / 2.0;
    out->data[i] = move / box;
  }
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxMFI(const qxBars* bars, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const int64_t n = qx::heldLength(length, {&bars->high, &bars->low, &bars->volume});
  // Kept: the average looks ahead, over every bar from the start to the last of the set.
  double average = 0.0;
  qxArrayStats(&bars->volume, nullptr, nullptr, &average, nullptr, start, bars->barsize - 1, 1);
  for (int64_t i = s; i < n; ++i) {
    const double volume = bars->volume.data[i];
    if (volume == 0.0) continue;
    out->data[i] = average * (bars->high.data[i] - bars->low.data[i]) / volume;
  }
  return qx::markFirstValid(s, {out});
}
