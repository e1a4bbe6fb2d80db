// What random calls and fuzzers found, made small: each of these once read outside, overflowed or
// did not come to an end.
#include <cmath>
#include <cstring>

#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;
using qxtest::Series;
using qxtest::seriesNear;
using qxtest::TemporaryFolder;
using qxtest::workedBars;

TEST(Findings, ASecondMarketOfNegativeSizeHasNoBars) {
  BarSet a(workedBars()), b;
  ASSERT_EQ(qxAllocBars(b, 0), QX_SUCCESS);
  b->barsize = -5;
  Series out;
  for (auto compare : {qxCompPerformance, qxCompStrength, qxSpread}) {
    EXPECT_EQ(compare(a, b, out, 0.0), QX_ERR_RECORD_NOT_FOUND);
  }
}

TEST(Findings, AReportOverBarsOfNegativeSizeHasNoDates) {
  BarSet bars(workedBars());
  bars->barsize = INT32_MIN;
  qxOrderSystem system = {};
  ASSERT_EQ(qxOrderSystemInit(&system, "none", bars), QX_SUCCESS);
  TemporaryFolder folder;
  const std::string path = folder.file("report.txt");
  EXPECT_EQ(qxProfitRpt(&system, path.c_str(), 0), QX_SUCCESS);
  EXPECT_NE(qxtest::readFile(path).find("none  1899/12/30 - 1899/12/30"), std::string::npos);
  qxOrderSystemClose(&system);
}

TEST(Findings, ADirectoryCanBeListedIntoItself) {
  TemporaryFolder folder;
  std::string record(64, ' ');
  record.replace(4, 8, "SOYBEANS");
  const std::string path = folder.write("qmaster", record);
  EXPECT_EQ(qxCSIlist(folder.path.c_str(), path.c_str(), 1), QX_SUCCESS);
  EXPECT_LT(qxtest::readFile(path).size(), 1000u);
}

TEST(Findings, EndlessPassesComeToAnEnd) {
  // With 0.7 the last bits go round in circles, which a walk of every pass would follow for hours.
  Series in({100, 102, 101, 105, 103, 107, 110, 108, 104, 99, 97, 98, 102, 106, 105, 111});
  for (double period : {1.5, 2.0, 4.0, 9.0, 0.25, -7.0}) {
    for (double volumeFactor : {0.0, 0.3, 0.7, 1.0}) {
      Series many;
      EXPECT_EQ(qxT3(in, many, period, volumeFactor, INT32_MAX, 0), QX_SUCCESS);
      EXPECT_EQ(many[0], 100.0);
    }
  }
}

TEST(Findings, SkippedLapsLeaveTheSameState) {
  // 5000 passes are watched for laps; one more at a time by hand is the walk in full.
  Series in({3, 1, 2, 5, 4, 1, 0, 2, 7, 1});
  for (double period : {1.25, 3.0, 40.0}) {
    Series watched;
    ASSERT_EQ(qxT3(in, watched, period, 0.7, 5000, 0), QX_SUCCESS);
    Series state(in.values());
    for (int32_t pass = 0; pass < 5; ++pass) {
      Series next;
      ASSERT_EQ(qxT3(state, next, period, 0.7, 1000, 0), QX_SUCCESS);
      std::memcpy(state.record.data, next.record.data, 10 * sizeof(double));
    }
    for (int32_t i = 0; i < 10; ++i) EXPECT_EQ(watched[i], state[i]) << period << " " << i;
  }
}

TEST(Findings, LabelsOfValuesBeyondWholeNumbersSaturate) {
  BarSet bars(workedBars());
  Series series;
  ASSERT_EQ(qxAllocArray(series, 12), QX_SUCCESS);
  for (int32_t i = 0; i < 12; ++i) series.record.data[i] = 9.2233720368547758e18;
  series.record.data[5] = -9.3e18;
  qxGraph graph = {};
  qxGraphInit(&graph);
  graph.area = {0, 0, 400, 300};
  ASSERT_EQ(qxGraphChartAdd(&graph, -1, -1, 0, 1, 1, 0, 0, 0, series, bars, QX_CHART_LINE, 0, 0, 0,
                            1, 0, 0),
            QX_SUCCESS);
  TemporaryFolder folder;
  EXPECT_EQ(qxGraphPaintSVG(&graph, folder.file("chart.svg").c_str()), QX_SUCCESS);
  qxGraphFree(&graph);
}

}  // namespace
