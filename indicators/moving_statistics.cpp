// The statistics of statistics.cpp over every trailing window. Windows are summed side by side,
// each in the order of the scalar function, so that the values are the same to the last bit.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/indicator_frame.h"
#include "indicators/least_squares.h"
#include "indicators/moving_windows.h"

namespace {

using qx::Lanes;

template <size_t N>
Lanes<N> plainSums(const double* a, int64_t from, int64_t period) {
  return qx::windowSums<N>(from, period, [a](int64_t j, int64_t, size_t) { return a[j]; });
}

// Sums of x * a, x running 1..P over each window.
template <size_t N>
Lanes<N> slopeSums(const double* a, int64_t from, int64_t period) {
  return qx::windowSums<N>(from, period, [a](int64_t j, int64_t k, size_t) {
    return static_cast<double>(k + 1) * a[j];
  });
}

template <size_t N>
Lanes<N> means(const double* a, int64_t from, int64_t period) {
  Lanes<N> values = plainSums<N>(a, from, period);
  for (double& value : values) value /= static_cast<double>(period);
  return values;
}

template <size_t N>
Lanes<N> standardDeviations(const double* a, const Lanes<N>& mean, int64_t from, int64_t period,
                            double divisor) {
  Lanes<N> values = qx::windowSums<N>(from, period, [a, &mean](int64_t j, int64_t, size_t lane) {
    const double deviation = a[j] - mean[lane];
    return deviation * deviation;
  });
  for (double& value : values) value = std::sqrt(value / divisor);
  return values;
}

template <size_t N>
Lanes<N> covariances(const double* x, const Lanes<N>& meanX, const double* y, const Lanes<N>& meanY,
                     int64_t from, int64_t period) {
  Lanes<N> values =
      qx::windowSums<N>(from, period, [=, &meanX, &meanY](int64_t j, int64_t, size_t lane) {
        return (x[j] - meanX[lane]) * (y[j] - meanY[lane]);
      });
  for (double& value : values) value /= static_cast<double>(period) - 1.0;
  return values;
}

// The divisor of a standard deviation over P elements.
double deviationDivisor(int64_t period, int32_t sample) {
  return static_cast<double>(period) - (sample != 0 ? 1.0 : 0.0);
}

void movingStdDev(const double* in, double* out, int64_t first, int64_t last, int64_t period,
                  int32_t sample) {
  const double divisor = deviationDivisor(period, sample);
  qx::byLanes(first, last, [=](auto lanes, int64_t i) {
    const int64_t from = i - period + 1;
    const auto values =
        standardDeviations<lanes>(in, means<lanes>(in, from, period), from, period, divisor);
    std::copy(values.begin(), values.end(), out + i);
  });
}

void movingStdErr(const double* in, double* out, int64_t first, int64_t last, int64_t period) {
  if (first > last) return;
  const qx::AxisSums axis = qx::axisSums(period);
  qx::byLanes(first, last, [=](auto lanes, int64_t i) {
    const int64_t from = i - period + 1;
    const auto sy = plainSums<lanes>(in, from, period);
    const auto syy = qx::windowSums<lanes>(
        from, period, [in](int64_t j, int64_t, size_t) { return in[j] * in[j]; });
    const auto sxy = slopeSums<lanes>(in, from, period);
    double* slots = out + i;
    for (size_t lane = 0; lane < lanes; ++lane) {
      slots[lane] = qx::standardError(axis, sy[lane], syy[lane], sxy[lane]);
    }
  });
}

// The logarithmic changes are laid into the output first; windows are then summed from the end
// downwards, each before its own slot is overwritten.
void movingDispersion(const double* in, double* out, int64_t first, int64_t last, int64_t period) {
  if (first > last) return;
  const int64_t begin = first - period + 1;
  for (int64_t i = begin + 1; i <= last; ++i) out[i] = std::fabs(std::log(in[i] / in[i - 1]));
  const double changes = static_cast<double>(period) - 1.0;
  qx::byLanes(first, last, [=](auto lanes, int64_t i) {
    const auto sums = plainSums<lanes>(out, i - period + 2, period - 1);
    double* slots = out + i;
    for (size_t lane = 0; lane < lanes; ++lane) slots[lane] = std::sqrt(sums[lane] / changes);
  });
  std::fill(out + begin, out + first, 0.0);
}

void movingCovariance(const double* x, const double* y, double* out, int64_t first, int64_t last,
                      int64_t period) {
  qx::byLanes(first, last, [=](auto lanes, int64_t i) {
    const int64_t from = i - period + 1;
    const auto values = covariances<lanes>(x, means<lanes>(x, from, period), y,
                                           means<lanes>(y, from, period), from, period);
    std::copy(values.begin(), values.end(), out + i);
  });
}

void movingCorrelation(const double* x, const double* y, double* out, int64_t first, int64_t last,
                       int64_t period, int32_t sample) {
  const double divisor = deviationDivisor(period, sample);
  qx::byLanes(first, last, [=](auto lanes, int64_t i) {
    const int64_t from = i - period + 1;
    const auto meanX = means<lanes>(x, from, period);
    const auto meanY = means<lanes>(y, from, period);
    const auto sx = standardDeviations<lanes>(x, meanX, from, period, divisor);
    const auto sy = standardDeviations<lanes>(y, meanY, from, period, divisor);
    const auto covariance = covariances<lanes>(x, meanX, y, meanY, from, period);
    double* slots = out + i;
    for (size_t lane = 0; lane < lanes; ++lane) {
      const double spread = sx[lane] * sy[lane];
      slots[lane] = spread == 0.0 ? 0.0 : covariance[lane] / spread;
    }
  });
}

// The sum of the values is rolled from window to window, that of x times value is added afresh.
void movingLine(const double* in, double* slope, double* intercept, int64_t first, int64_t last,
                int64_t period) {
  if (first > last) return;
  const qx::AxisSums axis = qx::axisSums(period);
  qx::byLanes(first, last, [=](auto lanes, int64_t i) {
    const auto values = slopeSums<lanes>(in, i - period + 1, period);
    std::copy(values.begin(), values.end(), slope + i);
  });
  double sy = plainSums<1>(in, first - period + 1, period)[0];
  for (int64_t i = first; i <= last; ++i) {
    if (i > first) sy = sy - in[i - period] + in[i];
    const qx::Line line = qx::fitLine(axis, sy, slope[i]);
    slope[i] = line.slope;
    intercept[i] = line.intercept;
  }
}

}  // namespace

