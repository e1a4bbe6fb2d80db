// Pixels of values, what lies under a pixel, and selection, on a graph laid out by hand.
#include <cmath>
#include <string>

#include "tests/charting/graph.h"

namespace {

using qxtest::BarSet;
using qxtest::Series;

// Two shown panes with a hidden one and an empty one between them. Bars are 6 pixels wide, so the
// line of bar i is at x = 13 + 6 i; in both panes the value v of a plain chart is at row 89 - v or
// 159 - v. Pane 0 has a title strip of 12 pixels.
struct Picture : qxtest::Graph {
  BarSet bars = {{1, 10, 30, 5, 20, 0, 0},
                 {2, 20, 40, 15, 20, 0, 0},
                 {3, 30, 35, 20, 25, 0, 0},
                 {4, 0, 35, 20, 25, 0, 0}};
  Series series = {5, 0, 15, 25};

  // `styles` are those of charts in pane 0.
  explicit Picture(std::initializer_list<int32_t> styles) {
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
    pane(0).pane = {10, 20, 160, 90};
    pane(0).titleshown = 1;
    pane(1).height = 0;
    pane(3).pane = {10, 92, 160, 160};
    for (const int32_t style : styles) addChart(0, style);
  }

  // A chart whose scale gives one row for each unit of value.
  qxGraphChart& addChart(int32_t subwin, int32_t style) {
    return add(subwin, style, series, bars, 0, subwin == 0 ? 57 : 67);
  }

  qxGraphInfo at(int32_t x, int32_t y) const {
    qxGraphInfo info;
    EXPECT_EQ(qxGraphGetXYinfo(&graph, nullptr, x, y, &info), 0);
    return info;
  }
  int32_t kindAt(int32_t x, int32_t y) const { return at(x, y).kind; }
};

TEST(HitTest, PositionOfAValue) {
  Picture p({QX_CHART_LINE, QX_CHART_LINE, QX_CHART_LINE});
  p.chart(0, 1).scaleflags = QX_SCALE_INVERTED;
  p.chart(0, 2).minimum = NAN;
  p.add(0, QX_CHART_LINE, p.series, p.bars, 1, 1000).scaleflags = QX_SCALE_LOG;
  struct Case {
    int32_t bar;
    double value;
    int32_t result, x, y;
  };
  int32_t x = -7, y = -7;
  const auto expectPositions = [&](int32_t chart, int32_t last, const std::vector<Case>& cases) {
    p.graph.lastshown = last;
    for (const Case& c : cases) {
      SCOPED_TRACE(testing::Message() << chart << " " << c.bar << " " << c.value);
      EXPECT_EQ(qxGraphGetXYpos(p, 0, chart, c.bar, c.value, &x, &y), c.result);
      EXPECT_EQ(x, c.x);
      EXPECT_EQ(y, c.y);
    }
  };
  // 25 slots fit; the bottom itself is not outside.
  expectPositions(0, 9, {{0, 0, 0, 13, 89}, {24, 57, 0, 157, 32}, {25, 57.5, 3, 163, 31}});
  expectPositions(0, 9, {{5, -0.5, 0, 43, 89}, {5, -1, 0, 43, 90}, {5, -2, 2, 43, 91}});
  expectPositions(0, 9, {{INT32_MAX, 1, 1, INT32_MAX, 88}, {INT32_MIN, 1, 1, INT32_MIN, 88}});
  expectPositions(0, 40, {{15, 3, 1, 7, 86}, {16, 3, 0, 13, 86}, {41, 3, 1, 163, 86}});
  expectPositions(1, 9, {{0, 0, 0, 13, 32}, {0, 57, 0, 13, 89}});
  expectPositions(2, 9, {{0, 7, 2, 13, 0}});  // no scale
  // Logarithmic: half way is floor(28.5 + 0.5) rows up; the logarithm of 0 stays 0.
  expectPositions(3, 9, {{0, 1, 0, 13, 89}, {0, std::sqrt(1000), 0, 13, 60}, {0, 1000, 0, 13, 32}});
  expectPositions(3, 9, {{0, 0, 0, 13, 89}, {0, -1, 2, 13, 0}});
  EXPECT_EQ(qxGraphGetXYpos(p, 0, 0, 0, HUGE_VAL, &x, &y), 2);
  EXPECT_LT(y, -1000000);
  EXPECT_EQ(qxGraphGetXYpos(p, 0, 0, 0, -HUGE_VAL, &x, &y), 2);
  EXPECT_GT(y, 1000000);
  x = y = -7;
  for (const int32_t bad : {-1, 4}) {
    EXPECT_EQ(qxGraphGetXYpos(p, bad, 0, 0, 0, &x, &y), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxGraphGetXYpos(p, 0, bad, 0, 0, &x, &y), QX_ERR_INVALID_PARM);
  }
  EXPECT_EQ(x + y, -14);
}

TEST(HitTest, AreasAndBars) {
  Picture p({QX_CHART_NONE});
  p.addChart(3, QX_CHART_NONE);
  p.graph.firstshown = 100;
  const struct {
    int32_t x, y, kind, subwin, snapped, bar;
  } cases[] = {{-1, 50, QX_HIT_NOTHING, 0, 0, 0},      {199, 200, QX_HIT_NOTHING, 0, 0, 0},
               {0, 0, QX_HIT_HEADER, 0, 0, 0},         {199, 19, QX_HIT_HEADER, 0, 0, 0},
               {199, 180, QX_HIT_FOOTER, 0, 0, 0},     {9, 100, QX_HIT_NOTHING, 0, 13, 100},
               {100, 179, QX_HIT_NOTHING, 0, 13, 100}, {11, 177, QX_HIT_DATES, 0, 13, 100},
               {41, 32, QX_HIT_BARS, 0, 43, 105},      {41, 89, QX_HIT_BARS, 0, 43, 105},
               {41, 20, QX_HIT_TITLE, 0, 43, 105},     {41, 31, QX_HIT_TITLE, 0, 43, 105},
               {41, 90, QX_HIT_BORDER, 0, 43, 105},    {41, 91, QX_HIT_BORDER, 0, 43, 105},
               {41, 92, QX_HIT_BARS, 3, 43, 105},      {160, 40, QX_HIT_NOTHING, 0, 13, 100},
               {160, 25, QX_HIT_TITLE, 0, 13, 100},    {160, 159, QX_HIT_NOTHING, 3, 13, 100}};
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.x << "," << c.y);
    const qxGraphInfo info = p.at(c.x, c.y);
    EXPECT_EQ(info.kind, c.kind);
    EXPECT_EQ(info.subwin, c.subwin);
    EXPECT_EQ(info.element, 0);
    EXPECT_EQ(info.x, c.snapped);
    EXPECT_EQ(info.bar, c.bar);
  }
  // Bars have fractions, also to the left of the first.
  EXPECT_TRUE(qxtest::near(p.at(40, 32).bar, 100 + 29.0 / 6));
  EXPECT_EQ(p.at(40, 32).x, 37);
  EXPECT_TRUE(qxtest::near(p.at(10, 160).bar, 100 - 1.0 / 6));
  EXPECT_EQ(p.at(10, 160).x, 7);
  // Below the last pane there is no border.
  p.pane(3).pane.bottom = 150;
  EXPECT_EQ(p.kindAt(40, 155), QX_HIT_BARS);
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
using Map = std::vector<std::string>;

