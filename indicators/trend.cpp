// Direction and strength of a trend: Wilder's directional movement, the parabolic stop, the Aroon
// lines and the dynamic momentum index. Bar-set functions begin at the caller's start index.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/indicator_frame.h"
#include "core/numeric.h"
#include "indicators/moving_windows.h"

namespace {

// Raw directional movement from bar s + 1 on. Only the larger of the two outward moves counts.
void directionalMovement(const qxBars& bars, double* plus, double* minus, int64_t length,
                         int64_t s) {
  const double* high = bars.high.data;
  const double* low = bars.low.data;
  for (int64_t i = s + 1; i < length; ++i) {
    const double up = high[i] - high[i - 1];
    const double down = low[i - 1] - low[i];
    const bool any = !((up < 0.0) & (down < 0.0)) & (up != down);
    plus[i] = qx::valueIf(any & (up > down), up);
    minus[i] = qx::valueIf(any & !(up > down), down);
  }
}

// +DI and -DI from bar s + P on; where the range sum is 0 the outputs keep their zeros.
int32_t directionalIndicators(const qxBars* bars, qxArray* plusDI, qxArray* minusDI, int32_t length,
                              int32_t period, int64_t s) {
  qx::ScratchArrays<3> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  qxArray& plus = scratch[0];
  qxArray& minus = scratch[1];
  qxArray& range = scratch[2];
  const int32_t start = qx::saturateToInt32(s);
  directionalMovement(*bars, plus.data, minus.data, length, s);
  qxWellesSum(&plus, &plus, period, qx::saturateToInt32(s + 1));
  qxWellesSum(&minus, &minus, period, qx::saturateToInt32(s + 1));
  // Kept: the sum of the ranges begins one bar before those of the movements.
  qxTR(bars, &range, start);
  qxWellesSum(&range, &range, period, start);
  for (int64_t i = s + period; i < length; ++i) {
    if (range.data[i] == 0.0) continue;
    plusDI->data[i] = 100.0 * plus.data[i] / range.data[i];
    minusDI->data[i] = 100.0 * minus.data[i] / range.data[i];
  }
  return qx::markFirstValid(s + period, {plusDI, minusDI});
}

void parabolicStop(const qxBars& bars, double* sarOut, double* posOut, int64_t length, int64_t s,
                   double accel, double maxAccel) {
  if (s + 1 >= length) return;
  const double* high = bars.high.data;
  const double* low = bars.low.data;
  const double* close = bars.close.data;
  bool isLong = close[s + 1] > close[s];
  double sar = isLong ? std::min(low[s], low[s + 1]) : std::max(high[s], high[s + 1]);
  // Kept: the extreme starts as the stop itself, and the factor as accel even above maxAccel.
  double extreme = sar;
  double factor = accel;
  for (int64_t i = s + 2; i < length; ++i) {
    // A price that is NaN is passed over: each extreme begins with the value it limits.
    const auto above = [=](double value) {
      return std::max(std::max(value, high[i]), high[i - 1]);
    };
    const auto below = [=](double value) { return std::min(std::min(value, low[i]), low[i - 1]); };
    // Penetration is judged by the close, and a close on the stop reverses.
    const bool reverses = isLong ? sar >= close[i] : close[i] >= sar;
    if (reverses) {
      sar = isLong ? above(extreme) : below(extreme);
      // Kept: the extreme restarts on the side of the old position, so that the first bar of the
      // new trend usually raises the factor.
      extreme = isLong ? high[i] : low[i];
      factor = accel;
      isLong = !isLong;
    } else if (isLong ? high[i] > extreme : low[i] < extreme) {
      extreme = isLong ? high[i] : low[i];
      factor = std::min(factor + accel, maxAccel);
    }
    sarOut[i] = sar;
    posOut[i] = isLong ? 1.0 : -1.0;
    sar = sar + (extreme - sar) * factor;
    sar = isLong ? below(sar) : above(sar);
  }
}

// The lookback of the dynamic momentum index: 14 bars at average volatility, 3 to 30.
int32_t dynamicLookback(double deviation, double average) {
  if (average == 0.0 || deviation == 0.0) return 3;
  const double bars = std::floor(14.0 / (deviation / average));
  if (bars < 4.0) return 3;
  if (bars >= 30.0) return 30;
  return qx::truncateToInt32(bars);
}

void dynamicMomentum(const double* in, const double* deviations, double* out, int64_t length,
                     int64_t first) {
  for (int64_t i = first; i < length; ++i) {
    double sum = 0.0;
    for (int64_t j = i - 9; j <= i; ++j) sum += deviations[j];
    const int32_t lookback = dynamicLookback(deviations[i], sum / 10.0);
    double up = 0.0;
    double down = 0.0;
    for (int64_t j = i - lookback + 1; j <= i; ++j) {
      const bool rises = in[j] > in[j - 1];
      up += qx::valueIf(rises, in[j] - in[j - 1]);
      down += qx::valueIf(!rises, in[j - 1] - in[j]);
    }
    out[i] = up + down != 0.0 ? 100.0 * up / (up + down) : 0.0;
  }
}

using MovingPosition = int32_t (*)(const double* series, const qx::Windows& windows, double* out);

// How young the extreme of the P + 1 bars that end at each bar is, in percent of the period. Only
// the valid part of the series counts; before it the position is its first bar.
int32_t aroonLine(const qxArray& series, MovingPosition movingPosition, double* out, int64_t length,
                  int64_t first, int64_t period) {
  const qx::Windows windows = {first, length - 1, period + 1, std::max(0, series.firstvalid)};
  const int64_t cut = std::min(windows.floor, length);
  for (int64_t i = first; i < cut; ++i) out[i] = static_cast<double>(windows.floor);
  const int32_t status = movingPosition(series.data, windows, out);
  if (status != QX_SUCCESS) return status;
  for (int64_t i = first; i < length; ++i) {
    const int64_t age = i - static_cast<int64_t>(out[i]);
    out[i] = static_cast<double>(period - age) / static_cast<double>(period) * 100.0;
  }
  return QX_SUCCESS;
}

int32_t aroonLines(const qxBars& bars, double* up, double* down, int64_t length, int64_t first,
                   int64_t period) {
  const int32_t status = aroonLine(bars.high, qx::movingHighestPosition, up, length, first, period);
  if (status != QX_SUCCESS) return status;
  return aroonLine(bars.low, qx::movingLowestPosition, down, length, first, period);
}

}  // namespace

