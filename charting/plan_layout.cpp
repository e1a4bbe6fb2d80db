// Where the strips, the bar area and the panes of a graph lie in its drawing area.
#include <algorithm>

#include "charting/planner.h"
#include "core/numeric.h"

namespace qx {
namespace {

constexpr int64_t kEdge = 1;           // the sunken edge around each pane
constexpr int64_t kStripPadding = 3;   // above and below the text of header and footer
constexpr int64_t kTitlePadding = 4;   // title-strip height beyond its font
constexpr int64_t kLeastRows = 40;     // strips give way when the bars would get less
constexpr int64_t kLeastColumns = 40;  // as do the value axes
constexpr int32_t kMostGap = 1024;

int64_t gap(int32_t value) {
  return std::clamp(value, 0, kMostGap);
}

int64_t stripHeight(const LineFont& font) {
  return font.lineHeight > 0 ? font.lineHeight + 2 * kStripPadding : 0;
}

// The three strips above and below the bars, least needed last.
struct StripHeights {
  int64_t dates, header, footer;
};

// Space between the bar area and what lies above or below it: the panes' edge and a gap.
int64_t rowsBetween(const qxGraph& graph) {
  return kEdge + gap(graph.vgap);
}

// Rows left for the bars.
int64_t barRows(const qxGraph& graph, const StripHeights& strips) {
  const int64_t height = int64_t{graph.area.bottom} - graph.area.top;
  const int64_t between = 2 * rowsBetween(graph);
  return height - strips.header - strips.footer - strips.dates - between;
}

StripHeights stripHeights(const Planner& planner) {
  const qxGraph& graph = *planner.graph;
  StripHeights strips = {};
  if (graph.datesshown != 0 && planner.dated != nullptr && planner.axisFont.lineHeight > 0) {
    strips.dates = gap(graph.ticklength) + planner.axisFont.lineHeight + kEdge;
  }
  if (graph.headershown != 0) {
    strips.header = stripHeight(planner.headerFont);
    if (planner.dated != nullptr) strips.footer = stripHeight(planner.footerFont);
  }
  // In a small area the strips give way one after the other.
  if (barRows(graph, strips) < kLeastRows) strips.footer = 0;
  if (barRows(graph, strips) < kLeastRows) strips.header = 0;
  if (barRows(graph, strips) < kLeastRows) strips.dates = 0;
  return strips;
}

int32_t narrow(int64_t value) {
  return saturateToInt32(value);
}

// The rows of the panes before a share of the total, rounded down. In doubles, which hold the
// product exactly for any share that a caller would use and overflow for none.
int64_t rowsBefore(int64_t rows, int64_t before, int64_t shares) {
  return truncateToInt64(static_cast<double>(rows) * static_cast<double>(before) /
                         static_cast<double>(shares));
}

// Shares the bar area's rows among the shown panes, so that rounding leaves no row over.
void stackPanes(qxGraph* graph) {
  const auto panes = subwinsOf(*graph);
  int64_t shown = 0, shares = 0;
  for (const qxGraphSubwin& pane : panes) {
    if (!isShown(pane)) continue;
    ++shown;
    shares += std::max(pane.height, 0);
  }
  const int64_t between = 2 * kEdge + gap(graph->vgap);
  const int64_t height = int64_t{graph->bararea.bottom} - graph->bararea.top;
  const int64_t rows = std::max<int64_t>(height - (shown - 1) * between, 0);
  int64_t before = 0, index = 0;
  for (qxGraphSubwin& pane : panes) {
    pane.pane = {};
    if (!isShown(pane) || shares == 0) continue;
    const int64_t origin = graph->bararea.top + index++ * between;
    const int64_t share = std::max(pane.height, 0);
    const int64_t top = origin + rowsBefore(rows, before, shares);
    const int64_t bottom = origin + rowsBefore(rows, before + share, shares);
    before += share;
    if (bottom > graph->bararea.bottom) continue;  // more gaps than rows
    pane.pane.top = narrow(top);
    pane.pane.bottom = narrow(bottom);
  }
}

}  // namespace

void layOutRows(Planner* planner) {
  qxGraph* graph = planner->graph;
  const qxRect& area = graph->area;
  const StripHeights strips = stripHeights(*planner);
  if (graph->titleheight <= 0) {
    graph->titleheight = narrow(planner->titleFont.lineHeight + kTitlePadding);
  }

  graph->headerarea = {};
  graph->footerarea = {};
  graph->datearea = {};
  graph->valuearea = {};
  if (strips.header > 0) {
    graph->headerarea = {area.left, area.top, area.right, narrow(area.top + strips.header)};
  }
  if (strips.footer > 0) {
    graph->footerarea = {area.left, narrow(area.bottom - strips.footer), area.right, area.bottom};
  }
  const int64_t top = area.top + strips.header + rowsBetween(*graph);
  const int64_t below = area.bottom - strips.footer - gap(graph->vgap);
  const int64_t bottom = std::max(below - strips.dates - kEdge, top);
  graph->bararea.top = narrow(std::min<int64_t>(top, area.bottom));
  graph->bararea.bottom = narrow(std::min<int64_t>(bottom, area.bottom));
  if (strips.dates > 0) {
    graph->datearea.top = narrow(bottom + kEdge);
    graph->datearea.bottom = narrow(below);
  }
  stackPanes(graph);
}

void layOutColumns(Planner* planner) {
  qxGraph* graph = planner->graph;
  const qxRect& area = graph->area;
  const int64_t left = area.left + gap(graph->hgap) + kEdge;
  const int64_t end = area.right - gap(graph->hgap);  // of whatever stands rightmost
  findAxisWidths(planner);
  int64_t axes = int64_t{planner->axisWidths[0]} + planner->axisWidths[1];
  if (end - left - axes - kEdge < kLeastColumns) {
    planner->axisWidths[0] = planner->axisWidths[1] = 0;
    axes = 0;
  }
  const int64_t right = std::max(end - axes - kEdge, left);
  graph->bararea.left = narrow(std::min<int64_t>(left, area.right));
  graph->bararea.right = narrow(std::min<int64_t>(right, area.right));
  if (axes > 0) {
    graph->valuearea = {narrow(right + kEdge), graph->bararea.top, narrow(end),
                        graph->bararea.bottom};
  }
  // Labels may run on below the value axes.
  if (graph->datearea.bottom > graph->datearea.top) {
    graph->datearea.left = graph->bararea.left;
    graph->datearea.right = narrow(std::max(end, left));
  }
  for (qxGraphSubwin& pane : subwinsOf(*graph)) {
    if (pane.pane.bottom <= pane.pane.top) continue;
    pane.pane.left = graph->bararea.left;
    pane.pane.right = graph->bararea.right;
  }
}

}  // namespace qx
