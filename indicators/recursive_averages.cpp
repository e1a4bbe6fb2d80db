// Averages that feed on their own previous value: exponential forms, Welles Wilder's forms and
// the averages whose factor follows the Chande momentum oscillator.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "core/indicator_frame.h"
#include "core/numeric.h"
#include "indicators/averages.h"

namespace {

// `out` may be `in`.
void exponentialAverage(const double* in, double* out, int64_t length, int64_t s, double factor) {
  if (s >= length) return;
  const double keep = 1.0 - factor;
  double average = in[s];
  out[s] = average;
  for (int64_t i = s + 1; i < length; ++i) {
    average = factor * in[i] + keep * average;
    out[i] = average;
  }
}

void doubleExponentialAverage(const double* in, double* out, int64_t length, int64_t s,
                              double factor) {
  if (s >= length) return;
  const double keep = 1.0 - factor;
  double e1 = in[s];
  double e2 = in[s];
  out[s] = in[s];
  for (int64_t i = s + 1; i < length; ++i) {
    e1 = factor * in[i] + keep * e1;
    e2 = factor * e1 + keep * e2;
    out[i] = 2.0 * e1 - e2;
  }
}

void tripleExponentialAverage(const double* in, double* out, int64_t length, int64_t s,
                              double factor) {
  if (s >= length) return;
  const double keep = 1.0 - factor;
  double e1 = in[s];
  double e2 = in[s];
  double e3 = in[s];
  out[s] = in[s];
  for (int64_t i = s + 1; i < length; ++i) {
    e1 = factor * in[i] + keep * e1;
    e2 = factor * e1 + keep * e2;
    e3 = factor * e2 + keep * e3;
    out[i] = 3.0 * e1 - 3.0 * e2 + e3;
  }
}

// One generalised double-exponential pass; `out` may be `in`. Returns whether any slot changed.
bool generalisedPass(const double* in, double* out, int64_t length, int64_t s, double factor,
                     double volumeFactor) {
  if (s >= length) return false;
  const double keep = 1.0 - factor;
  const double lead = 1.0 + volumeFactor;
  double e1 = in[s];
  double e2 = in[s];
  out[s] = in[s];
  uint64_t changed = 0;
  for (int64_t i = s + 1; i < length; ++i) {
    e1 = factor * in[i] + keep * e1;
    e2 = factor * e1 + keep * e2;
    const double value = lead * e1 - volumeFactor * e2;
    changed |= std::bit_cast<uint64_t>(value) ^ std::bit_cast<uint64_t>(out[i]);
    out[i] = value;
  }
  return changed != 0;
}

// Passes over `out` that a caller may mean; more of them are watched for a state that comes back.
constexpr int32_t kWatchedPasses = 4096;

// `passes` passes over `out` in place. Passes soon change nothing or go round in circles, so the
// number of them is no measure of the work.
void repeatPasses(double* out, int64_t length, int64_t s, double factor, double volumeFactor,
                  int32_t passes) {
  qxArray earlier = {};
  const auto size = static_cast<size_t>(length) * sizeof(double);
  if (passes > kWatchedPasses) qxAllocArray(&earlier, static_cast<int32_t>(length));
  int64_t lap = 0;  // passes since `earlier` was taken
  int64_t longestLap = 1;
  for (int32_t left = passes; left > 0; --left) {
    if (!generalisedPass(out, out, length, s, factor, volumeFactor)) break;
    if (earlier.data == nullptr) continue;
    ++lap;
    if (std::memcmp(out, earlier.data, size) == 0) {
      left = static_cast<int32_t>((left - 1) % lap) + 1;
      qxFreeArray(&earlier);
    } else if (lap == longestLap) {
      std::memcpy(earlier.data, out, size);
      longestLap *= 2;
      lap = 0;
    }
  }
  qxFreeArray(&earlier);
}

void zeroLagAverage(const double* in, double* out, int64_t length, int64_t s, int64_t lag,
                    double factor) {
  const int64_t seed = s + lag - 1;
  if (seed >= length) return;
  const double keep = 1.0 - factor;
  double average = in[s];
  out[seed] = average;
  for (int64_t i = seed + 1; i < length; ++i) {
    average = factor * (2.0 * in[i] - in[i - lag]) + keep * average;
    out[i] = average;
  }
}

// Adds the first period's elements and clears their slots. Returns the first index not visited.
int64_t seedWelles(const double* in, double* out, int64_t length, int64_t s, int64_t period,
                   double& sum) {
  int64_t i = s;
  for (const int64_t end = std::min(s + period, length); i < end; ++i) {
    sum += in[i];
    out[i] = 0.0;
  }
  return i;
}

// `out` may be `in`.
void wellesAverage(const double* in, double* out, int64_t length, int64_t s, int64_t period) {
  const auto divisor = static_cast<double>(period);
  double sum = 0.0;
  int64_t i = seedWelles(in, out, length, s, period, sum);
  if (i > s) out[i - 1] = sum / divisor;
  // With a period below 1 nothing is visited; element 0 has no predecessor to start from.
  for (i = std::max<int64_t>(i, 1); i < length; ++i) {
    out[i] = (out[i - 1] * (divisor - 1.0) + in[i]) / divisor;
  }
}

// `out` may be `in`.
void wellesSum(const double* in, double* out, int64_t length, int64_t s, int64_t period) {
  const auto divisor = static_cast<double>(period);
  double sum = 0.0;
  int64_t i = seedWelles(in, out, length, s, period, sum);
  if (i > s) out[i - 1] = sum;
  for (; i < length; ++i) {
    sum = sum - sum / divisor + in[i];
    out[i] = sum;
  }
}

// How far element i stands above, and below, its predecessor.
double rise(const double* in, int64_t i) {
  return qx::valueIf(in[i] > in[i - 1], in[i] - in[i - 1]);
}

double fall(const double* in, int64_t i) {
  return qx::valueIf(in[i - 1] > in[i], in[i - 1] - in[i]);
}

double momentum(double up, double down) {
  return up + down != 0.0 ? 100.0 * (up - down) / (up + down) : 0.0;
}

// The Chande momentum oscillator. `held` is the number of elements that `in` holds: a period below
// 1 looks ahead, and steps past the end are left out.
void chandeMomentum(const double* in, int64_t held, double* out, int64_t length, int64_t s,
                    int64_t period) {
  double up = 0.0;
  double down = 0.0;
  int64_t i = s + 1;
  for (; i <= s + period && i < length; ++i) {
    up += rise(in, i);
    down += fall(in, i);
  }
  if (period > 0 && i > s + period) out[s + period] = momentum(up, down);
  for (const int64_t end = std::min(length, held + period); i < end; ++i) {
    up = up + rise(in, i) - rise(in, i - period);
    down = down + fall(in, i) - fall(in, i - period);
    out[i] = momentum(up, down);
  }
}

// An exponential average whose factor follows the size of the oscillator.
void dynamicAverage(const double* in, const double* cmo, double* out, int64_t length, int64_t first,
                    double factor) {
  if (first > length) return;
  if (first >= 1) out[first - 1] = in[first - 1];
  for (int64_t i = std::max<int64_t>(first, 1); i < length; ++i) {
    const double k = factor * std::fabs(cmo[i]) / 100.0;
    out[i] = k * in[i] + (1.0 - k) * out[i - 1];
  }
}

}  // namespace