int32_t qxStdDevMv(const qxArray* in, qxArray* out, int32_t sample, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t first = qx::startIndex(start, {in}) + period - 1;
  movingStdDev(in->data, out->data, first, length - 1, period, sample);
  return qx::markFirstValid(first, {out});
}

int32_t qxStdErrMv(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t first = qx::startIndex(start, {in}) + period - 1;
  movingStdErr(in->data, out->data, first, length - 1, period);
  return qx::markFirstValid(first, {out});
}

int32_t qxDispersionMv(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t first = qx::startIndex(start, {in}) + period - 1;
  movingDispersion(in->data, out->data, first, length - 1, period);
  return qx::markFirstValid(first, {out});
}

int32_t qxCorCoefMv(const qxArray* x, const qxArray* y, qxArray* out, int32_t sample,
                    int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {x, y}, {out});
  if (length < 1) return length;
  const int64_t first = qx::startIndex(start, {x, y}) + period - 1;
  movingCorrelation(x->data, y->data, out->data, first, length - 1, period, sample);
  return qx::markFirstValid(first, {out});
}

int32_t qxCovarianceMv(const qxArray* x, const qxArray* y, qxArray* out, int32_t period,
                       int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {x, y}, {out});
  if (length < 1) return length;
  const int64_t first = qx::startIndex(start, {x, y}) + period - 1;
  movingCovariance(x->data, y->data, out->data, first, length - 1, period);
  return qx::markFirstValid(first, {out});
}

int32_t qxRegressionLineMv(const qxArray* in, qxArray* slope, qxArray* intercept, int32_t period,
                           int32_t start, int32_t end) {
  if (in == nullptr || period < 1) return QX_ERR_INVALID_PARM;
  const int64_t s = qx::startIndex(start, {in});
  if (end < s + period) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {slope, intercept});
  if (length < 1) return length;
  const int64_t first = s + period - 1;
  const int64_t last = std::min(end, length - 1);
  movingLine(in->data, slope->data, intercept->data, first, last, period);
  return qx::markFirstValid(first, {slope, intercept});
}

int32_t qxRSquared(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  double* axis = scratch[0].data;
  const int64_t s = qx::startIndex(start, {in});
  for (int64_t i = s; i < length; ++i) axis[i] = static_cast<double>(i);
  const int64_t first = s + period - 1;
  movingCorrelation(axis, in->data, out->data, first, length - 1, period, 1);
  for (int64_t i = first; i < length; ++i) out->data[i] *= out->data[i];
  return qx::markFirstValid(first, {out});
}
