// Points and elements: the pixel of a value, what lies under a pixel, and selection.
#include <algorithm>
#include <cmath>

#include "charting/figures.h"
#include "charting/geometry.h"
#include "charting/regions.h"
#include "core/numeric.h"
#include "platform/platform.h"
#include "quorvex.h"

namespace {

constexpr int32_t kOutlineWidth = 2;  // pixels of a shape's outline that can be hit

// What qxGraphGetXYpos adds up to its result.
constexpr int32_t kBarOutside = 1;
constexpr int32_t kValueOutside = 2;

// One more in the direction from `from` to `to`.
int32_t pushedOutward(int32_t from, int32_t to) {
  return qx::saturateToInt32(int64_t{to} + (to > from) - (to < from));
}

// Two pixels thick along the segment: two columns where it is vertical, else two rows.
bool onSegment(qx::Point from, qx::Point to, qx::Point point) {
  const bool vertical = from.x == to.x;
  const int32_t column = vertical ? 1 : 0;
  const int32_t row = vertical ? 0 : 1;
  to.y = pushedOutward(from.y, to.y);
  auto moved = [](qx::Point p, int32_t x, int32_t y) {
    return qx::Point{qx::saturateToInt32(int64_t{p.x} + x), qx::saturateToInt32(int64_t{p.y} + y)};
  };
  const qx::Point corners[] = {moved(from, -column, -row), moved(from, column, row),
                               moved(to, column, row), moved(to, -column, -row)};
  return qx::inPolygon(corners, point);
}

// Inside the box around both points, but not inside the same figure two pixels smaller all around.
template <typename Region>
bool onOutline(qx::Point from, qx::Point to, qx::Point point, Region inside) {
  const auto [left, right] = std::minmax({from.x, to.x});
  const auto [top, bottom] = std::minmax({from.y, to.y});
  const qxRect outer = {left, top, qx::saturateToInt32(int64_t{right} + 1),
                        qx::saturateToInt32(int64_t{bottom} + 1)};
  if (!inside(outer, point)) return false;
  const int64_t width = int64_t{outer.right} - outer.left;
  const int64_t height = int64_t{outer.bottom} - outer.top;
  if (width <= 2 * kOutlineWidth || height <= 2 * kOutlineWidth) return true;
  const qxRect inner = {outer.left + kOutlineWidth, outer.top + kOutlineWidth,
                        outer.right - kOutlineWidth, outer.bottom - kOutlineWidth};
  return !inside(inner, point);
}

bool hitsShape(const qxGraph& graph, const qxGraphSubwin& pane, const qxGraphShape& shape,
               qx::Point point) {
  qx::Point from;
  qx::Point to;
  if (!qx::shapePoints(graph, pane, shape, &from, &to)) return false;
  switch (shape.kind) {
    case QX_SHAPE_SEGMENT:
      return onSegment(from, to, point);
    case QX_SHAPE_RECTANGLE:
      return onOutline(from, to, point,
                       [](const qxRect& r, qx::Point p) { return qx::contains(r, p.x, p.y); });
    case QX_SHAPE_ELLIPSE:
      return onOutline(from, to, point, qx::inEllipse);
    default:
      return false;
  }
}

bool hitsLine(const qxGraph& graph, const qxGraphSubwin& pane, const qxGraphLine& line,
              qx::Point point) {
  int32_t y = 0;
  if (!qx::lineRow(graph, pane, line, &y)) return false;
  return point.y == y || int64_t{point.y} == int64_t{y} - 1;
}

// Only the bars whose figures can reach the point are looked at.
bool hitsChart(const qxGraph& graph, const qxGraphSubwin& pane, const qxGraphChart& chart,
               int32_t dotsPerInch, qx::Point point) {
  const qx::ChartView view = qx::viewChart(graph, pane, chart, dotsPerInch);
  if (!qx::contains(view.clip, point.x, point.y)) return false;
  const int64_t reach = int64_t{view.reach} + 1;
  const int64_t first = view.firstShown + (point.x - reach - view.left) / view.width - 1;
  const int64_t last = view.firstShown + (point.x + reach - view.left) / view.width + 1;
  // A line to a later bar may pass under the point as well, so the first bar beyond counts.
  const bool joins = qx::joinsValues(chart.style);
  int64_t previous = joins ? qx::previousDrawn(view, first - 1) : -1;
  for (int64_t bar = qx::nextDrawn(view, first); bar <= view.bars.last;
       bar = qx::nextDrawn(view, bar + 1)) {
    if (bar > last && !joins) return false;
    qx::BarFigures figures;
    qx::figuresAt(view, bar, previous, &figures);
    for (int32_t i = 0; i < figures.count; ++i) {
      if (qx::isNear(figures.items[i], view.penWidth, point)) return true;
    }
    if (bar > last) return false;
    previous = bar;
  }
  return false;
}

// Shapes are in front, then charts with the last one foremost, then lines.
void findElement(const qxGraph& graph, const qxGraphSubwin& pane, int32_t dotsPerInch,
                 qx::Point point, qxGraphInfo* result) {
  auto found = [result](int32_t kind, size_t element) {
    result->kind = kind;
    result->element = static_cast<int32_t>(element);
  };
  const auto shapes = qx::shapesOf(pane);
  for (size_t i = 0; i < shapes.size(); ++i) {
    if (hitsShape(graph, pane, shapes[i], point)) return found(QX_HIT_SHAPE, i);
  }
  const auto charts = qx::chartsOf(pane);
  for (size_t i = charts.size(); i-- > 0;) {
    if (hitsChart(graph, pane, charts[i], dotsPerInch, point)) return found(QX_HIT_CHART, i);
  }
  const auto lines = qx::linesOf(pane);
  for (size_t i = 0; i < lines.size(); ++i) {
    if (hitsLine(graph, pane, lines[i], point)) return found(QX_HIT_LINE, i);
  }
}

// The bar under x and the x of its line.
void setBar(const qxGraph& graph, int32_t x, qxGraphInfo* result) {
  const int32_t width = qx::barWidth(graph);
  double position = static_cast<double>(int64_t{x} - graph.bararea.left - 1) / width;
  // Kept: at one pixel for each bar the position is one bar less.
  if (width == 1) position -= 1.0;
  result->bar = graph.firstshown + position;
  result->x = qx::truncateToInt32(graph.bararea.left + std::floor(position) * width +
                                  qx::barInset(graph) + 1);
}

void setFirstBar(const qxGraph& graph, qxGraphInfo* result) {
  result->bar = graph.firstshown;
  result->x = qx::saturateToInt32(int64_t{graph.bararea.left} + qx::barInset(graph) + 1);
}

// The pane under y, or none; between two panes that are shown the answer is the border.
const qxGraphSubwin* findPane(const qxGraph& graph, int32_t y, qxGraphInfo* result) {
  const auto panes = qx::subwinsOf(graph);
  const qxGraphSubwin* above = nullptr;
  for (const qxGraphSubwin& pane : panes) {
    if (!qx::isShown(pane)) continue;
    const auto index = static_cast<int32_t>(&pane - panes.data());
    if (above != nullptr && y >= above->pane.bottom && y < pane.pane.top) {
      result->kind = QX_HIT_BORDER;
      result->subwin = static_cast<int32_t>(above - panes.data());
      return nullptr;
    }
    if (pane.pane.top <= y && y < pane.pane.bottom) {
      result->subwin = index;
      return &pane;
    }
    above = &pane;
  }
  return nullptr;
}

template <typename Element>
int32_t clearAll(std::span<Element> elements) {
  int32_t changed = 0;
  for (Element& element : elements) {
    if (element.selected != 0) changed = 1;
    element.selected = 0;
  }
  return changed;
}

// Marks an element that exists and is not marked yet.
template <typename Element>
int32_t mark(std::span<Element> elements, int32_t index) {
  if (index < 0 || static_cast<size_t>(index) >= elements.size()) return 0;
  Element& element = elements[static_cast<size_t>(index)];
  if (element.selected != 0) return 0;
  element.selected = 1;
  return 1;
}

}  // namespace

