// Plans of small graphs, operation by operation, with rectangles and pixels worked out by hand.
#include "charting/plan.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/charting/planned_graph.h"

namespace {

using qxtest::BarSet;
using qxtest::PlannedGraph;
using qxtest::Series;
using Lines = std::vector<std::string>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Monday 1 January 2024 and the days after it.
const std::vector<qxtest::Bar> kDays = {
    {45292, 10, 30, 5, 20, 0, 0}, {45293, 30, 40, 15, 20, 0, 0}, {45294, 25, 35, 20, 25, 0, 0}};

// Bars are 10 pixels wide, so bar i stands at 8 + 10 i; value v stands at row 96 - v.
struct SmallGraph : PlannedGraph {
  BarSet bars{kDays};
  Series values{10, 0, 40};
  SmallGraph() { graph.barwidth = 10; }
};

TEST(Plan, CandlesAndAnAverage) {
  SmallGraph small;
  small.add(0, QX_CHART_CANDLE, nullptr, small.bars);
  small.add(0, QX_CHART_LINE, small.values, nullptr).penwidth = 2;
  const Lines expected = {
      "fill 0,0,120,100 fill FFFFFF",    "frame 2,2,118,98",
      "fill 3,3,117,97 fill EEEEEE",     "clip 3,3,117,97",
      "line 8,66 8,91 pen 0/1/000000",   "rectangle 4,76,13,87 pen 0/1/000000 fill FFFFFF",
      "line 18,56 18,81 pen 0/1/000000", "rectangle 14,66,23,77 pen 0/1/000000 fill 000000",
      "line 28,61 28,76 pen 0/1/000000", "line 24,71 32,71 pen 0/1/000000",
      "line 8,86 28,56 pen 0/2/000000",  "unclip",
  };
  EXPECT_EQ(small.plan(), expected);
  EXPECT_EQ(qxtest::text(small.graph.bararea), "3,3,117,97");
  EXPECT_EQ(qxtest::text(small.pane(0).pane), "3,3,117,97");
}

TEST(Plan, InkFollowsTheStyle) {
  const struct {
    int32_t style, width, pattern;
    const char* first;
  } cases[] = {
      {QX_CHART_LINE, 1, QX_PEN_DOT, "line 8,86 28,56 pen 2/1/000000"},
      {QX_CHART_LINE, 2, QX_PEN_DOT, "line 8,86 28,56 pen 0/2/000000"},
      {QX_CHART_STEP, 1, QX_PEN_DASH, "line 8,86 28,86 28,56 pen 1/1/000000"},
      {QX_CHART_MARKER, 1, 0, "fill 7,85,10,88 fill 000000"},
      {QX_CHART_HISTOGRAM, 1, 0, "rectangle 4,86,13,97 pen 6/1/0000FF fill FFFFFF"},
      {QX_CHART_HISTOGRAM, 1, 65535, "rectangle 4,86,13,97 pen 6/1/0000FF fill 000000"},
      {QX_CHART_HISTOGRAM, 1, 0x8421,
       "rectangle 4,86,13,97 pen 6/1/0000FF pattern 8421 000000/FFFFFF"},
      {QX_CHART_AREA, 1, 0, "polygon 8,86 18,96 18,97 8,97 fill FFFFFF no pen"},
  };
  for (const auto& c : cases) {
    SmallGraph small;
    qxGraphChart& chart = small.add(0, c.style, small.values, nullptr);
    chart.penwidth = c.width;
    chart.penstyle = c.pattern;
    const Lines lines = small.planPane();
    ASSERT_FALSE(lines.empty()) << c.first;
    EXPECT_EQ(lines[0], c.first);
  }
}

TEST(Plan, LinesShapesAndTheirMarks) {
  SmallGraph small;
  small.add(0, QX_CHART_LINE, small.values, nullptr);
  qxGraphLineAdd(&small.graph, 0, -1, 0, 50.0, 0x112233, 1, QX_PEN_DASH, 1);
  qxGraphLineAdd(&small.graph, 0, -1, 7, 50.0, 0, 1, 0, 1);  // names a missing chart
  qxGraphShapeAdd(&small.graph, 0, -1, 0, QX_SHAPE_SEGMENT, 0, 10, 2, 40, 0x445566, 3, 0, 1);
  qxGraphShapeAdd(&small.graph, 0, -1, 0, QX_SHAPE_RECTANGLE, 1, 10, 2, 40, 0x778899, 1, 2, 0);
  qxGraphShapeAdd(&small.graph, 0, -1, 0, QX_SHAPE_ELLIPSE, 1, 10, 2, 40, 0xAABBCC, 1, 0, 0);
  const Lines expected = {
      "line 8,86 28,56 pen 0/1/000000",
      "line 3,46 116,46 pen 1/1/112233",
      "invert on",
      "rectangle 3,44,8,49 pen 0/1/FFFFFF fill FFFFFF",
      "rectangle 58,44,63,49 pen 0/1/FFFFFF fill FFFFFF",
      "rectangle 112,44,117,49 pen 0/1/FFFFFF fill FFFFFF",
      "invert off",
      "line 8,86 28,56 pen 0/3/445566",
      "invert on",
      "rectangle 6,84,11,89 pen 0/1/FFFFFF fill FFFFFF",
      "rectangle 26,54,31,59 pen 0/1/FFFFFF fill FFFFFF",
      "invert off",
      "rectangle 18,56,29,87 pen 2/1/778899 hollow",
      "ellipse 18,56,29,87 pen 0/1/AABBCC hollow",
  };
  EXPECT_EQ(small.planPane(), expected);
}

TEST(Plan, MarksOfASelectedChartStayOnTheirBars) {
  // Every fifth bar at 8 pixels a bar, and the first and the last.
  PlannedGraph planned;
  planned.graph.barwidth = 8;
  Series series(std::vector<double>(13, 50.0));
  planned.add(0, QX_CHART_LINE, series, nullptr).selected = 1;
  const auto marks = [&] {
    int count = 0;
    std::string last;
    for (const std::string& line : planned.planPane()) {
      if (line.rfind("rectangle", 0) != 0) continue;
      ++count;
      last = line;
    }
    return std::to_string(count) + " " + last;
  };
  planned.graph.firstshown = 0;
  planned.graph.lastshown = 12;
  EXPECT_EQ(marks(), "4 rectangle 101,44,106,49 pen 0/1/FFFFFF fill FFFFFF");
  planned.graph.firstshown = 2;  // bars 2, 5, 10, 12
  EXPECT_EQ(marks(), "4 rectangle 85,44,90,49 pen 0/1/FFFFFF fill FFFFFF");
}

TEST(Plan, StripsAndPanesShareTheArea) {
  PlannedGraph planned;
  BarSet bars{kDays};
  qxGraph& graph = planned.graph;
  graph.area = {10, 20, 310, 320};
  graph.headershown = graph.datesshown = graph.axisshown = 1;
  qxGraphSubwinAdd(&graph, 3);
  planned.add(0, QX_CHART_CANDLE, nullptr, bars, 0, 100);
  planned.add(1, QX_CHART_CANDLE, nullptr, bars, 0, 100);
  planned.add(3, QX_CHART_CANDLE, nullptr, bars, 0, 100);
  planned.pane(1).height = 0;   // hidden
  planned.pane(3).height = 50;  // pane 2 has no chart
  planned.pane(3).titleshown = 1;
  const Lines lines = planned.plan();
  // Strips: 10 rows of text and 3 above and below; dates: a tick of 6, the text, one more row. The
  // labels are "100" at the widest: 18 pixels, a tick of 6 and 6 around.
  EXPECT_EQ(qxtest::text(graph.headerarea), "10,20,310,36");
  EXPECT_EQ(qxtest::text(graph.footerarea), "10,304,310,320");
  EXPECT_EQ(qxtest::text(graph.datearea), "13,285,308,302");
  EXPECT_EQ(qxtest::text(graph.bararea), "13,39,277,284");
  EXPECT_EQ(qxtest::text(graph.valuearea), "278,39,308,284");
  EXPECT_EQ(qxtest::text(planned.pane(0).pane), "13,39,277,199");  // 241 rows * 100 / 150
  EXPECT_EQ(qxtest::text(planned.pane(1).pane), "0,0,0,0");
  EXPECT_EQ(qxtest::text(planned.pane(2).pane), "0,0,0,0");
  EXPECT_EQ(qxtest::text(planned.pane(3).pane), "13,203,277,284");
  EXPECT_EQ(graph.titleheight, 14);
  EXPECT_NE(std::find(lines.begin(), lines.end(), "text 15,23 'Quorvex'"), lines.end());
  // The footer names the bars whose marks stand within the 264 columns, as the date axis does: the
  // third stands at 2 * width + 10.
  const auto footerTo = [&](int32_t barWidth, const char* date) {
    graph.barwidth = barWidth;
    const Lines drawn = planned.plan();
    const std::string text = std::string("text 15,307 '2024/01/01 - ") + date + "'";
    EXPECT_EQ(std::count(drawn.begin(), drawn.end(), text), 1) << barWidth;
  };
  footerTo(4, "2024/01/03");
  footerTo(126, "2024/01/03");
  footerTo(127, "2024/01/02");
  graph.barwidth = 4;

  // In a small area footer, header and dates give way in this order, then the value axes.
  const struct {
    int32_t width, height;
    bool header, footer, dates, values;
  } cases[] = {{300, 95, true, true, true, true},   {300, 94, true, false, true, true},
               {300, 78, false, false, true, true}, {300, 79, true, false, true, true},
               {300, 63, false, false, true, true}, {300, 62, false, false, false, true},
               {76, 300, true, true, true, true},   {75, 300, true, true, true, false},
               {1, 1, false, false, false, false}};
  for (const auto& c : cases) {
    graph.area = {0, 0, c.width, c.height};
    planned.plan();
    EXPECT_EQ(!qx::isEmpty(graph.headerarea), c.header) << c.width << "x" << c.height;
    EXPECT_EQ(!qx::isEmpty(graph.footerarea), c.footer) << c.width << "x" << c.height;
    EXPECT_EQ(!qx::isEmpty(graph.datearea), c.dates) << c.width << "x" << c.height;
    EXPECT_EQ(!qx::isEmpty(graph.valuearea), c.values) << c.width << "x" << c.height;
  }
}

TEST(Plan, ScalesAreSharedPaddedAndStored) {
  PlannedGraph planned;
  qxGraph& graph = planned.graph;
  graph.area = {0, 0, 120, 106};  // a pane of 100 rows
  BarSet bars{kDays};
  Series values{-5, 60, 7, 500};
  planned.add(0, QX_CHART_CANDLE, nullptr, bars, 1, 2);
  planned.add(0, QX_CHART_LINE, values, nullptr, 3, 4);
  planned.add(0, QX_CHART_TRADES, values, bars, 5, 6);
  planned.add(0, QX_CHART_LINE, values, nullptr, 7, 8);
  const auto share = [&](int32_t minMode, int32_t maxMode, int32_t carrier) {
    for (int32_t i = 0; i < 3; ++i) planned.chart(0, i).scalechart = carrier;
    planned.chart(0, carrier).minmode = minMode;
    planned.chart(0, carrier).maxmode = maxMode;
    planned.chart(0, carrier).minimum = 1;
    planned.chart(0, carrier).maximum = 2;
    graph.firstshown = 0;
    graph.lastshown = 2;
    planned.plan();
    EXPECT_EQ(planned.chart(0, 0).minimum, planned.chart(0, 2).minimum);
    EXPECT_EQ(planned.chart(0, 1).maximum, planned.chart(0, 2).maximum);
    return std::pair(planned.chart(0, 1).minimum, planned.chart(0, 1).maximum);
  };
  using Range = std::pair<double, double>;
  // The series reaches from -5 to 60 over the shown bars and to 500 beyond them. Two pixels of
  // margin for the candles' scale, one for the series'.
  EXPECT_EQ(share(1, 1, 0), Range(-5 - 0.65 * 2, 60 + 0.65 * 2));
  EXPECT_EQ(share(2, 2, 1), Range(-5 - 5.05, 500 + 5.05));
  EXPECT_EQ(share(1, 2, 1), Range(-5 - 5.05, 500 + 5.05));
  // A kept end is neither looked for nor padded.
  EXPECT_EQ(share(0, 1, 1), Range(1, 60 + 0.59));
  EXPECT_EQ(share(0, 0, 0), Range(1, 2));
  EXPECT_EQ(planned.chart(0, 3).minimum, 7);
  EXPECT_EQ(planned.chart(0, 3).maximum, 8);

  // A logarithmic minimum is not padded out of its domain; an inexistent scale chart is the chart.
  qxGraphChart& alone = planned.chart(0, 3);
  Series positive{0.01, 500, 3};
  alone.series = positive.record;
  alone.scaleflags = QX_SCALE_LOG;
  alone.minmode = alone.maxmode = QX_SCALE_WHOLE;
  alone.scalechart = 99;
  planned.plan();
  EXPECT_EQ(alone.minimum, 0.01);
  EXPECT_EQ(alone.maximum, 500 + (500 - 0.01) / 100.0);
  // Nor is a minimum of 0, such as that of a volume series with a bar without trades.
  positive.record.data[0] = 0.0;
  planned.plan();
  EXPECT_EQ(alone.minimum, 0.0);
  EXPECT_EQ(alone.maximum, 505.0);
  // Values that are no numbers leave the scale as it is.
  positive.record.data[0] = kNan;
  planned.plan();
  EXPECT_EQ(alone.maximum, 505.0);
  positive.record.data[0] = 1.0;
  positive.record.data[1] = kInfinity;
  planned.plan();
  EXPECT_EQ(alone.maximum, 505.0);
}

TEST(Plan, ValueAxisMarksItsPane) {
  PlannedGraph planned;
  Series values{10, 0, 40};
  planned.graph.axisshown = 1;
  planned.pane(0).gridwidth = 1;
  planned.pane(0).gridstyle = QX_PEN_DOT;
  planned.add(0, QX_CHART_NONE, values, nullptr, 0.0, 93.0).colour = 0x123456;
  // Marks at least 15 rows apart: steps of 25. The lowest label moves up into the pane.
  const Lines expected = {"line 94,3 94,96 pen 0/1/123456",
                          "line 3,96 92,96 pen 2/1/0000D0",
                          "line 94,96 99,96 pen 0/1/0000B0",
                          "text 114,87 '0'",
                          "line 3,71 92,71 pen 2/1/0000D0",
                          "line 94,71 99,71 pen 0/1/0000B0",
                          "text 114,66 '25'",
                          "line 3,46 92,46 pen 2/1/0000D0",
                          "line 94,46 99,46 pen 0/1/0000B0",
                          "text 114,41 '50'",
                          "line 3,21 92,21 pen 2/1/0000D0",
                          "line 94,21 99,21 pen 0/1/0000B0",
                          "text 114,16 '75'"};
  const Lines lines = planned.plan();
  ASSERT_EQ(lines.size(), expected.size() + 5);
  const Lines axis(lines.begin() + 3, lines.end() - 2);
  EXPECT_EQ(axis, expected);
}

TEST(Plan, SecondValueAxisShowsAnotherScaleOnly) {
  PlannedGraph planned;
  Series values{10, 0, 40};
  planned.graph.axisshown = planned.graph.axisshown2 = 1;
  planned.add(0, QX_CHART_NONE, values, nullptr, 0.0, 93.0);
  planned.add(0, QX_CHART_NONE, values, nullptr, 0.0, 9300.0);
  planned.plan();
  EXPECT_EQ(planned.graph.valuearea.right - planned.graph.valuearea.left, 24);
  planned.pane(0).axischart2 = 1;
  planned.plan();
  EXPECT_EQ(planned.graph.valuearea.right - planned.graph.valuearea.left, 24 + 36);
  planned.graph.axisshown = 0;
  planned.plan();
  EXPECT_EQ(planned.graph.valuearea.right - planned.graph.valuearea.left, 36);
  planned.pane(0).axischart2 = 2;  // a missing chart
  planned.plan();
  EXPECT_TRUE(qx::isEmpty(planned.graph.valuearea));
}

TEST(Plan, BadInputGivesAnEmptyPictureOrAStatus) {
  const int32_t least = std::numeric_limits<int32_t>::min();
  const int32_t most = std::numeric_limits<int32_t>::max();
  SmallGraph small;
  qxGraph& graph = small.graph;
  graph.headershown = graph.datesshown = graph.axisshown = graph.axisshown2 = graph.gridwidth = 1;
  for (int32_t style = -1; style <= 10; ++style) {
    qxGraphChart& chart = small.add(0, style, small.values, small.bars);
    chart.minmode = chart.maxmode = 1 + style % 2;
    chart.selected = 1;
  }
  qxGraphShapeAdd(&graph, 0, -1, 0, 1, kNan, kInfinity, 1e300, -1e300, 0, most, most, 1);
  qxGraphShapeAdd(&graph, 0, -1, 0, 3, -1e300, -1e300, 1e300, 1e300, 0, least, least, 1);
  small.values.record.data[1] = kNan;
  small.bars->high.data[0] = kInfinity;
  small.bars->date.data[1] = kNan;
  small.bars->date.data[2] = 1e300;

  const qxRect areas[] = {
      {0, 0, 0, 0}, {0, 0, 0, 10}, {10, 10, 5, 20}, {least, 0, most, 10}, {0, 0, most, most}};
  for (const qxRect& area : areas) {
    graph.area = area;
    qx::DrawList list;
    EXPECT_EQ(qx::planGraph(&graph, qxtest::fixedDevice(), &list), QX_ERR_INVALID_PARM);
    EXPECT_EQ(list.opCount, 0);
  }
  graph.area = {0, 0, 120, 100};
  for (const int32_t first : {least, -5, 0, 2, 3, most}) {
    for (const int32_t last : {least, -1, 0, 2, most}) {
      for (const int32_t width : {least, 0, 1, 2, 30, most}) {
        graph.firstshown = first;
        graph.lastshown = last;
        graph.barwidth = width;
        small.plan();
      }
    }
  }
  graph.firstshown = 0;
  graph.lastshown = 2;
  for (const int32_t value : {least, -1, 0, most}) {
    graph.hgap = graph.vgap = graph.ticklength = graph.gridwidth = graph.gridstyle = value;
    graph.titleheight = small.pane(0).height = small.pane(0).axischart = value;
    small.pane(0).gridwidth = small.pane(0).titleshown = value;
    small.plan();
  }
  for (const float size : {-1.0F, 0.0F, 1e30F, std::numeric_limits<float>::quiet_NaN()}) {
    graph.axissize = graph.titlesize = graph.headersize = graph.footersize = size;
    small.plan();
  }
}

TEST(Plan, CostFollowsWhatIsShown) {
  const auto count = [](int32_t loaded) {
    std::vector<qxtest::Bar> bars;
    for (int32_t i = 0; i < loaded; ++i) {
      const double close = 100 + i % 7;
      bars.push_back({45000.0 + i, close - 1, close + 2, close - 3, close, 0, 0});
    }
    BarSet set(bars);
    PlannedGraph planned;
    planned.graph.area = {0, 0, 2000, 400};
    planned.graph.barwidth = 10;
    planned.add(0, QX_CHART_CANDLE, nullptr, set).minmode = QX_SCALE_SHOWN;
    planned.graph.firstshown = 20;
    planned.graph.lastshown = loaded - 1;
    planned.plan();
    return planned.list.opCount;
  };
  EXPECT_EQ(count(300), count(30000));
}

}  // namespace
