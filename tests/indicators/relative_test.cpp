#include <cmath>

#include "tests/indicators/study_case.h"
#include "tests/support/real_bars.h"

namespace {

using namespace qxtest;

int32_t detrendToTheEnd(const qxArray* in, qxArray* out, int32_t start) {
  return qxDeTrend(in, out, start, INT32_MAX);
}

const std::vector<StudyCase> kCases = {
    row(study<qxPerformancePct>(), {}, {0},
        {{0, 3.921568627, 1.960784314, 0, -3.921568627, -1.960784314, 3.921568627, 7.843137255,
          5.882352941, 1.960784314, 7.843137255, 11.76470588}}),
    row(study<detrendToTheEnd>(), {}, {0},
        {{1.060606061, 2.641025641, 1.221445221, -0.1981351981, -2.617715618, -2.037296037,
          0.5431235431, 2.123543124, 0.703962704, -1.715617716, 0.8648018648, 2.445221445}}),
    row(study<qxCSIndex>(), {period(2), 50, notBelow(1, 2000), 25}, {5},
        {{0, 0, 0, 0, 0, 149.0338935, 114.0812609, 149.1772322, 125.6744604, 114.525354,
          98.53593774, 113.7717823}}),
};

TEST(Relative, WorkedCases) {
  checkCases(kCases);
}

TEST(Relative, RealPrices) {
  checkRealPrices(kCases);
}

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

int32_t rateOfTwo(const qxBars* a, const qxBars* b, qxArray* out, double startDate) {
  return qxRSIC(a, b, out, 2, startDate);
}

const struct {
  const char* name;
  int32_t (*compare)(const qxBars* a, const qxBars* b, qxArray* out, double startDate);
  int32_t firstValid;
  Values expected;
} kComparisons[] = {
    {"qxCompPerformance",
     qxCompPerformance,
     1,
     {0, 1, 0.8916083916, -1, 0.8461538462, 0.8653846154, 0, 0}},
    {"qxCompStrength", qxCompStrength, 1, {0, 1.3, 51 / 44.0, 51 / 44.0, 1.1, 1.125, 0, 0}},
    {"qxSpread", qxSpread, 1, {0, 12, 7, 7, 5, 6, 0, 0}},
    {"qxRSIC", rateOfTwo, 3, {0, 0, 0, -0.1083916084, -0.05098039216, -0.02941176471, -1, -1}},
};

TEST(TwoMarkets, AreAlignedByDate) {
  for (const auto& c : kComparisons) {
    SCOPED_TRACE(c.name);
    BarSet a(kFirst), b(kSecond), none;
    Series out, kept{5, 5};
    for (const double start : {0.0, 1.0, 2.0}) {
      EXPECT_TRUE(gives(c.compare(a, b, out, start), out, c.expected)) << start;
      EXPECT_EQ(out.record.firstvalid, c.firstValid);
    }

    // The first date at or after 3.5 is missing in b: there is no second try. 7 is after b's end, 9
    // after a's.
    for (const double start : {3.5, 7.0, 9.0, kNaN}) {
      EXPECT_EQ(c.compare(a, b, out, start), QX_ERR_RECORD_NOT_FOUND) << start;
    }
    EXPECT_TRUE(seriesNear(out, Values(8), 0)) << "cleared before the dates are read";

    expectNullsRefused<int32_t>(c.name, c.compare, QX_ERR_INVALID_PARM, a, b, kept, 0);
    EXPECT_EQ(c.compare(a, none, kept, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(kept[0], 5.0);
    for (qxBars* set : {&a.record, &b.record}) {
      qxArray alias = set->close;
      EXPECT_EQ(c.compare(a, b, &alias, 0), QX_ERR_INVALID_PARM);
      EXPECT_NE(set->close.data[0], 0.0);
    }
    qxReSizeBars(b, 0);
    EXPECT_EQ(c.compare(a, b, kept, 0), QX_ERR_RECORD_NOT_FOUND) << "an empty second market";
  }
}

TEST(TwoMarkets, WorkedExamples) {
  BarSet a(market({{1, 50}, {2, 52}, {3, 51}, {4, 53}})), b(market({{1, 48}, {3, 47}, {4, 50}}));
  Series out;
  EXPECT_TRUE(gives(qxSpread(a, b, out, 0), out, {2, 2, 4, 3}));
  EXPECT_TRUE(gives(qxCompStrength(a, b, out, 0), out, {50 / 48.0, 50 / 48.0, 51 / 47.0, 1.06}));
  EXPECT_TRUE(gives(qxCompPerformance(a, a, out, 2), out, {0, 1, 1, 1}, 0)) << "against itself";
  EXPECT_TRUE(gives(qxRSIC(a, b, out, 0, 0), out, {0, 0, 0, 0}, 0));
  EXPECT_EQ(qxRSIC(a, b, out, INT32_MAX, 0), QX_SUCCESS);
  out.record.data[0] = 8;
  EXPECT_EQ(qxRSIC(a, b, out, -1, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(out[0], 8.0) << "checks precede writes";
  // Dates that do not ascend end the walk early, never outside.
  BarSet wild(market({{9, 1}, {2, 1}, {kNaN, 1}, {4, 1}}));
  for (const auto& c : kComparisons) {
    for (const double start : {-kInfinity, 0.0, kNaN, kInfinity}) {
      c.compare(wild, b, out, start);
      c.compare(a, wild, out, start);
      EXPECT_EQ(out.record.size, 4);
    }
  }
}

TEST(TwoMarkets, RealPrices) {
  withRealBars([](BarSet& bars) {
    for (const auto& c : kComparisons) {
      Series out;
      EXPECT_EQ(c.compare(bars, bars, out, 0), QX_SUCCESS) << c.name;
      expectFinite(out, c.name);
    }
  });
}

TEST(DeTrend, TakesOffALineThatLagsByOne) {
  Series in{51, 53, 52, 51, 49, 50, 53, 55, 54, 52, 55, 57}, out;
  EXPECT_TRUE(gives(qxDeTrend(in, out, 2, 7), out,
                    {0, 0, 2.533333333, 0.9047619048, -1.723809524, -1.352380952, 1.019047619,
                     2.39047619, 0, 0, 0, 0}));
  EXPECT_EQ(out.record.firstvalid, 2);
  for (const int32_t end : {5, 4, INT32_MIN}) {
    EXPECT_TRUE(gives(qxDeTrend(in, out, 5, end), out, Values(12))) << "no line to " << end;
    EXPECT_EQ(out.record.firstvalid, 5);
  }
}

TEST(CommoditySelection, RefusesMoneyThatCannotDivide) {
  BarSet bars(workedBars());
  Series out{6};
  for (const double margin : {0.0, -4.0, kNaN}) {
    EXPECT_EQ(qxCSIndex(bars, out, 2, 1, margin, 1, 0), QX_ERR_INVALID_PARM);
  }
  EXPECT_EQ(qxCSIndex(bars, out, 2, 1, 1, -150, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(out[0], 6.0) << "checks precede writes";
}

TEST(Fibonacci, ProjectsAndRetraces) {
  double x = 0, y = 0, z = 0;
  EXPECT_EQ(qxFibonacciRetrace(100, 200, &x, &y, &z), QX_SUCCESS);
  EXPECT_TRUE(near(x, 161.8) && near(y, 150) && near(z, 138.2));
  EXPECT_EQ(qxFibonacciProject(200, 100, &x, &y, &z), QX_SUCCESS);
  EXPECT_TRUE(near(x, 261.8) && near(y, 361.8) && near(z, 523.6));
  EXPECT_EQ(qxFibonacciProject(7, 7, &x, &y, &z), QX_SUCCESS);
  EXPECT_TRUE(x == 7 && y == 7 && z == 7);
  EXPECT_EQ(qxFibonacciRetrace(kInfinity, kInfinity, &x, &y, &z), QX_SUCCESS);
  EXPECT_TRUE(std::isinf(x) && std::isinf(y) && std::isinf(z)) << "equal ends need no difference";
  expectNullsRefused("project", qxFibonacciProject, QX_ERR_INVALID_PARM, 1, 2, &x, &y, &z);
  expectNullsRefused("retrace", qxFibonacciRetrace, QX_ERR_INVALID_PARM, 1, 2, &x, &y, &z);
}

}  // namespace
