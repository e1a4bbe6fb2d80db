// Where values, bars, panes and shapes lie on the device: what painting and hit-testing share.
#ifndef QUORVEX_CHARTING_GEOMETRY_H
#define QUORVEX_CHARTING_GEOMETRY_H

#include <cstdint>
#include <span>

#include "quorvex.h"

namespace qx {

struct Point {
  int32_t x;
  int32_t y;
};

// A range of indexes, both ends included; empty when last is below first.
struct IndexRange {
  int64_t first;
  int64_t last;
};

// Half-open: the left and top edges belong to a rectangle, the right and bottom ones do not.
inline bool contains(const qxRect& r, int32_t x, int32_t y) {
  return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
}

// The elements in use of a graph's arrays, empty when an array is missing or its counts are bad.
std::span<qxGraphSubwin> subwinsOf(const qxGraph& graph);
std::span<qxGraphChart> chartsOf(const qxGraphSubwin& subwin);
std::span<qxGraphLine> linesOf(const qxGraphSubwin& subwin);
std::span<qxGraphShape> shapesOf(const qxGraphSubwin& subwin);

// A pane that is laid out: it has a chart and a height share.
bool isShown(const qxGraphSubwin& subwin);

// Pixels of one bar, at least 1, and half of what a bar's figure may take of them, 1..10.
int32_t barWidth(const qxGraph& graph);
int32_t barInset(const qxGraph& graph);

// The part of a pane in which charts are drawn: the pane below its title strip.
qxRect plotOf(const qxGraph& graph, const qxGraphSubwin& subwin);

// The x of a bar position of which `first` stands at `left`, and of one in the bar area.
int32_t barToPixel(const qxGraph& graph, double bar, int64_t first, int32_t left);
int32_t barToPixel(const qxGraph& graph, double bar);

// A chart's scale over the rows top .. bottom - 1, prepared for many values.
struct ValueScale {
  int32_t top;
  int32_t bottom;
  bool logarithmic;
  bool inverted;
  bool flat;        // no span: every value maps to 0
  double low;       // the minimum, its logarithm on a logarithmic scale
  double perValue;  // rows for a unit of value
};

ValueScale makeScale(const qxGraphChart& chart, int32_t top, int32_t bottom);

// The row of a value; 0 for NaN and on a flat scale.
int32_t valueToPixel(const ValueScale& scale, double value);

// The chart of the pane whose scale a chart shares; a missing one means the chart itself.
int32_t scaleChartOf(const qxGraphSubwin& subwin, int32_t chart);

// What a style needs to be drawn, and whether a chart has it.
bool needsBars(int32_t style);
bool needsSeries(int32_t style);
bool isDrawable(const qxGraphChart& chart);

// The bars that a chart can show: the length of the series and bar fields that its style reads.
int32_t drawableLength(const qxGraphChart& chart);

// The bars in view that a series of `length` elements holds.
IndexRange shownRange(const qxGraph& graph, int64_t length);

// The two points of a shape, in device units. False when the shape names a missing chart.
bool shapePoints(const qxGraph& graph, const qxGraphSubwin& subwin, const qxGraphShape& shape,
                 Point* from, Point* to);

// The row of a horizontal line. False when it names a missing chart.
bool lineRow(const qxGraph& graph, const qxGraphSubwin& subwin, const qxGraphLine& line,
             int32_t* y);

}  // namespace qx

#endif  // QUORVEX_CHARTING_GEOMETRY_H
