// What the steps of planning share. Only the plan_ sources include it.
#ifndef QUORVEX_CHARTING_PLANNER_H
#define QUORVEX_CHARTING_PLANNER_H

#include <cstdint>

#include "charting/device.h"
#include "charting/draw_list.h"
#include "charting/figures.h"
#include "charting/geometry.h"
#include "quorvex.h"

namespace qx {

// A font of the graph and the height of its lines; a font without size has neither.
struct LineFont {
  Font font;
  int32_t lineHeight;
};

// One plan under way.
struct Planner {
  qxGraph* graph;
  const Device* device;
  DrawList* list;
  LineFont axisFont;   // date axis
  LineFont titleFont;  // pane titles and value axes
  LineFont headerFont;
  LineFont footerFont;
  const qxBars* dated;    // the bars that give the dates; null: there are none
  int32_t datedLength;    // dates that they hold
  int32_t axisWidths[2];  // columns of the two value axes; 0: not shown
};

LineFont lineFont(const Device& device, const char (&face)[32], float points);
int32_t textWidth(const Planner& planner, const LineFont& font, const char* text);

// plan_layout.cpp: the rectangles of the graph and its panes. Heights come first, since the scales
// depend on them and the width of the value-axis strip depends on the scales.
void layOutRows(Planner* planner);
void layOutColumns(Planner* planner);

// True for a pane that got no rows.
inline bool isCollapsed(const qxGraphSubwin& pane) {
  return pane.pane.top >= pane.pane.bottom;
}

// plan_scales.cpp: finds the scales of a pane's charts and stores them.
void planScales(Planner* planner, qxGraphSubwin* pane);

// plan_value_axis.cpp
void findAxisWidths(Planner* planner);
void planValueAxes(Planner* planner);

// plan_date_axis.cpp: the axis, and the dated bars that stand left of the bar area's end.
IndexRange datedBarsInView(const Planner& planner);
void planDateAxis(Planner* planner);

// plan_charts.cpp: one chart, drawn in a pane whose clip is set.
void planChart(Planner* planner, const qxGraphSubwin& pane, int32_t chart);

// plan_marks.cpp: lines and shapes of a pane, and the squares that mark what is selected.
void planChartMarks(Planner* planner, const ChartView& view);
void planLines(Planner* planner, const qxGraphSubwin& pane);
void planShapes(Planner* planner, const qxGraphSubwin& pane);

// plan_strips.cpp: header, footer and pane titles.
void planStrips(Planner* planner);
void planTitle(Planner* planner, const qxGraphSubwin& pane);

}  // namespace qx

#endif  // QUORVEX_CHARTING_PLANNER_H
