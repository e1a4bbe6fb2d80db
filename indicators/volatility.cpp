// Volatility, bands and channels.
#include <algorithm>
#include <cstdint>

#include "core/indicator_frame.h"
#include "core/numeric.h"
#include "indicators/moving_windows.h"
#include "quorvex.h"

namespace {

// The fixed factors of qxMassIndex: the share of a new value and that of the average so far.
constexpr double kMassFactor = 0.2;
constexpr double kMassKept = 0.8;

// Two lines at a multiple of `distance` from the middle, which may be the same series.
void addBand(const double* middle, const double* distance, double factor, double* upper,
             double* lower, int64_t first, int64_t length) {
  for (int64_t i = first; i < length; ++i) {
    upper[i] = middle[i] + distance[i] * factor;
    lower[i] = middle[i] - distance[i] * factor;
  }
}

// Exponential average of the ranges of the bars.
void smoothRanges(const double* high, const double* low, double* out, int64_t s, int64_t length,
                  int32_t period) {
  if (s >= length) return;
  const double a = qxPeriodToExp(period);
  out[s] = high[s] - low[s];
  for (int64_t i = s + 1; i < length; ++i) {
    out[i] = a * (high[i] - low[i]) + (1.0 - a) * out[i - 1];
  }
}

// Ratio of the range averaged once to the range averaged twice.
void rangeRatios(const double* high, const double* low, double* out, int64_t s, int64_t length) {
  if (s >= length) return;
  double e1 = high[s] - low[s];
  double e2 = e1;
  for (int64_t i = s + 1; i < length; ++i) {
    e1 = kMassFactor * (high[i] - low[i]) + kMassKept * e1;
    e2 = kMassFactor * e1 + kMassKept * e2;
    out[i] = e2 == 0.0 ? 0.0 : e1 / e2;
  }
}

// The greatest (Beyond: above) or least of each window's elements, carried forward to its end along
// the slope there.
template <typename Beyond>
void projectExtremes(const double* in, const double* slope, double* out, const qx::Windows& windows,
                     Beyond beyond) {
  qx::byLanes(windows.first, windows.last, [=, &windows](auto lanes, int64_t i) {
    qx::Lanes<lanes> extremes;
    qx::Lanes<lanes> slopes;
    for (size_t lane = 0; lane < lanes; ++lane) {
      extremes[lane] = in[i + static_cast<int64_t>(lane)];
      slopes[lane] = slope[i + static_cast<int64_t>(lane)];
    }
    for (int64_t k = 1; k < windows.period; ++k) {
      const auto bars = static_cast<double>(k);
      for (size_t lane = 0; lane < lanes; ++lane) {
        const double projected = in[i - k + static_cast<int64_t>(lane)] + slopes[lane] * bars;
        extremes[lane] = beyond(projected, extremes[lane]) ? projected : extremes[lane];
      }
    }
    std::copy(extremes.begin(), extremes.end(), out + i);
  });
}

// The projection bands of a prepared call, into two records of `length` elements. Returns the first
// bar of the bands or a negative status.
int64_t projectBands(const qxBars& bars, double* upper, double* lower, int32_t length,
                     int32_t period, int32_t start) {
  qx::ScratchArrays<3> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  auto& [highSlopes, lowSlopes, intercepts] = scratch.arrays;
  const int32_t last = length - 1;
  qxRegressionLineMv(&bars.high, &highSlopes, &intercepts, period, start, last);
  qxRegressionLineMv(&bars.low, &lowSlopes, &intercepts, period, start, last);

  const int64_t first = qx::startIndex(start) + 2 * int64_t{period} - 2;
  const int32_t held = qx::heldLength(length, {&bars.high, &bars.low});
  const qx::Windows windows = {first, held - 1, period};
  projectExtremes(bars.high.data, highSlopes.data, upper, windows,
                  [](double projected, double extreme) { return projected > extreme; });
  projectExtremes(bars.low.data, lowSlopes.data, lower, windows,
                  [](double projected, double extreme) { return projected < extreme; });
  return first;
}

// Wilder's stop-and-reverse, short at first.
void stopAndReverse(const double* close, const double* range, double* significant, double* stop,
                    double* reversal, int64_t first, int64_t length) {
  if (first >= length) return;
  bool isLong = false;
  significant[first] = close[first];
  for (int64_t i = first + 1; i < length; ++i) {
    double best = significant[i - 1];
    // The stop stands before the close of this bar moves the significant close.
    stop[i] = isLong ? best - range[i - 1] : best + range[i - 1];
    const bool isBetter = isLong ? close[i] > best : close[i] < best;
    if (isBetter) best = close[i];
    const bool isReversed = isLong ? stop[i] > close[i] : close[i] > stop[i];
    if (isReversed) {
      isLong = !isLong;
      best = close[i];
      reversal[i] = isLong ? 1.0 : -1.0;
    }
    significant[i] = best;
  }
}

}  // namespace

