// Charts, lines and shapes of a graph's panes: adding and removing.
#include <algorithm>
#include <utility>

#include "charting/geometry.h"
#include "charting/graph_arrays.h"
#include "quorvex.h"

namespace {

// Makes room for an element: the pane is created when missing and the array grown. Indexes are all
// checked before anything is created, and a failure takes the new panes back.
template <typename Element>
int32_t openSlot(qxGraph* graph, int32_t subwin, int32_t index, const qx::PaneArray<Element>& array,
                 Element** slot) {
  if (graph == nullptr || subwin < -1 || index < -1) return QX_ERR_INVALID_PARM;
  if (graph->initialised == 0) qxGraphInit(graph);
  const auto panes = qx::subwinsOf(*graph);
  const auto paneCount = static_cast<int32_t>(panes.size());
  if (subwin == -1) subwin = paneCount;
  const int32_t count =
      subwin < paneCount ? static_cast<int32_t>(array.in(panes[static_cast<size_t>(subwin)]).size())
                         : 0;
  if (index == -1) index = count;
  if (index > count) return QX_ERR_INVALID_PARM;

  int32_t status = qxGraphSubwinAdd(graph, subwin);
  if (status != QX_SUCCESS) return status;
  qxGraphSubwin* pane = &graph->subwins[subwin];
  status = qx::growPaneArray(pane, array, index);
  if (status != QX_SUCCESS) {
    while (graph->subwincount > paneCount) qxGraphSubwinRemove(graph, -1);
    return status;
  }
  pane->*array.count = std::max(count, index + 1);
  *slot = pane->*array.data + index;
  return QX_SUCCESS;
}

// The pane that holds an element; -1 means the last in either index. Null when there is none.
template <typename Element>
qxGraphSubwin* findElement(qxGraph* graph, int32_t subwin, int32_t* index,
                           const qx::PaneArray<Element>& array) {
  if (graph == nullptr || graph->initialised == 0) return nullptr;
  const auto panes = qx::subwinsOf(*graph);
  if (!qx::resolveIndex(&subwin, panes.size())) return nullptr;
  qxGraphSubwin* pane = &panes[static_cast<size_t>(subwin)];
  return qx::resolveIndex(index, array.in(*pane).size()) ? pane : nullptr;
}

template <typename Element>
int32_t removeItem(qxGraph* graph, int32_t subwin, int32_t index,
                   const qx::PaneArray<Element>& array) {
  qxGraphSubwin* pane = findElement(graph, subwin, &index, array);
  if (pane == nullptr) return QX_ERR_INVALID_PARM;
  pane->*array.count = qx::removeElement(array.in(*pane), index);
  return QX_SUCCESS;
}

// A copy of a series record that claims no more than it holds.
qxArray clampedSeries(const qxArray& series) {
  qxArray copy = series;
  copy.size = std::min(copy.size, copy.datasize);
  copy.firstvalid = std::min(copy.firstvalid, copy.size);
  return copy;
}

bool isEmptyInput(const qxArray& series, const qxBars& bars, int32_t style) {
  const bool noSeries = series.data == nullptr;
  const bool noBars = bars.date.data == nullptr;
  if (noSeries && (noBars || bars.close.data == nullptr)) return true;
  if (noSeries && style == QX_CHART_TRADES) return true;
  return noBars && style >= QX_CHART_HLC && style <= QX_CHART_TRADES;
}

bool sameScale(const qxGraphChart& a, const qxGraphChart& b) {
  return a.scaleflags == b.scaleflags && a.minmode == b.minmode && a.maxmode == b.maxmode &&
         a.minimum == b.minimum && a.maximum == b.maximum;
}

// The chart that carries on the scale of the one to be removed: the first that shares it, else the
// first with a scale like it. -1 when there is none.
int32_t findHeir(std::span<const qxGraphChart> charts, int32_t removed) {
  const auto count = static_cast<int32_t>(charts.size());
  for (int32_t i = 0; i < count; ++i) {
    if (i != removed && charts[static_cast<size_t>(i)].scalechart == removed) return i;
  }
  const qxGraphChart& gone = charts[static_cast<size_t>(removed)];
  for (int32_t i = 0; i < count; ++i) {
    if (i != removed && sameScale(charts[static_cast<size_t>(i)], gone)) return i;
  }
  return -1;
}

// Where a reference to a chart points once `removed` has gone and `heir`, in new indexes, has
// taken its place.
int32_t renumbered(int32_t reference, int32_t removed, int32_t heir) {
  if (reference == removed) return heir;
  return reference > removed ? reference - 1 : reference;
}

}  // namespace

