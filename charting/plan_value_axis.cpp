// The value axes of the panes: grid lines across the pane, and in the strip beside it an axis line
// in the colour of the chart whose scale it shows, with ticks and labels.
#include <algorithm>
#include <cmath>

#include "charting/planner.h"
#include "charting/value_grid.h"

namespace qx {
namespace {

constexpr int32_t kLabelGap = 2;       // between tick and label, and beside the label
constexpr int32_t kLeastSpacing = 12;  // pixels between marks when there is no font
constexpr int32_t kMostTick = 64;

// One value axis of one pane.
struct ValueAxis {
  const qxGraphChart* chart;  // null: this axis is not shown
  ValueScale scale;
  ValueGrid grid;
  uint32_t gridColour;
  int32_t gridWidth;
  int32_t gridStyle;
};

const qxGraphChart* chartAt(const qxGraphSubwin& pane, int32_t index) {
  const auto charts = chartsOf(pane);
  return index >= 0 && static_cast<size_t>(index) < charts.size()
             ? &charts[static_cast<size_t>(index)]
             : nullptr;
}

bool sameScale(const qxGraphChart& a, const qxGraphChart& b) {
  constexpr int32_t kBoth = QX_SCALE_LOG | QX_SCALE_INVERTED;
  return (a.scaleflags & kBoth) == (b.scaleflags & kBoth) && a.minimum == b.minimum &&
         a.maximum == b.maximum;
}

// The chart whose scale an axis of a pane shows. The second axis is left out where it would only
// repeat the first.
const qxGraphChart* axisChart(const qxGraph& graph, const qxGraphSubwin& pane, int32_t axis) {
  const qxGraphChart* first = graph.axisshown != 0 ? chartAt(pane, pane.axischart) : nullptr;
  if (axis == 0) return first;
  const qxGraphChart* second = graph.axisshown2 != 0 ? chartAt(pane, pane.axischart2) : nullptr;
  return first != nullptr && second != nullptr && sameScale(*first, *second) ? nullptr : second;
}

ValueAxis makeAxis(const Planner& planner, const qxGraphSubwin& pane, int32_t axis) {
  ValueAxis result = {};
  if (isCollapsed(pane)) return result;
  result.chart = axisChart(*planner.graph, pane, axis);
  if (result.chart == nullptr) return result;
  const qxRect plot = plotOf(*planner.graph, pane);
  result.scale = makeScale(*result.chart, plot.top, plot.bottom);
  // A line and a half: room for the labels at the ends of a pane to move inside it.
  const int32_t spacing = std::max(planner.titleFont.lineHeight * 3 / 2, kLeastSpacing);
  result.grid = makeGrid(result.scale, spacing);
  result.gridColour = axis == 0 ? pane.gridcolour : pane.gridcolour2;
  result.gridWidth = axis == 0 ? pane.gridwidth : pane.gridwidth2;
  result.gridStyle = axis == 0 ? pane.gridstyle : pane.gridstyle2;
  return result;
}

int32_t tickLength(const qxGraph& graph) {
  return std::clamp(graph.ticklength, 0, kMostTick);
}

int32_t widestLabel(const Planner& planner, const ValueAxis& axis) {
  int32_t widest = 0;
  double value;
  for (bool more = firstMark(axis.grid, &value); more; more = nextMark(axis.grid, &value)) {
    char label[kLabelSize];
    formatMark(axis.grid, value, label);
    widest = std::max(widest, textWidth(planner, planner.titleFont, label));
  }
  return widest;
}

// The width of the column that an axis needs, 0 when no pane shows it.
int32_t columnWidth(const Planner& planner, int32_t axis) {
  int32_t widest = 0;
  for (const qxGraphSubwin& pane : subwinsOf(*planner.graph)) {
    const ValueAxis values = makeAxis(planner, pane, axis);
    if (values.chart != nullptr) widest = std::max(widest, widestLabel(planner, values));
  }
  return widest == 0 ? 0 : tickLength(*planner.graph) + widest + 3 * kLabelGap;
}

void planGridLine(Planner* planner, const ValueAxis& axis, const qxRect& plot, int32_t y) {
  if (axis.gridWidth == 0) return;
  addLine(planner->list, {axis.gridStyle, axis.gridWidth, axis.gridColour}, {plot.left, y},
          {plot.right - 1, y});
}

void planMark(Planner* planner, const ValueAxis& axis, const qxRect& plot, const qxRect& column,
              double value, int32_t y) {
  const uint32_t colour = planner->graph->titlecolour;
  const int32_t tick = tickLength(*planner->graph);
  if (tick > 0) {
    addLine(planner->list, solidPen(colour), {column.left, y}, {column.left + tick - 1, y});
  }
  const int32_t height = planner->titleFont.lineHeight;
  if (plot.bottom - plot.top < height) return;
  const int32_t top = std::clamp(y - height / 2, plot.top, plot.bottom - height);
  char label[kLabelSize];
  formatMark(axis.grid, value, label);
  const qxRect clip = {column.left, top, column.right, top + height};
  addText(planner->list, planner->titleFont.font, colour, {column.right, top}, TextAlign::kRight,
          clip, label);
}

void planAxis(Planner* planner, const qxGraphSubwin& pane, int32_t axis, int32_t left) {
  const ValueAxis values = makeAxis(*planner, pane, axis);
  if (values.chart == nullptr) return;
  const qxRect plot = intersection(plotOf(*planner->graph, pane), pane.pane);
  if (isEmpty(plot)) return;
  const int32_t width = planner->axisWidths[axis];
  // The labels of a pane end at one edge, close to their ticks.
  const int32_t labelsEnd =
      left + tickLength(*planner->graph) + kLabelGap + widestLabel(*planner, values);
  const qxRect column = {left, plot.top, labelsEnd, plot.bottom};
  if (width > 0) {
    addLine(planner->list, solidPen(values.chart->colour), {left, plot.top},
            {left, plot.bottom - 1});
  }
  double value;
  for (bool more = firstMark(values.grid, &value); more; more = nextMark(values.grid, &value)) {
    const int32_t y = valueToPixel(values.scale, value);
    if (y < plot.top || y >= plot.bottom) continue;
    planGridLine(planner, values, plot, y);
    if (width > 0) planMark(planner, values, plot, column, value, y);
  }
}

}  // namespace

void findAxisWidths(Planner* planner) {
  for (int32_t axis = 0; axis < 2; ++axis) {
    planner->axisWidths[axis] = columnWidth(*planner, axis);
  }
}

void planValueAxes(Planner* planner) {
  for (const qxGraphSubwin& pane : subwinsOf(*planner->graph)) {
    if (isEmpty(pane.pane)) continue;
    int32_t left = planner->graph->valuearea.left;
    for (int32_t axis = 0; axis < 2; ++axis) {
      planAxis(planner, pane, axis, left);
      left += planner->axisWidths[axis];
    }
  }
}

}  // namespace qx