int32_t qxATR(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  const int32_t status = qxTR(bars, out, start);
  if (status != QX_SUCCESS) return status;
  qxWellesMA(out, out, period, out->firstvalid);
  return QX_SUCCESS;
}

int32_t qxBollinger(const qxBars* bars, qxArray* upper, qxArray* middle, qxArray* lower, double k,
                    int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {upper, middle, lower});
  if (length < 1) return length;
  qx::ScratchArrays<2> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  auto& [prices, deviations] = scratch.arrays;

  const int64_t s = qx::startIndex(start);
  qxArray average = qx::headOf(*middle, length);
  qxTypicalPrices(bars, &prices, 0);
  qxSimpleMA(&prices, &average, period, qx::saturateToInt32(s));
  qxStdDevMv(&prices, &deviations, 1, period, qx::saturateToInt32(s));
  const int64_t first = s + period - 1;
  addBand(middle->data, deviations.data, k, upper->data, lower->data, first, length);
  return qx::markFirstValid(first, {upper, middle, lower});
}

int32_t qxBollingerWidth(const qxBars* bars, qxArray* out, double k, int32_t period,
                         int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> prices(length);
  if (prices.status != QX_SUCCESS) return prices.status;

  const int64_t s = qx::startIndex(start);
  const int64_t first = s + period - 1;
  qxTypicalPrices(bars, &prices[0], 0);
  qxStdDevMv(&prices[0], out, 1, period, qx::saturateToInt32(s));
  for (int64_t i = first; i < length; ++i) out->data[i] = 2.0 * k * out->data[i];
  return qx::markFirstValid(first, {out});
}

int32_t qxEnvelope(const qxArray* in, const qxArray* width, qxArray* upper, qxArray* lower,
                   double factor, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in, width}, {upper, lower});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in, width});
  addBand(in->data, width->data, factor, upper->data, lower->data, s, length);
  return qx::markFirstValid(s, {upper, lower});
}

int32_t qxEnvelopePct(const qxArray* in, qxArray* upper, qxArray* lower, double pct,
                      int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {upper, lower});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  addBand(in->data, in->data, pct, upper->data, lower->data, s, length);
  return qx::markFirstValid(s, {upper, lower});
}

int32_t qxMAEnvelope(const qxArray* in, qxArray* upper, qxArray* lower, double pct, int32_t method,
                     int32_t period, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {upper, lower});
  if (length < 1) return length;
  qx::ScratchArrays<1> average(length);
  if (average.status != QX_SUCCESS) return average.status;

  const int32_t status = qxMovingAverage(in, &average[0], method, period, start);
  if (status != QX_SUCCESS) return status;
  const int64_t s = qx::startIndex(start, {&average[0]});
  addBand(average[0].data, average[0].data, pct, upper->data, lower->data, s, length);
  return qx::markFirstValid(s, {upper, lower});
}

int32_t qxMAHighLow(const qxBars* bars, qxArray* hiOut, qxArray* loOut, int32_t method,
                    int32_t period, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {hiOut, loOut});
  if (length < 1) return length;
  const qxArray* const series[] = {&bars->high, &bars->low};
  qxArray* const outputs[] = {hiOut, loOut};
  for (int i = 0; i < 2; ++i) {
    const qxArray in = qx::headOf(*series[i], length);
    qxArray out = qx::headOf(*outputs[i], length);
    const int32_t status = qxMovingAverage(&in, &out, method, period, start);
    if (status != QX_SUCCESS) return status;
    outputs[i]->firstvalid = out.firstvalid;
  }
  return QX_SUCCESS;
}

int32_t qxStdErrBands(const qxArray* in, qxArray* upper, qxArray* middle, qxArray* lower, double k,
                      int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {upper, middle, lower});
  if (length < 1) return length;
  qx::ScratchArrays<1> errors(length);
  if (errors.status != QX_SUCCESS) return errors.status;

  const int64_t s = qx::startIndex(start, {in});
  qxArray line = qx::headOf(*middle, length);
  // Kept: the middle begins as early as the input allows, whatever the start of the bands.
  qxLstSqrMA(in, &line, period, 0);
  qxStdErrMv(in, &errors[0], period, qx::saturateToInt32(s));
  const int64_t first = s + period - 1;
  addBand(middle->data, errors[0].data, k, upper->data, lower->data, first, length);
  return qx::markFirstValid(first, {upper, middle, lower});
}

