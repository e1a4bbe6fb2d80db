// What a chart draws at each bar, as lines, rectangles and polygons. Painting draws these figures
// and hit-testing tests them, so that a chart is hit where it is drawn.
#ifndef QUORVEX_CHARTING_FIGURES_H
#define QUORVEX_CHARTING_FIGURES_H

#include <cstdint>

#include "charting/geometry.h"
#include "quorvex.h"

namespace qx {

enum class FigureShape : int32_t {
  line,       // from points[0] to points[1], both ends drawn
  rectangle,  // points[0] left top, points[1] right bottom, half-open
  polygon     // `count` corners; the edges belong to it
};

// The pens of a chart: in its colour, its second and its third colour.
enum class FigurePen : int32_t { none, main, second, third };

// What fills a figure: the chart's colour, its second colour, or the brush of its fill pattern.
enum class FigureFill : int32_t { none, colour, colour2, pattern };

inline constexpr int32_t kMaxCorners = 7;

struct Figure {
  FigureShape shape;
  FigurePen pen;
  FigureFill fill;
  int32_t count;  // points in use
  Point points[kMaxCorners];
};

inline constexpr int32_t kMaxFigures = 4;

struct BarFigures {
  int32_t count;
  Figure items[kMaxFigures];
};

// A chart as it is drawn in its pane, prepared once for all of its bars.
struct ChartView {
  const qxGraphChart* chart;
  qxRect clip;  // the plot; nothing is drawn outside it
  ValueScale scale;
  IndexRange bars;     // the bars to draw, none when the chart draws nothing
  int64_t firstShown;  // the bar at `left`
  int64_t left;        // x of the first shown bar
  int32_t width;       // pixels for each bar
  int32_t inset;       // half the width of ticks
  int32_t bodyHalf;    // half the width of candle bodies and histogram bars
  int32_t penWidth;    // at least 1
  int32_t markerHalf;  // half the width of a marker
  int32_t arrowSize;   // height of a trade arrow
  int32_t reach;       // how far a figure extends to either side of its bar
  int32_t base;        // the row on which histograms and areas stand
};

ChartView viewChart(const qxGraph& graph, const qxGraphSubwin& subwin, const qxGraphChart& chart,
                    int32_t dotsPerInch);

// The x of a bar's line.
int32_t barLine(const ChartView& view, int64_t bar);

// True for the styles that join each value to the one before: lines, areas and steps.
bool joinsValues(int32_t style);

// The first bar with something to draw at or after `bar`, or view.bars.last + 1; the last one at or
// before `bar`, or -1.
int64_t nextDrawn(const ChartView& view, int64_t bar);
int64_t previousDrawn(const ChartView& view, int64_t bar);

// The figures of a bar that nextDrawn gave, in the order in which they are drawn. `previous` is the
// drawn bar before it, -1 when it is the first.
void figuresAt(const ChartView& view, int64_t bar, int64_t previous, BarFigures* figures);

// True when the point lies on a figure or at most one pixel away from it.
bool isNear(const Figure& figure, int32_t penWidth, Point point);

}  // namespace qx

#endif  // QUORVEX_CHARTING_FIGURES_H