Map map(const Picture& p, qxRect window, int32_t kind, int32_t element = 0) {
  Map rows;
  for (int32_t y = window.top; y < window.bottom; ++y) {
    rows.emplace_back();
    for (int32_t x = window.left; x < window.right; ++x) {
      const qxGraphInfo info = p.at(x, y);
      rows.back() += info.kind == kind && info.element == element ? '#' : '.';
    }
  }
  return rows;
}

TEST(HitTest, LinesAreTwoRowsHigh) {
  Picture p({QX_CHART_NONE});
  p.addLine(0, 5, 20);  // no such chart
  p.addLine(0, 0, 20);
  EXPECT_EQ(map(p, {10, 67, 12, 72}, QX_HIT_LINE, 1), (Map{"..", "##", "##", "..", ".."}));
  EXPECT_EQ(p.kindAt(165, 69), QX_HIT_LINE);
}

TEST(HitTest, ShapesAreHitOnTheirOutline) {
  Picture p({QX_CHART_NONE});
  const auto shape = [&p](int32_t kind, double x1, double y1, double x2, double y2, qxRect window) {
    qxGraphShapeRemove(p, 0, -1);
    p.addShape(0, kind, x1, y1, x2, y2);
    return map(p, window, QX_HIT_SHAPE);
  };
  // Columns 25 and 31, rows 39 and 45, wherever the corners were given.
  const qxRect around = {24, 38, 33, 47};
  const Map rectangle = {".........", ".#######.", ".#######.", ".##...##.", ".##...##.",
                         ".##...##.", ".#######.", ".#######.", "........."};
  EXPECT_EQ(shape(QX_SHAPE_RECTANGLE, 2, 44, 3, 50, around), rectangle);
  EXPECT_EQ(shape(QX_SHAPE_RECTANGLE, 2, 50, 3, 44, around), rectangle);
  // An elliptic region leaves out the last column and row of its box: 6 x 6 pixels less 2 x 2.
  EXPECT_EQ(shape(QX_SHAPE_ELLIPSE, 2, 44, 3, 50, around),
            (Map{".........", "...##....", "..####...", ".##..##..", ".##..##..", "..####...",
                 "...##....", ".........", "........."}));
  EXPECT_EQ(shape(QX_SHAPE_RECTANGLE, 2, 44, 2.3, 46, {25, 43, 28, 46}), Map(3, "###"))
      << "nothing is left inside";
  // Segments: two columns where vertical, else two rows; the far end reaches one row further.
  EXPECT_EQ(shape(QX_SHAPE_SEGMENT, 2, 44, 2, 46, {23, 41, 27, 47}),
            (Map{"....", "....", ".##.", ".##.", ".##.", "...."}))
      << "equal x are swapped: from row 43 down to row 45";
  EXPECT_EQ(shape(QX_SHAPE_SEGMENT, 2, 44, 3, 44, {24, 43, 33, 47}),
            (Map{".........", ".######..", ".######..", "........."}));
  EXPECT_EQ(shape(7, 2, 44, 3, 50, around), Map(9, "........."));
}