int32_t qxPriceChannels(const qxBars* bars, qxArray* upper, qxArray* lower, int32_t period,
                        int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {upper, lower});
  if (length < 1) return length;
  const int64_t first = qx::startIndex(start) + period;
  const int32_t held = qx::heldLength(length, {&bars->open, &bars->high, &bars->low, &bars->close});
  // The windows that end one bar before: their values are stored one element further.
  const qx::Windows windows = {first - 1, held - 2, period};
  int32_t status = qx::movingBarHighest(*bars, windows, upper->data + 1);
  if (status == QX_SUCCESS) status = qx::movingBarLowest(*bars, windows, lower->data + 1);
  if (status != QX_SUCCESS) return status;
  return qx::markFirstValid(first, {upper, lower});
}

int32_t qxProjectionBands(const qxBars* bars, qxArray* upper, qxArray* lower, int32_t period,
                          int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {upper, lower});
  if (length < 1) return length;
  const int64_t first = projectBands(*bars, upper->data, lower->data, length, period, start);
  if (first < 0) return static_cast<int32_t>(first);
  return qx::markFirstValid(first, {upper, lower});
}

int32_t qxProjectionBandwidth(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> uppers(length);
  if (uppers.status != QX_SUCCESS) return uppers.status;

  const int64_t first = projectBands(*bars, uppers[0].data, out->data, length, period, start);
  if (first < 0) return static_cast<int32_t>(first);
  const int32_t held = qx::heldLength(length, {&bars->high, &bars->low});
  for (int64_t i = first; i < held; ++i) {
    const double upper = uppers[0].data[i];
    const double lower = out->data[i];
    out->data[i] = 200.0 * (upper - lower) / (upper + lower);
  }
  return qx::markFirstValid(first, {out});
}

int32_t qxProjectionOscillator(const qxBars* bars, qxArray* out, int32_t period,
                               int32_t smoothPeriod, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> uppers(length);
  if (uppers.status != QX_SUCCESS) return uppers.status;

  const int64_t first = projectBands(*bars, uppers[0].data, out->data, length, period, start);
  if (first < 0) return static_cast<int32_t>(first);
  const int32_t held = qx::heldLength(length, {&bars->high, &bars->low, &bars->close});
  for (int64_t i = first; i < held; ++i) {
    const double upper = uppers[0].data[i];
    const double lower = out->data[i];
    out->data[i] = upper == lower ? 0.0 : 100.0 * (bars->close.data[i] - lower) / (upper - lower);
  }
  qx::markFirstValid(first, {out});
  if (smoothPeriod > 1) qxExpMA(out, out, smoothPeriod, out->firstvalid);
  return QX_SUCCESS;
}

int32_t qxChaikinVolatility(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  if (period < 0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> ranges(length);
  if (ranges.status != QX_SUCCESS) return ranges.status;

  const int64_t s = qx::startIndex(start);
  const int32_t held = qx::heldLength(length, {&bars->high, &bars->low});
  smoothRanges(bars->high.data, bars->low.data, ranges[0].data, s, held, period);
  qxRateOfChange(&ranges[0], out, 100.0, period, qx::saturateToInt32(s));
  return QX_SUCCESS;
}

int32_t qxMassIndex(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const int32_t held = qx::heldLength(length, {&bars->high, &bars->low});
  rangeRatios(bars->high.data, bars->low.data, out->data, s, held);
  qx::markFirstValid(s + 1, {out});
  qxMovingSum(out, out, period, out->firstvalid);
  return QX_SUCCESS;
}

int32_t qxWellesVolatility(const qxBars* bars, qxArray* sicOut, qxArray* arcOut, qxArray* sarOut,
                           qxArray* posOut, double k, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {sicOut, arcOut, sarOut, posOut});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  qxArray range = qx::headOf(*arcOut, length);
  qxATR(bars, &range, period, qx::saturateToInt32(s));
  for (int64_t i = s + period - 1; i < length; ++i) range.data[i] *= k;
  qx::markFirstValid(s + period - 1, {arcOut});

  const int64_t first = std::max<int64_t>(s + period - 2, 0);
  const int32_t held = qx::heldLength(length, {&bars->close});
  stopAndReverse(bars->close.data, arcOut->data, sicOut->data, sarOut->data, posOut->data, first,
                 held);
  qx::markFirstValid(first, {sicOut});
  // Kept: posOut carries +1 and -1 on reversals only; it is a signal, not a state.
  return qx::markFirstValid(first + 1, {sarOut, posOut});
}
