// Plans of small graphs, operation by operation, with rectangles and pixels worked out by hand.
#include "charting/plan.h"

#include <algorithm>
#include <cmath>

#include "tests/charting/planned_graph.h"

namespace {

using qxtest::BarSet;
using qxtest::Lines;
using qxtest::PlannedGraph;
using qxtest::Series;
using qxtest::text;

// Monday 1 January 2024 and the days after it.
const std::vector<qxtest::Bar> kDays = {
    {45292, 10, 30, 5, 20, 0, 0}, {45293, 30, 40, 15, 20, 0, 0}, {45294, 25, 35, 20, 25, 0, 0}};

// Bars are 10 pixels wide, so bar i stands at 8 + 10 i; value v stands at row 96 - v.
struct SmallGraph : PlannedGraph {
  BarSet bars{kDays};
  Series values{10, 0, 40};
  SmallGraph() { graph.barwidth = 10; }
};

// The square around a point of something selected.
std::string mark(int32_t x, int32_t y) {
  return "rectangle " + text(qxRect{x - 2, y - 2, x + 3, y + 3}) + " pen FFFFFF fill FFFFFF";
}

TEST(Plan, CandlesAndAnAverage) {
  SmallGraph small;
  small.add(0, QX_CHART_CANDLE, nullptr, small.bars, 0, 93);
  small.add(0, QX_CHART_LINE, small.values, nullptr, 0, 93).penwidth = 2;
  EXPECT_EQ(small.plan(),
            (Lines{"fill 0,0,120,100 fill FFFFFF", "frame 2,2,118,98",
                   "fill 3,3,117,97 fill EEEEEE", "clip 3,3,117,97", "line 8,66 8,91 pen 0",
                   "rectangle 4,76,13,87 pen 0 fill FFFFFF", "line 18,56 18,81 pen 0",
                   "rectangle 14,66,23,77 pen 0 fill 0", "line 28,61 28,76 pen 0",
                   "line 24,71 32,71 pen 0", "line 8,86 28,56 pen 0/2/0", "unclip"}));
  EXPECT_EQ(text(small.graph.bararea), "3,3,117,97");
  EXPECT_EQ(text(small.pane(0).pane), "3,3,117,97");
}

TEST(Plan, InkFollowsTheStyle) {
  const struct {
    int32_t style, width, pattern;
    const char* first;
  } cases[] = {
      {QX_CHART_LINE, 1, QX_PEN_DOT, "line 8,86 28,56 pen 2/1/0"},
      {QX_CHART_LINE, 2, QX_PEN_DOT, "line 8,86 28,56 pen 0/2/0"},
      {QX_CHART_STEP, 1, QX_PEN_DASH, "line 8,86 28,86 28,56 pen 1/1/0"},
      {QX_CHART_MARKER, 1, 0, "fill 7,85,10,88 fill 0"},
      {QX_CHART_HISTOGRAM, 1, 0, "rectangle 4,86,13,97 pen 6/1/FF fill FFFFFF"},
      {QX_CHART_HISTOGRAM, 1, 65535, "rectangle 4,86,13,97 pen 6/1/FF fill 0"},
      {QX_CHART_HISTOGRAM, 1, 0x8421, "rectangle 4,86,13,97 pen 6/1/FF pattern 8421 0/FFFFFF"},
      {QX_CHART_AREA, 1, 0, "polygon 8,86 18,96 18,97 8,97 fill FFFFFF no pen"}};
  for (const auto& c : cases) {
    SmallGraph small;
    qxGraphChart& chart = small.add(0, c.style, small.values, nullptr, 0, 93);
    chart.penwidth = c.width;
    chart.penstyle = c.pattern;
    EXPECT_EQ(small.planPane().at(0), c.first);
  }
}

TEST(Plan, LinesShapesAndTheirMarks) {
  SmallGraph small;
  small.add(0, QX_CHART_LINE, small.values, nullptr, 0, 93);
  small.addLine(0, 0, 50, 0x112233, QX_PEN_DASH, 1);
  small.addLine(0, 7, 50, 0, QX_PEN_SOLID, 1);  // names a missing chart
  small.addShape(0, QX_SHAPE_SEGMENT, 0, 10, 2, 40, 0x445566, 3, QX_PEN_SOLID, 1);
  small.addShape(0, QX_SHAPE_RECTANGLE, 1, 10, 2, 40, 0x778899, 1, QX_PEN_DOT);
  small.addShape(0, QX_SHAPE_ELLIPSE, 1, 10, 2, 40, 0xAABBCC);
  EXPECT_EQ(small.planPane(),
            (Lines{"line 8,86 28,56 pen 0", "line 3,46 116,46 pen 1/1/112233", "invert on",
                   mark(5, 46), mark(60, 46), mark(114, 46), "invert off",
                   "line 8,86 28,56 pen 0/3/445566", "invert on", mark(8, 86), mark(28, 56),
                   "invert off", "rectangle 18,56,29,87 pen 2/1/778899 hollow",
                   "ellipse 18,56,29,87 pen AABBCC hollow"}));
}

TEST(Plan, MarksOfASelectedChartStayOnTheirBars) {
  // Every fifth bar at 8 pixels a bar, and the first and the last.
  PlannedGraph planned;
  planned.graph.barwidth = 8;
  Series series(std::vector<double>(13, 50.0));
  planned.add(0, QX_CHART_LINE, series, nullptr, 0, 93).selected = 1;
  const auto marks = [&](int32_t first) {
    planned.graph.firstshown = first;
    planned.graph.lastshown = 12;
    Lines lines = planned.planPane();
    std::erase_if(lines, [](const std::string& line) { return !line.starts_with("rectangle"); });
    return lines;
  };
  EXPECT_EQ(marks(0), (Lines{mark(7, 46), mark(47, 46), mark(87, 46), mark(103, 46)}));
  EXPECT_EQ(marks(2), (Lines{mark(7, 46), mark(31, 46), mark(71, 46), mark(87, 46)}))
      << "2, 5, 10, 12";
}

TEST(Plan, StripsAndPanesShareTheArea) {
  PlannedGraph planned;
  BarSet bars{kDays};
  qxGraph& graph = planned.graph;
  graph.area = {10, 20, 310, 320};
  graph.headershown = graph.datesshown = graph.axisshown = 1;
  qxGraphSubwinAdd(&graph, 3);
  for (const int32_t pane : {0, 1, 3}) planned.add(pane, QX_CHART_CANDLE, nullptr, bars, 0, 100);
  planned.pane(1).height = 0;   // hidden
  planned.pane(3).height = 50;  // pane 2 has no chart
  planned.pane(3).titleshown = 1;
  planned.plan();
  // Strips: 10 rows of text and 3 above and below; dates: a tick of 6, the text, one more row. The
  // labels are "100" at the widest: 18 pixels, a tick of 6 and 6 around. The panes share 241 rows.
  EXPECT_EQ((Lines{text(graph.headerarea), text(graph.footerarea), text(graph.datearea),
                   text(graph.bararea), text(graph.valuearea)}),
            (Lines{"10,20,310,36", "10,304,310,320", "13,285,308,302", "13,39,277,284",
                   "278,39,308,284"}));
  EXPECT_EQ((Lines{text(planned.pane(0).pane), text(planned.pane(1).pane),
                   text(planned.pane(2).pane), text(planned.pane(3).pane)}),
            (Lines{"13,39,277,199", "0,0,0,0", "0,0,0,0", "13,203,277,284"}));
  EXPECT_EQ(graph.titleheight, 14);
  // The footer names the bars whose marks stand within the 264 columns, as the date axis does: the
  // third stands at 2 * width + 10.
  for (const int32_t width : {4, 126, 127}) {
    graph.barwidth = width;
    const Lines lines = planned.plan();
    const std::string last = width == 127 ? "2024/01/02" : "2024/01/03";
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "text 15,307 '2024/01/01 - " + last + "'"), 1);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "text 15,23 'Quorvex'"), 1);
  }
  graph.barwidth = 4;

  // In a small area footer, header and dates give way in this order, then the value axes.
  const struct {
    int32_t width, height;
    const char* shown;  // footer, header, dates, values
  } cases[] = {{300, 95, "FHDV"}, {300, 94, " HDV"}, {300, 79, " HDV"},
               {300, 78, "  DV"}, {300, 63, "  DV"}, {300, 62, "   V"},
               {76, 300, "FHDV"}, {75, 300, "FHD "}, {1, 1, "    "}};
  for (const auto& c : cases) {
    graph.area = {0, 0, c.width, c.height};
    planned.plan();
    std::string shown = "FHDV";
    if (qx::isEmpty(graph.footerarea)) shown[0] = ' ';
    if (qx::isEmpty(graph.headerarea)) shown[1] = ' ';
    if (qx::isEmpty(graph.datearea)) shown[2] = ' ';
    if (qx::isEmpty(graph.valuearea)) shown[3] = ' ';
    EXPECT_EQ(shown, c.shown) << c.width << "x" << c.height;
  }
}

