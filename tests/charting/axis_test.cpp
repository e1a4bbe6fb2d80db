// Grid steps and labels of value axes; masks, marking and labels of date axes.
#include <algorithm>
#include <cmath>

#include "charting/date_marks.h"
#include "charting/value_grid.h"
#include "tests/charting/planned_graph.h"

namespace {

using qxtest::Lines;
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

Labels valueLabels(double minimum, double maximum, int32_t rows, int32_t flags = 0) {
  constexpr int32_t kSpacing = 20;
  qxGraphChart chart = {};
  chart.minimum = minimum;
  chart.maximum = maximum;
  chart.scaleflags = flags;
  const qx::ValueScale scale = qx::makeScale(chart, 0, rows);
  const qx::ValueGrid grid = qx::makeGrid(scale, kSpacing);
  Labels labels;
  double value;
  int32_t before = -rows;
  for (bool more = qx::firstMark(grid, &value); more; more = qx::nextMark(grid, &value)) {
    char label[qx::kLabelSize];
    qx::formatMark(grid, value, label);
    labels.emplace_back(label);
    const int32_t row = qx::valueToPixel(scale, value);
    EXPECT_GE(std::abs(row - before), before == -rows ? 0 : kSpacing - 1) << label;
    before = row;
  }
  return labels;
}

TEST(ValueGrid, LabelsCarryTheDecimalsOfTheStep) {
  EXPECT_EQ(valueLabels(0, 100, 101), Labels({"0", "25", "50", "75", "100"}));
  EXPECT_EQ(valueLabels(-1.2, 1.2, 97), Labels({"-1.0", "-0.5", " 0.0", " 0.5", " 1.0"}));
  EXPECT_EQ(valueLabels(9.97, 10.04, 81), Labels({" 9.975", "10.000", "10.025"}));
  EXPECT_EQ(valueLabels(9.98, 10.03, 101),
            Labels({" 9.98", " 9.99", "10.00", "10.01", "10.02", "10.03"}));
  EXPECT_EQ(valueLabels(0, 3e9, 61), Labels({"0", "1000000000", "2000000000", "3000000000"}));
  EXPECT_EQ(valueLabels(0, 2e17, 51), Labels({"0.0000e+0", "1.0000e+17", "2.0000e+17"}));
  // Kept scales may run downwards.
  EXPECT_EQ(valueLabels(100, 0, 101), Labels({"0", "25", "50", "75", "100"}));
  EXPECT_EQ(valueLabels(5, 5, 100), Labels());
  EXPECT_EQ(valueLabels(NAN, 5, 100), Labels());
  EXPECT_EQ(valueLabels(-INFINITY, INFINITY, 100), Labels());
  EXPECT_EQ(valueLabels(1e300, 1.0000000000000002e300, 100), Labels());
}

TEST(ValueGrid, LogarithmicScales) {
  // A narrow range in equal steps, wide ones by decades.
  EXPECT_EQ(valueLabels(100, 200, 101, QX_SCALE_LOG), Labels({"100", "150", "200"}));
  EXPECT_EQ(valueLabels(1, 1000, 301, QX_SCALE_LOG),
            Labels({"1", "2", "5", "10", "20", "50", "100", "200", "500", "1000"}));
  EXPECT_EQ(valueLabels(0.5, 20, 801, QX_SCALE_LOG),
            Labels({" 0.5", " 0.6", " 0.7", " 0.8", " 0.9", " 1.0", " 2.0", " 3.0", " 4.0", " 5.0",
                    " 6.0", " 7.0", " 8.0", " 9.0", "10.0", "20.0"}));
  EXPECT_EQ(valueLabels(1, 1e8, 101, QX_SCALE_LOG),
            Labels({"1", "100", "10000", "1000000", "100000000"}));
  EXPECT_EQ(valueLabels(-5, 100, 100, QX_SCALE_LOG), Labels());
}

TEST(DateMarks, Masks) {
  const auto mask = [](double previous, double date) {
    return qx::boundaryMask(qx::splitDate(date), qx::splitDate(previous));
  };
  EXPECT_EQ(mask(at(2024, 1, 2), at(2024, 1, 3)), 0x1FF0U);
  EXPECT_EQ(mask(at(2024, 1, 5), at(2024, 1, 8)), 0x1FF8U) << "Friday, Monday";
  EXPECT_EQ(mask(at(2024, 1, 31), at(2024, 2, 1)), 0x1FF4U) << "Wednesday, Thursday";
  EXPECT_EQ(mask(at(2024, 3, 28), at(2024, 4, 1)), 0x1FFEU) << "a quarter and a week";
  EXPECT_EQ(mask(at(2023, 12, 29), at(2024, 1, 2)), 0x1FFFU) << "a year and a week";
  EXPECT_EQ(mask(at(2023, 12, 25), at(2024, 1, 2)), 0x1FF7U) << "Monday, Tuesday";
  EXPECT_EQ(mask(at(2023, 2, 1), at(2024, 2, 1)), 0x1FF7U) << "a year within one month name";
  // From the minute before.
  const struct {
    int32_t hour, minute;
    uint32_t mask;
  } minutes[] = {{12, 0, 0x1FE0},  {10, 0, 0x1FC0},  {11, 0, 0x1F80},  {10, 30, 0x1F00},
                 {10, 15, 0x1A00}, {10, 20, 0x1C00}, {10, 25, 0x1800}, {10, 22, 0x1000}};
  for (const auto& c : minutes) {
    const double date = at(2024, 1, 2, c.hour, c.minute);
    EXPECT_EQ(mask(date - 1 / 1440.0, date), c.mask) << c.hour << ":" << c.minute;
    EXPECT_EQ(mask(date, date), 0U);
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
      {0, 0.2, 2, 0x4, 0x1, 5}};
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.perMinute << " " << c.perDay << " " << c.frequency);
    const qx::DateMarking marking = qx::chooseMarking(c.perMinute, c.perDay, c.frequency, widths);
    EXPECT_EQ(marking.grid, c.grid);
    EXPECT_EQ(marking.labels, c.labels);
    EXPECT_EQ(marking.level, c.level);
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
    int32_t hour, minute;
    uint32_t mask;
    int32_t level;
    const char* words;
  } cases[] = {
      {14, 5, 0x1FF0, 1, "Mar 5 2:05 "}, {12, 0, 0x1FE0, 1, "12:00 "}, {9, 5, 0x1800, 1, ":05"},
      {0, 0, 0x1FC0, 1, "12:00 "},       {0, 0, 0x1FF4, 2, "Mar"},     {0, 0, 0x1FF0, 2, "05"},
      {0, 0, 0x1FF7, 3, "Mar 2024"},     {0, 0, 0x1FF4, 3, "March"},   {0, 0, 0x1FF7, 4, "2024"},
      {0, 0, 0x1FF4, 4, "Mar"},          {0, 0, 0x1FF7, 5, "2024"}};
  for (const auto& c : cases) {
    char label[qx::kDateLabelSize];
    qx::formatDateLabel(qx::splitDate(at(2024, 3, 5, c.hour, c.minute)), c.mask, c.level, label);
    EXPECT_STREQ(label, c.words);
  }
}

