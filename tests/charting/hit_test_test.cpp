// Pixels of values, what lies under a pixel, and selection, on a graph laid out by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "tests/support/test_support.h"

namespace {

using qxtest::Bar;
using qxtest::BarSet;
using qxtest::Series;

// Two shown panes with a hidden one and an empty one between them. Bars are 6 pixels wide, so the
// line of bar i is at x = 13 + 6 i; in both panes the value v of a plain chart is at row 89 - v or
// 159 - v. Pane 0 has a title strip of 12 pixels.
struct Picture {
  qxGraph graph = {};
  BarSet bars;
  Series series;

  Picture()
      : bars({{1, 10, 30, 5, 20, 0, 0},
              {2, 20, 40, 15, 20, 0, 0},
              {3, 30, 35, 20, 25, 0, 0},
              {4, 0, 35, 20, 25, 0, 0}}),
        series({5, 0, 15, 25}) {
    qxGraphInit(&graph);
    graph.area = {0, 0, 200, 200};
    graph.headerarea = {0, 0, 200, 20};
    graph.footerarea = {0, 180, 200, 200};
    graph.datearea = {10, 160, 200, 178};
    graph.valuearea = {160, 20, 200, 160};
    graph.bararea = {10, 20, 160, 160};
    graph.barwidth = 6;
    graph.titleheight = 12;
    EXPECT_EQ(qxGraphSubwinAdd(&graph, 3), QX_SUCCESS);
    place(0, {10, 20, 160, 90}, 100, 1);
    place(1, {0, 0, 0, 0}, 0, 0);
    place(2, {0, 0, 0, 0}, 100, 0);
    place(3, {10, 92, 160, 160}, 100, 0);
  }
  ~Picture() { qxGraphFree(&graph); }

  void place(int32_t subwin, qxRect pane, int32_t height, int32_t title) {
    qxGraphSubwin record;
    EXPECT_EQ(qxGraphGetSubwin(&graph, &record, subwin), QX_SUCCESS);
    record.pane = pane;
    record.height = height;
    record.titleshown = title;
    EXPECT_EQ(qxGraphSetSubwin(&graph, &record, subwin), QX_SUCCESS);
  }

  // A chart whose scale gives one row for each unit of value.
  void chart(int32_t subwin, int32_t style, int32_t flags = 0, double minimum = 0.0) {
    const double rows = subwin == 0 ? 57.0 : 67.0;
    EXPECT_EQ(qxGraphChartAdd(&graph, subwin, -1, flags, 0, 0, minimum, minimum + rows, 0, series,
                              bars, style, 0, 0, 0, 1, 0, 0),
              QX_SUCCESS);
  }

