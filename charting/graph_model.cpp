// Graphs and their panes: defaults, creation, removal and order.
#include <algorithm>
#include <cstring>

#include "charting/geometry.h"
#include "charting/graph_arrays.h"
#include "charting/graph_state.h"
#include "core/memory.h"
#include "platform/platform.h"
#include "quorvex.h"

namespace {

// Windows indexes of the system colours that a new graph takes.
enum SystemColour : int32_t {
  kInactiveCaption = 3,
  kWindow = 5,
  kWindowText = 8,
  kButtonFace = 15,
  kGreyText = 17,
  kButtonText = 18,
  kInactiveCaptionText = 19
};

constexpr int32_t kDefaultHeight = 100;
constexpr char kDefaultFace[] = "Arial";
constexpr float kDefaultFontSize = 8.0f;

qx::ScaleMargins margins = {2, 1};

qx::MonthNames months = {
    {"January", "February", "March", "April", "May", "June", "July", "August", "September",
     "October", "November", "December"},
    {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"}};

void setFont(char (&face)[32], float* size) {
  std::memcpy(face, kDefaultFace, sizeof kDefaultFace);
  *size = kDefaultFontSize;
}

void setFirstPane(const qxGraph& graph, qxGraphSubwin* pane) {
  pane->height = kDefaultHeight;
  pane->background = graph.background;
  pane->gridcolour = qx::systemColour(kGreyText);
  pane->gridwidth = 1;
  pane->gridstyle = QX_PEN_DOT;
  pane->gridcolour2 = pane->gridcolour;
  pane->gridwidth2 = 1;
  pane->gridstyle2 = QX_PEN_DOT;
}

void setNextPane(const qxGraphSubwin& previous, qxGraphSubwin* pane) {
  pane->height = previous.height;
  pane->background = previous.background;
  pane->gridcolour = previous.gridcolour;
  pane->gridwidth = previous.gridwidth;
  pane->gridstyle = previous.gridstyle;
  pane->gridcolour2 = previous.gridcolour2;
  pane->gridwidth2 = previous.gridwidth2;
  pane->gridstyle2 = previous.gridstyle2;
}

void releaseArrays(const qxGraphSubwin& pane) {
  qx::release(pane.charts);
  qx::release(pane.lines);
  qx::release(pane.shapes);
}

}  // namespace

namespace qx {

const ScaleMargins& scaleMargins() {
  return margins;
}

const MonthNames& monthNames() {
  return months;
}

}  // namespace qx

void qxGraphInit(qxGraph* graph) {
  if (graph == nullptr) return;
  std::memset(graph, 0, sizeof *graph);
  graph->initialised = 1;
  graph->barwidth = 4;
  graph->background = qx::systemColour(kWindow);
  graph->fill = qx::systemColour(kButtonText);
  graph->axisshown = 1;
  graph->axisshown2 = 1;
  graph->hgap = 2;
  graph->vgap = 2;
  setFont(graph->axisface, &graph->axissize);
  graph->axiscolour = qx::systemColour(kWindowText);
  graph->ticklength = 6;
  graph->datesshown = 1;
  graph->gridwidth = 1;
  graph->gridstyle = QX_PEN_DOT;
  graph->gridcolour = qx::systemColour(kGreyText);
  setFont(graph->titleface, &graph->titlesize);
  graph->titlecolour = qx::systemColour(kWindowText);
  std::strcpy(graph->headertext, "Quorvex");
  graph->headerback = qx::systemColour(kButtonFace);
  setFont(graph->headerface, &graph->headersize);
  graph->headercolour = qx::systemColour(kButtonText);
  graph->headershown = 1;
  graph->footerback = qx::systemColour(kInactiveCaption);
  setFont(graph->footerface, &graph->footersize);
  graph->footercolour = qx::systemColour(kInactiveCaptionText);
  qx::readMonthNames(&months);
}

void qxGraphFree(qxGraph* graph) {
  if (graph == nullptr || graph->initialised == 0) return;
  for (const qxGraphSubwin& pane : qx::subwinsOf(*graph)) releaseArrays(pane);
  qx::release(graph->subwins);
  std::memset(graph, 0, sizeof *graph);
}

int32_t qxGraphSubwinAdd(qxGraph* graph, int32_t index) {
  if (graph == nullptr || index < -1) return QX_ERR_INVALID_PARM;
  if (graph->initialised == 0) qxGraphInit(graph);
  const auto count = static_cast<int32_t>(qx::subwinsOf(*graph).size());
  if (index == -1) index = count;
  if (index < count) return QX_SUCCESS;
  if (index >= qx::indexLimit<qxGraphSubwin>()) return QX_ERR_MALLOC;

  // The array grows as if the panes were added one at a time, so a jump never leaves it too short.
  const int32_t held = graph->subwins == nullptr ? 0 : std::max(graph->subwincap, 0);
  int32_t capacity = held;
  for (int32_t i = count; i <= index; ++i) {
    capacity = qx::grownCapacity(capacity, i, qx::kSubwinStep);
  }
  if (capacity > held) {
    qxGraphSubwin* grown = qx::grownArray(graph->subwins, held, capacity);
    if (grown == nullptr) return QX_ERR_MALLOC;
    graph->subwins = grown;
    graph->subwincap = capacity;
  }

  for (int32_t i = count; i <= index; ++i) {
    qxGraphSubwin* pane = &graph->subwins[i];
    std::memset(pane, 0, sizeof *pane);
    if (i == 0) {
      setFirstPane(*graph, pane);
    } else {
      setNextPane(graph->subwins[i - 1], pane);
    }
  }
  graph->subwincount = index + 1;
  return QX_SUCCESS;
}

int32_t qxGraphSubwinRemove(qxGraph* graph, int32_t index) {
  if (graph == nullptr || graph->initialised == 0) return QX_ERR_INVALID_PARM;
  const auto panes = qx::subwinsOf(*graph);
  if (!qx::resolveIndex(&index, panes.size())) return QX_ERR_INVALID_PARM;
  releaseArrays(panes[static_cast<size_t>(index)]);
  graph->subwincount = qx::removeElement(panes, index);
  return QX_SUCCESS;
}

int32_t qxGraphSubwinOrder(qxGraph* graph, int32_t from, int32_t to) {
  if (from == to) return QX_SUCCESS;
  if (graph == nullptr || graph->initialised == 0) return QX_ERR_INVALID_PARM;
  const auto panes = qx::subwinsOf(*graph);
  const auto count = static_cast<int64_t>(panes.size());
  if (from < 0 || to < 0 || from >= count || to >= count) return QX_ERR_INVALID_PARM;
  const auto first = panes.begin();
  if (from < to) {
    std::rotate(first + from, first + from + 1, first + to + 1);
  } else {
    std::rotate(first + to, first + from, first + from + 1);
  }
  return QX_SUCCESS;
}

int32_t qxGraphSetSubwinMargins(int32_t barMargin, int32_t seriesMargin) {
  margins = {barMargin, seriesMargin};
  return margins.series;
}
