// Oscillators over the window of the last bars: the stochastic family, the channel, ultimate and
// intraday indexes, and the distance from a fitted line.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "core/indicator_frame.h"
#include "core/numeric.h"
#include "indicators/least_squares.h"
#include "indicators/moving_windows.h"
#include "quorvex.h"

namespace {

// The share of the mean deviation that makes most values fall within -100..100.
constexpr double kChannelShare = 0.015;

double percentAboveLow(double price, double lowest, double highest) {
  return highest == lowest ? 100.0 : 100.0 * (price - lowest) / (highest - lowest);
}

double percentBelowHigh(double price, double lowest, double highest) {
  return highest == lowest ? 0.0 : 100.0 * (highest - price) / (highest - lowest);
}

// The extremes of every window: of `low` into `lowest`, of `high` into `highest`.
int32_t findRange(const double* low, const double* high, const qx::Windows& windows, double* lowest,
                  double* highest) {
  const int32_t status = qx::movingLowest(low, windows, lowest);
  return status == QX_SUCCESS ? qx::movingHighest(high, windows, highest) : status;
}

// out[i] holds the lowest price of the window and is replaced by the place of `price` in it.
template <typename Place>
void placeInRange(const double* price, const double* highest, double* out,
                  const qx::Windows& windows, Place place) {
  for (int64_t i = windows.first; i <= windows.last; ++i) {
    out[i] = place(price[i], out[i], highest[i]);
  }
}

// Where the close lies between the lowest low and the highest high of the last `period` bars.
template <typename Place>
int32_t placeClose(const qxBars* bars, qxArray* out, int32_t period, int32_t start, Place place) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> highest(length);
  if (highest.status != QX_SUCCESS) return highest.status;

  const int64_t first = qx::startIndex(start) + period - 1;
  const int32_t held = qx::heldLength(length, {&bars->high, &bars->low, &bars->close});
  const qx::Windows windows = {first, held - 1, period};
  const int32_t status =
      findRange(bars->low.data, bars->high.data, windows, out->data, highest[0].data);
  if (status != QX_SUCCESS) return status;
  placeInRange(bars->close.data, highest[0].data, out->data, windows, place);
  return qx::markFirstValid(first, {out});
}

// An exponential average that takes one value after the other.
struct Smoother {
  double factor;
  double value;
};

double advance(Smoother* average, double newest) {
  average->value = average->value + average->factor * (newest - average->value);
  return average->value;
}

// out[i] holds the lowest low of the window and is replaced by the stochastic momentum index.
void stochasticMomentum(const double* close, const double* highest, double* out,
                        const qx::Windows& windows, int32_t period1, int32_t period2) {
  if (windows.first > windows.last) return;
  const auto relative = [=](int64_t i) { return close[i] - (highest[i] + out[i]) / 2.0; };
  const auto range = [=](int64_t i) { return highest[i] - out[i]; };
  const double factor1 = qxPeriodToExp(period1);
  const double factor2 = qxPeriodToExp(period2);
  const int64_t first = windows.first;
  Smoother relative1 = {factor1, relative(first)};
  Smoother relative2 = {factor2, relative(first)};
  Smoother range1 = {factor1, range(first)};
  Smoother range2 = {factor2, range(first)};
  for (int64_t i = first; i <= windows.last; ++i) {
    if (i > first) {
      advance(&relative2, advance(&relative1, relative(i)));
      advance(&range2, advance(&range1, range(i)));
    }
    out[i] = range2.value == 0.0 ? 0.0 : 100.0 * relative2.value / (range2.value / 2.0);
  }
}

template <size_t N>
qx::Lanes<N> plainSums(const double* a, int64_t from, int64_t period) {
  return qx::windowSums<N>(from, period, [a](int64_t j, int64_t, size_t) { return a[j]; });
}