int32_t qxExpMA(const qxArray* in, qxArray* out, double period, int32_t start) {
  const int32_t length = qx::prepareAverage(in, out, start, true);
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  exponentialAverage(in->data, out->data, length, s, qxPeriodToExp(period));
  return qx::markFirstValid(s, {out});
}

double qxEMA(double previous, double value, double period) {
  return previous + qxPeriodToExp(period) * (value - previous);
}

double qxPeriodToExp(double period) {
  return 2.0 / (period + 1.0);
}

double qxExpToPeriod(double factor) {
  return (2.0 - factor) / factor;
}

int32_t qxDEMA(const qxArray* in, qxArray* out, double period, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  doubleExponentialAverage(in->data, out->data, length, s, qxPeriodToExp(period));
  // Kept: the seed at s does not count as valid, here and in the triple average.
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxTEMA(const qxArray* in, qxArray* out, double period, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  tripleExponentialAverage(in->data, out->data, length, s, qxPeriodToExp(period));
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxT3(const qxArray* in, qxArray* out, double period, double volumeFactor, int32_t passes,
             int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  const double v = std::clamp(volumeFactor, 0.0, 1.0);
  const double factor = qxPeriodToExp(period);
  generalisedPass(in->data, out->data, length, s, factor, v);
  repeatPasses(out->data, length, s, factor, v, passes > 1 ? passes - 1 : 0);
  return qx::markFirstValid(s, {out});
}

int32_t qxZeroLagExpMA(const qxArray* in, qxArray* out, double period, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  const double half = (period - 1.0) / 2.0;
  const int64_t lag = half > 1.0 ? qx::truncateToInt32(half) : 1;
  zeroLagAverage(in->data, out->data, length, s, lag, qxPeriodToExp(period));
  return qx::markFirstValid(s + lag - 1, {out});
}

int32_t qxWellesMA(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qx::prepareAverage(in, out, start, period > 0);
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  wellesAverage(in->data, out->data, length, s, period);
  return qx::markFirstValid(s + period - 1, {out});
}

int32_t qxWellesSum(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qx::prepareAverage(in, out, start, period > 0);
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  wellesSum(in->data, out->data, length, s, period);
  return qx::markFirstValid(s + period - 1, {out});
}

int32_t qxCMO(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  chandeMomentum(in->data, qx::heldSize(*in), out->data, length, s, period);
  return qx::markFirstValid(s + period, {out});
}

int32_t qxVIDYA(const qxArray* in, qxArray* out, int32_t cmoPeriod, int32_t emaPeriod,
                int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  const int64_t s = qx::startIndex(start, {in});
  double* cmo = scratch[0].data;
  chandeMomentum(in->data, qx::heldSize(*in), cmo, length, s, cmoPeriod);
  // Kept: an oscillator of 9 bars warms up 13 bars longer, and so does every qxVariableMA.
  const int64_t first = s + cmoPeriod + (cmoPeriod == 9 ? 13 : 0);
  dynamicAverage(in->data, cmo, out->data, length, first, qxPeriodToExp(emaPeriod));
  return qx::markFirstValid(first, {out});
}

int32_t qxVariableMA(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  return qxVIDYA(in, out, 9, period, start);
}
