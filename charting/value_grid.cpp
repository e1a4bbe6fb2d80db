// Grid steps, marks and labels of value axes.
#include "charting/value_grid.h"

#include <algorithm>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

#include "core/numeric.h"

namespace qx {
namespace {

constexpr int32_t kMostDecimals = 8;
// Beyond this a whole number has no exact double, and fixed notation says nothing.
constexpr double kMostExact = 9007199254740992.0;  // 2^53
constexpr double kLeastStep = 1e-8;

bool isExponential(const ValueGrid& grid) {
  return std::max(std::fabs(grid.low), std::fabs(grid.high)) >= kMostExact / 100.0 ||
         grid.step < kLeastStep;
}

// The marks of one decade, from the densest choice to the sparsest, and the least distance of two
// of them as a part of the decade.
struct DecadeMarks {
  int32_t count;
  int32_t marks[9];
  double leastDistance;
};
constexpr DecadeMarks kDecades[] = {{9, {1, 2, 3, 4, 5, 6, 7, 8, 9}, 0.0457},
                                    {5, {1, 2, 3, 5, 7}, 0.1461},
                                    {3, {1, 2, 5}, 0.3010},
                                    {1, {1}, 1.0}};

// Up to this ratio of its ends a logarithmic scale is marked in equal steps.
constexpr double kEvenRatio = 4.0;

double powerAtOrBelow(double value) {
  return std::floor(std::log10(value) + 1e-9);
}

void chooseDecades(ValueGrid* grid, double rowsPerDecade, int32_t spacing) {
  grid->decades = 1;
  for (const DecadeMarks& choice : kDecades) {
    grid->decadeMarks = choice.count;
    if (choice.leastDistance * rowsPerDecade >= spacing) return;
  }
  grid->decades = truncateToInt32(std::ceil(spacing / rowsPerDecade));
}

const DecadeMarks& decadeOf(const ValueGrid& grid) {
  const auto* found =
      std::find_if(std::begin(kDecades), std::end(kDecades),
                   [&](const DecadeMarks& choice) { return choice.count == grid.decadeMarks; });
  return *found;
}

// The least mark of a wide logarithmic scale above a value, or at it when `from` is set.
double decadeMark(const ValueGrid& grid, double value, bool from) {
  const double bound = from ? value * (1.0 - 1e-9) : value * (1.0 + 1e-9);
  double power = powerAtOrBelow(value);
  power -= std::fmod(std::fmod(power, grid.decades) + grid.decades, grid.decades);
  for (int32_t tries = 0; tries < 2; ++tries, power += grid.decades) {
    const DecadeMarks& decade = decadeOf(grid);
    for (int32_t i = 0; i < decade.count; ++i) {
      const double mark = decade.marks[i] * std::pow(10.0, power);
      if (from ? mark >= bound : mark > bound) return mark;
    }
  }
  return std::pow(10.0, power);
}

// The decimals of a step, as the eight that the decimals operation gives less their trailing zeros.
int32_t decimalsOf(double step) {
  // A step such as 0.05 may lie a hair below its decimals.
  int32_t digits = qxDecimals(step + 0.5 / powerOfTen(kMostDecimals), kMostDecimals);
  if (digits == 0) return 0;
  int32_t decimals = kMostDecimals;
  for (; digits % 10 == 0; digits /= 10) --decimals;
  return decimals;
}

// A value as it is printed: the magnitude's whole part and decimals, rounded at the last one.
struct Printed {
  bool negative;
  int64_t whole, fraction;
};

Printed roundMark(double value, int32_t decimals) {
  const double unit = powerOfTen(decimals);
  const double magnitude = std::fabs(value);
  Printed printed = {};
  printed.negative = value < 0.0;
  printed.whole = truncateToInt64(magnitude);
  if (!(magnitude < kMostExact)) return printed;  // no decimals are left
  printed.fraction = truncateToInt64((magnitude - static_cast<double>(printed.whole)) * unit + 0.5);
  if (static_cast<double>(printed.fraction) >= unit) {
    printed.fraction = 0;
    if (printed.whole < std::numeric_limits<int64_t>::max()) ++printed.whole;
  }
  printed.negative = value < 0.0 && (printed.whole != 0 || printed.fraction != 0);
  return printed;
}

int32_t wholeWidth(double value, int32_t decimals) {
  const Printed printed = roundMark(value, decimals);
  return std::snprintf(nullptr, 0, "%s%" PRId64, printed.negative ? "-" : "", printed.whole);
}

// The smallest multiple of the step at or above a value; false beyond the exact integers.
bool multipleFrom(double value, double step, double* multiple) {
  const double count = std::ceil(value / step - 1e-9);
  if (!(std::fabs(count) < kMostExact)) return false;
  *multiple = count * step;
  return true;
}

// The upper end is computed, so that a mark on it may lie a hair beyond.
bool isWithin(const ValueGrid& grid, double value) {
  const double distance = grid.decadeMarks > 0 ? value : grid.step;
  return value <= grid.high + 1e-9 * distance;
}

}  // namespace

double gridStep(double raw) {
  if (!(raw > 0.0) || !std::isfinite(raw)) return 0.0;
  double factor = 1.0;
  if (raw < 1.0) {
    while (raw < 10.0) {
      raw *= 10.0;
      factor /= 10.0;
    }
  } else {
    while (raw > 100.0) {
      raw /= 10.0;
      factor *= 10.0;
    }
  }
  for (const double readable : {1.0, 2.0, 5.0, 10.0, 25.0, 50.0}) {
    if (raw <= readable) return readable * factor;
  }
  return 100.0 * factor;
}

ValueGrid makeGrid(const ValueScale& scale, int32_t spacing) {
  ValueGrid grid = {};
  if (scale.flat || scale.bottom <= scale.top || scale.perValue == 0.0) return grid;
  const int64_t rows = int64_t{scale.bottom} - scale.top;
  const double rowsPerUnit = std::fabs(scale.perValue);
  const double other = scale.low + static_cast<double>(rows - 1) / scale.perValue;
  grid.low = std::min(scale.low, other);
  grid.high = std::max(scale.low, other);
  double raw = spacing / rowsPerUnit;
  if (scale.logarithmic) {
    const bool wide = grid.high - grid.low > std::log10(kEvenRatio);
    grid.low = std::pow(10.0, grid.low);
    grid.high = std::pow(10.0, grid.high);
    // Equal steps stand closest at the upper end.
    raw = wide ? std::pow(10.0, powerAtOrBelow(grid.low))
               : grid.high - grid.high / std::pow(10.0, raw);
    if (wide) chooseDecades(&grid, rowsPerUnit, spacing);
  }
  grid.step = grid.decadeMarks > 0 ? raw : gridStep(raw);
  if (!std::isfinite(grid.low) || !std::isfinite(grid.high) || !(grid.step > 0.0)) return {};
  grid.decimals = decimalsOf(grid.step);
  grid.whole = std::max(wholeWidth(grid.low, grid.decimals), wholeWidth(grid.high, grid.decimals));
  return grid;
}

bool firstMark(const ValueGrid& grid, double* value) {
  if (!(grid.step > 0.0)) return false;
  if (grid.decadeMarks > 0) {
    *value = decadeMark(grid, grid.low, true);
  } else if (!multipleFrom(grid.low, grid.step, value)) {
    return false;
  }
  return isWithin(grid, *value);
}

bool nextMark(const ValueGrid& grid, double* value) {
  const double before = *value;
  *value = grid.decadeMarks > 0 ? decadeMark(grid, before, false)
                                : (std::round(before / grid.step) + 1.0) * grid.step;
  // Also ends the walk where a step no longer changes the value.
  return *value > before && isWithin(grid, *value);
}

void formatMark(const ValueGrid& grid, double value, char (&label)[kLabelSize]) {
  if (isExponential(grid)) {
    // The exponent form is written without the C locale's decimal point.
    const int32_t exponent =
        value == 0.0 ? 0 : truncateToInt32(std::floor(std::log10(std::fabs(value))));
    const Printed printed = roundMark(value / std::pow(10.0, exponent), 4);
    std::snprintf(label, sizeof label, "%s%" PRId64 ".%04" PRId64 "e%+d",
                  printed.negative ? "-" : "", printed.whole, printed.fraction, exponent);
    return;
  }
  const Printed printed = roundMark(value, grid.decimals);
  char whole[24];
  std::snprintf(whole, sizeof whole, "%s%" PRId64, printed.negative ? "-" : "", printed.whole);
  if (grid.decimals == 0) {
    std::snprintf(label, sizeof label, "%s", whole);
    return;
  }
  char format[24];
  std::snprintf(format, sizeof format, "%%%is.%%0%illi", grid.whole, grid.decimals);
  std::snprintf(label, sizeof label, format, whole, static_cast<long long>(printed.fraction));
}

}  // namespace qx
