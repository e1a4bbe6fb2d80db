// Where values, bars, panes and shapes lie on the device: what painting and hit-testing share.
#include "charting/geometry.h"

#include <algorithm>
#include <cmath>

#include "charting/graph_arrays.h"
#include "core/indicator_frame.h"
#include "core/numeric.h"

namespace qx {
namespace {

constexpr int32_t kMaxInset = 10;

double logarithm(double value) {
  return value == 0.0 ? 0.0 : std::log10(value);
}

bool hasSpan(double low, double high) {
  return high != low && std::isfinite(high - low);
}

}  // namespace

std::span<qxGraphSubwin> subwinsOf(const qxGraph& graph) {
  const int32_t held = std::min(graph.subwincap, graph.subwincount);
  if (graph.subwins == nullptr || held <= 0) return {};
  return {graph.subwins, static_cast<size_t>(held)};
}
std::span<qxGraphChart> chartsOf(const qxGraphSubwin& subwin) {
  return kCharts.in(subwin);
}
std::span<qxGraphLine> linesOf(const qxGraphSubwin& subwin) {
  return kLines.in(subwin);
}
std::span<qxGraphShape> shapesOf(const qxGraphSubwin& subwin) {
  return kShapes.in(subwin);
}

bool isShown(const qxGraphSubwin& subwin) {
  return subwin.height != 0 && !chartsOf(subwin).empty();
}

int32_t barWidth(const qxGraph& graph) {
  return std::max(graph.barwidth, 1);
}

int32_t barInset(const qxGraph& graph) {
  return std::clamp(barWidth(graph) / 2 - 1, 1, kMaxInset);
}

qxRect plotOf(const qxGraph& graph, const qxGraphSubwin& subwin) {
  qxRect plot = subwin.pane;
  if (subwin.titleshown != 0) plot.top = saturateToInt32(int64_t{plot.top} + graph.titleheight);
  return plot;
}

int32_t barToPixel(const qxGraph& graph, double bar, int64_t first, int32_t left) {
  const double offset = (bar - static_cast<double>(first)) * barWidth(graph);
  return truncateToInt32(std::floor(offset + left + barInset(graph) + 1.5));
}

int32_t barToPixel(const qxGraph& graph, double bar) {
  return barToPixel(graph, bar, graph.firstshown, graph.bararea.left);
}

ValueScale makeScale(const qxGraphChart& chart, int32_t top, int32_t bottom) {
  ValueScale scale = {};
  scale.top = top;
  scale.bottom = bottom;
  scale.logarithmic = (chart.scaleflags & QX_SCALE_LOG) != 0;
  scale.inverted = (chart.scaleflags & QX_SCALE_INVERTED) != 0;
  double low = chart.minimum;
  double high = chart.maximum;
  scale.flat = !hasSpan(low, high);
  if (scale.flat) return scale;
  if (scale.logarithmic) {
    low = logarithm(low);
    high = logarithm(high);
    scale.flat = !hasSpan(low, high);
    if (scale.flat) return scale;
  }
  scale.low = low;
  scale.perValue = static_cast<double>(int64_t{bottom} - top - 1) / (high - low);
  return scale;
}

int32_t valueToPixel(const ValueScale& scale, double value) {
  if (scale.flat) return 0;
  if (scale.logarithmic) value = logarithm(value);
  const double rows = std::floor((value - scale.low) * scale.perValue + 0.5);
  if (std::isnan(rows)) return 0;
  // Far more rows than 32 bits hold, far fewer than would overflow below.
  constexpr double kBound = 1e15;
  const int64_t d = truncateToInt64(std::clamp(rows, -kBound, kBound));
  return saturateToInt32(scale.inverted ? scale.top + d : scale.bottom - d - 1);
}

int32_t scaleChartOf(const qxGraphSubwin& subwin, int32_t chart) {
  const auto charts = chartsOf(subwin);
  const int32_t named = charts[static_cast<size_t>(chart)].scalechart;
  return named >= 0 && static_cast<size_t>(named) < charts.size() ? named : chart;
}

bool needsBars(int32_t style) {
  return style >= QX_CHART_HLC && style <= QX_CHART_TRADES;
}

bool needsSeries(int32_t style) {
  return style >= QX_CHART_TRADES && style <= QX_CHART_STEP;
}

bool isDrawable(const qxGraphChart& chart) {
  return drawableLength(chart) > 0;
}

int32_t drawableLength(const qxGraphChart& chart) {
  const qxBars& bars = chart.bars;
  switch (chart.style) {
    case QX_CHART_HLC:
      return heldLength(bars.barsize, {&bars.high, &bars.low, &bars.close});
    case QX_CHART_OHLC:
    case QX_CHART_CANDLE:
      return heldLength(bars.barsize, {&bars.open, &bars.high, &bars.low, &bars.close});
    case QX_CHART_TRADES:
      return heldLength(bars.barsize, {&bars.high, &bars.low, &chart.series});
    default:
      return needsSeries(chart.style) ? heldSize(chart.series) : 0;
  }
}

IndexRange shownRange(const qxGraph& graph, int64_t length) {
  return {std::max(graph.firstshown, 0), std::min<int64_t>(graph.lastshown, length - 1)};
}

bool shapePoints(const qxGraph& graph, const qxGraphSubwin& subwin, const qxGraphShape& shape,
                 Point* from, Point* to) {
  const auto charts = chartsOf(subwin);
  if (shape.chart < 0 || static_cast<size_t>(shape.chart) >= charts.size()) return false;
  const qxRect plot = plotOf(graph, subwin);
  const ValueScale scale =
      makeScale(charts[static_cast<size_t>(shape.chart)], plot.top, plot.bottom);
  *from = {barToPixel(graph, shape.x1), valueToPixel(scale, shape.y1)};
  *to = {barToPixel(graph, shape.x2), valueToPixel(scale, shape.y2)};
  return true;
}

bool lineRow(const qxGraph& graph, const qxGraphSubwin& subwin, const qxGraphLine& line,
             int32_t* y) {
  const auto charts = chartsOf(subwin);
  if (line.chart < 0 || static_cast<size_t>(line.chart) >= charts.size()) return false;
  const qxRect plot = plotOf(graph, subwin);
  *y = valueToPixel(makeScale(charts[static_cast<size_t>(line.chart)], plot.top, plot.bottom),
                    line.price);
  return true;
}

}  // namespace qx
