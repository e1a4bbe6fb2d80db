// A chart is hit exactly near its figures: the search that looks at few bars against one over all.
#include "charting/figures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "charting/regions.h"
#include "tests/support/test_support.h"

namespace {

using qxtest::Bar;
using qxtest::BarSet;
using qxtest::Series;

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
    qxGraph graph = {};
    qxGraphInit(&graph);
    graph.area = graph.bararea = {0, 0, 60, 50};
    graph.barwidth = 1 + below(9);
    const int32_t style = round % 12;
    ASSERT_EQ(qxGraphChartAdd(&graph, 0, -1, below(4), 0, 0, -10, 40, 0, series, bars, style, 0, 0,
                              0, below(6), 0, 0),
              QX_SUCCESS);
    graph.subwins[0].pane = {below(8), 0, 60, 50};
    graph.firstshown = below(30) - 3;
    graph.lastshown = graph.firstshown + below(40);
    const qxGraphSubwin& pane = graph.subwins[0];
    const qx::ChartView view = qx::viewChart(graph, pane, pane.charts[0], 96);
    for (int32_t y = 0; y < 50; ++y) {
      for (int32_t x = pane.pane.left; x < 60; ++x) {
        qxGraphInfo info;
        ASSERT_EQ(qxGraphGetXYinfo(&graph, nullptr, x, y, &info), 0);
        ASSERT_EQ(info.kind == QX_HIT_CHART, nearAnyFigure(view, {x, y}))
            << "style " << style << " at " << x << "," << y;
      }
    }
    qxGraphFree(&graph);
  }
}

TEST(Figures, TradesPointInTheirDirection) {
  BarSet bars = {{1, 20, 30, 10, 20, 0, 0}};
  struct Case {
    double marks;
    std::vector<std::vector<int32_t>> arrows;  // tip x, tip y, end y, pen
  };
  // Bar 0 stands on column 13 from row 19 to 39.
  const Case cases[] = {
      {1, {{13, 41, 49, 1}}},                   // long entry
      {2, {{13, 17, 9, 1}}},                    // short entry
      {4, {{13, 41, 49, 2}}},                   // exit by a buy
      {8, {{13, 17, 9, 2}}},                    // exit by a sell
      {5, {{13, 41, 49, 1}, {13, 51, 59, 2}}},  // reversal to long
      {10, {{13, 17, 9, 1}, {13, 7, -1, 2}}},   // reversal to short
      {9, {{13, 41, 49, 1}, {13, 17, 9, 2}}},   // in and out on one bar
      {16, {}},
  };
  for (const Case& c : cases) {
    Series marks = {c.marks};
    qxGraph graph = {};
    qxGraphInit(&graph);
    graph.bararea = {10, 0, 60, 50};
    graph.barwidth = 6;
    ASSERT_EQ(qxGraphChartAdd(&graph, 0, -1, 0, 0, 0, 0, 49, 0, marks, bars, QX_CHART_TRADES, 0, 0,
                              0, 1, 0, 0),
              QX_SUCCESS);
    graph.subwins[0].pane = {10, 0, 60, 50};
    const qx::ChartView view =
        qx::viewChart(graph, graph.subwins[0], graph.subwins[0].charts[0], 96);
    qx::BarFigures figures = {};
    if (qx::nextDrawn(view, 0) == 0) qx::figuresAt(view, 0, -1, &figures);
    std::vector<std::vector<int32_t>> arrows;
    for (int32_t i = 0; i < figures.count; ++i) {
      const qx::Figure& f = figures.items[i];
      arrows.push_back({f.points[0].x, f.points[0].y, f.points[3].y, static_cast<int32_t>(f.pen)});
    }
    EXPECT_EQ(arrows, c.arrows) << c.marks;
    qxGraphFree(&graph);
  }
}

TEST(Figures, HistogramsStandOnZeroOrOnTheBottom) {
  Series series = {5, -5};
  qxBars noBars = {};
  struct Case {
    double minimum;
    int32_t flags, base;
  };
  for (const Case& c : {Case{-10, 0, 38}, Case{0, 0, 48}, Case{1, 0, 48}, Case{-60, 0, 48},
                        Case{-10, QX_SCALE_LOG, 48}, Case{-10, QX_SCALE_INVERTED, 10}}) {
    qxGraph graph = {};
    qxGraphInit(&graph);
    ASSERT_EQ(qxGraphChartAdd(&graph, 0, -1, c.flags, 0, 0, c.minimum, c.minimum + 48, 0, series,
                              &noBars, QX_CHART_HISTOGRAM, 0, 0, 0, 1, 0, 0),
              QX_SUCCESS);
    graph.subwins[0].pane = {0, 0, 60, 49};
    EXPECT_EQ(qx::viewChart(graph, graph.subwins[0], graph.subwins[0].charts[0], 96).base, c.base)
        << c.minimum;
    qxGraphFree(&graph);
  }
}

TEST(Regions, PolygonsAreHalfOpenAndEvenOdd) {
  const qx::Point square[] = {{1, 1}, {4, 1}, {4, 4}, {1, 4}};
  const qx::Point bow[] = {{0, 0}, {8, 8}, {8, 0}, {0, 8}};
  const qx::Point star[] = {{0, 0}, {9, 0}, {9, 9}, {0, 9}, {0, 0}, {9, 0}, {9, 9}, {0, 9}};
  struct Case {
    std::span<const qx::Point> corners;
    qx::Point point;
    bool inside;
  };
  const Case cases[] = {
      {square, {1, 1}, true},  {square, {3, 3}, true},  {square, {4, 3}, false},
      {square, {3, 4}, false}, {square, {0, 1}, false}, {bow, {4, 2}, false},
      {bow, {1, 4}, true},     {bow, {6, 4}, true},     {bow, {7, 1}, true},
      {star, {4, 4}, false},  // wound twice
  };
  for (const Case& c : cases) {
    EXPECT_EQ(qx::inPolygon(c.corners, c.point), c.inside) << c.point.x << "," << c.point.y;
  }
  const int32_t far = INT32_MAX;
  const qx::Point huge[] = {{-far - 1, -far - 1}, {far, -far - 1}, {far, far}, {-far - 1, far}};
  EXPECT_TRUE(qx::inPolygon(huge, {5, -5}));
}

}  // namespace
