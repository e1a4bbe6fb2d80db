// The readable values at which a value axis is marked, and their labels.
#ifndef QUORVEX_CHARTING_VALUE_GRID_H
#define QUORVEX_CHARTING_VALUE_GRID_H

#include <cstdint>

#include "charting/geometry.h"

namespace qx {

// A raw step rounded up to the nearest of 1, 2, 2.5, 5 and 10 times a power of ten, in the manner
// of each decade; 0 for a step that is negative, not finite or not a number.
double gridStep(double raw);

// The marked values of one scale, each an integer times a step. On a logarithmic scale of a wide
// range the step is the power of ten below each value.
struct ValueGrid {
  double low, high;     // the values at the ends of the scale
  double step;          // distance of the marks; 0: nothing is marked
  int32_t decadeMarks;  // marks in each decade of a wide logarithmic scale; 0 on other scales
  int32_t decades;      // decades from one mark to the next where decadeMarks is 1
  int32_t decimals;     // of every label
  int32_t whole;        // characters of the widest whole part, the sign included
};

// The grid of a scale whose marks stand at least `spacing` pixels apart.
ValueGrid makeGrid(const ValueScale& scale, int32_t spacing);

// The first mark, and the mark after `value`; false when there is none.
bool firstMark(const ValueGrid& grid, double* value);
bool nextMark(const ValueGrid& grid, double* value);

inline constexpr int32_t kLabelSize = 48;

// The label of a mark: rounded at its last decimal, the whole part padded with blanks to the
// widest.
void formatMark(const ValueGrid& grid, double value, char (&label)[kLabelSize]);

}  // namespace qx

#endif  // QUORVEX_CHARTING_VALUE_GRID_H