TEST(Plan, ScalesAreSharedPaddedAndStored) {
  PlannedGraph planned;
  planned.graph.area = {0, 0, 120, 106};  // a pane of 100 rows
  BarSet bars{kDays};
  Series values{-5, 60, 7, 500};
  planned.add(0, QX_CHART_CANDLE, nullptr, bars, 1, 2);
  planned.add(0, QX_CHART_LINE, values, nullptr, 3, 4);
  planned.add(0, QX_CHART_TRADES, values, bars, 5, 6);
  planned.add(0, QX_CHART_LINE, values, nullptr, 7, 8);
  using Range = std::pair<double, double>;
  const auto rangeOf = [&](int32_t index) {
    return Range(planned.chart(0, index).minimum, planned.chart(0, index).maximum);
  };
  const auto share = [&](int32_t minMode, int32_t maxMode, int32_t carrier) {
    for (int32_t i = 0; i < 3; ++i) planned.chart(0, i).scalechart = carrier;
    qxGraphChart& chart = planned.chart(0, carrier);
    chart.minmode = minMode;
    chart.maxmode = maxMode;
    chart.minimum = 1;
    chart.maximum = 2;
    planned.graph.firstshown = 0;
    planned.graph.lastshown = 2;
    planned.plan();
    EXPECT_EQ(rangeOf(0), rangeOf(1));
    EXPECT_EQ(rangeOf(2), rangeOf(1));
    return rangeOf(1);
  };
  // The series reaches from -5 to 60 over the shown bars and to 500 beyond them. Two pixels of
  // margin for the candles' scale, one for the series'.
  EXPECT_EQ(share(1, 1, 0), Range(-5 - 0.65 * 2, 60 + 0.65 * 2));
  EXPECT_EQ(share(2, 2, 1), Range(-5 - 5.05, 500 + 5.05));
  EXPECT_EQ(share(1, 2, 1), Range(-5 - 5.05, 500 + 5.05));
  // A kept end is neither looked for nor padded.
  EXPECT_EQ(share(0, 1, 1), Range(1, 60 + 0.59));
  EXPECT_EQ(share(0, 0, 0), Range(1, 2));
  EXPECT_EQ(rangeOf(3), Range(7, 8));
  // A scale chart that takes another's scale still carries its own for those that name it.
  qxGraphChart& taking = planned.chart(0, 1);
  planned.chart(0, 3).scalechart = 1;
  taking.minmode = taking.maxmode = QX_SCALE_KEEP;
  taking.minimum = 3;
  taking.maximum = 4;
  EXPECT_EQ(share(1, 1, 0), Range(-5 - 0.65 * 2, 60 + 0.65 * 2));
  EXPECT_EQ(rangeOf(3), Range(3, 4));

  // A logarithmic minimum is not padded out of its domain; an inexistent scale chart is the chart.
  Series positive{0.01, 500, 3};
  qxGraphChart& alone = planned.chart(0, 3);
  alone.series = positive.record;
  alone.scaleflags = QX_SCALE_LOG;
  alone.minmode = alone.maxmode = QX_SCALE_WHOLE;
  alone.scalechart = 99;
  const auto withValues = [&](double first, double second) {
    positive.record.data[0] = first;
    positive.record.data[1] = second;
    planned.plan();
    return rangeOf(3);
  };
  EXPECT_EQ(withValues(0.01, 500), Range(0.01, 500 + (500 - 0.01) / 100.0));
  // Nor is a minimum of 0, such as that of a volume series with a bar without trades.
  EXPECT_EQ(withValues(0, 500), Range(0, 505));
  // Values that are no numbers leave their end as it is.
  EXPECT_EQ(withValues(NAN, 500), Range(0, 505));
  EXPECT_EQ(withValues(1, INFINITY), Range(1, 505));
  alone.series.firstvalid = 3;
  EXPECT_EQ(withValues(1, 2), Range(1, 505));
}

