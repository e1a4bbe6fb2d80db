// Grid steps and labels of value axes; masks, marking and labels of date axes.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "charting/date_marks.h"
#include "charting/value_grid.h"
#include "tests/charting/planned_graph.h"

namespace {

using qxtest::BarSet;
using qxtest::PlannedGraph;
using Labels = std::vector<std::string>;

double at(int32_t year, int32_t month, int32_t day, int32_t hour = 0, int32_t minute = 0) {
  return qxYMDtoDate(year, month, day, hour, minute, 0);
}

TEST(ValueGrid, StepsAreReadable) {
  // Below 1 a step is scaled into 10..100, above 100 down to 100 at most.
  const struct {
    double raw, step;
  } cases[] = {{0, 0},      {1, 1},          {1.5, 2},       {2.5, 5},  {7, 10},
               {10, 10},    {11, 25},        {26, 50},       {51, 100}, {100, 100},
               {101, 250},  {1001, 2500},    {999, 1000},    {0.9, 1},  {0.25, 0.25},
               {0.26, 0.5}, {0.1, 0.1},      {0.011, 0.025}, {-3, 0},   {INFINITY, 0},
               {NAN, 0},    {1e-300, 1e-300}};
  for (const auto& c : cases) {
    EXPECT_NEAR(qx::gridStep(c.raw), c.step, 1e-12 * c.step) << c.raw;
  }
}

Labels labelsOf(double minimum, double maximum, int32_t rows, int32_t flags = 0,
                int32_t spacing = 20) {
  qxGraphChart chart = {};
  chart.minimum = minimum;
  chart.maximum = maximum;
  chart.scaleflags = flags;
  const qx::ValueScale scale = qx::makeScale(chart, 0, rows);
  const qx::ValueGrid grid = qx::makeGrid(scale, spacing);
  Labels labels;
  double value;
  int32_t before = -rows;
  for (bool more = qx::firstMark(grid, &value); more; more = qx::nextMark(grid, &value)) {
    char label[qx::kLabelSize];
    qx::formatMark(grid, value, label);
    labels.emplace_back(label);
    const int32_t row = qx::valueToPixel(scale, value);
    EXPECT_GE(std::abs(row - before), before == -rows ? 0 : spacing - 1) << label;
    before = row;
  }
  return labels;
}

TEST(ValueGrid, LabelsCarryTheDecimalsOfTheStep) {
  EXPECT_EQ(labelsOf(0, 100, 101), Labels({"0", "25", "50", "75", "100"}));
  EXPECT_EQ(labelsOf(-1.2, 1.2, 97), Labels({"-1.0", "-0.5", " 0.0", " 0.5", " 1.0"}));
  EXPECT_EQ(labelsOf(9.97, 10.04, 81), Labels({" 9.975", "10.000", "10.025"}));
  EXPECT_EQ(labelsOf(9.98, 10.03, 101),
            Labels({" 9.98", " 9.99", "10.00", "10.01", "10.02", "10.03"}));
  EXPECT_EQ(labelsOf(0, 3e9, 61), Labels({"0", "1000000000", "2000000000", "3000000000"}));
  // Kept scales may run downwards.
  EXPECT_EQ(labelsOf(100, 0, 101), Labels({"0", "25", "50", "75", "100"}));
  EXPECT_EQ(labelsOf(0, 2e17, 51), Labels({"0.0000e+0", "1.0000e+17", "2.0000e+17"}));
  EXPECT_EQ(labelsOf(5, 5, 100), Labels());
  EXPECT_EQ(labelsOf(NAN, 5, 100), Labels());
  EXPECT_EQ(labelsOf(-INFINITY, INFINITY, 100), Labels());
  EXPECT_EQ(labelsOf(1e300, 1.0000000000000002e300, 100).size(), 0U);
}

TEST(ValueGrid, LogarithmicScales) {
  // A narrow range in equal steps, wide ones by decades.
  EXPECT_EQ(labelsOf(100, 200, 101, QX_SCALE_LOG), Labels({"100", "150", "200"}));
  EXPECT_EQ(labelsOf(1, 1000, 301, QX_SCALE_LOG),
            Labels({"1", "2", "5", "10", "20", "50", "100", "200", "500", "1000"}));
  EXPECT_EQ(labelsOf(0.5, 20, 801, QX_SCALE_LOG),
            Labels({" 0.5", " 0.6", " 0.7", " 0.8", " 0.9", " 1.0", " 2.0", " 3.0", " 4.0", " 5.0",
                    " 6.0", " 7.0", " 8.0", " 9.0", "10.0", "20.0"}));
  EXPECT_EQ(labelsOf(1, 1e8, 101, QX_SCALE_LOG),
            Labels({"1", "100", "10000", "1000000", "100000000"}));
  EXPECT_EQ(labelsOf(-5, 100, 100, QX_SCALE_LOG), Labels());
}

TEST(DateMarks, Masks) {
  const struct {
    double previous, date;
    uint32_t mask;
  } cases[] = {
      {at(2024, 1, 2), at(2024, 1, 3), 0x1FF0},
      {at(2024, 1, 5), at(2024, 1, 8), 0x1FF8},    // Friday, Monday
      {at(2024, 1, 31), at(2024, 2, 1), 0x1FF4},   // Wednesday, Thursday
      {at(2024, 3, 28), at(2024, 4, 1), 0x1FFE},   // a quarter and a week
      {at(2023, 12, 29), at(2024, 1, 2), 0x1FFF},  // a year and a week
      {at(2023, 12, 25), at(2024, 1, 2), 0x1FF7},  // Monday, Tuesday
      {at(2023, 2, 1), at(2024, 2, 1), 0x1FF7},    // a year within one month name
      {at(2024, 1, 2, 11, 59), at(2024, 1, 2, 12, 0), 0x1FE0},
      {at(2024, 1, 2, 9, 59), at(2024, 1, 2, 10, 0), 0x1FC0},
      {at(2024, 1, 2, 10, 59), at(2024, 1, 2, 11, 0), 0x1F80},
      {at(2024, 1, 2, 10, 29), at(2024, 1, 2, 10, 30), 0x1F00},
      {at(2024, 1, 2, 10, 14), at(2024, 1, 2, 10, 15), 0x1A00},
      {at(2024, 1, 2, 10, 19), at(2024, 1, 2, 10, 20), 0x1C00},
      {at(2024, 1, 2, 10, 24), at(2024, 1, 2, 10, 25), 0x1800},
      {at(2024, 1, 2, 10, 21), at(2024, 1, 2, 10, 22), 0x1000},
      {at(2024, 1, 2, 10, 21), at(2024, 1, 2, 10, 21), 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(qx::boundaryMask(qx::splitDate(c.date), qx::splitDate(c.previous)), c.mask)
        << c.previous << " to " << c.date;
  }
}

TEST(DateMarks, MarkingFollowsTheDensity) {
  const qx::LabelWidths widths = {55, 19, 18, 37, 24};
  const struct {
    double perMinute, perDay;
    int32_t frequency;
    uint32_t grid, labels;
    int32_t level;
  } cases[] = {
      {24.1, 1, 1, 0x800, 0x1000, 1}, {24.0, 1, 1, 0x800, 0x800, 1}, {4.8, 1, 1, 0x400, 0x400, 1},
      {2.4, 1, 1, 0x200, 0x200, 1},   {1.6, 1, 1, 0x100, 0x100, 1},  {0.8, 1, 1, 0x80, 0x80, 1},
      {0.4, 1, 1, 0x40, 0x40, 1},     {0.2, 1, 1, 0, 0x20, 1},       {0.03, 1, 1, 0x10, 0, 1},
      {0.2, 1, 3, 0, 0x20, 1},  // intraday steps count before the frequency
      {0, 1, 3, 0x4, 0x8, 2},         {0, 1, 4, 0x2, 0x4, 4},        {0, 1, 5, 0x1, 0x2, 4},
      {0, 1, 6, 0x1, 0x1, 5},         {0, 18.1, 2, 0x8, 0x10, 2},    {0, 18, 2, 0x8, 0xC, 2},
      {0, 5.2, 2, 0x4, 0x4, 3},       {0, 1.8, 2, 0x4, 0x4, 4},      {0, 0.6, 2, 0x4, 0x2, 4},
      {0, 0.2, 2, 0x4, 0x1, 5},
  };
  for (const auto& c : cases) {
    const qx::DateMarking marking = qx::chooseMarking(c.perMinute, c.perDay, c.frequency, widths);
    EXPECT_EQ(marking.grid, c.grid) << c.perMinute << " " << c.perDay;
    EXPECT_EQ(marking.labels, c.labels) << c.perMinute << " " << c.perDay;
    EXPECT_EQ(marking.level, c.level) << c.perMinute << " " << c.perDay;
  }
}

TEST(DateMarks, Spacing) {
  qxtest::Series dates{at(2024, 1, 2, 9, 0), at(2024, 1, 2, 9, 10), at(2024, 1, 2, 9, 30),
                       at(2024, 1, 3, 9, 30), at(2024, 1, 3, 9, 20)};
  // The whole day and the step backwards do not count.
  EXPECT_NEAR(qx::pixelsPerMinute(dates.record, 5, 6), 6 / 15.0, 1e-6);
  EXPECT_EQ(qx::pixelsPerMinute(dates.record, 1, 6), 0.0);
  qxtest::Series days{45000, 45001, 45004, 45005, 45006};
  EXPECT_EQ(qx::pixelsPerMinute(days.record, 5, 6), 0.0);
  EXPECT_EQ(qx::pixelsPerDay(days.record, 5, 7), 5.0);
}

TEST(DateMarks, Words) {
  const struct {
    double date;
    uint32_t mask;
    int32_t level;
    const char* words;
  } cases[] = {
      {at(2024, 3, 5, 14, 5), 0x1FF0, 1, "Mar 5 2:05 "},
      {at(2024, 3, 5, 0, 0), 0x1FC0, 1, "12:00 "},
      {at(2024, 3, 5, 12, 0), 0x1FE0, 1, "12:00 "},
      {at(2024, 3, 5, 9, 5), 0x1800, 1, ":05"},
      {at(2024, 3, 5), 0x1FF4, 2, "Mar"},
      {at(2024, 3, 5), 0x1FF0, 2, "05"},
      {at(2024, 3, 5), 0x1FF7, 3, "Mar 2024"},
      {at(2024, 3, 5), 0x1FF4, 3, "March"},
      {at(2024, 3, 5), 0x1FF7, 4, "2024"},
      {at(2024, 3, 5), 0x1FF4, 4, "Mar"},
      {at(2024, 3, 5), 0x1FF7, 5, "2024"},
  };
  for (const auto& c : cases) {
    char label[qx::kDateLabelSize];
    qx::formatDateLabel(qx::splitDate(c.date), c.mask, c.level, label);
    EXPECT_STREQ(label, c.words);
  }
}

// A graph of bars at the given dates, with its date axis shown.
struct DatedGraph : PlannedGraph {
  BarSet bars;
  DatedGraph(const std::vector<double>& dates, int32_t frequency, int32_t barWidth)
      : bars([&] {
          std::vector<qxtest::Bar> set;
          for (const double date : dates) set.push_back({date, 50, 60, 40, 55, 0, 0});
          return set;
        }()) {
    bars->frequency = frequency;
    graph.area = {0, 0, 606, 200};
    graph.datesshown = graph.gridwidth = 1;
    graph.gridstyle = QX_PEN_DOT;
    graph.barwidth = barWidth;
    add(0, QX_CHART_CANDLE, nullptr, bars);
  }
  Labels labels() {
    plan();
    return textsIn(graph.datearea);
  }
};

std::vector<double> every(double first, double step, int32_t count) {
  std::vector<double> dates;
  for (int32_t i = 0; i < count; ++i) dates.push_back(first + step * i);
  return dates;
}

TEST(DateAxis, LabelsOfEverySpan) {
  // Seven bars a week at 4 pixels: " 00" needs 18, so days give way to weeks and months.
  EXPECT_EQ(DatedGraph(every(at(2024, 1, 1), 1, 30), 2, 4).labels(), Labels({"Jan 2024"}));
  EXPECT_EQ(DatedGraph(every(at(2024, 1, 1), 1, 20), 2, 8).labels(), Labels({"Jan", "08", "15"}));
  EXPECT_EQ(DatedGraph(every(at(2024, 1, 30), 1, 4), 2, 22).labels(),
            Labels({"Jan", "31", "Feb", "02"}));
  EXPECT_EQ(DatedGraph(every(at(2023, 11, 5), 1, 140), 2, 2).labels(),
            Labels({"Nov 2023", "December", "Jan 2024", "February", "March"}));
  EXPECT_EQ(DatedGraph(every(at(2023, 11, 1), 1, 140), 2, 1).labels(),
            Labels({"2023", "Dec", "2024", "Feb", "Mar"}));
  // Weekly bars on one weekday, and with one that a holiday moved: only that one begins a week.
  EXPECT_EQ(DatedGraph(every(at(2024, 1, 5), 7, 14), 3, 8).labels(),
            Labels({"Jan", "Feb", "Mar", "Apr"}));
  auto moved = every(at(2024, 1, 5), 7, 14);
  moved[12] = at(2024, 3, 28);
  EXPECT_EQ(DatedGraph(moved, 3, 20).labels(), Labels({"28"}));
  const std::vector<double> quarters = {at(2023, 6, 30), at(2023, 9, 29), at(2023, 12, 29),
                                        at(2024, 3, 29), at(2024, 6, 28)};
  EXPECT_EQ(DatedGraph(quarters, 4, 30).labels(), Labels({"2023", "Sep", "Dec", "2024", "Jun"}));
  // The months at quarters' ends begin no quarter: years alone are labelled.
  EXPECT_EQ(DatedGraph(quarters, 5, 30).labels(), Labels({"2023", "2024"}));
  EXPECT_EQ(DatedGraph(quarters, 6, 30).labels(), Labels({"2023", "2024"}));
  // Five-minute bars, 6 pixels each: half hours at 36 pixels.
  const auto day = every(at(2024, 1, 2, 9, 0) + 1e-9, 5 / 1440.0, 14);
  EXPECT_EQ(DatedGraph(day, 1, 6).labels(), Labels({"Jan 2 9:00 ", "10:00 "}));
  EXPECT_EQ(DatedGraph(every(0, 0, 0), 2, 6).labels(), Labels());
}

TEST(DateAxis, OperationsOfAnAxis) {
  // The first bar has a tick and a label but no grid line; Monday the 8th has all three.
  DatedGraph graph(every(at(2024, 1, 5), 1, 5), 2, 22);
  std::vector<std::string> axis;
  const auto lines = graph.plan();
  for (const std::string& line : lines) {
    if (line.find("0000A0") != std::string::npos || line.find("pen 2/1") != std::string::npos ||
        line.rfind("text", 0) == 0) {
      axis.push_back(line);
    }
  }
  const std::vector<std::string> expected = {"line 3,181 602,181 pen 0/1/0000A0",
                                             "line 13,181 13,186 pen 0/1/0000A0",
                                             "text 14,187 'Jan'",
                                             "line 35,181 35,186 pen 0/1/0000A0",
                                             "text 36,187 '06'",
                                             "line 57,181 57,186 pen 0/1/0000A0",
                                             "text 58,187 '07'",
                                             "line 79,3 79,179 pen 2/1/",
                                             "line 79,181 79,186 pen 0/1/0000A0",
                                             "text 80,187 '08'",
                                             "line 101,181 101,186 pen 0/1/0000A0",
                                             "text 102,187 '09'"};
  ASSERT_EQ(axis.size(), expected.size());
  for (size_t i = 0; i < axis.size(); ++i) EXPECT_EQ(axis[i].rfind(expected[i], 0), 0U) << axis[i];
}

TEST(DateAxis, ANewDayHasItsSeparator) {
  DatedGraph graph(every(at(2024, 1, 2, 23, 50) + 1e-9, 5 / 1440.0, 4), 1, 40);
  const auto lines = graph.plan();
  // Day marks at bars 0 and 2 (x 13 and 93), from the strip's top to its bottom; their texts start
  // one pixel further right.
  for (const char* line : {"line 13,181 13,197 pen 0/1/0000A0", "line 93,181 93,197 pen 0/1/0000A0",
                           "text 15,187 'Jan 2 11:50 '", "text 95,187 'Jan 3 12:00 '"}) {
    EXPECT_NE(std::find(lines.begin(), lines.end(), line), lines.end()) << line;
  }
}

TEST(DateAxis, ASeparatorDoesNotStrikeOutALabel) {
  // The bar at x 19 begins a new day within the first label, which ends at x 78.
  DatedGraph graph({at(2024, 1, 2, 23, 50), at(2024, 1, 2, 23, 55), at(2024, 1, 3, 0, 0)}, 1, 7);
  const auto lines = graph.plan();
  const auto separator = std::find(lines.begin(), lines.end(), "line 19,181 19,197 pen 0/1/0000A0");
  ASSERT_GE(lines.end() - separator, 3);
  EXPECT_EQ(*(separator + 2), "text 7,187 'Jan 2 11:50 '");
}

}  // namespace