int32_t qxGraphGetXYpos(const qxGraph* graph, int32_t subwin, int32_t chart, int32_t bar,
                        double value, int32_t* x, int32_t* y) {
  if (graph == nullptr || x == nullptr || y == nullptr) return QX_ERR_INVALID_PARM;
  if (graph->initialised == 0 || subwin < 0 || chart < 0) return QX_ERR_INVALID_PARM;
  const auto panes = qx::subwinsOf(*graph);
  if (static_cast<size_t>(subwin) >= panes.size()) return QX_ERR_INVALID_PARM;
  const qxGraphSubwin& pane = panes[static_cast<size_t>(subwin)];
  const auto charts = qx::chartsOf(pane);
  if (static_cast<size_t>(chart) >= charts.size()) return QX_ERR_INVALID_PARM;

  const qxRect plot = qx::plotOf(*graph, pane);
  const double width = static_cast<double>(int64_t{plot.right} - plot.left);
  const int64_t slots = qx::truncateToInt64(std::floor(width / qx::barWidth(*graph))) - 1;
  const int64_t first = std::max<int64_t>(0, graph->lastshown - slots);
  const int64_t last = std::max<int64_t>(graph->lastshown, slots);
  *x = qx::barToPixel(*graph, bar, first, plot.left);
  *y = qx::valueToPixel(qx::makeScale(charts[static_cast<size_t>(chart)], plot.top, plot.bottom),
                        value);
  return (bar < first || bar > last ? kBarOutside : 0) +
         (*y < plot.top || *y > plot.bottom ? kValueOutside : 0);
}