TEST(Plan, ValueAxisMarksItsPane) {
  PlannedGraph planned;
  Series values{10, 0, 40};
  planned.graph.axisshown = 1;
  planned.pane(0).gridwidth = 1;
  planned.pane(0).gridstyle = QX_PEN_DOT;
  planned.add(0, QX_CHART_NONE, values, nullptr, 0, 93).colour = 0x123456;
  const Lines lines = planned.plan();
  // Marks at least 15 rows apart: steps of 25. The lowest label moves up into the pane.
  const Lines axis = {"line 94,3 94,96 pen 123456",
                      "line 3,96 92,96 pen 2/1/D0",
                      "line 94,96 99,96 pen B0",
                      "text 114,87 '0'",
                      "line 3,71 92,71 pen 2/1/D0",
                      "line 94,71 99,71 pen B0",
                      "text 114,66 '25'",
                      "line 3,46 92,46 pen 2/1/D0",
                      "line 94,46 99,46 pen B0",
                      "text 114,41 '50'",
                      "line 3,21 92,21 pen 2/1/D0",
                      "line 94,21 99,21 pen B0",
                      "text 114,16 '75'"};
  ASSERT_EQ(lines.size(), axis.size() + 5);
  EXPECT_EQ(Lines(lines.begin() + 3, lines.end() - 2), axis);
}