int32_t qxGraphChartAdd(qxGraph* graph, int32_t subwin, int32_t chart, int32_t scaleFlags,
                        int32_t minMode, int32_t maxMode, double minimum, double maximum,
                        int32_t scaleChart, const qxArray* series, const qxBars* bars,
                        int32_t style, uint32_t colour, uint32_t colour2, uint32_t colour3,
                        int32_t penWidth, int32_t penStyle, int32_t selected) {
  if (graph == nullptr || series == nullptr || bars == nullptr) return QX_ERR_INVALID_PARM;
  if (isEmptyInput(*series, *bars, style)) return QX_ERR_INVALID_PARM;
  // The caller's records may lie in the very array that grows below.
  const qxArray drawn = clampedSeries(series->data != nullptr ? *series : bars->close);
  const qxBars drawnBars = *bars;
  qxGraphChart* added = nullptr;
  const int32_t status = openSlot(graph, subwin, chart, qx::kCharts, &added);
  if (status != QX_SUCCESS) return status;

  added->style = style;
  added->scaleflags = scaleFlags;
  added->minmode = minMode;
  added->maxmode = maxMode;
  added->maximum = maximum;
  added->minimum = minimum;
  added->scalechart = scaleChart;
  added->colour = colour;
  added->colour2 = colour2;
  added->colour3 = colour3;
  added->penwidth = penWidth;
  added->penstyle = penStyle;
  added->selected = selected;
  added->series = drawn;
  added->bars = drawnBars;

  if (graph->firstshown == graph->lastshown) {
    graph->lastshown = std::max({drawn.size, drawnBars.barsize, 1}) - 1;
  }
  return QX_SUCCESS;
}

int32_t qxGraphChartRemove(qxGraph* graph, int32_t subwin, int32_t chart) {
  qxGraphSubwin* pane = findElement(graph, subwin, &chart, qx::kCharts);
  if (pane == nullptr) return QX_ERR_INVALID_PARM;
  const int32_t oldHeir = findHeir(qx::kCharts.in(*pane), chart);
  const int32_t heir = oldHeir > chart ? oldHeir - 1 : oldHeir;
  pane->chartcount = qx::removeElement(qx::kCharts.in(*pane), chart);

  if (heir < 0) {
    for (auto i = static_cast<int32_t>(qx::linesOf(*pane).size()) - 1; i >= 0; --i) {
      if (pane->lines[i].chart == chart) qxGraphLineRemove(graph, subwin, i);
    }
    for (auto i = static_cast<int32_t>(qx::shapesOf(*pane).size()) - 1; i >= 0; --i) {
      if (pane->shapes[i].chart == chart) qxGraphShapeRemove(graph, subwin, i);
    }
  }
  for (qxGraphChart& other : qx::chartsOf(*pane)) {
    other.scalechart = renumbered(other.scalechart, chart, heir);
  }
  for (qxGraphLine& line : qx::linesOf(*pane)) line.chart = renumbered(line.chart, chart, heir);
  for (qxGraphShape& shape : qx::shapesOf(*pane)) {
    shape.chart = renumbered(shape.chart, chart, heir);
  }
  const int32_t axisHeir = std::max(heir, 0);
  pane->axischart = renumbered(pane->axischart, chart, axisHeir);
  pane->axischart2 = renumbered(pane->axischart2, chart, axisHeir);
  return QX_SUCCESS;
}

int32_t qxGraphLineAdd(qxGraph* graph, int32_t subwin, int32_t line, int32_t chart, double price,
                       int32_t colour, int32_t penWidth, int32_t penStyle, int32_t selected) {
  qxGraphLine* added = nullptr;
  const int32_t status = openSlot(graph, subwin, line, qx::kLines, &added);
  if (status != QX_SUCCESS) return status;
  *added = {chart, price, colour, penWidth, penStyle, selected};
  return QX_SUCCESS;
}

int32_t qxGraphLineRemove(qxGraph* graph, int32_t subwin, int32_t line) {
  return removeItem(graph, subwin, line, qx::kLines);
}

int32_t qxGraphShapeAdd(qxGraph* graph, int32_t subwin, int32_t shape, int32_t chart, int32_t kind,
                        double x1, double y1, double x2, double y2, int32_t colour,
                        int32_t penWidth, int32_t penStyle, int32_t selected) {
  qxGraphShape* added = nullptr;
  const int32_t status = openSlot(graph, subwin, shape, qx::kShapes, &added);
  if (status != QX_SUCCESS) return status;
  if (!(x2 > x1)) {
    std::swap(x1, x2);
    std::swap(y1, y2);
  }
  *added = {chart, kind, x1, y1, x2, y2, colour, penWidth, penStyle, selected};
  return QX_SUCCESS;
}

int32_t qxGraphShapeRemove(qxGraph* graph, int32_t subwin, int32_t shape) {
  return removeItem(graph, subwin, shape, qx::kShapes);
}
