// What a chart draws at each bar, as lines, rectangles and polygons.
#include "charting/figures.h"

#include <algorithm>
#include <cmath>

#include "charting/regions.h"
#include "core/numeric.h"

namespace qx {
namespace {

// Beyond this distance nothing is seen, and sums of coordinates stay far from their bounds.
constexpr int32_t kFar = 1 << 26;
constexpr int32_t kMaxPenWidth = 1024;

constexpr int32_t kArrowSizeAt96Dots = 9;
constexpr int32_t kMinArrowSize = 3;
constexpr int32_t kArrowGap = 2;  // rows between a bar and its first arrow

constexpr int32_t kNarrowBar = 3;  // below this bar width there is no room beside a bar's line

// Bits of a trade-marker series.
enum TradeMark : int64_t { kLongEntry = 1, kShortEntry = 2, kExitByBuy = 4, kExitBySell = 8 };
constexpr int64_t kAnyTrade = kLongEntry | kShortEntry | kExitByBuy | kExitBySell;

int32_t row(const ChartView& view, double value) {
  return std::clamp(valueToPixel(view.scale, value), -kFar, kFar);
}

double item(const qxArray& series, int64_t bar) {
  return series.data[bar];
}

int64_t tradesAt(const ChartView& view, int64_t bar) {
  return truncateToInt64(item(view.chart->series, bar)) & kAnyTrade;
}

bool isDrawn(const ChartView& view, int64_t bar) {
  const qxBars& bars = view.chart->bars;
  switch (view.chart->style) {
    case QX_CHART_HLC:
    case QX_CHART_OHLC:
    case QX_CHART_CANDLE:
      return std::isfinite(item(bars.high, bar)) && std::isfinite(item(bars.low, bar)) &&
             std::isfinite(item(bars.close, bar));
    case QX_CHART_TRADES:
      return tradesAt(view, bar) != 0 && std::isfinite(item(bars.high, bar)) &&
             std::isfinite(item(bars.low, bar));
    case QX_CHART_LINE:
    case QX_CHART_STEP:
      return item(view.chart->series, bar) != 0.0 && std::isfinite(item(view.chart->series, bar));
    default:
      return std::isfinite(item(view.chart->series, bar));
  }
}

bool hasOpen(const qxBars& bars, int64_t bar) {
  return item(bars.open, bar) != 0.0 && std::isfinite(item(bars.open, bar));
}

void addLine(BarFigures* figures, FigurePen pen, Point from, Point to) {
  figures->items[figures->count++] = {FigureShape::line, pen, FigureFill::none, 2, {from, to}};
}

// A rectangle around two rows, both included, and `half` columns to either side of x.
void addRectangle(BarFigures* figures, FigurePen pen, FigureFill fill, int32_t x, int32_t half,
                  int32_t row1, int32_t row2) {
  const Point leftTop = {x - half, std::min(row1, row2)};
  const Point rightBottom = {x + half + 1, std::max(row1, row2) + 1};
  figures->items[figures->count++] = {FigureShape::rectangle, pen, fill, 2, {leftTop, rightBottom}};
}

// An arrow whose tip is at `tip` and whose shaft extends downwards (1) or upwards (-1).
void addArrow(BarFigures* figures, const ChartView& view, FigurePen pen, FigureFill fill, Point tip,
              int32_t downwards) {
  const int32_t head = view.arrowSize / 2;
  const int32_t shaft = view.arrowSize / 6;
  const int32_t neck = tip.y + downwards * head;
  const int32_t end = tip.y + downwards * (view.arrowSize - 1);
  figures->items[figures->count++] = {FigureShape::polygon,
                                      pen,
                                      fill,
                                      kMaxCorners,
                                      {tip,
                                       {tip.x + head, neck},
                                       {tip.x + shaft, neck},
                                       {tip.x + shaft, end},
                                       {tip.x - shaft, end},
                                       {tip.x - shaft, neck},
                                       {tip.x - head, neck}}};
}

void barFigures(const ChartView& view, int64_t bar, int32_t x, BarFigures* figures) {
  const qxBars& bars = view.chart->bars;
  const double close = item(bars.close, bar);
  addLine(figures, FigurePen::main, {x, row(view, item(bars.high, bar))},
          {x, row(view, item(bars.low, bar))});
  // The tick ends where a wide pen's round end still lies within the inset.
  const int32_t tick = std::max(view.inset - (view.penWidth - 1) / 2, 0);
  const int32_t closeRow = row(view, close);
  addLine(figures, FigurePen::main, {x + tick, closeRow}, {x, closeRow});
  if (view.chart->style == QX_CHART_OHLC && view.width >= kNarrowBar && hasOpen(bars, bar)) {
    const int32_t openRow = row(view, item(bars.open, bar));
    addLine(figures, FigurePen::main, {x - tick, openRow}, {x, openRow});
  }
}

void candleFigures(const ChartView& view, int64_t bar, int32_t x, BarFigures* figures) {
  const qxBars& bars = view.chart->bars;
  addLine(figures, FigurePen::main, {x, row(view, item(bars.high, bar))},
          {x, row(view, item(bars.low, bar))});
  if (!hasOpen(bars, bar)) return;
  const double open = item(bars.open, bar);
  const double close = item(bars.close, bar);
  const int32_t closeRow = row(view, close);
  if (open == close) {
    addLine(figures, FigurePen::main, {x - view.inset, closeRow}, {x + view.inset, closeRow});
  } else {
    const FigureFill fill = close < open ? FigureFill::colour : FigureFill::colour2;
    addRectangle(figures, FigurePen::main, fill, x, view.bodyHalf, row(view, open), closeRow);
  }
}

// Buys stand below the bar and point up, sells above it and point down; entries are nearer.
void tradeFigures(const ChartView& view, int64_t bar, int32_t x, BarFigures* figures) {
  const int32_t highRow = row(view, item(view.chart->bars.high, bar));
  const int32_t lowRow = row(view, item(view.chart->bars.low, bar));
  Point below = {x, std::max(highRow, lowRow) + kArrowGap};
  Point above = {x, std::min(highRow, lowRow) - kArrowGap};
  const int64_t trades = tradesAt(view, bar);
  if ((trades & kLongEntry) != 0) {
    addArrow(figures, view, FigurePen::main, FigureFill::colour, below, 1);
    below.y += view.arrowSize + 1;
  }
  if ((trades & kExitByBuy) != 0) {
    addArrow(figures, view, FigurePen::second, FigureFill::colour2, below, 1);
  }
  if ((trades & kShortEntry) != 0) {
    addArrow(figures, view, FigurePen::main, FigureFill::colour, above, -1);
    above.y -= view.arrowSize + 1;
  }
  if ((trades & kExitBySell) != 0) {
    addArrow(figures, view, FigurePen::second, FigureFill::colour2, above, -1);
  }
}

void seriesFigures(const ChartView& view, int64_t previous, Point at, BarFigures* figures) {
  // The first value joins nothing: lines begin with a dot, areas with nothing.
  const Point from =
      previous < 0 ? at
                   : Point{barLine(view, previous), row(view, item(view.chart->series, previous))};
  switch (view.chart->style) {
    case QX_CHART_LINE:
      addLine(figures, FigurePen::main, from, at);
      break;
    case QX_CHART_MARKER:
      addRectangle(figures, FigurePen::none, FigureFill::colour, at.x, view.markerHalf,
                   at.y - view.markerHalf, at.y + view.markerHalf);
      break;
    case QX_CHART_HISTOGRAM:
      addRectangle(figures, FigurePen::third, FigureFill::pattern, at.x, view.bodyHalf, at.y,
                   view.base);
      break;
    case QX_CHART_AREA:
      if (previous < 0) break;
      figures->items[figures->count++] = {
          FigureShape::polygon,
          FigurePen::none,
          FigureFill::pattern,
          4,
          {from, at, {at.x, view.base + 1}, {from.x, view.base + 1}}};
      break;
    case QX_CHART_STEP:
      addLine(figures, FigurePen::main, from, {at.x, from.y});
      if (at.y != from.y) addLine(figures, FigurePen::main, {at.x, from.y}, at);
      break;
    default:
      break;
  }
}

int32_t reachOf(const ChartView& view) {
  switch (view.chart->style) {
    case QX_CHART_HLC:
    case QX_CHART_OHLC:
    case QX_CHART_CANDLE:
      return view.inset + view.penWidth;
    case QX_CHART_TRADES:
      return view.arrowSize / 2 + view.penWidth;
    case QX_CHART_MARKER:
      return view.markerHalf + 1;
    case QX_CHART_HISTOGRAM:
      return view.bodyHalf + 1;
    default:
      return view.penWidth;
  }
}

int32_t baseOf(const ChartView& view) {
  const bool zeroInScale = !view.scale.flat && !view.scale.logarithmic &&
                           view.chart->minimum <= 0.0 && view.chart->maximum >= 0.0;
  return zeroInScale ? row(view, 0.0) : std::clamp(view.clip.bottom, -kFar, kFar) - 1;
}

// Leaves out the bars that lie beyond the clip, except those to which a visible line leads.
void dropHidden(ChartView* view) {
  const int64_t first =
      view->firstShown + (view->clip.left - view->left - view->reach) / view->width - 1;
  const int64_t last =
      view->firstShown + (view->clip.right - view->left + view->reach) / view->width + 1;
  const IndexRange shown = view->bars;
  if (first > shown.first) {
    const int64_t joined = joinsValues(view->chart->style) ? previousDrawn(*view, first) : -1;
    view->bars.first = joined < 0 ? first : joined;
  }
  if (last < shown.last) {
    const int64_t joined = joinsValues(view->chart->style) ? nextDrawn(*view, last) : last;
    view->bars.last = std::min(joined, shown.last);
  }
}

}  // namespace

ChartView viewChart(const qxGraph& graph, const qxGraphSubwin& subwin, const qxGraphChart& chart,
                    int32_t dotsPerInch) {
  ChartView view = {};
  view.chart = &chart;
  view.clip = plotOf(graph, subwin);
  view.scale = makeScale(chart, view.clip.top, view.clip.bottom);
  view.firstShown = graph.firstshown;
  view.width = barWidth(graph);
  view.inset = barInset(graph);
  view.left = int64_t{graph.bararea.left} + view.inset + 1;
  view.bodyHalf = view.width < kNarrowBar ? 0 : view.inset;
  view.penWidth = std::clamp(chart.penwidth, 1, kMaxPenWidth);
  view.markerHalf = view.penWidth;
  const auto arrowSize =
      std::min<int64_t>(int64_t{dotsPerInch} * kArrowSizeAt96Dots / 96, kMaxPenWidth);
  view.arrowSize =
      std::max({static_cast<int32_t>(arrowSize), kMinArrowSize, view.inset + view.penWidth});
  view.reach = reachOf(view);
  view.base = baseOf(view);

  view.bars = shownRange(graph, drawableLength(chart));
  if (chart.style >= QX_CHART_LINE) {
    view.bars.first = std::max<int64_t>(view.bars.first, chart.series.firstvalid);
  }
  // On a scale without a span every value lies on row 0, and columns would fill the pane.
  const bool empty =
      view.clip.right <= view.clip.left || view.clip.bottom <= view.clip.top || view.scale.flat;
  if (empty || view.bars.last < view.bars.first) {
    view.bars = {0, -1};
  } else {
    dropHidden(&view);
  }
  return view;
}

int32_t barLine(const ChartView& view, int64_t bar) {
  const int64_t x = view.left + (bar - view.firstShown) * view.width;
  return static_cast<int32_t>(std::clamp<int64_t>(x, -kFar, kFar));
}

bool joinsValues(int32_t style) {
  return style == QX_CHART_LINE || style == QX_CHART_AREA || style == QX_CHART_STEP;
}

int64_t nextDrawn(const ChartView& view, int64_t bar) {
  bar = std::max(bar, view.bars.first);
  while (bar <= view.bars.last && !isDrawn(view, bar)) ++bar;
  return std::min(bar, view.bars.last + 1);
}

int64_t previousDrawn(const ChartView& view, int64_t bar) {
  bar = std::min(bar, view.bars.last);
  while (bar >= view.bars.first && !isDrawn(view, bar)) --bar;
  return bar < view.bars.first ? -1 : bar;
}

void figuresAt(const ChartView& view, int64_t bar, int64_t previous, BarFigures* figures) {
  figures->count = 0;
  const int32_t x = barLine(view, bar);
  switch (view.chart->style) {
    case QX_CHART_HLC:
    case QX_CHART_OHLC:
      barFigures(view, bar, x, figures);
      break;
    case QX_CHART_CANDLE:
      candleFigures(view, bar, x, figures);
      break;
    case QX_CHART_TRADES:
      tradeFigures(view, bar, x, figures);
      break;
    default:
      seriesFigures(view, previous, {x, row(view, item(view.chart->series, bar))}, figures);
      break;
  }
}

bool isNear(const Figure& figure, int32_t penWidth, Point point) {
  const double edge = (figure.pen == FigurePen::none ? 1 : penWidth) / 2.0 + 1.0;
  switch (figure.shape) {
    case FigureShape::line:
      return distanceToSegment(figure.points[0], figure.points[1], point) <= edge;
    case FigureShape::rectangle: {
      const int32_t margin = figure.pen == FigurePen::main ? 1 + penWidth / 2 : 1;
      const qxRect box = {figure.points[0].x - margin, figure.points[0].y - margin,
                          figure.points[1].x + margin, figure.points[1].y + margin};
      return contains(box, point.x, point.y);
    }
    default: {
      const std::span<const Point> corners(figure.points, static_cast<size_t>(figure.count));
      if (inPolygon(corners, point)) return true;
      for (size_t i = 0; i < corners.size(); ++i) {
        const Point next = corners[(i + 1) % corners.size()];
        if (distanceToSegment(corners[i], next, point) <= edge) return true;
      }
      return false;
    }
  }
}

}  // namespace qx