// Distance of each price from its average, in mean absolute deviations of the window from it.
void channelIndex(const double* price, const double* average, double* out,
                  const qx::Windows& windows) {
  const auto period = static_cast<double>(windows.period);
  qx::byLanes(windows.first, windows.last, [=, &windows](auto lanes, int64_t i) {
    const auto distances = qx::windowSums<lanes>(
        i - windows.period + 1, windows.period, [=](int64_t j, int64_t, size_t lane) {
          return std::fabs(price[j] - average[i + static_cast<int64_t>(lane)]);
        });
    for (size_t lane = 0; lane < lanes; ++lane) {
      const int64_t bar = i + static_cast<int64_t>(lane);
      const double distance = distances[lane];
      out[bar] = distance == 0.0
                     ? 0.0
                     : (price[bar] - average[bar]) / ((distance / period) * kChannelShare);
    }
  });
}

// The rise of each close from its true low, and the true range.
void buyingPressure(const double* high, const double* low, const double* close, double* pressure,
                    double* range, int64_t from, int64_t length) {
  for (int64_t i = from; i < length; ++i) {
    const double trueLow = low[i] < close[i - 1] ? low[i] : close[i - 1];
    const double trueHigh = high[i] > close[i - 1] ? high[i] : close[i - 1];
    pressure[i] = close[i] - trueLow;
    range[i] = trueHigh - trueLow;
  }
}

void ultimate(const double* pressure, const double* range, double* out, int64_t first,
              int64_t length, const std::array<int32_t, 3>& periods) {
  qx::byLanes(first, length - 1, [=, &periods](auto lanes, int64_t i) {
    std::array<qx::Lanes<lanes>, 3> quotients;
    for (size_t q = 0; q < periods.size(); ++q) {
      const int64_t from = i - periods[q] + 1;
      const auto rises = plainSums<lanes>(pressure, from, periods[q]);
      const auto ranges = plainSums<lanes>(range, from, periods[q]);
      for (size_t lane = 0; lane < lanes; ++lane) {
        quotients[q][lane] = ranges[lane] == 0.0 ? 0.0 : rises[lane] / ranges[lane];
      }
    }
    for (size_t lane = 0; lane < lanes; ++lane) {
      out[i + static_cast<int64_t>(lane)] =
          100.0 * (4.0 * quotients[0][lane] + 2.0 * quotients[1][lane] + quotients[2][lane]) / 7.0;
    }
  });
}

// What each bar gained or lost from its open to its close.
void splitBodies(const double* open, const double* close, double* gains, double* losses,
                 int64_t from, int64_t length) {
  for (int64_t i = from; i < length; ++i) {
    gains[i] = close[i] > open[i] ? close[i] - open[i] : 0.0;
    losses[i] = open[i] > close[i] ? open[i] - close[i] : 0.0;
  }
}

void intradayMomentum(const double* gains, const double* losses, double* out,
                      const qx::Windows& windows) {
  qx::byLanes(windows.first, windows.last, [=, &windows](auto lanes, int64_t i) {
    const int64_t from = i - windows.period + 1;
    const auto up = plainSums<lanes>(gains, from, windows.period);
    const auto down = plainSums<lanes>(losses, from, windows.period);
    for (size_t lane = 0; lane < lanes; ++lane) {
      const double moves = up[lane] + down[lane];
      out[i + static_cast<int64_t>(lane)] = moves == 0.0 ? 0.0 : 100.0 * up[lane] / moves;
    }
  });
}

// Distance of the newest element of each window from the line through the window.
void distanceFromLine(const double* in, double* out, const qx::Windows& windows) {
  if (windows.first > windows.last) return;
  const qx::AxisSums axis = qx::axisSums(windows.period);
  qx::byLanes(windows.first, windows.last, [=, &windows](auto lanes, int64_t i) {
    const int64_t from = i - windows.period + 1;
    const auto sy = plainSums<lanes>(in, from, windows.period);
    const auto sxy = qx::windowSums<lanes>(
        from, windows.period,
        [in](int64_t j, int64_t k, size_t) { return static_cast<double>(k + 1) * in[j]; });
    for (size_t lane = 0; lane < lanes; ++lane) {
      const int64_t bar = i + static_cast<int64_t>(lane);
      // A single element is its own line.
      const qx::Line line =
          windows.period == 1 ? qx::Line{0.0, in[bar]} : qx::fitLine(axis, sy[lane], sxy[lane]);
      out[bar] = in[bar] - (line.intercept + axis.n * line.slope);
    }
  });
}

}  // namespace

