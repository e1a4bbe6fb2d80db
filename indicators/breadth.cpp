// Market breadth: indicators over daily series of advancing, declining and unchanged issues and
// their volumes.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/indicator_frame.h"
#include "indicators/smoothing.h"
#include "quorvex.h"

namespace {

// A whole indicator: out[i] = formula(a[i], b[i]) from s on, the first valid index.
template <typename Formula>
int32_t elementWise(const qxArray* a, const qxArray* b, qxArray* out, int32_t start,
                    Formula formula) {
  const int32_t length = qxCheckArgs({}, {a, b}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {a, b});
  for (int64_t i = s; i < length; ++i) out->data[i] = formula(a->data[i], b->data[i]);
  return qx::markFirstValid(s, {out});
}

double difference(double a, double b) {
  return a - b;
}

double ratio(double a, double b) {
  return b == 0.0 ? 0.0 : a / b;
}

double advancingShare(double advances, double declines) {
  const double issues = advances + declines;
  return issues == 0.0 ? 0.0 : advances / issues;
}

double advancingPercent(double advances, double declines) {
  const double issues = advances + declines;
  return issues == 0.0 ? 0.0 : 100.0 * advances / issues;
}

void cumulativeDifference(const double* a, const double* b, int64_t s, int64_t length,
                          double* out) {
  double sum = -0.0;  // leaves the first difference as it is, a negative zero too
  for (int64_t i = s; i < length; ++i) {
    sum += a[i] - b[i];
    out[i] = sum;
  }
}

// The four series of the trading indexes: issues and their volumes.
struct Market {
  const double* advances;
  const double* declines;
  const double* upVolume;
  const double* downVolume;
};

// Up to, not including, `end`.
void tradingIndex(const Market& m, int64_t s, int64_t end, double* out) {
  for (int64_t i = s; i < end; ++i) {
    const double a = m.advances[i];
    const double d = m.declines[i];
    const double av = m.upVolume[i];
    const double dv = m.downVolume[i];
    if (a == 0.0 || d == 0.0 || av == 0.0 || dv == 0.0) continue;
    out[i] = (a / d) / (av / dv);
  }
}

// Sums of the four series over the open trading index's window.
struct MarketSums {
  double advances, declines, upVolume, downVolume;
};

void addBar(const Market& m, int64_t i, MarketSums* sums) {
  sums->advances += m.advances[i];
  sums->declines += m.declines[i];
  sums->upVolume += m.upVolume[i];
  sums->downVolume += m.downVolume[i];
}

void dropBar(const Market& m, int64_t i, MarketSums* sums) {
  sums->advances -= m.advances[i];
  sums->declines -= m.declines[i];
  sums->upVolume -= m.upVolume[i];
  sums->downVolume -= m.downVolume[i];
}

// Kept: skipped, as 0.0, only when all three divisors are 0; one alone gives an infinity or a NaN.
double openTradingIndex(const MarketSums& sums) {
  if (sums.declines == 0.0 && sums.upVolume == 0.0 && sums.downVolume == 0.0) return 0.0;
  return (sums.advances / sums.declines) / (sums.upVolume / sums.downVolume);
}

void openTradingIndexes(const Market& m, int64_t s, int64_t length, int64_t period, double* out) {
  if (s >= length) return;
  MarketSums sums = {};
  const int64_t end = std::min(s + period, length);
  for (int64_t i = s; i < end; ++i) addBar(m, i, &sums);
  out[end - 1] = openTradingIndex(sums);
  for (int64_t i = end; i < length; ++i) {
    dropBar(m, i - period, &sums);
    addBar(m, i, &sums);
    out[i] = openTradingIndex(sums);
  }
}

void boltonTremblay(const double* advances, const double* declines, const double* unchanged,
                    int64_t s, int64_t length, double* out) {
  double index = 0.0;
  for (int64_t i = s + 1; i < length; ++i) {
    if (unchanged[i] != 0.0) {
      const double balance = advances[i] / unchanged[i] - declines[i] / unchanged[i];
      const double root = std::sqrt(std::fabs(balance));
      index += balance < 0.0 ? -root : root;
    }
    out[i] = index;
  }
}

// The average with period1 of the net advances less the one with period2.
void mcClellan(const double* advances, const double* declines, int64_t s, int64_t length,
               int32_t period1, int32_t period2, double* out) {
  if (s >= length) return;
  const qx::Smoothing smoothing1 = qx::smoothingOf(period1);
  const qx::Smoothing smoothing2 = qx::smoothingOf(period2);
  double average1 = advances[s] - declines[s];
  double average2 = average1;
  out[s] = average1 - average2;
  for (int64_t i = s + 1; i < length; ++i) {
    const double net = advances[i] - declines[i];
    average1 = qx::smooth(smoothing1, net, average1);
    average2 = qx::smooth(smoothing2, net, average2);
    out[i] = average1 - average2;
  }
}

}  // namespace

