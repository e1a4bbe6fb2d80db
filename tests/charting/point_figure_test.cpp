// Point-and-figure columns and their text chart, worked by hand.
#include <cmath>
#include <string>
#include <vector>

#include "tests/support/test_support.h"

namespace {

using qxtest::Bar;
using qxtest::BarSet;
using qxtest::Series;
using Rows = std::vector<std::vector<double>>;

// Bars of the given highs and lows, which close at the low.
std::vector<Bar> fromRanges(const std::vector<std::pair<double, double>>& highsAndLows) {
  std::vector<Bar> bars;
  for (const auto& [high, low] : highsAndLows) {
    bars.push_back({40000.0 + static_cast<double>(bars.size()), low, high, low, low, 0, 0});
  }
  return bars;
}

std::vector<Bar> fromCloses(const std::vector<double>& closes) {
  std::vector<std::pair<double, double>> ranges;
  for (const double close : closes) ranges.emplace_back(close, close);
  return fromRanges(ranges);
}

struct Converted {
  BarSet columns;
  Series map;
  int32_t status;

  Converted(decltype(&qxBars2PNF) convert, const std::vector<Bar>& source, double box,
            double reversal, int32_t start) {
    BarSet bars(source);
    status = convert(bars, columns, map, box, reversal, start);
  }
  // The columns as {date, open, high, low, close, volume, direction}.
  Rows rows() const {
    EXPECT_EQ(status, QX_SUCCESS);
    const qxBars& c = columns.record;
    Rows rows;
    for (int32_t i = 0; i < c.barsize; ++i) {
      rows.push_back({c.date.data[i] - 40000.0, c.open.data[i], c.high.data[i], c.low.data[i],
                      c.close.data[i], c.volume.data[i], c.openint.data[i]});
    }
    return rows;
  }
};

TEST(PointFigure, ClosesMakeColumns) {
  // The seed is bar 1; bar 2 is a box above the start close and opens the main walk.
  const Converted c(qxBars2PNF, fromCloses({10, 10.5, 11, 12, 13, 10, 9, 11.5, 12}), 1, 3, 0);
  EXPECT_EQ(
      c.rows(),
      (Rows{{1, 0, 13, 10.5, 13, 3, 1}, {5, 12, 12, 9, 9, 4, -1}, {8, 10, 12, 10, 12, 0, 1}}));
  EXPECT_EQ(c.map.values(), (std::vector<double>{0, 0, 0, 0, 0, 1, 1, 1, 2}));
  // A negative start takes bar 0.
  EXPECT_EQ(Converted(qxBars2PNF, fromCloses({10, 11, 12, 13, 10}), 1, 3, INT32_MIN).rows(),
            (Rows{{0, 0, 13, 10, 13, 4, 1}, {4, 12, 12, 10, 10, 0, -1}}));
  // The seed's close is 10.9, so 11.0 is no box above it, but it is one above the start close.
  EXPECT_EQ(Converted(qxBars2PNF, fromCloses({10, 10.9, 11, 9}), 1, 2, 0).rows()[0],
            (std::vector<double>{1, 0, 11, 10.9, 11, 1, 1}));
}

TEST(PointFigure, HighsAndLowsMakeColumns) {
  const Converted c(
      qxBars2PNFhilo,
      fromRanges({{10, 9}, {10.5, 9.5}, {12, 10}, {13, 11}, {12.5, 10}, {10, 8}, {11.5, 9}}), 1, 3,
      0);
  EXPECT_EQ(
      c.rows(),
      (Rows{{1, 0, 13, 9.5, 13, 4, 1}, {4, 12, 12, 8, 8, 5, -1}, {6, 9, 11.5, 9, 11.5, 0, 1}}));
  EXPECT_EQ(c.map.values(), (std::vector<double>{0, 0, 0, 0, 1, 1, 2}));
  // A bar that passes both bounds decides nothing: bar 1 widens the first column to both sides, bar
  // 2 then falls out of it.
  EXPECT_EQ(Converted(qxBars2PNFhilo, fromRanges({{10, 9}, {12, 7}, {8, 5}}), 1, 3, -1).rows(),
            (Rows{{0, 0, 12, 5, 5, 0, -1}}));
}

TEST(PointFigure, RefusesBeforeItAllocates) {
  const auto bars = fromCloses({10, 12, 9, 14});
  const struct {
    std::vector<Bar> bars;
    double box, reversal;
    int32_t start;
  } cases[] = {{bars, 0, 3, 0},   {bars, -1, 3, 0}, {bars, NAN, 3, 0},       {bars, 1, 0, 0},
               {bars, 1, NAN, 0}, {bars, 1, 3, 3},  {bars, 1, 3, INT32_MAX}, {{}, 1, 3, -1}};
  for (const auto& convert : {qxBars2PNF, qxBars2PNFhilo}) {
    for (const auto& c : cases) {
      const Converted refused(convert, c.bars, c.box, c.reversal, c.start);
      EXPECT_EQ(refused.status, QX_ERR_INVALID_PARM);
      EXPECT_EQ(refused.columns.record.date.data, nullptr);
      EXPECT_EQ(refused.map.record.data, nullptr);
    }
    BarSet columns;
    Series map;
    EXPECT_EQ(convert(nullptr, columns, map, 1, 3, -1), QX_ERR_INVALID_PARM);
    // An output that is the input would lose the caller's bars.
    BarSet input(bars);
    EXPECT_EQ(convert(input, input, map, 1, 3, -1), QX_ERR_INVALID_PARM);
    EXPECT_EQ(convert(input, columns, &input->close, 1, 3, -1), QX_ERR_INVALID_PARM);
    EXPECT_EQ(barsOf(input), bars);
    // No direction: the outputs stay allocated.
    const Converted flat(convert, bars, 1, 3, 2);
    EXPECT_EQ(flat.status, QX_ERR_INVALID_PARM);
    EXPECT_EQ(flat.columns.record.barsize, 4);
    EXPECT_EQ(flat.map.record.size, 4);
  }
}

TEST(PointFigure, ChartIsPrintedToTheLetter) {
  Converted c(qxBars2PNF, fromCloses({10, 11, 12, 13, 10, 9, 12}), 1, 3, -1);
  const qxtest::TemporaryFolder folder;
  const std::string path = folder.write("chart.txt", "old");
  const std::string chart =
      "\n   13.000 X  "
      "\n   12.000 XOX"
      "\n   11.000 XOX"
      "\n   10.000 XOX"
      "\n    9.000  O ";
  ASSERT_EQ(qxPNFchart(c.columns, 1.0, path.c_str(), 0), QX_SUCCESS);
  EXPECT_EQ(qxtest::readFile(path), chart);
  ASSERT_EQ(qxPNFchart(c.columns, 1.0, path.c_str(), 7), QX_SUCCESS);
  EXPECT_EQ(qxtest::readFile(path), chart + chart);

  // Levels below zero keep no sign on a whole part of 0; the decimals are cut, not rounded.
  BarSet small = {{0, 0, 0.5, -0.25, 0, 0, -1}};
  ASSERT_EQ(qxPNFchart(small, 0.25, path.c_str(), 0), QX_SUCCESS);
  EXPECT_EQ(qxtest::readFile(path), "\n    0.500 O\n    0.250 O\n    0.000 O\n    0.250 O");
}

TEST(PointFigure, ChartRefusesBoxesThatDoNotStep) {
  BarSet columns = {{0, 0, 1e9, 1e9 - 5, 0, 0, 1}}, none;
  const qxtest::TemporaryFolder folder;
  const std::string path = folder.file("chart.txt");
  for (const double box : {0.0, -1.0, 1e-9, 1e-7, 4e-324, std::nan(""), HUGE_VAL}) {
    EXPECT_EQ(qxPNFchart(columns, box, path.c_str(), 0), QX_ERR_INVALID_PARM) << box;
  }
  EXPECT_EQ(qxPNFchart(none, 1.0, path.c_str(), 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxPNFchart(columns, 1.0, nullptr, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxtest::readFile(path), "");
}

}  // namespace
