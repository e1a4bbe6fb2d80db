// The charts of a pane: the figures of every bar in view, with the pens and brushes of the chart.
#include <algorithm>

#include "charting/clipping.h"
#include "charting/figures.h"
#include "charting/planner.h"

namespace qx {
namespace {

constexpr int32_t kSolidPattern = 65535;

// The pens and brushes of a chart.
struct ChartInk {
  Pen main, second, third;
  Brush colour, colour2, pattern;
};

bool keepsPenStyle(int32_t style) {
  return (style >= QX_CHART_HLC && style <= QX_CHART_LINE) || style == QX_CHART_STEP;
}

// The pen of a chart in one of its first two colours; wide pens are solid.
Pen chartPen(const qxGraphChart& chart, uint32_t colour) {
  if (chart.penwidth < 2 && keepsPenStyle(chart.style)) {
    return {chart.penstyle, chart.penwidth, colour};
  }
  return solidPen(colour, chart.penwidth);
}

Brush patternBrush(const qxGraphChart& chart) {
  const bool patterned = chart.style == QX_CHART_HISTOGRAM || chart.style == QX_CHART_AREA;
  if (!patterned || chart.penstyle == kSolidPattern) return solidBrush(chart.colour);
  if (chart.penstyle == 0) return solidBrush(chart.colour2);
  return {BrushKind::kPattern, chart.colour, chart.colour2, chart.penstyle};
}

ChartInk chartInk(const qxGraphChart& chart) {
  const bool unlined = chart.style == QX_CHART_MARKER || chart.style == QX_CHART_AREA;
  ChartInk ink = {};
  ink.main = unlined ? kNoPen : chartPen(chart, chart.colour);
  ink.second = chartPen(chart, chart.colour2);
  ink.third = solidPen(chart.colour3, chart.penwidth);
  if (chart.style == QX_CHART_HISTOGRAM) ink.third.style = QX_PEN_INSIDE_FRAME;
  ink.colour = solidBrush(chart.colour);
  ink.colour2 = solidBrush(chart.colour2);
  ink.pattern = patternBrush(chart);
  return ink;
}

const Pen& penOf(const ChartInk& ink, FigurePen pen) {
  switch (pen) {
    case FigurePen::main:
      return ink.main;
    case FigurePen::second:
      return ink.second;
    case FigurePen::third:
      return ink.third;
    default:
      return kNoPen;
  }
}

const Brush& brushOf(const ChartInk& ink, FigureFill fill) {
  switch (fill) {
    case FigureFill::colour:
      return ink.colour;
    case FigureFill::colour2:
      return ink.colour2;
    case FigureFill::pattern:
      return ink.pattern;
    default:
      return kNoBrush;
  }
}

// The chart being drawn, and the end of the polyline that its last line made.
struct ChartPainter {
  DrawList* list;
  ChartInk ink;
  qxRect guard;
  bool joined;  // the last operation is a polyline that ends at `end`
  Point end;
};

// Lines that continue one another become one polyline, so that dashes run on over the corners.
void planLine(ChartPainter* painter, const Figure& figure) {
  Point from = figure.points[0], to = figure.points[1];
  const Pen& pen = penOf(painter->ink, figure.pen);
  if (pen.style == QX_PEN_NULL) return;
  if (!clipSegment(painter->guard, &from, &to)) {
    painter->joined = false;
    return;
  }
  if (painter->joined && from.x == painter->end.x && from.y == painter->end.y) {
    appendPoint(painter->list, to);
  } else if (from.x == to.x && from.y == to.y) {
    addPolyline(painter->list, pen, &from, 1);
  } else {
    addLine(painter->list, pen, from, to);
  }
  painter->joined = true;
  painter->end = to;
}

void planRectangle(ChartPainter* painter, const Figure& figure) {
  const Point& a = figure.points[0];
  const Point& b = figure.points[1];
  const qxRect rect = intersection({a.x, a.y, b.x, b.y}, painter->guard);
  const Brush& brush = brushOf(painter->ink, figure.fill);
  if (figure.pen == FigurePen::none) {
    addFill(painter->list, rect, brush);
  } else {
    addRectangle(painter->list, rect, penOf(painter->ink, figure.pen), brush);
  }
  painter->joined = false;
}

void planPolygon(ChartPainter* painter, const Figure& figure) {
  Point cut[kMostCutCorners];
  const int32_t count = clipPolygon(painter->guard, figure.points, figure.count, cut);
  addPolygon(painter->list, cut, count, penOf(painter->ink, figure.pen),
             brushOf(painter->ink, figure.fill));
  painter->joined = false;
}

void planFigure(ChartPainter* painter, const Figure& figure) {
  switch (figure.shape) {
    case FigureShape::line:
      planLine(painter, figure);
      break;
    case FigureShape::rectangle:
      planRectangle(painter, figure);
      break;
    case FigureShape::polygon:
      planPolygon(painter, figure);
      break;
  }
}

}  // namespace

void planChart(Planner* planner, const qxGraphSubwin& pane, int32_t chart) {
  const qxGraph& graph = *planner->graph;
  const qxGraphChart& record = chartsOf(pane)[static_cast<size_t>(chart)];
  const ChartView view = viewChart(graph, pane, record, planner->device->dotsPerInchX);
  ChartPainter painter = {planner->list, chartInk(record), guardOf(view.clip), false, {}};
  int64_t previous = -1;
  for (int64_t bar = nextDrawn(view, 0); bar <= view.bars.last; bar = nextDrawn(view, bar + 1)) {
    BarFigures figures;
    figuresAt(view, bar, previous, &figures);
    for (int32_t i = 0; i < figures.count; ++i) planFigure(&painter, figures.items[i]);
    previous = bar;
  }
  if (record.selected != 0) planChartMarks(planner, view);
}

}  // namespace qx