// A graph of bars at the given dates, with its date axis shown.
struct DatedGraph : qxtest::PlannedGraph {
  qxtest::BarSet bars;
  DatedGraph(const std::vector<double>& dates, int32_t frequency, int32_t barWidth)
      : bars(std::vector<qxtest::Bar>(dates.size(), {0, 50, 60, 40, 55, 0, 0})) {
    std::copy(dates.begin(), dates.end(), bars->date.data);
    bars->frequency = frequency;
    graph.area = {0, 0, 606, 200};
    graph.datesshown = graph.gridwidth = 1;
    graph.gridstyle = QX_PEN_DOT;
    graph.barwidth = barWidth;
    add(0, QX_CHART_CANDLE, nullptr, bars, 0, 93);
  }
};

Labels dateLabels(const std::vector<double>& dates, int32_t frequency, int32_t barWidth) {
  return DatedGraph(dates, frequency, barWidth).texts();
}

std::vector<double> every(double first, double step, int32_t count) {
  std::vector<double> dates;
  for (int32_t i = 0; i < count; ++i) dates.push_back(first + step * i);
  return dates;
}

TEST(DateAxis, LabelsOfEverySpan) {
  // Seven bars a week at 4 pixels: " 00" needs 18, so days give way to weeks and months.
  EXPECT_EQ(dateLabels(every(at(2024, 1, 1), 1, 30), 2, 4), Labels({"Jan 2024"}));
  EXPECT_EQ(dateLabels(every(at(2024, 1, 1), 1, 20), 2, 8), Labels({"Jan", "08", "15"}));
  // Labels keep 2 pixels apart: "Jan" needs 18.
  EXPECT_EQ(dateLabels(every(at(2024, 1, 30), 1, 4), 2, 20), Labels({"Jan", "Feb"}));
  EXPECT_EQ(dateLabels(every(at(2024, 1, 30), 1, 4), 2, 21), Labels({"Jan", "31", "Feb", "02"}));
  EXPECT_EQ(dateLabels(every(at(2023, 11, 5), 1, 140), 2, 2),
            Labels({"Nov 2023", "December", "Jan 2024", "February", "March"}));
  EXPECT_EQ(dateLabels(every(at(2023, 11, 1), 1, 140), 2, 1),
            Labels({"2023", "Dec", "2024", "Feb", "Mar"}));
  // Weekly bars on one weekday, and with one that a holiday moved: only that one begins a week.
  auto weeks = every(at(2024, 1, 5), 7, 14);
  EXPECT_EQ(dateLabels(weeks, 3, 8), Labels({"Jan", "Feb", "Mar", "Apr"}));
  weeks[12] = at(2024, 3, 28);
  EXPECT_EQ(dateLabels(weeks, 3, 20), Labels({"28"}));
  const std::vector<double> quarters = {at(2023, 6, 30), at(2023, 9, 29), at(2023, 12, 29),
                                        at(2024, 3, 29), at(2024, 6, 28)};
  EXPECT_EQ(dateLabels(quarters, 4, 30), Labels({"2023", "Sep", "Dec", "2024", "Jun"}));
  // The months at quarters' ends begin no quarter: years alone are labelled.
  EXPECT_EQ(dateLabels(quarters, 5, 30), Labels({"2023", "2024"}));
  EXPECT_EQ(dateLabels(quarters, 6, 30), Labels({"2023", "2024"}));
  // Five-minute bars, 6 pixels each: half hours at 36 pixels.
  const auto day = every(at(2024, 1, 2, 9, 0) + 1e-9, 5 / 1440.0, 14);
  EXPECT_EQ(dateLabels(day, 1, 6), Labels({"Jan 2 9:00 ", "10:00 "}));
  EXPECT_EQ(dateLabels({}, 2, 6), Labels());
}