int32_t qxStochastic(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> highest(length);
  if (highest.status != QX_SUCCESS) return highest.status;

  const int64_t first = qx::startIndex(start, {in}) + period - 1;
  const qx::Windows windows = {first, length - 1, period};
  const int32_t status = findRange(in->data, in->data, windows, out->data, highest[0].data);
  if (status != QX_SUCCESS) return status;
  placeInRange(in->data, highest[0].data, out->data, windows, percentAboveLow);
  return qx::markFirstValid(first, {out});
}

int32_t qxRawK(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  return placeClose(bars, out, period, start, percentAboveLow);
}

int32_t qxFastD(const qxBars* bars, qxArray* out, int32_t kPeriod, int32_t dPeriod, int32_t start) {
  const int32_t status = qxRawK(bars, out, kPeriod, start);
  if (status != QX_SUCCESS) return status;
  qxExpMA(out, out, dPeriod, out->firstvalid);
  return QX_SUCCESS;
}

int32_t qxSlowD(const qxBars* bars, qxArray* out, int32_t kPeriod, int32_t dPeriod1,
                int32_t dPeriod2, int32_t start) {
  const int32_t status = qxFastD(bars, out, kPeriod, dPeriod1, start);
  if (status != QX_SUCCESS) return status;
  qxExpMA(out, out, dPeriod2, out->firstvalid);
  return QX_SUCCESS;
}

int32_t qxStochasticOscillator(const qxBars* bars, qxArray* kOut, qxArray* dOut, int32_t method,
                               int32_t kPeriod, int32_t kSlow, int32_t dPeriod, int32_t start) {
  if (kPeriod < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {kOut, dOut});
  if (length < 1) return length;
  qx::ScratchArrays<1> highest(length);
  if (highest.status != QX_SUCCESS) return highest.status;

  const int64_t first = qx::startIndex(start) + kPeriod - 1;
  const int32_t held = qx::heldLength(length, {&bars->open, &bars->high, &bars->low, &bars->close});
  const qx::Windows windows = {first, held - 1, kPeriod};
  int32_t status = qx::movingBarLowest(*bars, windows, kOut->data);
  if (status == QX_SUCCESS) status = qx::movingBarHighest(*bars, windows, highest[0].data);
  if (status != QX_SUCCESS) return status;
  placeInRange(bars->close.data, highest[0].data, kOut->data, windows, percentAboveLow);
  qx::markFirstValid(first, {kOut, dOut});

  qxArray k = qx::headOf(*kOut, length);
  const int32_t from = qx::saturateToInt32(first);
  // Kept: methods that cannot work in place refuse, and %K stays unslowed.
  qxMovingAverage(&k, &k, method, kSlow, from);
  kOut->firstvalid = k.firstvalid;
  qxMovingAverage(&k, dOut, method, dPeriod, from);
  return QX_SUCCESS;
}

int32_t qxStochRSI(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> strength(length);
  if (strength.status != QX_SUCCESS) return strength.status;

  qxRSI(in, &strength[0], period, start);
  return qxStochastic(&strength[0], out, period,
                      qx::saturateToInt32(qx::startIndex(start) + period));
}

int32_t qxWilliamsR(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  return placeClose(bars, out, period, start, percentBelowHigh);
}

