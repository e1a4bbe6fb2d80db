// The value scales: extremes of the charts that share a scale, padded by the scale margins and
// stored back into their records.
#include <algorithm>
#include <cmath>
#include <limits>

#include "charting/graph_state.h"
#include "charting/planner.h"
#include "core/indicator_frame.h"

namespace qx {
namespace {

// An end for which no finite value is found stays infinite.
struct Extremes {
  double minimum = std::numeric_limits<double>::infinity();
  double maximum = -std::numeric_limits<double>::infinity();
};

bool drawsBars(int32_t style) {
  return style >= QX_CHART_HLC && style <= QX_CHART_CANDLE;
}

// The extremes of one chart over the bars that a mode asks for, cut to what the chart holds.
Extremes chartExtremes(const qxGraph& graph, const qxGraphChart& chart, int32_t mode) {
  const bool bars = drawsBars(chart.style);
  const int32_t length = bars ? heldLength(chart.bars.barsize, {&chart.bars.open, &chart.bars.high,
                                                                &chart.bars.low, &chart.bars.close})
                              : heldSize(chart.series);
  IndexRange range = {0, int64_t{length} - 1};
  if (mode == QX_SCALE_SHOWN) range = shownRange(graph, length);
  if (!bars) range.first = std::max<int64_t>(range.first, chart.series.firstvalid);
  Extremes result;
  if (range.first > range.last) return result;
  const auto from = static_cast<int32_t>(range.first), to = static_cast<int32_t>(range.last);
  double minimum = 0.0, maximum = 0.0;
  if (bars) {
    qxBarStats(&chart.bars, &minimum, &maximum, from, to);
  } else {
    qxArrayStats(&chart.series, &minimum, &maximum, nullptr, nullptr, from, to, 0);
  }
  if (std::isfinite(minimum)) result.minimum = minimum;
  if (std::isfinite(maximum)) result.maximum = maximum;
  return result;
}

// The extremes of all charts that share the scale of `carrier`.
Extremes groupExtremes(const qxGraph& graph, const qxGraphSubwin& pane, int32_t carrier,
                       int32_t mode) {
  const auto charts = chartsOf(pane);
  Extremes group;
  for (int32_t i = 0; static_cast<size_t>(i) < charts.size(); ++i) {
    const qxGraphChart& chart = charts[static_cast<size_t>(i)];
    if (chart.style == QX_CHART_TRADES || scaleChartOf(pane, i) != carrier) continue;
    const Extremes own = chartExtremes(graph, chart, mode);
    group.minimum = std::min(group.minimum, own.minimum);
    group.maximum = std::max(group.maximum, own.maximum);
  }
  return group;
}

bool isFoundMode(int32_t mode) {
  return mode == QX_SCALE_SHOWN || mode == QX_SCALE_WHOLE;
}

struct Scale {
  double minimum, maximum;
};

// The scale of a group: each side found or kept as its mode says, the found ones padded.
Scale findScale(const qxGraph& graph, const qxGraphSubwin& pane, int32_t carrier, int64_t rows) {
  const qxGraphChart& chart = chartsOf(pane)[static_cast<size_t>(carrier)];
  Scale scale = {chart.minimum, chart.maximum};
  Extremes low, high;
  if (isFoundMode(chart.minmode)) low = groupExtremes(graph, pane, carrier, chart.minmode);
  if (isFoundMode(chart.maxmode)) {
    const bool same = chart.maxmode == chart.minmode;
    high = same ? low : groupExtremes(graph, pane, carrier, chart.maxmode);
  }
  const bool lowFound = std::isfinite(low.minimum), highFound = std::isfinite(high.maximum);
  if (lowFound) scale.minimum = low.minimum;
  if (highFound) scale.maximum = high.maximum;

  const int32_t margin = drawsBars(chart.style) ? scaleMargins().bars : scaleMargins().series;
  const double perPixel = (scale.maximum - scale.minimum) / static_cast<double>(rows);
  const double padding = perPixel * margin;
  if (!std::isfinite(padding)) return scale;
  const bool logarithmic = (chart.scaleflags & QX_SCALE_LOG) != 0;
  const double padded = scale.minimum - padding;
  // Padding must not take a logarithmic scale out of its domain, to which 0 belongs.
  const bool leavesDomain = logarithmic && scale.minimum >= 0.0 && padded <= 0.0;
  if (lowFound && !leavesDomain) scale.minimum = padded;
  if (highFound) scale.maximum += padding;
  return scale;
}

}  // namespace

void planScales(Planner* planner, qxGraphSubwin* pane) {
  const qxRect plot = plotOf(*planner->graph, *pane);
  const int64_t rows = int64_t{plot.bottom} - plot.top;
  if (rows <= 0 || isCollapsed(*pane)) return;
  const auto charts = chartsOf(*pane);
  const auto count = static_cast<int32_t>(charts.size());
  if (count == 0) return;
  // Stored when all are found: a scale chart may itself take the scale of another.
  ScratchArrays<2> scales(count);
  if (scales.status != QX_SUCCESS) {
    planner->list->status = scales.status;
    return;
  }
  for (int32_t carrier = 0; carrier < count; ++carrier) {
    bool shared = false;
    for (int32_t i = 0; i < count && !shared; ++i) shared = scaleChartOf(*pane, i) == carrier;
    if (!shared) continue;
    const Scale scale = findScale(*planner->graph, *pane, carrier, rows);
    for (int32_t i = 0; i < count; ++i) {
      if (scaleChartOf(*pane, i) != carrier) continue;
      scales[0].data[i] = scale.minimum;
      scales[1].data[i] = scale.maximum;
    }
  }
  for (int32_t i = 0; i < count; ++i) {
    charts[static_cast<size_t>(i)].minimum = scales[0].data[i];
    charts[static_cast<size_t>(i)].maximum = scales[1].data[i];
  }
}

}  // namespace qx
