// Statistics over one range of a series, or of two.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>

#include "core/indicator_frame.h"
#include "indicators/least_squares.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Indexes from..to, both inclusive; empty when from > to.
struct Range {
  int64_t from;
  int64_t to;

  bool empty() const { return from > to; }
  double count() const { return static_cast<double>(to - from + 1); }
};

// Raised to the first valid index of every series, lowered to the last element of the shortest.
Range clipRange(int64_t from, int64_t to, std::initializer_list<const qxArray*> series) {
  for (const qxArray* s : series) {
    from = std::max<int64_t>({from, s->firstvalid, 0});
    to = std::min<int64_t>(to, qx::heldSize(*s) - 1);
  }
  return {from, to};
}

// The range convention of every statistic but qxRegressionLine: the ends come in either order.
Range statisticsRange(int32_t from, int32_t to, std::initializer_list<const qxArray*> series) {
  return clipRange(std::min(from, to), std::max(from, to), series);
}

double mean(const double* a, Range range) {
  double sum = 0.0;
  for (int64_t i = range.from; i <= range.to; ++i) sum += a[i];
  return range.empty() ? kNaN : sum / range.count();
}

double standardDeviation(const double* a, Range range, int32_t sample) {
  const double average = mean(a, range);
  double squares = 0.0;
  for (int64_t i = range.from; i <= range.to; ++i) {
    const double deviation = a[i] - average;
    squares += deviation * deviation;
  }
  return std::sqrt(squares / (sample != 0 ? range.count() - 1.0 : range.count()));
}

double covariance(const double* x, const double* y, Range range) {
  const double averageX = mean(x, range);
  const double averageY = mean(y, range);
  double products = 0.0;
  for (int64_t i = range.from; i <= range.to; ++i) {
    products += (x[i] - averageX) * (y[i] - averageY);
  }
  return products / (range.count() - 1.0);
}

// Where a walk back from range.to came to rest.
int32_t turningPoint(const double* a, Range range, int64_t i) {
  if (i > range.from) return static_cast<int32_t>(i);
  // Kept: highs and lows compare the ends of the range in the same way.
  return static_cast<int32_t>(a[range.from] >= a[range.to] ? range.from : range.to);
}

}  // namespace

int32_t qxArrayStats(const qxArray* array, double* min, double* max, double* avg, double* sum,
                     int32_t from, int32_t to, int32_t skipZeros) {
  if (array == nullptr) return QX_ERR_INVALID_PARM;
  const Range range = statisticsRange(from, to, {array});
  const double* a = array->data;
  double lowest = range.empty() ? 0.0 : a[range.from];
  double highest = lowest;
  double total = 0.0;
  int64_t count = 0;
  for (int64_t i = range.from; i <= range.to; ++i) {
    const double value = a[i];
    if (skipZeros == 0 || value != 0.0) {
      ++count;
      total += value;
      if (value < lowest) lowest = value;
    }
    // Kept: the maximum sees the zeros that the other results skip.
    if (value > highest) highest = value;
  }
  if (min != nullptr) *min = lowest;
  if (max != nullptr) *max = highest;
  if (avg != nullptr) *avg = count > 0 ? total / static_cast<double>(count) : kNaN;
  if (sum != nullptr) *sum = total;
  return QX_SUCCESS;
}

int32_t qxArrayStatsPos(const qxArray* array, int32_t* minPos, int32_t* maxPos, int32_t from,
                        int32_t to, int32_t skipZeros) {
  if (array == nullptr) return QX_ERR_INVALID_PARM;
  const Range range = statisticsRange(from, to, {array});
  const double* a = array->data;
  int64_t lowest = range.from;
  int64_t highest = range.from;
  for (int64_t i = range.from; i <= range.to; ++i) {
    if (a[lowest] > a[i] && (skipZeros == 0 || a[i] != 0.0)) lowest = i;
    if (a[i] > a[highest]) highest = i;
  }
  if (minPos != nullptr) *minPos = static_cast<int32_t>(lowest);
  if (maxPos != nullptr) *maxPos = static_cast<int32_t>(highest);
  return QX_SUCCESS;
}

int32_t qxBarStats(const qxBars* bars, double* low, double* high, int32_t from, int32_t to) {
  if (bars == nullptr) return QX_ERR_INVALID_PARM;
  const int32_t length =
      qx::heldLength(bars->barsize, {&bars->open, &bars->high, &bars->low, &bars->close});
  const Range range = {std::max(0, std::min(from, to)), std::min(std::max(from, to), length - 1)};
  const double* close = bars->close.data;
  double lowest = 0.0;
  double highest = 0.0;
  for (int64_t i = range.from; i <= range.to; ++i) {
    if (close[i] == 0.0) continue;
    lowest = close[i];
    break;
  }
  for (int64_t i = range.from; i <= range.to; ++i) {
    for (const qxArray* series : {&bars->open, &bars->high, &bars->low, &bars->close}) {
      const double price = series->data[i];
      if (price != 0.0 && price < lowest) lowest = price;
      if (price > highest) highest = price;
    }
  }
  if (low != nullptr) *low = lowest;
  if (high != nullptr) *high = highest;
  return QX_SUCCESS;
}