int32_t qxSMI(const qxBars* bars, qxArray* out, qxArray* signalOut, int32_t period, int32_t period1,
              int32_t period2, int32_t signalPeriod, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out, signalOut});
  if (length < 1) return length;
  qx::ScratchArrays<1> highest(length);
  if (highest.status != QX_SUCCESS) return highest.status;

  const int64_t first = qx::startIndex(start) + period - 1;
  const int32_t held = qx::heldLength(length, {&bars->high, &bars->low, &bars->close});
  const qx::Windows windows = {first, held - 1, period};
  const int32_t status =
      findRange(bars->low.data, bars->high.data, windows, out->data, highest[0].data);
  if (status != QX_SUCCESS) return status;
  stochasticMomentum(bars->close.data, highest[0].data, out->data, windows, period1, period2);
  qx::markFirstValid(first, {out});

  const qxArray index = qx::headOf(*out, length);
  qxExpMA(&index, signalOut, signalPeriod, out->firstvalid);
  return QX_SUCCESS;
}

int32_t qxCCI(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int32_t held = qx::heldLength(length, {&bars->high, &bars->low, &bars->close});
  qx::ScratchArrays<2> scratch(held);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  const auto& [prices, averages] = scratch.arrays;

  const int64_t s = qx::startIndex(start);
  for (int64_t i = s; i < held; ++i) {
    // The sum of the three prices serves as well as their mean: the index is a ratio.
    prices.data[i] = bars->high.data[i] + bars->low.data[i] + bars->close.data[i];
  }
  qxSimpleMA(&scratch[0], &scratch[1], period, qx::saturateToInt32(s));
  const int64_t first = s + period - 1;
  channelIndex(prices.data, averages.data, out->data, {first, held - 1, period});
  return qx::markFirstValid(first, {out});
}

int32_t qxUltimateOsc(const qxBars* bars, qxArray* out, int32_t period1, int32_t period2,
                      int32_t period3, int32_t start) {
  if (std::min({period1, period2, period3}) < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<2> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  const auto& [pressure, range] = scratch.arrays;

  const int64_t s = qx::startIndex(start);
  const int32_t held = qx::heldLength(length, {&bars->high, &bars->low, &bars->close});
  buyingPressure(bars->high.data, bars->low.data, bars->close.data, pressure.data, range.data,
                 s + 1, held);
  const int64_t first = s + std::max({period1, period2, period3});
  ultimate(pressure.data, range.data, out->data, first, held, {period1, period2, period3});
  return qx::markFirstValid(first, {out});
}

int32_t qxIMI(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<2> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  const auto& [gains, losses] = scratch.arrays;

  const int64_t s = qx::startIndex(start);
  const int64_t first = s + period - 1;
  const int32_t held = qx::heldLength(length, {&bars->open, &bars->close});
  splitBodies(bars->open.data, bars->close.data, gains.data, losses.data, s, held);
  intradayMomentum(gains.data, losses.data, out->data, {first, held - 1, period});
  return qx::markFirstValid(first, {out});
}

int32_t qxQstick(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> bodies(length);
  if (bodies.status != QX_SUCCESS) return bodies.status;

  const int64_t s = qx::startIndex(start);
  const int32_t held = qx::heldLength(length, {&bars->open, &bars->close});
  for (int64_t i = s; i < held; ++i) {
    bodies[0].data[i] = bars->close.data[i] - bars->open.data[i];
  }
  qxSimpleMA(&bodies[0], out, period, qx::saturateToInt32(s));
  return QX_SUCCESS;
}

int32_t qxLineOsc(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t first = qx::startIndex(start, {in}) + period - 1;
  distanceFromLine(in->data, out->data, {first, length - 1, period});
  return qx::markFirstValid(first, {out});
}

int32_t qxForecastOscillator(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> forecast(length);
  if (forecast.status != QX_SUCCESS) return forecast.status;

  const int64_t s = qx::startIndex(start, {in});
  qxLstSqrMA(in, &forecast[0], period, qx::saturateToInt32(s));
  for (int64_t i = s + period; i < length; ++i) {
    const double price = in->data[i];
    out->data[i] = price == 0.0 ? 0.0 : 100.0 * (price - forecast[0].data[i - 1]) / price;
  }
  return qx::markFirstValid(s + period, {out});
}
