// Lines and shapes of a pane, and the squares that mark selected elements.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "charting/clipping.h"
#include "charting/figures.h"
#include "charting/planner.h"
#include "core/numeric.h"

namespace qx {
namespace {

constexpr int32_t kMarkDistance = 40;  // pixels between the marks of a chart, at least
constexpr int32_t kMarkExtent = 6;     // two marks closer than this would invert each other away

// Inverts the marks' squares one by one; squares that would overlap an earlier one of the same
// element are left out, since inverting twice shows nothing.
struct Marks {
  DrawList* list;
  qxRect plot;
  Point placed[4];
  int32_t count;
};

void addMark(Marks* marks, Point point) {
  // Far outside the plot: nothing to see, and squares there could overflow.
  const qxRect near = {marks->plot.left - kMarkExtent, marks->plot.top - kMarkExtent,
                       marks->plot.right + kMarkExtent, marks->plot.bottom + kMarkExtent};
  if (!contains(near, point.x, point.y)) return;
  for (int32_t i = 0; i < std::min(marks->count, 4); ++i) {
    if (std::abs(point.x - marks->placed[i].x) < kMarkExtent &&
        std::abs(point.y - marks->placed[i].y) < kMarkExtent) {
      return;
    }
  }
  marks->placed[marks->count++ % 4] = point;
  addRectangle(marks->list, {point.x - 2, point.y - 2, point.x + 3, point.y + 3},
               solidPen(0xFFFFFF), solidBrush(0xFFFFFF));
}

// The point of a bar that carries a mark: the close of bars, the tip of an arrow, else the value.
Point markedPoint(const ChartView& view, int64_t bar) {
  const qxGraphChart& chart = *view.chart;
  Point point = {barLine(view, bar), 0};
  if (chart.style == QX_CHART_TRADES) {
    BarFigures figures;
    figuresAt(view, bar, -1, &figures);
    point.y = figures.items[0].points[0].y;
  } else {
    const qxArray& values = needsBars(chart.style) ? chart.bars.close : chart.series;
    point.y = valueToPixel(view.scale, values.data[bar]);
  }
  return point;
}

Pen elementPen(int32_t style, int32_t width, int32_t colour) {
  return {style, width, static_cast<uint32_t>(colour)};
}

qxRect plotIn(const Planner& planner, const qxGraphSubwin& pane) {
  return intersection(plotOf(*planner.graph, pane), pane.pane);
}

// The rows or columns around two coordinates, both included, cut to a guard.
qxRect boxOf(const qxRect& guard, const Point& a, const Point& b) {
  const auto next = [](int32_t v) { return saturateToInt32(int64_t{v} + 1); };
  return intersection(
      {std::min(a.x, b.x), std::min(a.y, b.y), next(std::max(a.x, b.x)), next(std::max(a.y, b.y))},
      guard);
}

void planShape(Planner* planner, const qxRect& plot, const qxGraphShape& shape, Point from,
               Point to) {
  const Pen pen = elementPen(shape.penstyle, shape.penwidth, shape.colour);
  if (pen.style == QX_PEN_NULL) return;
  const qxRect guard = guardOf(plot);
  if (shape.kind == QX_SHAPE_SEGMENT) {
    if (clipSegment(guard, &from, &to)) addLine(planner->list, pen, from, to);
  } else if (shape.kind == QX_SHAPE_RECTANGLE) {
    addRectangle(planner->list, boxOf(guard, from, to), pen, kNoBrush);
  } else if (shape.kind == QX_SHAPE_ELLIPSE) {
    // An ellipse cannot be cut without changing its shape; only absurd sizes are.
    constexpr int32_t kFar = 1 << 24;
    addEllipse(planner->list, boxOf({-kFar, -kFar, kFar, kFar}, from, to), pen, kNoBrush);
  }
}

}  // namespace

void planChartMarks(Planner* planner, const ChartView& view) {
  // Marks stay on their bars when the view scrolls: every so many bars, counted from bar 0.
  const int64_t every = std::max(kMarkDistance / view.width, 1);
  const int64_t first = nextDrawn(view, 0), last = previousDrawn(view, view.bars.last);
  Marks marks = {planner->list, view.clip, {}, 0};
  addInvert(planner->list, true);
  for (int64_t bar = first; bar <= view.bars.last; bar = nextDrawn(view, bar + 1)) {
    if (bar % every == 0 || bar == first || bar == last) addMark(&marks, markedPoint(view, bar));
  }
  addInvert(planner->list, false);
}

void planLines(Planner* planner, const qxGraphSubwin& pane) {
  const qxRect plot = plotIn(*planner, pane);
  for (const qxGraphLine& line : linesOf(pane)) {
    int32_t y;
    if (!lineRow(*planner->graph, pane, line, &y)) continue;
    if (!contains(guardOf(plot), plot.left, y)) continue;
    addLine(planner->list, elementPen(line.penstyle, line.penwidth, line.colour), {plot.left, y},
            {plot.right - 1, y});
    if (line.selected == 0) continue;
    Marks marks = {planner->list, plot, {}, 0};
    addInvert(planner->list, true);
    addMark(&marks, {plot.left + 2, y});
    addMark(&marks, {plot.left + (plot.right - plot.left) / 2, y});
    addMark(&marks, {plot.right - 3, y});
    addInvert(planner->list, false);
  }
}

void planShapes(Planner* planner, const qxGraphSubwin& pane) {
  const qxRect plot = plotIn(*planner, pane);
  for (const qxGraphShape& shape : shapesOf(pane)) {
    Point from, to;
    if (!shapePoints(*planner->graph, pane, shape, &from, &to)) continue;
    planShape(planner, plot, shape, from, to);
    if (shape.selected == 0) continue;
    Marks marks = {planner->list, plot, {}, 0};
    addInvert(planner->list, true);
    addMark(&marks, from);
    addMark(&marks, to);
    if (shape.kind != QX_SHAPE_SEGMENT) {
      addMark(&marks, {from.x, to.y});
      addMark(&marks, {to.x, from.y});
    }
    addInvert(planner->list, false);
  }
}

}  // namespace qx