int32_t qxADIssues(const qxArray* advances, const qxArray* declines, qxArray* out, int32_t start) {
  return elementWise(advances, declines, out, start, difference);
}

int32_t qxUpDownVolume(const qxArray* upVolume, const qxArray* downVolume, qxArray* out,
                       int32_t start) {
  return elementWise(upVolume, downVolume, out, start, difference);
}

int32_t qxABI(const qxArray* advances, const qxArray* declines, qxArray* out, int32_t start) {
  return elementWise(advances, declines, out, start,
                     [](double a, double d) { return std::fabs(a - d); });
}

int32_t qxADRatio(const qxArray* advances, const qxArray* declines, qxArray* out, int32_t start) {
  return elementWise(advances, declines, out, start, ratio);
}

int32_t qxUpDownRatio(const qxArray* upVolume, const qxArray* downVolume, qxArray* out,
                      int32_t start) {
  return elementWise(upVolume, downVolume, out, start, ratio);
}

int32_t qxADLineBreadth(const qxArray* advances, const qxArray* declines, qxArray* out,
                        int32_t start) {
  return elementWise(advances, declines, out, start, advancingShare);
}

int32_t qxTRIN(const qxArray* advances, const qxArray* declines, const qxArray* upVolume,
               const qxArray* downVolume, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({}, {advances, declines, upVolume, downVolume}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {advances, declines, upVolume, downVolume});
  tradingIndex({advances->data, declines->data, upVolume->data, downVolume->data}, s, length,
               out->data);
  return qx::markFirstValid(s, {out});
}

int32_t qxArmsIdx(const qxArray* advances, const qxArray* declines, const qxArray* upVolume,
                  const qxArray* downVolume, qxArray* out, int32_t start, int32_t end) {
  const int32_t length = qxCheckArgs({}, {advances, declines, upVolume, downVolume}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {advances, declines, upVolume, downVolume});
  tradingIndex({advances->data, declines->data, upVolume->data, downVolume->data}, s,
               std::min<int64_t>(int64_t{end} + 1, length), out->data);
  return qx::markFirstValid(s, {out});
}

