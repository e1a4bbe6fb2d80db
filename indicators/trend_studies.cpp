// Further studies of trend: filters and indexes over a series or the bars, the zigzag and the
// Ichimoku lines.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "core/indicator_frame.h"
#include "core/numeric.h"
#include "indicators/moving_windows.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
// Below every term: the greatest of none.
constexpr double kNothing = -std::numeric_limits<double>::infinity();

// The distance travelled over the last P changes, against the net extent of the last P values.
void verticalHorizontal(const double* in, const double* highest, const double* lowest, double* out,
                        int64_t length, int64_t first, int64_t period) {
  qx::byLanes(first, length - 1, [=](auto lanes, int64_t i) {
    const auto travelled = qx::windowSums<lanes>(
        i - period + 1, period,
        [in](int64_t j, int64_t, size_t) { return std::fabs(in[j] - in[j - 1]); });
    for (size_t lane = 0; lane < lanes; ++lane) {
      const int64_t at = i + static_cast<int64_t>(lane);
      const double extent = highest[at] - lowest[at];
      out[at] = travelled[lane] == 0.0 ? 0.0 : extent / travelled[lane];
    }
  });
}

// The greatest displacement over 2..P bars, each in units of a random walk of that many bars. The
// mean range of each length grows from the newest of its bars backwards.
void randomWalkIndex(const qxBars& bars, const double* range, double* hiOut, double* loOut,
                     int64_t length, int64_t first, int64_t period) {
  const double* high = bars.high.data;
  const double* low = bars.low.data;
  qx::byLanes(first, length - 1, [=](auto lanes, int64_t i) {
    constexpr size_t kCount = lanes;
    qx::Lanes<kCount> sums = {};
    qx::Lanes<kCount> greatestUp;
    qx::Lanes<kCount> greatestDown;
    greatestUp.fill(kNothing);
    greatestDown.fill(kNothing);
    for (size_t lane = 0; lane < kCount; ++lane) sums[lane] = (range + i - 1)[lane];
    for (int64_t n = 2; n <= period; ++n) {
      const auto count = static_cast<double>(n);
      const double root = std::sqrt(count);
      const double* added = range + i - n;
      const double* highNow = high + i;
      const double* lowNow = low + i;
      const double* highThen = high + i - n + 1;
      const double* lowThen = low + i - n + 1;
      for (size_t lane = 0; lane < kCount; ++lane) {
        sums[lane] += added[lane];
        const double average = sums[lane] / count;
        // A NaN is greater than nothing, so that a term without range is skipped.
        const double walk = (average == 0.0 ? kNaN : average) * root;
        const double up = (highNow[lane] - lowThen[lane]) / walk;
        const double down = (highThen[lane] - lowNow[lane]) / walk;
        greatestUp[lane] = up > greatestUp[lane] ? up : greatestUp[lane];
        greatestDown[lane] = down > greatestDown[lane] ? down : greatestDown[lane];
      }
    }
    for (size_t lane = 0; lane < kCount; ++lane) {
      (hiOut + i)[lane] = greatestUp[lane] == kNothing ? 0.0 : greatestUp[lane];
      (loOut + i)[lane] = greatestDown[lane] == kNothing ? 0.0 : greatestDown[lane];
    }
  });
}

// The straight line from element a to element b, both included.
void drawLine(const double* in, double* out, int64_t a, int64_t b) {
  out[a] = in[a];
  out[b] = in[b];
  for (int64_t i = a + 1; i < b; ++i) {
    out[i] = in[a] + (in[b] - in[a]) * static_cast<double>(i - a) / static_cast<double>(b - a);
  }
}

// Joins the turning points that a move of more than `reversal` (a fraction) confirms, then the last
// extreme and the last element.
void zigZag(const double* in, double* out, int64_t length, int64_t s, double reversal) {
  if (s >= length) return;
  int direction = 0;
  int64_t node = s;
  int64_t highest = s;
  int64_t lowest = s;
  int64_t extreme = s;
  const auto joinTo = [&](int64_t next) {
    drawLine(in, out, node, next);
    node = next;
  };
  const auto turn = [&](int64_t pivot, int newDirection, int64_t i) {
    joinTo(pivot);
    direction = newDirection;
    extreme = i;
  };
  for (int64_t i = s + 1; i < length; ++i) {
    if (direction == 0) {
      if (in[i] > in[highest]) highest = i;
      if (in[i] < in[lowest]) lowest = i;
      if (in[i] >= in[lowest] * (1.0 + reversal)) {
        turn(lowest, 1, i);
      } else if (in[i] <= in[highest] * (1.0 - reversal)) {
        turn(highest, -1, i);
      }
    } else if (direction > 0) {
      if (in[i] > in[extreme]) {
        extreme = i;
      } else if (in[i] <= in[extreme] * (1.0 - reversal)) {
        turn(extreme, -1, i);
      }
    } else {
      if (in[i] < in[extreme]) {
        extreme = i;
      } else if (in[i] >= in[extreme] * (1.0 + reversal)) {
        turn(extreme, 1, i);
      }
    }
  }
  if (direction != 0) joinTo(extreme);
  joinTo(length - 1);
}