TEST(HitTest, ChartsAreHitWhereTheyAreDrawn) {
  // Bar 0: high 30, low 5, open 10, close 20; its line is column 13, rows 59 to 84.
  const struct {
    int32_t style;
    qxRect window;
    Map expected;
  } cases[] = {
      {QX_CHART_HLC,
       {9, 67, 18, 72},
       {"...###...", "...#####.", "...#####.", "...#####.", "...###..."}},
      {QX_CHART_OHLC,
       {9, 77, 18, 82},
       {"...###...", ".#####...", ".#####...", ".#####...", "...###..."}},
      {QX_CHART_CANDLE, {9, 67, 17, 71}, {"...###..", ".#######", ".#######", ".#######"}},
      {QX_CHART_CANDLE, {9, 79, 18, 83}, {".#######.", ".#######.", "...###...", "...###..."}},
      {QX_CHART_HLC, {12, 57, 15, 60}, {"...", "###", "###"}},
      {QX_CHART_MARKER, {10, 81, 16, 84}, {"......", ".#####", ".#####"}},
      {QX_CHART_MARKER, {11, 85, 17, 88}, {"#####.", "#####.", "......"}},
      {QX_CHART_HISTOGRAM, {9, 82, 18, 85}, {".........", ".#######.", ".#######."}}};
  for (const auto& c : cases) {
    EXPECT_EQ(map(Picture({c.style}), c.window, QX_HIT_CHART), c.expected) << c.style;
  }
  // A line passes over the zero of bar 1: from (13, 84) to (25, 74) to (31, 64).
  Picture p({QX_CHART_LINE});
  EXPECT_EQ(p.kindAt(19, 79), QX_HIT_CHART);
  EXPECT_EQ(p.kindAt(19, 76), QX_HIT_BARS);
  EXPECT_EQ(p.kindAt(28, 69), QX_HIT_CHART);
  EXPECT_EQ(p.kindAt(34, 64), QX_HIT_BARS);
  // Nothing is hit outside the bars in view or outside the pane.
  p.graph.lastshown = 2;
  EXPECT_EQ(p.kindAt(28, 69), QX_HIT_BARS);
  p.graph.firstshown = 2;
  EXPECT_EQ(p.kindAt(13, 74), QX_HIT_CHART);
  EXPECT_EQ(p.kindAt(19, 79), QX_HIT_BARS);
}

TEST(HitTest, ShapesComeBeforeChartsAndLinesLast) {
  Picture p({QX_CHART_HISTOGRAM, QX_CHART_HISTOGRAM});
  p.addLine(0, 0, 4);
  p.addShape(0, QX_SHAPE_RECTANGLE, 0, 0, 1, 3);
  EXPECT_EQ(p.kindAt(13, 86), QX_HIT_SHAPE);
  EXPECT_EQ(p.kindAt(13, 85), QX_HIT_CHART);
  EXPECT_EQ(p.at(13, 85).element, 1);
  EXPECT_EQ(p.kindAt(60, 85), QX_HIT_LINE);
}

TEST(HitTest, SelectionMarksOneElement) {
  Picture p({QX_CHART_LINE});
  p.addChart(3, QX_CHART_LINE);
  p.addLine(3, 0, 4);
  p.addShape(0, QX_SHAPE_SEGMENT, 0, 0, 1, 1);
  const struct {
    int32_t subwin, index, kind, keep, result, marks;
  } cases[] = {{3, 0, QX_HIT_LINE, 0, 1, 10},
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
               {0, 0, 0, 0, 0, 0}};
  for (const auto& c : cases) {
    EXPECT_EQ(qxGraphSelectObject(p, c.subwin, c.index, c.kind, c.keep), c.result);
    EXPECT_EQ(p.chart(0, 0).selected * 1000 + p.chart(3, 0).selected * 100 +
                  p.pane(3).lines[0].selected * 10 + p.pane(0).shapes[0].selected,
              c.marks);
  }
  EXPECT_EQ(qxGraphSelectObject(nullptr, 0, 0, 1, 0), 0);
}

}  // namespace
