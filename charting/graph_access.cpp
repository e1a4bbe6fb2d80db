// Whole records of panes, charts, lines and shapes, copied out of a graph and back.
#include <cstring>

#include "charting/geometry.h"
#include "charting/graph_arrays.h"
#include "quorvex.h"

namespace {

// Copies an element out; the record is cleared when there is none.
template <typename Element>
int32_t getElement(std::span<Element> elements, Element* record, int32_t index) {
  if (record == nullptr) return QX_ERR_INVALID_PARM;
  if (!qx::resolveIndex(&index, elements.size())) {
    std::memset(static_cast<void*>(record), 0, sizeof *record);
    return QX_ERR_INVALID_PARM;
  }
  *record = elements[static_cast<size_t>(index)];
  return QX_SUCCESS;
}

template <typename Element>
int32_t setElement(std::span<Element> elements, const Element* record, int32_t index) {
  if (record == nullptr) return QX_ERR_INVALID_PARM;
  if (!qx::resolveIndex(&index, elements.size())) return QX_ERR_INVALID_PARM;
  elements[static_cast<size_t>(index)] = *record;
  return QX_SUCCESS;
}

std::span<qxGraphSubwin> panesOf(const qxGraph* graph) {
  if (graph == nullptr || graph->initialised == 0) return {};
  return qx::subwinsOf(*graph);
}

// The elements of a graph's pane, none when there is no such pane.
template <typename Element>
std::span<Element> elementsOf(const qxGraph* graph, int32_t subwin,
                              const qx::PaneArray<Element>& array) {
  const auto panes = panesOf(graph);
  if (!qx::resolveIndex(&subwin, panes.size())) return {};
  return array.in(panes[static_cast<size_t>(subwin)]);
}

template <typename Element>
std::span<Element> elementsOf(const qxGraphSubwin* pane, const qx::PaneArray<Element>& array) {
  if (pane == nullptr) return {};
  return array.in(*pane);
}

}  // namespace

int32_t qxGraphGetSubwin(const qxGraph* graph, qxGraphSubwin* record, int32_t subwin) {
  return getElement(panesOf(graph), record, subwin);
}

int32_t qxGraphSetSubwin(qxGraph* graph, const qxGraphSubwin* record, int32_t subwin) {
  return setElement(panesOf(graph), record, subwin);
}

int32_t qxGraphGetChart(const qxGraph* graph, qxGraphChart* record, int32_t subwin, int32_t chart) {
  return getElement(elementsOf(graph, subwin, qx::kCharts), record, chart);
}

int32_t qxGraphGetLine(const qxGraph* graph, qxGraphLine* record, int32_t subwin, int32_t line) {
  return getElement(elementsOf(graph, subwin, qx::kLines), record, line);
}

int32_t qxGraphGetShape(const qxGraph* graph, qxGraphShape* record, int32_t subwin, int32_t shape) {
  return getElement(elementsOf(graph, subwin, qx::kShapes), record, shape);
}

int32_t qxGraphSetChart(qxGraph* graph, const qxGraphChart* record, int32_t subwin, int32_t chart) {
  return setElement(elementsOf(graph, subwin, qx::kCharts), record, chart);
}

int32_t qxGraphSetLine(qxGraph* graph, const qxGraphLine* record, int32_t subwin, int32_t line) {
  return setElement(elementsOf(graph, subwin, qx::kLines), record, line);
}

int32_t qxGraphSetShape(qxGraph* graph, const qxGraphShape* record, int32_t subwin, int32_t shape) {
  return setElement(elementsOf(graph, subwin, qx::kShapes), record, shape);
}

int32_t qxGraphSubwinGetChart(const qxGraphSubwin* subwin, qxGraphChart* record, int32_t chart) {
  return getElement(elementsOf(subwin, qx::kCharts), record, chart);
}

int32_t qxGraphSubwinSetChart(qxGraphSubwin* subwin, const qxGraphChart* record, int32_t chart) {
  return setElement(elementsOf(subwin, qx::kCharts), record, chart);
}

int32_t qxGraphSubwinGetLine(const qxGraphSubwin* subwin, qxGraphLine* record, int32_t line) {
  return getElement(elementsOf(subwin, qx::kLines), record, line);
}

int32_t qxGraphSubwinSetLine(qxGraphSubwin* subwin, const qxGraphLine* record, int32_t line) {
  return setElement(elementsOf(subwin, qx::kLines), record, line);
}

int32_t qxGraphSubwinGetShape(const qxGraphSubwin* subwin, qxGraphShape* record, int32_t shape) {
  return getElement(elementsOf(subwin, qx::kShapes), record, shape);
}

int32_t qxGraphSubwinSetShape(qxGraphSubwin* subwin, const qxGraphShape* record, int32_t shape) {
  return setElement(elementsOf(subwin, qx::kShapes), record, shape);
}
