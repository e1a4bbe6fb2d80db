// Conversions that cannot overflow or trap, whatever they are given.
#ifndef QUORVEX_CORE_NUMERIC_H
#define QUORVEX_CORE_NUMERIC_H

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace qx {

// The whole part of a number, truncated toward zero; beyond the type the nearest bound, NaN is 0.
inline int64_t truncateToInt64(double value) {
  constexpr double kBound = 9223372036854775808.0;  // 2^63
  if (value >= kBound) return std::numeric_limits<int64_t>::max();
  if (value <= -kBound) return std::numeric_limits<int64_t>::min();
  return value == value ? static_cast<int64_t>(value) : 0;
}

inline int32_t saturateToInt32(int64_t value) {
  return static_cast<int32_t>(std::clamp<int64_t>(value, std::numeric_limits<int32_t>::min(),
                                                  std::numeric_limits<int32_t>::max()));
}

inline int32_t truncateToInt32(double value) {
  return saturateToInt32(truncateToInt64(value));
}

// 10 to the power of 0..22, exact as a double.
inline double powerOfTen(int32_t exponent) {
  double power = 1.0;
  for (int32_t i = 0; i < exponent; ++i) power *= 10.0;
  return power;
}

// base to the power of an exponent. C libraries differ here by dozens of units in the last place,
// since some multiply whole powers out; in extended precision they agree.
inline double power(double base, double exponent) {
  return static_cast<double>(
      std::pow(static_cast<long double>(base), static_cast<long double>(exponent)));
}

// The value where the condition holds, else 0.0. It never branches, which pays where the condition
// is the direction of prices: nothing predicts that.
inline double valueIf(bool condition, double value) {
  return std::bit_cast<double>(std::bit_cast<uint64_t>(value) & (0 - uint64_t{condition}));
}

}  // namespace qx

#endif  // QUORVEX_CORE_NUMERIC_H