  qxGraphInfo at(int32_t x, int32_t y) const {
    qxGraphInfo info;
    EXPECT_EQ(qxGraphGetXYinfo(&graph, nullptr, x, y, &info), 0);
    return info;
  }
};

TEST(HitTest, PositionOfAValue) {
  Picture p;
  p.chart(0, QX_CHART_LINE);
  p.chart(0, QX_CHART_LINE, QX_SCALE_INVERTED);
  p.chart(0, QX_CHART_LINE, 0, std::nan(""));
  EXPECT_EQ(qxGraphChartAdd(&p.graph, 0, -1, QX_SCALE_LOG, 0, 0, 1, 1000, 0, p.series, p.bars, 5, 0,
                            0, 0, 1, 0, 0),
            QX_SUCCESS);
  struct Case {
    int32_t last, chart, bar;
    double value;
    int32_t result, x, y;
  };
  const double inf = HUGE_VAL;
  const Case cases[] = {
      {9, 0, 0, 0, 0, 13, 89},
      {9, 0, 24, 57, 0, 157, 32},  // 25 slots fit
      {9, 0, 25, 57.5, 3, 163, 31},
      {9, 0, 5, -0.5, 0, 43, 89},
      {9, 0, 5, -1, 0, 43, 90},  // the bottom itself is not outside
      {9, 0, 5, -2, 2, 43, 91},
      {40, 0, 15, 3, 1, 7, 86},
      {40, 0, 16, 3, 0, 13, 86},
      {40, 0, 41, 3, 1, 163, 86},
      {9, 1, 0, 0, 0, 13, 32},
      {9, 1, 0, 57, 0, 13, 89},
      {9, 2, 0, 7, 2, 13, 0},  // no scale
      {9, 3, 0, 1, 0, 13, 89},
      {9, 3, 0, 1000, 0, 13, 32},
      {9, 3, 0, 31.622776601683793, 0, 13, 60},  // half way: floor(28.5 + 0.5) rows up
      {9, 3, 0, 0, 0, 13, 89},                   // the logarithm of 0 stays 0
      {9, 3, 0, -1, 2, 13, 0},
      {9, 0, 0, inf, 2, 13, INT32_MIN},
      {9, 0, 0, -inf, 2, 13, INT32_MAX},
      {9, 0, INT32_MAX, 1, 1, INT32_MAX, 88},
      {9, 0, INT32_MIN, 1, 1, INT32_MIN, 88},
  };
  for (const Case& c : cases) {
    p.graph.lastshown = c.last;
    int32_t x = -7, y = -7;
    const int32_t result = qxGraphGetXYpos(&p.graph, 0, c.chart, c.bar, c.value, &x, &y);
    EXPECT_EQ(result, c.result) << c.chart << " " << c.bar << " " << c.value;
    if (std::fabs(c.value) == inf) {
      EXPECT_TRUE(c.value > 0 ? y < -1000000 : y > 1000000) << y;
    } else {
      EXPECT_EQ(y, c.y) << c.chart << " " << c.bar << " " << c.value;
    }
    EXPECT_EQ(x, c.x) << c.bar;
  }
  int32_t x = -7, y = -7;
  EXPECT_EQ(qxGraphGetXYpos(&p.graph, 4, 0, 0, 0, &x, &y), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphGetXYpos(&p.graph, 0, 4, 0, 0, &x, &y), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphGetXYpos(&p.graph, -1, 0, 0, 0, &x, &y), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphGetXYpos(&p.graph, 0, -1, 0, 0, &x, &y), QX_ERR_INVALID_PARM);
  EXPECT_EQ(x + y, -14);
}

TEST(HitTest, AreasAndBars) {
  Picture p;
  p.chart(0, QX_CHART_NONE);
  p.chart(3, QX_CHART_NONE);
  p.graph.firstshown = 100;
  struct Case {
    int32_t x, y, kind, subwin, snapped;
    double bar;
  };
  const Case cases[] = {
      {-1, 50, QX_HIT_NOTHING, 0, 0, 0},
      {199, 200, QX_HIT_NOTHING, 0, 0, 0},
      {0, 0, QX_HIT_HEADER, 0, 0, 0},
      {199, 19, QX_HIT_HEADER, 0, 0, 0},
      {199, 180, QX_HIT_FOOTER, 0, 0, 0},
      {9, 100, QX_HIT_NOTHING, 0, 13, 100},
      {100, 179, QX_HIT_NOTHING, 0, 13, 100},  // between the strips
      {10, 160, QX_HIT_DATES, 0, 7, 100 - 1.0 / 6},
      {11, 177, QX_HIT_DATES, 0, 13, 100},
      {40, 32, QX_HIT_BARS, 0, 37, 100 + 29.0 / 6},
      {41, 89, QX_HIT_BARS, 0, 43, 105},
      {40, 20, QX_HIT_TITLE, 0, 37, 100 + 29.0 / 6},
      {40, 31, QX_HIT_TITLE, 0, 37, 100 + 29.0 / 6},
      {40, 90, QX_HIT_BORDER, 0, 37, 100 + 29.0 / 6},
      {40, 91, QX_HIT_BORDER, 0, 37, 100 + 29.0 / 6},
      {40, 92, QX_HIT_BARS, 3, 37, 100 + 29.0 / 6},
      {160, 40, QX_HIT_NOTHING, 0, 13, 100},  // value axis, beside pane 0
      {160, 25, QX_HIT_TITLE, 0, 13, 100},
      {160, 159, QX_HIT_NOTHING, 3, 13, 100},
  };
  for (const Case& c : cases) {
    const qxGraphInfo info = p.at(c.x, c.y);
    EXPECT_EQ(info.kind, c.kind) << c.x << "," << c.y;
    EXPECT_EQ(info.subwin, c.subwin) << c.x << "," << c.y;
    EXPECT_EQ(info.element, 0) << c.x << "," << c.y;
    EXPECT_EQ(info.x, c.snapped) << c.x << "," << c.y;
    EXPECT_TRUE(qxtest::near(info.bar, c.bar)) << c.x << "," << c.y;
  }
  // Below the last pane there is no border, and without title strip no title.
  p.place(3, {10, 92, 160, 150}, 100, 0);
  EXPECT_EQ(p.at(40, 155).kind, QX_HIT_BARS);
  p.graph.barwidth = 1;
  EXPECT_EQ(p.at(11, 60).bar, 99.0);
  EXPECT_EQ(p.at(11, 60).x, 11);
  p.graph.barwidth = -5;
  EXPECT_EQ(p.at(13, 60).bar, 101.0);
  p.graph.barwidth = 30;
  EXPECT_EQ(p.at(11, 60).x, 21);
  qxGraph none = {};
  qxGraphInfo info = {9, 9, 9, 9, 9.0, {9, 9, 9, 9}};
  EXPECT_EQ(qxGraphGetXYinfo(&none, nullptr, 0, 0, &info), 0);
  EXPECT_EQ(info.kind + info.subwin + info.x + info.reserved[3], 0);
}

// Every pixel around an element, as text: '#' where the given kind is hit.
std::vector<std::string> map(const Picture& p, qxRect window, int32_t kind, int32_t element = 0) {
  std::vector<std::string> rows;
  for (int32_t y = window.top; y < window.bottom; ++y) {
    rows.emplace_back();
    for (int32_t x = window.left; x < window.right; ++x) {
      const qxGraphInfo info = p.at(x, y);
      rows.back() += info.kind == kind && info.element == element ? '#' : '.';
    }
  }
  return rows;
}

using Map = std::vector<std::string>;

TEST(HitTest, LinesAreTwoRowsHigh) {
  Picture p;
  p.chart(0, QX_CHART_NONE);
  ASSERT_EQ(qxGraphLineAdd(&p.graph, 0, -1, 5, 20, 0, 1, 0, 0), QX_SUCCESS);  // no such chart
  ASSERT_EQ(qxGraphLineAdd(&p.graph, 0, -1, 0, 20, 0, 1, 0, 0), QX_SUCCESS);
  EXPECT_EQ(map(p, {10, 67, 12, 72}, QX_HIT_LINE, 1), (Map{"..", "##", "##", "..", ".."}));
  EXPECT_EQ(p.at(165, 69).kind, QX_HIT_LINE);
}

TEST(HitTest, ShapesAreHitOnTheirOutline) {
  Picture p;
  p.chart(0, QX_CHART_NONE);
  auto shape = [&p](int32_t kind, double x1, double y1, double x2, double y2) {
    qxGraphShapeRemove(&p.graph, 0, -1);
    EXPECT_EQ(qxGraphShapeAdd(&p.graph, 0, -1, 0, kind, x1, y1, x2, y2, 0, 1, 0, 0), QX_SUCCESS);
  };
  // Columns 25 and 31, rows 39 and 45, wherever the corners were given.
  for (bool swapped : {false, true}) {
    shape(QX_SHAPE_RECTANGLE, 2, swapped ? 50 : 44, 3, swapped ? 44 : 50);
    EXPECT_EQ(map(p, {24, 38, 33, 47}, QX_HIT_SHAPE),
              (Map{".........", ".#######.", ".#######.", ".##...##.", ".##...##.", ".##...##.",
                   ".#######.", ".#######.", "........."}));
  }
  // An elliptic region leaves out the last column and row of its box: 6 x 6 pixels less 2 x 2.
  shape(QX_SHAPE_ELLIPSE, 2, 44, 3, 50);
  EXPECT_EQ(map(p, {24, 38, 33, 47}, QX_HIT_SHAPE),
            (Map{".........", "...##....", "..####...", ".##..##..", ".##..##..", "..####...",
                 "...##....", ".........", "........."}));
  shape(QX_SHAPE_RECTANGLE, 2, 44, 2.3, 46);  // nothing is left inside
  EXPECT_EQ(map(p, {25, 43, 28, 46}, QX_HIT_SHAPE), (Map{"###", "###", "###"}));
  // Segments: two columns where vertical, else two rows; the far end reaches one row further.
  shape(QX_SHAPE_SEGMENT, 2, 44, 2, 46);
  EXPECT_EQ(map(p, {23, 41, 27, 47}, QX_HIT_SHAPE),
            (Map{"....", "....", ".##.", ".##.", ".##.", "...."}))
      << "equal x are swapped: from row 43 down to row 45";
  shape(QX_SHAPE_SEGMENT, 2, 44, 3, 44);
  EXPECT_EQ(map(p, {24, 43, 33, 47}, QX_HIT_SHAPE),
            (Map{".........", ".######..", ".######..", "........."}));
  shape(7, 2, 44, 3, 50);
  EXPECT_EQ(p.at(25, 39).kind, QX_HIT_BARS);
}

TEST(HitTest, ChartsAreHitWhereTheyAreDrawn) {
  struct Case {
    int32_t style;
    qxRect window;
    Map expected;
  };
  // Bar 0: high 30, low 5, open 10, close 20; its line is column 13, rows 59 to 84.
  const Case cases[] = {
      {QX_CHART_HLC,
       {9, 67, 18, 72},
       {"...###...", "...#####.", "...#####.", "...#####.", "...###..."}},
      {QX_CHART_OHLC,
       {9, 77, 18, 82},
       {"...###...", ".#####...", ".#####...", ".#####...", "...###..."}},
      {QX_CHART_CANDLE, {9, 67, 17, 71}, {"...###..", ".#######", ".#######", ".#######"}},
      {QX_CHART_CANDLE,
       {9, 78, 18, 84},
       {".#######.", ".#######.", ".#######.", "...###...", "...###...", "...###..."}},
      {QX_CHART_HLC, {12, 57, 15, 60}, {"...", "###", "###"}},
      {QX_CHART_MARKER,
       {10, 81, 17, 88},
       {".......", ".#####.", ".#####.", ".#####.", ".#####.", ".#####.", "......."}},
      {QX_CHART_HISTOGRAM, {9, 82, 18, 85}, {".........", ".#######.", ".#######."}},
  };
  for (const Case& c : cases) {
    Picture p;
    p.chart(0, c.style);
    EXPECT_EQ(map(p, c.window, QX_HIT_CHART), c.expected) << c.style;
  }
  // A line passes over the zero of bar 1: from (13, 84) to (25, 74) to (31, 64).
  Picture p;
  p.chart(0, QX_CHART_LINE);
  EXPECT_EQ(p.at(19, 79).kind, QX_HIT_CHART);
  EXPECT_EQ(p.at(19, 76).kind, QX_HIT_BARS);
  EXPECT_EQ(p.at(28, 69).kind, QX_HIT_CHART);
  EXPECT_EQ(p.at(34, 64).kind, QX_HIT_BARS);
  // Nothing is hit outside the bars in view or outside the pane.
  p.graph.lastshown = 2;
  EXPECT_EQ(p.at(28, 69).kind, QX_HIT_BARS);
  p.graph.firstshown = 2;
  EXPECT_EQ(p.at(13, 74).kind, QX_HIT_CHART);
  EXPECT_EQ(p.at(19, 79).kind, QX_HIT_BARS);
}

TEST(HitTest, ShapesComeBeforeChartsAndLinesLast) {
  Picture p;
  p.chart(0, QX_CHART_HISTOGRAM);
  p.chart(0, QX_CHART_HISTOGRAM);
  ASSERT_EQ(qxGraphLineAdd(&p.graph, 0, -1, 0, 4, 0, 1, 0, 0), QX_SUCCESS);
  ASSERT_EQ(qxGraphShapeAdd(&p.graph, 0, -1, 0, QX_SHAPE_RECTANGLE, 0, 0, 1, 3, 0, 1, 0, 0),
            QX_SUCCESS);
  EXPECT_EQ(p.at(13, 86).kind, QX_HIT_SHAPE);
  EXPECT_EQ(p.at(13, 85).kind, QX_HIT_CHART);
  EXPECT_EQ(p.at(13, 85).element, 1);
  EXPECT_EQ(p.at(60, 85).kind, QX_HIT_LINE);
}

TEST(HitTest, HostileNumbersAreHarmless) {
  std::mt19937 random(7);
  const int32_t numbers[] = {INT32_MIN, INT32_MIN + 1, -1000, -1, 0, 1, 2, 7, 100, INT32_MAX};
  const double values[] = {-HUGE_VAL, -1e308, -1, 0, 1e-320, 1, 50, 1e308, HUGE_VAL, std::nan("")};
  auto number = [&] { return numbers[random() % 10]; };
  auto value = [&] { return values[random() % 10]; };
  for (int32_t round = 0; round < 4000; ++round) {
    Picture p;
    for (int32_t style = 0; style < 10; ++style) p.chart(0, style, style % 4);
    p.graph.barwidth = number();
    p.graph.firstshown = number();
    p.graph.lastshown = number();
    p.graph.titleheight = number();
    p.graph.area = p.graph.bararea = {number(), number(), INT32_MAX, INT32_MAX};
    p.graph.valuearea = {};
    qxGraphSubwin& pane = p.graph.subwins[0];
    pane.pane = {number(), number(), number(), number()};
    for (int32_t i = 0; i < pane.chartcount; ++i) {
      qxGraphChart& chart = pane.charts[i];
      chart.penwidth = number();
      chart.minimum = value();
      chart.maximum = value();
      chart.series.firstvalid = number();
    }
    for (int32_t kind = 1; kind < 4; ++kind) {
      ASSERT_EQ(qxGraphShapeAdd(&p.graph, 0, -1, kind, kind, value(), value(), value(), value(), 0,
                                1, 0, 0),
                QX_SUCCESS);
    }
    ASSERT_EQ(qxGraphLineAdd(&p.graph, 0, -1, 0, value(), 0, 1, 0, 0), QX_SUCCESS);
    for (int32_t probe = 0; probe < 4; ++probe) {
      p.at(number(), number());
      int32_t x, y;
      EXPECT_GE(qxGraphGetXYpos(&p.graph, 0, probe, number(), value(), &x, &y), 0);
    }
  }
}

TEST(HitTest, SelectionMarksOneElement) {
  Picture p;
  p.chart(0, QX_CHART_LINE);
  p.chart(3, QX_CHART_LINE);
  ASSERT_EQ(qxGraphLineAdd(&p.graph, 3, -1, 0, 4, 0, 1, 0, 0), QX_SUCCESS);
  ASSERT_EQ(qxGraphShapeAdd(&p.graph, 0, -1, 0, 1, 0, 0, 1, 1, 0, 1, 0, 0), QX_SUCCESS);
  auto marks = [&p] {
    const qxGraphSubwin* panes = p.graph.subwins;
    return panes[0].charts[0].selected * 1000 + panes[3].charts[0].selected * 100 +
           panes[3].lines[0].selected * 10 + panes[0].shapes[0].selected;
  };
  struct Case {
    int32_t subwin, index, kind, keep, result, marks;
  };
  const Case cases[] = {
      {3, 0, QX_HIT_LINE, 0, 1, 10},
      {3, 0, QX_HIT_LINE, 1, 0, 10},
      {3, 0, QX_HIT_LINE, 0, 1, 10},  // cleared and marked again
      {0, 0, QX_HIT_SHAPE, 1, 1, 11},
      {0, 0, QX_HIT_CHART, 0, 1, 1000},
      {3, 0, QX_HIT_CHART, 1, 1, 1100},
      {3, 1, QX_HIT_CHART, 1, 0, 1100},
      {3, -1, QX_HIT_CHART, 1, 0, 1100},
      {-1, 0, QX_HIT_CHART, 1, 0, 1100},
      {0, 0, 4, 1, 0, 1100},
      {9, 0, QX_HIT_CHART, 0, 1, 0},
      {0, 0, 0, 0, 0, 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(qxGraphSelectObject(&p.graph, c.subwin, c.index, c.kind, c.keep), c.result);
    EXPECT_EQ(marks(), c.marks);
  }
  EXPECT_EQ(qxGraphSelectObject(nullptr, 0, 0, 1, 0), 0);
}

}  // namespace
