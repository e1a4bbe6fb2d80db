// Averages and sums over trailing windows, and the dispatcher over the eight methods.
#include <algorithm>
#include <array>
#include <cstdint>

#include "core/indicator_frame.h"
#include "indicators/averages.h"
#include "indicators/least_squares.h"
#include "indicators/moving_windows.h"

namespace {

// Simple average and moving sum, from the end backwards so that each element is read before its
// slot is written: `out` may be `in`. `held` is the number of elements that `in` holds.
template <typename Scale>
void rollBackwards(const double* in, int64_t held, double* out, int64_t length, int64_t s,
                   int64_t period, Scale scale) {
  double sum = 0.0;
  const int64_t oldest = std::max(length - period, s);
  for (int64_t i = length - 1; i >= oldest; --i) sum += in[i];

  double last = in[length - 1];
  out[length - 1] = scale(sum);
  const int64_t end = std::max<int64_t>(s + period - 1, 0);
  // A period below 1 would roll in elements past the series; those steps are left out.
  for (int64_t i = std::min(length - 2, held - 2 + period); i >= end; --i) {
    sum = sum + in[i - period + 1] - last;
    last = in[i];
    out[i] = scale(sum);
  }
  for (int64_t i = std::min(length - 2, end - 1); i >= s; --i) out[i] = 0.0;
}

// The newest of the P elements weighs P, the oldest 1.
void weightedAverage(const double* in, double* out, int64_t length, int64_t s, int64_t period) {
  const int64_t weights = period * (period + 1) / 2;
  const auto divisor = static_cast<double>(weights);
  qx::byLanes(std::max<int64_t>(s + period - 1, 0), length - 1, [=](auto lanes, int64_t i) {
    const auto sums = qx::windowSums<lanes>(
        i - period + 1, period,
        [in](int64_t j, int64_t k, size_t) { return in[j] * static_cast<double>(k + 1); });
    double* slots = out + i;
    for (size_t lane = 0; lane < lanes; ++lane) slots[lane] = sums[lane] / divisor;
  });
}

// The line fitted to each window, read one bar beyond the window's last.
void leastSquaresAverage(const double* in, double* out, int64_t length, int64_t s, int64_t period) {
  const int64_t first = std::max<int64_t>(s + period - 1, 0);
  if (first >= length) return;
  const qx::AxisSums axis = qx::axisSums(period);
  const double ahead = axis.n + 1.0;
  qx::byLanes(first, length - 1, [=](auto lanes, int64_t i) {
    const int64_t from = i - period + 1;
    const auto sy =
        qx::windowSums<lanes>(from, period, [in](int64_t j, int64_t, size_t) { return in[j]; });
    const auto sxy = qx::windowSums<lanes>(from, period, [in](int64_t j, int64_t k, size_t) {
      return static_cast<double>(k + 1) * in[j];
    });
    double* slots = out + i;
    for (size_t lane = 0; lane < lanes; ++lane) {
      // A single element is its own line.
      const qx::Line line =
          period == 1 ? qx::Line{0.0, sy[lane]} : qx::fitLine(axis, sy[lane], sxy[lane]);
      slots[lane] = line.intercept + ahead * line.slope;
    }
  });
}

// Rolling sums of the weighted values and of the weights. `held` is the number of elements that
// both series hold: a period below 1 looks ahead, and steps past the end are left out.
void weightsAverage(const double* in, const double* weights, int64_t held, double* out,
                    int64_t length, int64_t s, int64_t period) {
  double valueSum = 0.0;
  double weightSum = 0.0;
  int64_t i = s;
  for (const int64_t end = std::min(s + period, length); i < end; ++i) {
    valueSum += in[i] * weights[i];
    weightSum += weights[i];
  }
  if (period > 0 && i == s + period && weightSum != 0.0) out[i - 1] = valueSum / weightSum;
  for (const int64_t end = std::min(length, held + period); i < end; ++i) {
    valueSum += in[i] * weights[i] - in[i - period] * weights[i - period];
    weightSum += weights[i] - weights[i - period];
    if (weightSum != 0.0) out[i] = valueSum / weightSum;
  }
}

int32_t exponentialMethod(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  return qxExpMA(in, out, period, start);
}

int32_t zeroLagMethod(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  return qxZeroLagExpMA(in, out, period, start);
}

using Method = int32_t (*)(const qxArray* in, qxArray* out, int32_t period, int32_t start);

// By method code.
constexpr std::array<Method, 8> kMethods = {
    exponentialMethod, qxLstSqrMA,     qxSimpleMA,   qxWeightedMA,
    qxWellesMA,        qxTriangularMA, qxVariableMA, zeroLagMethod,
};

}  // namespace

namespace qx {

int32_t prepareAverage(const qxArray* in, qxArray* out, int32_t start, bool writesAll) {
  if (in == nullptr || out == nullptr) return QX_ERR_INVALID_PARM;
  if (inPlace(in, out)) {
    const int32_t held = heldSize(*in);
    return held > 0 ? held : QX_ERR_INVALID_PARM;
  }
  if (!writesAll) return qxCheckArgs({}, {in}, {out});
  const int32_t length = checkArgsForOverwrite(in, out);
  if (length > 0) std::fill_n(out->data, std::min<int64_t>(startIndex(start, {in}), length), 0.0);
  return length;
}

}  // namespace qx

int32_t qxSimpleMA(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qx::prepareAverage(in, out, start, period > 0);
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  const auto divisor = static_cast<double>(period);
  rollBackwards(in->data, qx::heldSize(*in), out->data, length, s, period,
                [divisor](double sum) { return sum / divisor; });
  return qx::markFirstValid(s + period - 1, {out});
}

int32_t qxMovingSum(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qx::prepareAverage(in, out, start, period > 0);
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  rollBackwards(in->data, qx::heldSize(*in), out->data, length, s, period,
                [](double sum) { return sum; });
  return qx::markFirstValid(s + period - 1, {out});
}

int32_t qxWeightedMA(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  weightedAverage(in->data, out->data, length, s, period);
  return qx::markFirstValid(s + period - 1, {out});
}

int32_t qxTriangularMA(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const bool odd = period % 2 != 0;
  const int64_t first = odd ? (int64_t{period} + 1) / 2 : period / 2;
  const int64_t second = odd ? first : first + 1;
  // Kept: 0 whatever the two passes return.
  qxSimpleMA(in, out, static_cast<int32_t>(first), start);
  qxSimpleMA(out, out, static_cast<int32_t>(second), static_cast<int32_t>(first - 1));
  return QX_SUCCESS;
}

int32_t qxLstSqrMA(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  leastSquaresAverage(in->data, out->data, length, s, period);
  return qx::markFirstValid(s + period - 1, {out});
}

int32_t qxVolAdjustedMA(const qxArray* in, const qxArray* weights, qxArray* out, int32_t period,
                        int32_t start) {
  const int32_t length = qxCheckArgs({}, {in, weights}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in, weights});
  const int32_t held = std::min(qx::heldSize(*in), qx::heldSize(*weights));
  weightsAverage(in->data, weights->data, held, out->data, length, s, period);
  return qx::markFirstValid(s + period - 1, {out});
}

int32_t qxMovingAverage(const qxArray* in, qxArray* out, int32_t method, int32_t period,
                        int32_t start) {
  const auto code = static_cast<uint32_t>(method);
  return code < kMethods.size() ? kMethods[code](in, out, period, start) : QX_ERR_INVALID_PARM;
}