double qxStdDev(const qxArray* array, int32_t sample, int32_t from, int32_t to) {
  if (array == nullptr) return 0.0;
  return standardDeviation(array->data, statisticsRange(from, to, {array}), sample);
}

double qxStdErr(const qxArray* array, int32_t from, int32_t to) {
  if (array == nullptr) return 0.0;
  const Range range = statisticsRange(from, to, {array});
  const double* a = array->data;
  const qx::AxisSums axis = qx::axisSums(range.to - range.from + 1);
  double sy = 0.0;
  double syy = 0.0;
  double sxy = 0.0;
  for (int64_t i = range.from; i <= range.to; ++i) {
    sy += a[i];
    syy += a[i] * a[i];
    sxy += static_cast<double>(i - range.from + 1) * a[i];
  }
  return qx::standardError(axis, sy, syy, sxy);
}

int32_t qxRegressionLine(const qxArray* array, double* slope, double* intercept, int32_t from,
                         int32_t to) {
  if (array == nullptr) return QX_ERR_INVALID_PARM;
  const Range range = clipRange(from, to, {array});
  const double* a = array->data;
  qx::Line line = {kNaN, kNaN};
  if (range.from == range.to) {
    line = {0.0, a[range.from]};
  } else if (!range.empty()) {
    double sy = 0.0;
    double sxy = 0.0;
    for (int64_t i = range.from; i <= range.to; ++i) {
      sy += a[i];
      sxy += static_cast<double>(i - range.from + 1) * a[i];
    }
    line = qx::fitLine(qx::axisSums(range.to - range.from + 1), sy, sxy);
  }
  if (slope != nullptr) *slope = line.slope;
  if (intercept != nullptr) *intercept = line.intercept;
  return QX_SUCCESS;
}

double qxCorCoef(const qxArray* x, const qxArray* y, int32_t sample, int32_t from, int32_t to) {
  if (x == nullptr || y == nullptr) return 0.0;
  const Range range = statisticsRange(from, to, {x, y});
  const double spread =
      standardDeviation(x->data, range, sample) * standardDeviation(y->data, range, sample);
  // Kept: the covariance always has the sample divisor, whatever the deviations have.
  return spread == 0.0 ? 0.0 : covariance(x->data, y->data, range) / spread;
}

double qxCovariance(const qxArray* x, const qxArray* y, int32_t from, int32_t to) {
  if (x == nullptr || y == nullptr) return 0.0;
  return covariance(x->data, y->data, statisticsRange(from, to, {x, y}));
}

double qxDispersion(const qxArray* array, int32_t from, int32_t to) {
  if (array == nullptr) return 0.0;
  const Range range = statisticsRange(from, to, {array});
  const double* a = array->data;
  double sum = 0.0;
  for (int64_t i = range.from + 1; i <= range.to; ++i) sum += std::fabs(std::log(a[i] / a[i - 1]));
  return std::sqrt(sum / static_cast<double>(range.to - range.from));
}

double qxSumPrev(const qxArray* array, int32_t count, int32_t index) {
  if (array == nullptr) return 0.0;
  const Range range = clipRange(int64_t{index} - count + 1, index, {array});
  double sum = 0.0;
  for (int64_t i = range.to; i >= range.from; --i) sum += array->data[i];
  return sum;
}

double qxSlopeArrayPts(const qxArray* array, int32_t i1, int32_t i2) {
  if (array == nullptr) return 0.0;
  const int32_t size = qx::heldSize(*array);
  if (i1 < 0 || i2 < 0 || i1 >= size || i2 >= size) return 0.0;
  return (array->data[i2] - array->data[i1]) / (i2 - i1);
}

double qxSlopePts(double x1, double y1, double x2, double y2) {
  return (y2 - y1) / (x2 - x1);
}

int32_t qxFirstNonZeroItem(const qxArray* array) {
  if (array == nullptr) return 0;
  const int32_t size = qx::heldSize(*array);
  for (int32_t i = std::max(0, array->firstvalid); i < size; ++i) {
    if (array->data[i] != 0.0) return i;
  }
  return 0;
}

// Both look for the turning point by walking back from the end of the range: first along the last
// leg, then along the one before. Equal neighbours stop a walk.
int32_t qxLastHigh(const qxArray* array, int32_t from, int32_t to) {
  if (array == nullptr) return 0;
  const Range range = statisticsRange(from, to, {array});
  if (range.empty()) return static_cast<int32_t>(range.from);
  const double* a = array->data;
  int64_t i = range.to;
  while (i > range.from && a[i] > a[i - 1]) --i;
  while (i > range.from && a[i - 1] > a[i]) --i;
  return turningPoint(a, range, i);
}

int32_t qxLastLow(const qxArray* array, int32_t from, int32_t to) {
  if (array == nullptr) return 0;
  const Range range = statisticsRange(from, to, {array});
  if (range.empty()) return static_cast<int32_t>(range.from);
  const double* a = array->data;
  int64_t i = range.to;
  while (i > range.from && a[i - 1] > a[i]) --i;
  while (i > range.from && a[i] > a[i - 1]) --i;
  return turningPoint(a, range, i);
}