// The middle between the highest high and the lowest low of P bars. `lowest` is scratch.
int32_t midPrices(const qxBars& bars, double* out, double* lowest, int64_t length, int64_t s,
                  int64_t period) {
  const qx::Windows windows = {s + period - 1, length - 1, period};
  int32_t status = qx::movingHighest(bars.high.data, windows, out);
  if (status == QX_SUCCESS) status = qx::movingLowest(bars.low.data, windows, lowest);
  if (status != QX_SUCCESS) return status;
  for (int64_t i = windows.first; i < length; ++i) out[i] = (out[i] + lowest[i]) / 2.0;
  return QX_SUCCESS;
}

void trendScore(const double* in, double* out, int64_t length, int64_t first, int64_t from,
                int64_t to) {
  qx::byLanes(first, length - 1, [=](auto lanes, int64_t i) {
    // The element compared with runs from i - to to i - from.
    const auto scores =
        qx::windowSums<lanes>(i - to, to - from + 1, [in, i](int64_t j, int64_t, size_t lane) {
          return in[i + static_cast<int64_t>(lane)] >= in[j] ? 1.0 : -1.0;
        });
    std::copy(scores.begin(), scores.end(), out + i);
  });
}

// The straight distance over P bars against the distance along the series, with the sign of the
// change. The steps are laid into the output first; windows are summed from the end downwards,
// each before its own slot is overwritten.
void fractalEfficiency(const double* in, double* out, int64_t length, int64_t first,
                       int64_t period) {
  if (first >= length) return;
  const int64_t begin = first - period;
  for (int64_t i = begin + 1; i < length; ++i) {
    const double change = in[i] - in[i - 1];
    out[i] = std::sqrt(change * change + 1.0);
  }
  const auto bars = static_cast<double>(period);
  qx::byLanes(first, length - 1, [=](auto lanes, int64_t i) {
    const auto path = qx::windowSums<lanes>(i - period + 1, period,
                                            [out](int64_t j, int64_t, size_t) { return out[j]; });
    for (size_t lane = 0; lane < lanes; ++lane) {
      const int64_t at = i + static_cast<int64_t>(lane);
      const double change = in[at] - in[at - period];
      const double sign = change > 0.0 ? 1.0 : change < 0.0 ? -1.0 : 0.0;
      out[at] = 100.0 * sign * std::sqrt(change * change + bars * bars) / path[lane];
    }
  });
  std::fill(out + begin, out + first, 0.0);
}

}  // namespace

int32_t qxVHF(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<2> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  const int64_t first = qx::startIndex(start, {in}) + period;
  const qx::Windows windows = {first, length - 1, period};
  double* highest = scratch[0].data;
  double* lowest = scratch[1].data;
  int32_t status = qx::movingHighest(in->data, windows, highest);
  if (status == QX_SUCCESS) status = qx::movingLowest(in->data, windows, lowest);
  if (status != QX_SUCCESS) return status;
  verticalHorizontal(in->data, highest, lowest, out->data, length, first, period);
  return qx::markFirstValid(first, {out});
}

int32_t qxRWI(const qxBars* bars, qxArray* hiOut, qxArray* loOut, int32_t period, int32_t start) {
  if (period < 2) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {hiOut, loOut});
  if (length < 1) return length;
  qx::ScratchArrays<1> range(length);
  if (range.status != QX_SUCCESS) return range.status;
  qxTR(bars, &range[0], start);
  const int64_t first = qx::startIndex(start) + period;
  randomWalkIndex(*bars, range[0].data, hiOut->data, loOut->data, qx::heldBars(*bars, length),
                  first, period);
  return qx::markFirstValid(first, {hiOut, loOut});
}