int32_t qxGraphGetXYinfo(const qxGraph* graph, void* deviceContext, int32_t x, int32_t y,
                         qxGraphInfo* result) {
  if (result == nullptr) return QX_ERR_INVALID_PARM;
  *result = {};
  if (graph == nullptr) return QX_ERR_INVALID_PARM;
  if (graph->initialised == 0 || !qx::contains(graph->area, x, y)) return 0;

  if (qx::contains(graph->valuearea, x, y)) {
    setFirstBar(*graph, result);
  } else {
    if (qx::contains(graph->headerarea, x, y)) result->kind = QX_HIT_HEADER;
    if (qx::contains(graph->footerarea, x, y)) result->kind = QX_HIT_FOOTER;
    if (qx::contains(graph->datearea, x, y)) result->kind = QX_HIT_DATES;
    if (qx::contains(graph->bararea, x, y)) result->kind = QX_HIT_BARS;
    if (result->kind == QX_HIT_NOTHING) setFirstBar(*graph, result);
    if (result->kind == QX_HIT_DATES || result->kind == QX_HIT_BARS) setBar(*graph, x, result);
    if (result->kind != QX_HIT_BARS) return 0;
  }

  const qxGraphSubwin* pane = findPane(*graph, y, result);
  if (pane == nullptr) return 0;
  if (pane->titleshown != 0 && y < qx::plotOf(*graph, *pane).top) {
    result->kind = QX_HIT_TITLE;
    return 0;
  }
  findElement(*graph, *pane, qx::dotsPerInch(deviceContext), {x, y}, result);
  return 0;
}

int32_t qxGraphSelectObject(qxGraph* graph, int32_t subwin, int32_t index, int32_t kind,
                            int32_t keep) {
  if (graph == nullptr || graph->initialised == 0) return 0;
  const auto panes = qx::subwinsOf(*graph);
  int32_t changed = 0;
  if (keep == 0) {
    for (const qxGraphSubwin& pane : panes) {
      changed |= clearAll(qx::chartsOf(pane));
      changed |= clearAll(qx::shapesOf(pane));
      changed |= clearAll(qx::linesOf(pane));
    }
  }
  if (subwin < 0 || static_cast<size_t>(subwin) >= panes.size()) return changed;
  const qxGraphSubwin& pane = panes[static_cast<size_t>(subwin)];
  if (kind == QX_HIT_CHART) changed |= mark(qx::chartsOf(pane), index);
  if (kind == QX_HIT_LINE) changed |= mark(qx::linesOf(pane), index);
  if (kind == QX_HIT_SHAPE) changed |= mark(qx::shapesOf(pane), index);
  return changed;
}
