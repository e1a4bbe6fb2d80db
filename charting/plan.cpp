// Plans a graph from back to front: background, strips, panes, date axis, value axes, then each
// pane's grid, charts, lines and shapes.
#include "charting/plan.h"

#include <algorithm>
#include <cstring>

#include "charting/planner.h"
#include "core/indicator_frame.h"

namespace qx {
namespace {

// No device is as large; coordinates stay far from the bounds of 32 bits and of the painters.
constexpr int32_t kMostCoordinate = 1 << 24;

// The bars that give the dates: those of the first chart that has any.
void findDates(Planner* planner) {
  for (const qxGraphSubwin& pane : subwinsOf(*planner->graph)) {
    for (const qxGraphChart& chart : chartsOf(pane)) {
      const int32_t length = heldLength(chart.bars.barsize, {&chart.bars.date});
      if (length < 1) continue;
      planner->dated = &chart.bars;
      planner->datedLength = length;
      return;
    }
  }
}

Planner makePlanner(qxGraph* graph, const Device& device, DrawList* list) {
  Planner planner = {};
  planner.graph = graph;
  planner.device = &device;
  planner.list = list;
  planner.axisFont = lineFont(device, graph->axisface, graph->axissize);
  planner.titleFont = lineFont(device, graph->titleface, graph->titlesize);
  planner.headerFont = lineFont(device, graph->headerface, graph->headersize);
  planner.footerFont = lineFont(device, graph->footerface, graph->footersize);
  findDates(&planner);
  return planner;
}

qxRect inflated(const qxRect& rect, int32_t by) {
  return {rect.left - by, rect.top - by, rect.right + by, rect.bottom + by};
}

void planPaneBacks(Planner* planner) {
  for (const qxGraphSubwin& pane : subwinsOf(*planner->graph)) {
    if (isEmpty(pane.pane)) continue;
    addFrame(planner->list, inflated(pane.pane, 1));
    addFill(planner->list, pane.pane, solidBrush(pane.background));
  }
}

void planPane(Planner* planner, const qxGraphSubwin& pane) {
  planTitle(planner, pane);
  const qxRect plot = intersection(plotOf(*planner->graph, pane), pane.pane);
  if (isEmpty(plot)) return;
  addClip(planner->list, plot);
  const auto count = static_cast<int32_t>(chartsOf(pane).size());
  for (int32_t chart = 0; chart < count; ++chart) planChart(planner, pane, chart);
  planLines(planner, pane);
  planShapes(planner, pane);
  addUnclip(planner->list);
}

}  // namespace

LineFont lineFont(const Device& device, const char (&face)[32], float points) {
  LineFont font = {};
  std::memcpy(font.font.face, face, sizeof font.font.face - 1);
  font.font.height = fontPixels(device, points);
  if (font.font.height > 0) font.lineHeight = device.lineHeight(device.context, font.font);
  return font;
}

int32_t textWidth(const Planner& planner, const LineFont& font, const char* text) {
  if (font.lineHeight == 0) return 0;
  const Device& device = *planner.device;
  return device.textWidth(device.context, font.font, text, static_cast<int32_t>(std::strlen(text)));
}

bool isPaintable(const qxRect& area) {
  return !isEmpty(area) && area.left >= -kMostCoordinate && area.top >= -kMostCoordinate &&
         area.right <= kMostCoordinate && area.bottom <= kMostCoordinate;
}

int32_t planGraph(qxGraph* graph, const Device& device, DrawList* list) {
  if (!isPaintable(graph->area)) return QX_ERR_INVALID_PARM;
  Planner planner = makePlanner(graph, device, list);
  layOutRows(&planner);
  for (qxGraphSubwin& pane : subwinsOf(*graph)) planScales(&planner, &pane);
  layOutColumns(&planner);

  addFill(list, graph->area, solidBrush(graph->background));
  planStrips(&planner);
  planPaneBacks(&planner);
  planDateAxis(&planner);
  planValueAxes(&planner);
  for (const qxGraphSubwin& pane : subwinsOf(*graph)) {
    if (!isEmpty(pane.pane)) planPane(&planner, pane);
  }
  return list->status;
}

int32_t planHeadFoot(const qxGraph& graph, const Device& device, DrawList* list) {
  qxGraph copy = graph;  // the records behind its pointers are only read
  Planner planner = makePlanner(&copy, device, list);
  planStrips(&planner);
  return list->status;
}

}  // namespace qx