int32_t qxADLine(const qxArray* advances, const qxArray* declines, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({}, {advances, declines}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {advances, declines});
  cumulativeDifference(advances->data, declines->data, s, length, out->data);
  // Kept: one later than qxCVI, although element s holds the first sum.
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxCVI(const qxArray* advances, const qxArray* declines, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({}, {advances, declines}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {advances, declines});
  cumulativeDifference(advances->data, declines->data, s, length, out->data);
  return qx::markFirstValid(s, {out});
}

int32_t qxBoltonTremblay(const qxArray* advances, const qxArray* declines, const qxArray* unchanged,
                         qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({}, {advances, declines, unchanged}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {advances, declines, unchanged});
  boltonTremblay(advances->data, declines->data, unchanged->data, s, length, out->data);
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxOverBoughtSold(const qxArray* advances, const qxArray* declines, qxArray* out,
                         int32_t start) {
  constexpr double kPeriod = 10.0;
  const int32_t status = elementWise(advances, declines, out, start, difference);
  if (status != QX_SUCCESS) return status;
  // The average raises its start to the first valid index set above.
  qxExpMA(out, out, kPeriod, 0);
  return QX_SUCCESS;
}

int32_t qxSTIX(const qxArray* advances, const qxArray* declines, qxArray* out, int32_t period,
               int32_t start) {
  const int32_t status = elementWise(advances, declines, out, start, advancingPercent);
  if (status != QX_SUCCESS) return status;
  qxExpMA(out, out, period, out->firstvalid);
  return QX_SUCCESS;
}

int32_t qxBreadthThrust(const qxArray* advances, const qxArray* declines, qxArray* out,
                        int32_t start) {
  constexpr int32_t kPeriod = 10;
  const int32_t status = elementWise(advances, declines, out, start, advancingShare);
  if (status != QX_SUCCESS) return status;
  qxSimpleMA(out, out, kPeriod, 0);
  return QX_SUCCESS;
}

int32_t qxOpen10TRIN(const qxArray* advances, const qxArray* declines, const qxArray* upVolume,
                     const qxArray* downVolume, qxArray* out, int32_t start) {
  constexpr int64_t kPeriod = 10;
  const int32_t length = qxCheckArgs({}, {advances, declines, upVolume, downVolume}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {advances, declines, upVolume, downVolume});
  openTradingIndexes({advances->data, declines->data, upVolume->data, downVolume->data}, s, length,
                     kPeriod, out->data);
  return qx::markFirstValid(s + kPeriod - 1, {out});
}

int32_t qxBretzTRIN5(const qxArray* advances, const qxArray* declines, const qxArray* upVolume,
                     const qxArray* downVolume, qxArray* out, int32_t start) {
  constexpr int32_t kPeriod = 5;
  const int32_t status = qxTRIN(advances, declines, upVolume, downVolume, out, start);
  // Kept: success is 0, so the sum is never taken; callers rely on the plain values.
  if (status > QX_SUCCESS) qxMovingSum(out, out, kPeriod, start);
  return status;
}

int32_t qxMcClellanOscillator(const qxArray* advances, const qxArray* declines, qxArray* out,
                              int32_t period1, int32_t period2, int32_t start) {
  const int32_t length = qxCheckArgs({}, {advances, declines}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {advances, declines});
  mcClellan(advances->data, declines->data, s, length, period1, period2, out->data);
  return qx::markFirstValid(s, {out});
}

int32_t qxMcClellanSummation(const qxArray* advances, const qxArray* declines, qxArray* out,
                             int32_t period1, int32_t period2, int32_t start) {
  const int32_t status = qxMcClellanOscillator(advances, declines, out, period1, period2, start);
  if (status != QX_SUCCESS) return status;
  // The sum runs from the start that the caller gave; elements before the oscillator's are 0.
  for (int64_t i = qx::startIndex(start) + 1; i < out->size; ++i) out->data[i] += out->data[i - 1];
  return QX_SUCCESS;
}

int32_t qxMcClellanOscSum(const qxArray* advances, const qxArray* declines, qxArray* oscOut,
                          qxArray* sumOut, int32_t period1, int32_t period2, int32_t start) {
  const int32_t length = qxCheckArgs({}, {advances, declines}, {oscOut, sumOut});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {advances, declines});
  mcClellan(advances->data, declines->data, s, length, period1, period2, oscOut->data);
  double sum = 0.0;
  for (int64_t i = s; i < length; ++i) {
    sum += oscOut->data[i];
    sumOut->data[i] = sum;
  }
  qx::markFirstValid(s, {oscOut});
  return qx::markFirstValid(s + 1, {sumOut});
}