TEST(DateAxis, OperationsOfAnAxis) {
  // The first bar has a tick and a label but no grid line; Monday the 8th has all three.
  Lines axis;
  for (const std::string& line : DatedGraph(every(at(2024, 1, 5), 1, 5), 2, 22).plan()) {
    const bool penOfAxis = line.ends_with("pen A0") || line.ends_with("/E0");
    if (penOfAxis || line.starts_with("text")) axis.push_back(line);
  }
  EXPECT_EQ(axis,
            (Lines{"line 3,181 602,181 pen A0", "line 13,181 13,186 pen A0", "text 14,187 'Jan'",
                   "line 35,181 35,186 pen A0", "text 36,187 '06'", "line 57,181 57,186 pen A0",
                   "text 58,187 '07'", "line 79,3 79,179 pen 2/1/E0", "line 79,181 79,186 pen A0",
                   "text 80,187 '08'", "line 101,181 101,186 pen A0", "text 102,187 '09'"}));
}

TEST(DateAxis, ANewDayHasItsSeparator) {
  const auto lines = DatedGraph(every(at(2024, 1, 2, 23, 50) + 1e-9, 5 / 1440.0, 4), 1, 40).plan();
  // Day marks at bars 0 and 2 (x 13 and 93), from the strip's top to its bottom; their texts start
  // one pixel further right.
  for (const char* line : {"line 13,181 13,197 pen A0", "line 93,181 93,197 pen A0",
                           "text 15,187 'Jan 2 11:50 '", "text 95,187 'Jan 3 12:00 '"}) {
    EXPECT_EQ(std::count(lines.begin(), lines.end(), line), 1) << line;
  }
  // Where a new day begins within a label, which here ends at x 78, it does not strike it out.
  const auto narrow =
      DatedGraph({at(2024, 1, 2, 23, 50), at(2024, 1, 2, 23, 55), at(2024, 1, 3)}, 1, 7).plan();
  const auto separator = std::find(narrow.begin(), narrow.end(), "line 19,181 19,197 pen A0");
  ASSERT_GE(narrow.end() - separator, 3);
  EXPECT_EQ(separator[2], "text 7,187 'Jan 2 11:50 '");
}

}  // namespace
