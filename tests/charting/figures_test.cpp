// A chart is hit exactly near its figures: the search that looks at few bars against one over all.
#include "charting/figures.h"

#include <cmath>
#include <random>

#include "charting/regions.h"
#include "tests/charting/graph.h"

namespace {

using qxtest::Bar;
using qxtest::BarSet;
using qxtest::Graph;
using qxtest::Series;

qx::ChartView firstChart(Graph& graph) {
  return qx::viewChart(graph.graph, graph.pane(0), graph.chart(0, 0), 96);
}

bool nearAnyFigure(const qx::ChartView& view, qx::Point point) {
  int64_t previous = -1;
  for (int64_t bar = qx::nextDrawn(view, 0); bar <= view.bars.last;
       bar = qx::nextDrawn(view, bar + 1)) {
    qx::BarFigures figures;
    qx::figuresAt(view, bar, qx::joinsValues(view.chart->style) ? previous : -1, &figures);
    for (int32_t i = 0; i < figures.count; ++i) {
      if (qx::isNear(figures.items[i], view.penWidth, point)) return true;
    }
    previous = bar;
  }
  return false;
}

TEST(Figures, HitSearchMissesNoFigure) {
  std::mt19937 random(11);
  auto below = [&random](uint32_t n) { return static_cast<int32_t>(random() % n); };
  for (int32_t round = 0; round < 120; ++round) {
    std::vector<Bar> rows;
    std::vector<double> values;
    for (int32_t i = 0; i < 60; ++i) {
      const double close = below(50) - 10;
      const double open = below(5) == 0 ? close : below(4) == 0 ? 0.0 : below(50) - 10;
      rows.push_back({40000.0 + i, open, close + below(9), close - below(9), close, 0, 0});
      values.push_back(below(3) == 0 ? 0.0 : below(40) == 0 ? std::nan("") : below(50) - 10);
    }
    BarSet bars(rows);
    Series series(values, below(20));
    Graph graph;
    qxGraphChart& chart = graph.add(0, round % 12, series, bars, -10, 40);
    chart.scaleflags = below(4);
    chart.penwidth = below(6);
    graph->area = graph->bararea = {0, 0, 60, 50};
    graph->barwidth = 1 + below(9);
    graph.pane(0).pane = {below(8), 0, 60, 50};
    graph->firstshown = below(30) - 3;
    graph->lastshown = graph->firstshown + below(40);
    const qx::ChartView view = firstChart(graph);
    for (int32_t y = 0; y < 50; ++y) {
      for (int32_t x = graph.pane(0).pane.left; x < 60; ++x) {
        qxGraphInfo info;
        ASSERT_EQ(qxGraphGetXYinfo(graph, nullptr, x, y, &info), 0);
        ASSERT_EQ(info.kind == QX_HIT_CHART, nearAnyFigure(view, {x, y}))
            << "style " << chart.style << " at " << x << "," << y;
      }
    }
  }
}

TEST(Figures, TradesPointInTheirDirection) {
  BarSet bars = {{1, 20, 30, 10, 20, 0, 0}};
  struct Case {
    double marks;
    std::vector<std::vector<int32_t>> arrows;  // tip x, tip y, end y, pen
  };
  // Bar 0 stands on column 13 from row 19 to 39.
  const Case cases[] = {{1, {{13, 41, 49, 1}}},                   // long entry
                        {2, {{13, 17, 9, 1}}},                    // short entry
                        {4, {{13, 41, 49, 2}}},                   // exit by a buy
                        {8, {{13, 17, 9, 2}}},                    // exit by a sell
                        {5, {{13, 41, 49, 1}, {13, 51, 59, 2}}},  // reversal to long
                        {10, {{13, 17, 9, 1}, {13, 7, -1, 2}}},   // reversal to short
                        {9, {{13, 41, 49, 1}, {13, 17, 9, 2}}},   // in and out on one bar
                        {16, {}}};
  for (const Case& c : cases) {
    Series marks = {c.marks};
    Graph graph;
    graph.add(0, QX_CHART_TRADES, marks, bars, 0, 49);
    graph->bararea = graph.pane(0).pane = {10, 0, 60, 50};
    graph->barwidth = 6;
    const qx::ChartView view = firstChart(graph);
    qx::BarFigures figures = {};
    if (qx::nextDrawn(view, 0) == 0) qx::figuresAt(view, 0, -1, &figures);
    std::vector<std::vector<int32_t>> arrows;
    for (int32_t i = 0; i < figures.count; ++i) {
      const qx::Figure& f = figures.items[i];
      arrows.push_back({f.points[0].x, f.points[0].y, f.points[3].y, static_cast<int32_t>(f.pen)});
    }
    EXPECT_EQ(arrows, c.arrows) << c.marks;
  }
}

TEST(Figures, HistogramsStandOnZeroOrOnTheBottom) {
  Series series = {5, -5};
  const struct {
    double minimum;
    int32_t flags, base;
  } cases[] = {{-10, 0, 38},
               {0, 0, 48},
               {1, 0, 48},
               {-60, 0, 48},
               {-10, QX_SCALE_LOG, 48},
               {-10, QX_SCALE_INVERTED, 10}};
  for (const auto& c : cases) {
    Graph graph;
    graph.add(0, QX_CHART_HISTOGRAM, series, nullptr, c.minimum, c.minimum + 48).scaleflags =
        c.flags;
    graph.pane(0).pane = {0, 0, 60, 49};
    EXPECT_EQ(firstChart(graph).base, c.base) << c.minimum;
  }
}

TEST(Regions, PolygonsAreHalfOpenAndEvenOdd) {
  const qx::Point square[] = {{1, 1}, {4, 1}, {4, 4}, {1, 4}};
  const qx::Point bow[] = {{0, 0}, {8, 8}, {8, 0}, {0, 8}};
  const qx::Point woundTwice[] = {{0, 0}, {9, 0}, {9, 9}, {0, 9}, {0, 0}, {9, 0}, {9, 9}, {0, 9}};
  constexpr int32_t kLeast = INT32_MIN, kMost = INT32_MAX;
  const qx::Point huge[] = {{kLeast, kLeast}, {kMost, kLeast}, {kMost, kMost}, {kLeast, kMost}};
  const struct {
    std::span<const qx::Point> corners;
    qx::Point point;
    bool inside;
  } cases[] = {{square, {1, 1}, true},      {square, {3, 3}, true},  {square, {4, 3}, false},
               {square, {3, 4}, false},     {square, {0, 1}, false}, {bow, {4, 2}, false},
               {bow, {1, 4}, true},         {bow, {6, 4}, true},     {bow, {7, 1}, true},
               {woundTwice, {4, 4}, false}, {huge, {5, -5}, true}};
  for (const auto& c : cases) {
    EXPECT_EQ(qx::inPolygon(c.corners, c.point), c.inside) << c.point.x << "," << c.point.y;
  }
}

}  // namespace
