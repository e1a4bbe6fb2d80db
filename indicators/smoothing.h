// Exponential smoothing of a stream of values, for indicators that smooth what they compute bar by
// bar. Same values as qxExpMA over a series of them.
#ifndef QUORVEX_INDICATORS_SMOOTHING_H
#define QUORVEX_INDICATORS_SMOOTHING_H

#include "quorvex.h"

namespace qx {

struct Smoothing {
  double factor;
  double keep;
};

inline Smoothing smoothingOf(double period) {
  const double factor = qxPeriodToExp(period);
  return {factor, 1.0 - factor};
}

// The next average after `previous`; the first average is the first value itself.
inline double smooth(const Smoothing& smoothing, double value, double previous) {
  return smoothing.factor * value + smoothing.keep * previous;
}

}  // namespace qx

#endif  // QUORVEX_INDICATORS_SMOOTHING_H