int32_t qxDMIx(const qxBars* bars, qxArray* plusDM, qxArray* minusDM, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {plusDM, minusDM});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  directionalMovement(*bars, plusDM->data, minusDM->data, qx::heldBars(*bars, length), s);
  return qx::markFirstValid(s + 1, {plusDM, minusDM});
}

int32_t qxDI(const qxBars* bars, qxArray* plusDI, qxArray* minusDI, int32_t period, int32_t start) {
  if (period < 0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {plusDI, minusDI});
  if (length < 1) return length;
  return directionalIndicators(bars, plusDI, minusDI, qx::heldBars(*bars, length), period,
                               qx::startIndex(start));
}

int32_t qxDX(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  if (period < 0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<2> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  const int64_t s = qx::startIndex(start);
  const int32_t held = qx::heldBars(*bars, length);
  const int32_t status = directionalIndicators(bars, &scratch[0], &scratch[1], held, period, s);
  if (status != QX_SUCCESS) return status;
  const double* plus = scratch[0].data;
  const double* minus = scratch[1].data;
  for (int64_t i = s + period; i < held; ++i) {
    if (plus[i] == minus[i]) continue;
    out->data[i] = 100.0 * std::fabs(plus[i] - minus[i]) / (plus[i] + minus[i]);
  }
  return qx::markFirstValid(s + period, {out});
}

int32_t qxADX(const qxBars* bars, qxArray* out, int32_t period, int32_t smoothPeriod,
              int32_t start) {
  if (period < 0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  // Kept: 0 whatever the two steps return.
  qxDX(bars, out, period, start);
  qxWellesMA(out, out, smoothPeriod, qx::saturateToInt32(qx::startIndex(start) + period));
  return QX_SUCCESS;
}

int32_t qxADXR(const qxBars* bars, qxArray* out, int32_t period, int32_t smoothPeriod, int32_t lag,
               int32_t start) {
  if (period < 0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  qxArray& adx = scratch[0];
  qxADX(bars, &adx, period, smoothPeriod, start);
  const int64_t first = qx::startIndex(start) + period + smoothPeriod + lag - 1;
  for (int64_t i = std::max<int64_t>(first, 0); i < length; ++i) {
    // A lag below 0 looks ahead; what lies outside the series counts as 0.
    const int64_t earlier = i - lag;
    const double previous = earlier >= 0 && earlier < length ? adx.data[earlier] : 0.0;
    out->data[i] = (adx.data[i] + previous) / 2.0;
  }
  return qx::markFirstValid(first, {out});
}

int32_t qxAroon(const qxBars* bars, qxArray* up, qxArray* down, int32_t period, int32_t start) {
  if (period < 0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {up, down});
  if (length < 1) return length;
  // The lines are collected aside, so that a failure leaves the outputs clear.
  qx::ScratchArrays<2> lines(length);
  if (lines.status != QX_SUCCESS) return lines.status;
  const int64_t first = qx::startIndex(start) + period;
  const int32_t held = qx::heldBars(*bars, length);
  const int32_t status = aroonLines(*bars, lines[0].data, lines[1].data, held, first, period);
  if (status != QX_SUCCESS) return status;
  std::copy_n(lines[0].data, length, up->data);
  std::copy_n(lines[1].data, length, down->data);
  return qx::markFirstValid(first, {up, down});
}

int32_t qxAroonOscillator(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  if (period < 0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<2> lines(length);
  if (lines.status != QX_SUCCESS) return lines.status;
  const int64_t first = qx::startIndex(start) + period;
  const int32_t held = qx::heldBars(*bars, length);
  const int32_t status = aroonLines(*bars, lines[0].data, lines[1].data, held, first, period);
  if (status != QX_SUCCESS) return status;
  for (int64_t i = first; i < held; ++i) out->data[i] = lines[0].data[i] - lines[1].data[i];
  return qx::markFirstValid(first, {out});
}

int32_t qxDMI(const qxArray* in, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  const int64_t s = qx::startIndex(start, {in});
  qxStdDevMv(in, &scratch[0], 1, 5, qx::saturateToInt32(s + 17));
  dynamicMomentum(in->data, scratch[0].data, out->data, length, s + 30);
  return qx::markFirstValid(s + 30, {out});
}

int32_t qxSAR(const qxBars* bars, qxArray* sarOut, qxArray* posOut, double accel, double maxAccel,
              int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {sarOut, posOut});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  parabolicStop(*bars, sarOut->data, posOut->data, qx::heldBars(*bars, length), s, accel, maxAccel);
  return qx::markFirstValid(s + 2, {sarOut, posOut});
}
