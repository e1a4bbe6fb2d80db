#include <cmath>

#include "tests/support/test_support.h"

namespace {

using qxtest::Bar;
using qxtest::BarSet;
using qxtest::near;
using qxtest::Series;

const std::vector<double> kCloses = {51, 53, 52, 51, 49, 50, 53, 55, 54, 52, 55, 57};

struct Day {
  double date, close;
};

std::vector<Bar> market(std::initializer_list<Day> days) {
  std::vector<Bar> bars;
  for (const Day& day : days) bars.push_back({day.date, 0, 0, 0, day.close, 0, 0});
  return bars;
}

// The second market begins a day later, misses day 4 and ends two days earlier.
const std::vector<Bar> kFirst =
    market({{1, 50}, {2, 52}, {3, 51}, {4, 53}, {5, 55}, {6, 54}, {7, 56}, {8, 58}});
const std::vector<Bar> kSecond = market({{2, 40}, {3, 44}, {5, 50}, {6, 48}});

using Comparison = int32_t (*)(const qxBars*, const qxBars*, qxArray*, double);

int32_t rateOfTwo(const qxBars* a, const qxBars* b, qxArray* out, double startDate) {
  return qxRSIC(a, b, out, 2, startDate);
}

struct ComparisonCase {
  const char* name;
  Comparison compare;
  int32_t warmUp;  // first valid index less the first common bar
  std::vector<double> expected;
};

const ComparisonCase kComparisons[] = {
    {"qxCompPerformance",
     qxCompPerformance,
     0,
     {0, 1, 0.891608391608, -1, 0.846153846154, 0.865384615385, 0, 0}},
    {"qxCompStrength", qxCompStrength, 0, {0, 1.3, 51 / 44.0, 51 / 44.0, 1.1, 1.125, 0, 0}},
    {"qxSpread", qxSpread, 0, {0, 12, 7, 7, 5, 6, 0, 0}},
    {"qxRSIC",
     rateOfTwo,
     2,
     {0, 0, 0, -0.108391608392, -0.0509803921569, -0.0294117647059, -1, -1}},
};

TEST(TwoMarkets, AreAlignedByDate) {
  for (const ComparisonCase& c : kComparisons) {
    SCOPED_TRACE(c.name);
    BarSet a(kFirst), b(kSecond);
    Series out;
    EXPECT_EQ(c.compare(a, b, out, 0), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(out, c.expected));
    EXPECT_EQ(out.record.firstvalid, 1 + c.warmUp);
    EXPECT_EQ(c.compare(a, b, out, 2), QX_SUCCESS) << "again, into the same output";
    EXPECT_TRUE(seriesNear(out, c.expected));

    // The first date at or after the start is missing in b: there is no second try.
    EXPECT_EQ(c.compare(a, b, out, 3.5), QX_ERR_RECORD_NOT_FOUND);
    EXPECT_EQ(c.compare(a, b, out, 7), QX_ERR_RECORD_NOT_FOUND) << "after b's end";
    EXPECT_EQ(c.compare(a, b, out, 9), QX_ERR_RECORD_NOT_FOUND) << "after a's end";
    EXPECT_TRUE(seriesNear(out, std::vector<double>(8), 0)) << "cleared before the dates are read";

    Series kept{5, 5};
    EXPECT_EQ(c.compare(a, nullptr, kept, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(c.compare(nullptr, b, kept, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(c.compare(a, b, nullptr, 0), QX_ERR_INVALID_PARM);
    BarSet none;
    EXPECT_EQ(c.compare(a, none, kept, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(kept[0], 5.0);
    for (qxBars* set : {&a.record, &b.record}) {
      qxArray alias = set->close;
      EXPECT_EQ(c.compare(a, b, &alias, 0), QX_ERR_INVALID_PARM);
      EXPECT_NE(set->close.data[0], 0.0);
    }
    qxReSizeBars(b, 0);
    EXPECT_EQ(c.compare(a, b, kept, 0), QX_ERR_RECORD_NOT_FOUND) << "an empty second market";
    EXPECT_EQ(c.compare(a, b, kept, NAN), QX_ERR_RECORD_NOT_FOUND);
  }
  qxSetMaxFirstValid(0);
}

TEST(TwoMarkets, WorkedExamples) {
  BarSet a(market({{1, 50}, {2, 52}, {3, 51}, {4, 53}})), b(market({{1, 48}, {3, 47}, {4, 50}}));
  Series out;
  EXPECT_EQ(qxSpread(a, b, out, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {2, 2, 4, 3}));
  EXPECT_EQ(qxCompStrength(a, b, out, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {50 / 48.0, 50 / 48.0, 51 / 47.0, 1.06}));
  EXPECT_EQ(qxCompPerformance(a, a, out, 2), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 1, 1, 1}, 0)) << "a market against itself";
  EXPECT_EQ(qxRSIC(a, b, out, 0, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0, 0, 0}, 0));
  EXPECT_EQ(qxRSIC(a, b, out, INT32_MAX, 0), QX_SUCCESS);
  out.record.data[0] = 8;
  EXPECT_EQ(qxRSIC(a, b, out, -1, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(out[0], 8.0) << "checks precede writes";
  // Dates that do not ascend end the walk early, never outside.
  BarSet wild(market({{9, 1}, {2, 1}, {NAN, 1}, {4, 1}}));
  for (auto compare : {qxCompPerformance, qxCompStrength, qxSpread}) {
    for (const double start : std::initializer_list<double>{-INFINITY, 0, NAN, INFINITY}) {
      compare(wild, b, out, start);
      compare(a, wild, out, start);
      EXPECT_EQ(out.record.size, 4);
    }
  }
  qxSetMaxFirstValid(0);
}

TEST(Performance, IsMeasuredFromTheFirstValidElement) {
  Series in(kCloses), out;
  EXPECT_EQ(qxPerformancePct(in, out, -1), QX_SUCCESS);
  for (int32_t i = 0; i < 12; ++i) EXPECT_TRUE(near(out[i], 100.0 * (in[i] - 51) / 51));
  in.record.firstvalid = 2;
  EXPECT_EQ(qxPerformancePct(in, out, 1), QX_SUCCESS);
  EXPECT_TRUE(
      seriesNear(out, {0, 0, 0, -1.92307692308, -5.76923076923, -3.84615384615, 1.92307692308,
                       5.76923076923, 3.84615384615, 0, 5.76923076923, 9.61538461538}));
  EXPECT_EQ(out.record.firstvalid, 2);
  EXPECT_EQ(qxPerformancePct(in, out, 12), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, std::vector<double>(12), 0));
  EXPECT_EQ(qxPerformancePct(in, in, 0), QX_ERR_INVALID_PARM);
}

TEST(DeTrend, TakesOffALineThatLagsByOne) {
  Series in(kCloses), out;
  const struct {
    int32_t start, end, firstValid;
    std::vector<double> expected;
  } cases[] = {
      {0,
       INT32_MAX,
       0,
       {1.06060606061, 2.64102564103, 1.22144522145, -0.198135198135, -2.61771561772, -2.0372960373,
        0.543123543124, 2.12354312354, 0.703962703963, -1.71561771562, 0.864801864802,
        2.44522144522}},
      {2,
       7,
       2,
       {0, 0, 2.53333333333, 0.904761904762, -1.72380952381, -1.35238095238, 1.01904761905,
        2.39047619048, 0, 0, 0, 0}},
      {5, 5, 5, std::vector<double>(12)},
      {5, 4, 5, std::vector<double>(12)},
      {0, INT32_MIN, 0, std::vector<double>(12)},
      {12, 20, 12, std::vector<double>(12)},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(qxDeTrend(in, out, c.start, c.end), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(out, c.expected)) << c.start << ".." << c.end;
    EXPECT_EQ(out.record.firstvalid, c.firstValid);
  }
  EXPECT_EQ(qxDeTrend(in, in, 0, 11), QX_ERR_INVALID_PARM);
  qxSetMaxFirstValid(0);
}

TEST(CommoditySelection, AgreesWithAnIndependentComputation) {
  BarSet bars(qxtest::workedBars());
  // k = 0.638877; the ratings and the ranges were worked out to six digits.
  const double k = 100.0 * 50 / std::sqrt(2000.0) / 175.0;
  EXPECT_TRUE(near(k, 0.638877, 1e-6));
  Series out, rating, range;
  EXPECT_EQ(qxCSIndex(bars, out, 2, 50, 2000, 25, -7), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(
      out, {0, 0, 0, 0, 0, 149.034, 114.081, 149.177, 125.674, 114.525, 98.5359, 113.772}, 1e-5));
  EXPECT_EQ(out.record.firstvalid, 5);
  EXPECT_EQ(qxADXR(bars, rating, 2, 2, 2, 4), QX_SUCCESS);
  EXPECT_EQ(qxATR(bars, range, 2, 4), QX_SUCCESS);
  EXPECT_EQ(qxCSIndex(bars, out, 2, 50, 2000, 25, 4), QX_SUCCESS);
  for (int32_t i = 0; i < 12; ++i) {
    EXPECT_TRUE(near(out[i], i < 9 ? 0.0 : k * rating[i] * range[i])) << i;
  }
}

TEST(CommoditySelection, RefusesAndEndures) {
  BarSet bars(qxtest::workedBars());
  Series out{6};
  const struct {
    int32_t period;
    double margin, commission;
  } refused[] = {{0, 1, 1}, {INT32_MIN, 1, 1}, {2, 0, 1}, {2, -4, 1}, {2, NAN, 1}, {2, 1, -150}};
  for (const auto& c : refused) {
    EXPECT_EQ(qxCSIndex(bars, out, c.period, 1, c.margin, c.commission, 0), QX_ERR_INVALID_PARM);
  }
  EXPECT_EQ(out[0], 6.0) << "checks precede writes";
  EXPECT_EQ(qxCSIndex(bars, out, INT32_MAX, 1, 1, 1, INT32_MAX), QX_SUCCESS);
  EXPECT_EQ(out.record.firstvalid, INT32_MAX);
  qxArray alias = bars->low;
  EXPECT_EQ(qxCSIndex(bars, &alias, 2, 1, 1, 1, 0), QX_ERR_INVALID_PARM);
  qxSetMaxFirstValid(0);
}

TEST(Fibonacci, ProjectsAndRetraces) {
  double x = 0, y = 0, z = 0;
  EXPECT_EQ(qxFibonacciRetrace(100, 200, &x, &y, &z), QX_SUCCESS);
  EXPECT_TRUE(near(x, 161.8) && near(y, 150) && near(z, 138.2));
  EXPECT_EQ(qxFibonacciProject(200, 100, &x, &y, &z), QX_SUCCESS);
  EXPECT_TRUE(near(x, 261.8) && near(y, 361.8) && near(z, 523.6));
  EXPECT_EQ(qxFibonacciProject(7, 7, &x, &y, &z), QX_SUCCESS);
  EXPECT_TRUE(x == 7 && y == 7 && z == 7);
  EXPECT_EQ(qxFibonacciRetrace(INFINITY, INFINITY, &x, &y, &z), QX_SUCCESS);
  EXPECT_TRUE(std::isinf(x) && std::isinf(y) && std::isinf(z)) << "equal ends need no difference";
  EXPECT_EQ(qxFibonacciProject(1, 2, &x, nullptr, &z), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxFibonacciRetrace(1, 2, nullptr, &y, &z), QX_ERR_INVALID_PARM);
}

}  // namespace