int32_t qxZigZag(const qxArray* in, qxArray* out, double percent, int32_t start) {
  if (!(percent > 0.0)) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  zigZag(in->data, out->data, length, s, percent / 100.0);
  return qx::markFirstValid(s, {out});
}

int32_t qxIchimokuKinkoHyo(const qxBars* bars, qxArray* tenkan, qxArray* kijun, qxArray* spanA,
                           qxArray* spanB, qxArray* chikou, int32_t period1, int32_t period2,
                           int32_t period3, int32_t start) {
  if (period1 < 1 || period2 < 1 || period3 < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {tenkan, kijun, spanA, spanB, chikou});
  if (length < 1) return length;
  // The lines are collected aside, so that a failure leaves the outputs clear.
  qx::ScratchArrays<4> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  const int64_t s = qx::startIndex(start);
  const int64_t held = qx::heldBars(*bars, length);
  const int32_t periods[] = {period1, period2, period3};
  for (int line = 0; line < 3; ++line) {
    const int32_t status =
        midPrices(*bars, scratch[line].data, scratch[3].data, held, s, periods[line]);
    if (status != QX_SUCCESS) return status;
  }
  const double* middle1 = scratch[0].data;
  const double* middle2 = scratch[1].data;
  const double* middle3 = scratch[2].data;
  std::copy_n(middle1, length, tenkan->data);
  std::copy_n(middle2, length, kijun->data);

  const int64_t shift = period2;
  const int64_t firstA = s + std::max(period1, period2) - 1;
  const int64_t firstB = s + period3 - 1;
  for (int64_t i = firstA; i + shift < held; ++i) {
    spanA->data[i + shift] = (middle1[i] + middle2[i]) / 2.0;
  }
  for (int64_t i = firstB; i + shift < held; ++i) spanB->data[i + shift] = middle3[i];
  for (int64_t i = s; i + shift < held; ++i) chikou->data[i] = bars->close.data[i + shift];
  chikou->size = static_cast<int32_t>(std::max<int64_t>(0, length - shift));

  qx::markFirstValid(s + period1 - 1, {tenkan});
  qx::markFirstValid(s + period2 - 1, {kijun});
  qx::markFirstValid(firstA + shift, {spanA});
  qx::markFirstValid(firstB + shift, {spanB});
  return qx::markFirstValid(s, {chikou});
}

int32_t qxTrendScore(const qxArray* in, qxArray* out, int32_t from, int32_t to, int32_t start) {
  if (from < 1 || from > to) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t first = qx::startIndex(start, {in}) + to;
  trendScore(in->data, out->data, length, first, from, to);
  return qx::markFirstValid(first, {out});
}

int32_t qxPFE(const qxArray* in, qxArray* out, int32_t period, int32_t smoothPeriod,
              int32_t start) {
  if (period < 1 || smoothPeriod < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t first = qx::startIndex(start, {in}) + period;
  fractalEfficiency(in->data, out->data, length, first, period);
  qx::markFirstValid(first, {out});
  if (smoothPeriod > 1) qxExpMA(out, out, smoothPeriod, qx::saturateToInt32(first));
  return QX_SUCCESS;
}

int32_t qxRangeIndicator(const qxBars* bars, qxArray* out, int32_t period, int32_t smoothPeriod,
                         int32_t start) {
  if (period < 1 || smoothPeriod < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<3> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  const int64_t s = qx::startIndex(start);
  const int64_t held = qx::heldBars(*bars, length);
  const double* close = bars->close.data;
  double* value = scratch[0].data;
  qxTR(bars, &scratch[0], start);
  for (int64_t i = s + 1; i < held; ++i) {
    if (close[i] > close[i - 1]) value[i] = value[i] / (close[i] - close[i - 1]);
  }

  const int64_t first = s + period;
  const qx::Windows windows = {first, held - 1, period};
  double* highest = scratch[1].data;
  double* lowest = scratch[2].data;
  int32_t status = qx::movingHighest(value, windows, highest);
  if (status == QX_SUCCESS) status = qx::movingLowest(value, windows, lowest);
  if (status != QX_SUCCESS) return status;
  for (int64_t i = first; i < held; ++i) {
    const double position = 100.0 * (value[i] - lowest[i]);
    const double extent = highest[i] - lowest[i];
    out->data[i] = highest[i] > lowest[i] ? position / extent : position;
  }
  qx::markFirstValid(first, {out});
  qxExpMA(out, out, smoothPeriod, qx::saturateToInt32(first));
  return QX_SUCCESS;
}
