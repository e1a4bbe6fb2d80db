// The least-squares line over a stretch of a series, x running 1..N.
#ifndef QUORVEX_INDICATORS_LEAST_SQUARES_H
#define QUORVEX_INDICATORS_LEAST_SQUARES_H

#include <cmath>
#include <cstdint>

namespace qx {

// The sums over x = 1..N, added in that order.
struct AxisSums {
  double n;
  double x;
  double xx;
};

inline AxisSums axisSums(int64_t count) {
  AxisSums sums = {static_cast<double>(count), 0.0, 0.0};
  for (int64_t k = 1; k <= count; ++k) {
    const auto x = static_cast<double>(k);
    sums.x += x;
    sums.xx += x * x;
  }
  return sums;
}

// y = intercept + slope * x; the intercept lies one bar before the stretch.
struct Line {
  double slope;
  double intercept;
};

inline Line fitLine(const AxisSums& axis, double sy, double sxy) {
  const double slope = (axis.n * sxy - axis.x * sy) / (axis.n * axis.xx - axis.x * axis.x);
  return {slope, (sy - slope * axis.x) / axis.n};
}

// The standard error of the estimate: the root of the residual variance with N - 2 degrees of
// freedom, 0 when that is not above 0.
inline double standardError(const AxisSums& axis, double sy, double syy, double sxy) {
  const double meanX = axis.x / axis.n;
  const double meanY = sy / axis.n;
  const double slope = (sxy - axis.n * meanX * meanY) / (axis.xx - axis.n * (meanX * meanX));
  const double intercept = meanY - slope * meanX;
  const double variance = (syy - intercept * sy - slope * sxy) / (axis.n - 2.0);
  return variance > 0.0 ? std::sqrt(variance) : 0.0;
}

}  // namespace qx

#endif  // QUORVEX_INDICATORS_LEAST_SQUARES_H
