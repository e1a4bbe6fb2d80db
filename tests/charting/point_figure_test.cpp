// Point-and-figure columns and their text chart, worked by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/test_support.h"

namespace {

using qxtest::Bar;
using qxtest::BarSet;
using qxtest::Series;
using qxtest::TemporaryFolder;

// Bars whose highs and lows are the closes, or given as pairs.
std::vector<Bar> fromCloses(const std::vector<double>& closes) {
  std::vector<Bar> bars;
  for (double close : closes) {
    bars.push_back({40000.0 + static_cast<double>(bars.size()), close, close, close, close, 0, 0});
  }
  return bars;
}

std::vector<Bar> fromRanges(const std::vector<std::pair<double, double>>& highsAndLows) {
  std::vector<Bar> bars;
  for (const auto& [high, low] : highsAndLows) {
    bars.push_back({40000.0 + static_cast<double>(bars.size()), low, high, low, low, 0, 0});
  }
  return bars;
}

// The columns as {date, open, high, low, close, volume, direction}.
std::vector<std::vector<double>> columnsOf(const qxBars& c) {
  std::vector<std::vector<double>> rows;
  for (int32_t i = 0; i < c.barsize; ++i) {
    rows.push_back({c.date.data[i] - 40000.0, c.open.data[i], c.high.data[i], c.low.data[i],
                    c.close.data[i], c.volume.data[i], c.openint.data[i]});
  }
  return rows;
}

using Rows = std::vector<std::vector<double>>;

TEST(PointFigure, ClosesMakeColumns) {
  BarSet bars(fromCloses({10, 10.5, 11, 12, 13, 10, 9, 11.5, 12}));
  BarSet columns;
  Series map;
  // The seed is bar 1; bar 2 is a box above the start close and opens the main walk.
  ASSERT_EQ(qxBars2PNF(bars, columns, map, 1.0, 3.0, 0), QX_SUCCESS);
  EXPECT_EQ(
      columnsOf(columns.record),
      (Rows{{1, 0, 13, 10.5, 13, 3, 1}, {5, 12, 12, 9, 9, 4, -1}, {8, 10, 12, 10, 12, 0, 1}}));
  EXPECT_EQ(map.values(), (std::vector<double>{0, 0, 0, 0, 0, 1, 1, 1, 2}));
}

TEST(PointFigure, NegativeStartTakesBarZero) {
  BarSet bars(fromCloses({10, 11, 12, 13, 10}));
  BarSet columns;
  Series map;
  ASSERT_EQ(qxBars2PNF(bars, columns, map, 1.0, 3.0, INT32_MIN), QX_SUCCESS);
  EXPECT_EQ(columnsOf(columns.record),
            (Rows{{0, 0, 13, 10, 13, 4, 1}, {4, 12, 12, 10, 10, 0, -1}}));
}

TEST(PointFigure, FirstDirectionIsMeasuredFromTheStartClose) {
  // The seed's close is 10.9, so 11.0 is no box above it, but it is one above the start close.
  BarSet bars(fromCloses({10, 10.9, 11, 9}));
  BarSet columns;
  Series map;
  ASSERT_EQ(qxBars2PNF(bars, columns, map, 1.0, 2.0, 0), QX_SUCCESS);
  EXPECT_EQ(columnsOf(columns.record)[0], (std::vector<double>{1, 0, 11, 10.9, 11, 1, 1}));
}

TEST(PointFigure, HighsAndLowsMakeColumns) {
  BarSet bars(
      fromRanges({{10, 9}, {10.5, 9.5}, {12, 10}, {13, 11}, {12.5, 10}, {10, 8}, {11.5, 9}}));
  BarSet columns;
  Series map;
  ASSERT_EQ(qxBars2PNFhilo(bars, columns, map, 1.0, 3.0, 0), QX_SUCCESS);
  EXPECT_EQ(
      columnsOf(columns.record),
      (Rows{{1, 0, 13, 9.5, 13, 4, 1}, {4, 12, 12, 8, 8, 5, -1}, {6, 9, 11.5, 9, 11.5, 0, 1}}));
  EXPECT_EQ(map.values(), (std::vector<double>{0, 0, 0, 0, 1, 1, 2}));
}

TEST(PointFigure, BarThatPassesBothBoundsDecidesNothing) {
  // Bar 1 widens the first column to both sides; bar 2 then falls out of it.
  BarSet bars(fromRanges({{10, 9}, {12, 7}, {8, 5}}));
  BarSet columns;
  Series map;
  ASSERT_EQ(qxBars2PNFhilo(bars, columns, map, 1.0, 3.0, -1), QX_SUCCESS);
  EXPECT_EQ(columnsOf(columns.record), (Rows{{0, 0, 12, 5, 5, 0, -1}}));
}

TEST(PointFigure, RefusesBeforeItAllocates) {
  BarSet bars(fromCloses({10, 12, 9, 14}));
  const double nan = std::nan("");
  struct Case {
    double box, reversal;
    int32_t start;
  };
  for (const auto& convert : {qxBars2PNF, qxBars2PNFhilo}) {
    for (const Case& c : {Case{0, 3, 0}, Case{-1, 3, 0}, Case{nan, 3, 0}, Case{1, 0, 0},
                          Case{1, nan, 0}, Case{1, 3, 3}, Case{1, 3, INT32_MAX}}) {
      BarSet columns;
      Series map;
      EXPECT_EQ(convert(bars, columns, map, c.box, c.reversal, c.start), QX_ERR_INVALID_PARM);
      EXPECT_EQ(columns->date.data, nullptr);
      EXPECT_EQ(map.record.data, nullptr);
    }
    BarSet none, columns;
    Series map;
    EXPECT_EQ(convert(none, columns, map, 1, 3, -1), QX_ERR_INVALID_PARM);
    EXPECT_EQ(convert(nullptr, columns, map, 1, 3, -1), QX_ERR_INVALID_PARM);
    EXPECT_EQ(columns->date.data, nullptr);
    // No direction: the outputs stay allocated.
    EXPECT_EQ(convert(bars, columns, map, 1, 3, 2), QX_ERR_INVALID_PARM);
    EXPECT_EQ(columns->barsize, 4);
    EXPECT_EQ(map.record.size, 4);
  }
}

TEST(PointFigure, ChartIsPrintedToTheLetter) {
  BarSet bars(fromCloses({10, 11, 12, 13, 10, 9, 12}));
  BarSet columns;
  Series map;
  ASSERT_EQ(qxBars2PNF(bars, columns, map, 1.0, 3.0, -1), QX_SUCCESS);
  const TemporaryFolder folder;
  const std::string path = folder.file("chart.txt");
  const std::string chart =
      "\n   13.000 X  "
      "\n   12.000 XOX"
      "\n   11.000 XOX"
      "\n   10.000 XOX"
      "\n    9.000  O ";
  folder.write("chart.txt", "old");
  ASSERT_EQ(qxPNFchart(columns, 1.0, path.c_str(), 0), QX_SUCCESS);
  EXPECT_EQ(qxtest::readFile(path), chart);
  ASSERT_EQ(qxPNFchart(columns, 1.0, path.c_str(), 7), QX_SUCCESS);
  EXPECT_EQ(qxtest::readFile(path), chart + chart);
  EXPECT_EQ(qxPNFchart(columns, 1.0, folder.path.c_str(), 0), QX_ERR_FILE_OPEN);
  if (std::filesystem::exists("/dev/full")) {
    EXPECT_EQ(qxPNFchart(columns, 1.0, "/dev/full", 0), QX_ERR_FILE_WRITE);
  }

  // Levels below zero keep no sign on a whole part of 0; the decimals are cut, not rounded.
  BarSet small = {{0, 0, 0.5, -0.25, 0, 0, -1}};
  ASSERT_EQ(qxPNFchart(small, 0.25, path.c_str(), 0), QX_SUCCESS);
  EXPECT_EQ(qxtest::readFile(path), "\n    0.500 O\n    0.250 O\n    0.000 O\n    0.250 O");
}

TEST(PointFigure, ChartRefusesBoxesThatDoNotStep) {
  BarSet columns = {{0, 0, 1e9, 1e9 - 5, 0, 0, 1}};
  BarSet none;
  const TemporaryFolder folder;
  const std::string path = folder.file("chart.txt");
  for (double box : {0.0, -1.0, 1e-9, 1e-7, 4e-324, std::nan(""), HUGE_VAL}) {
    EXPECT_EQ(qxPNFchart(columns, box, path.c_str(), 0), QX_ERR_INVALID_PARM) << box;
  }
  EXPECT_EQ(qxPNFchart(none, 1.0, path.c_str(), 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxPNFchart(columns, 1.0, nullptr, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxtest::readFile(path), "");
}

}  // namespace