TEST(Plan, SecondValueAxisShowsAnotherScaleOnly) {
  PlannedGraph planned;
  Series values{10, 0, 40};
  planned.add(0, QX_CHART_NONE, values, nullptr, 0, 93);
  planned.add(0, QX_CHART_NONE, values, nullptr, 0, 9300);
  planned.graph.axisshown2 = 1;
  const auto widthWith = [&](int32_t axisShown, int32_t secondChart) {
    planned.graph.axisshown = axisShown;
    planned.pane(0).axischart2 = secondChart;
    planned.plan();
    return planned.graph.valuearea.right - planned.graph.valuearea.left;
  };
  EXPECT_EQ(widthWith(1, 0), 24);
  EXPECT_EQ(widthWith(1, 1), 24 + 36);
  EXPECT_EQ(widthWith(0, 1), 36);
  EXPECT_EQ(widthWith(0, 2), 0) << "a missing chart";
}

TEST(Plan, CostFollowsWhatIsShown) {
  const auto count = [](size_t loaded) {
    BarSet bars(std::vector<qxtest::Bar>(loaded, {45000, 99, 102, 97, 100, 0, 0}));
    PlannedGraph planned;
    planned.graph.area = {0, 0, 2000, 400};
    planned.graph.barwidth = 10;
    planned.add(0, QX_CHART_CANDLE, nullptr, bars, 0, 93).minmode = QX_SCALE_SHOWN;
    planned.graph.firstshown = 20;
    planned.graph.lastshown = static_cast<int32_t>(loaded) - 1;
    planned.plan();
    return planned.list.opCount;
  };
  EXPECT_EQ(count(300), count(30000));
}

}  // namespace
