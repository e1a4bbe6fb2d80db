// Cycles: the sine of a price cycle's phase and markers at fixed intervals.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "core/indicator_frame.h"
#include "indicators/moving_windows.h"
#include "quorvex.h"

namespace {

using std::numbers::pi;

// The phase of the cycle whose correlations with cosine and sine over one period are given, in
// 0 .. 2 pi.
double cyclePhase(double cosineSum, double sineSum) {
  constexpr double kSmallest = 0.001;  // below it the quotient is meaningless
  double phase = 0.0;
  if (!(std::fabs(cosineSum) <= kSmallest)) {
    // In extended precision the C libraries agree; near sine 0 a last bit of the phase shows.
    phase = static_cast<double>(std::atan(static_cast<long double>(sineSum / cosineSum)));
  } else if (sineSum != 0.0) {
    phase = sineSum > 0.0 ? pi / 2.0 : -pi / 2.0;
  }
  if (cosineSum < 0.0) phase += pi;
  phase += pi / 2.0;
  if (phase < 0.0) phase += 2.0 * pi;
  if (phase > 2.0 * pi) phase -= 2.0 * pi;
  return phase;
}

// Each window is correlated from its newest element backwards.
void sineWave(const double* in, const double* cosine, const double* sine, int64_t period,
              int64_t first, int64_t last, double* sineOut, double* leadOut) {
  qx::byLanes(first, last, [=](auto lanes, int64_t i) {
    constexpr size_t kCount = decltype(lanes)::value;
    qx::Lanes<kCount> real = {};
    qx::Lanes<kCount> imaginary = {};
    for (int64_t k = 0; k < period; ++k) {
      const double* newest = in + (i - k);
      for (size_t lane = 0; lane < kCount; ++lane) {
        real[lane] += cosine[k] * newest[lane];
        imaginary[lane] += sine[k] * newest[lane];
      }
    }
    for (size_t lane = 0; lane < kCount; ++lane) {
      const double phase = cyclePhase(real[lane], imaginary[lane]);
      sineOut[i + static_cast<int64_t>(lane)] = std::sin(phase);
      leadOut[i + static_cast<int64_t>(lane)] = std::sin(phase + pi / 4.0);
    }
  });
}

}  // namespace

int32_t qxMESAsinewave(const qxArray* in, qxArray* sineOut, qxArray* leadOut, int32_t period,
                       int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {sineOut, leadOut});
  if (length < 1) return length;
  const int64_t first = qx::startIndex(start, {in}) + period - 1;
  if (first < length) {
    qx::ScratchArrays<2> waves(period);
    if (waves.status != QX_SUCCESS) return waves.status;
    for (int32_t k = 0; k < period; ++k) {
      waves[0].data[k] = std::cos(2.0 * pi * k / period);
      waves[1].data[k] = std::sin(2.0 * pi * k / period);
    }
    sineWave(in->data, waves[0].data, waves[1].data, period, first, int64_t{length} - 1,
             sineOut->data, leadOut->data);
  }
  return qx::markFirstValid(first, {sineOut, leadOut});
}

int32_t qxFillInterval(const qxBars* bars, qxArray* out, int32_t interval, int32_t start) {
  if (interval < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  for (int64_t i = s; i < length; i += interval) out->data[i] = 1.0;
  return qx::markFirstValid(s, {out});
}
