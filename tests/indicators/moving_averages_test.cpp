#include <numeric>

#include "tests/indicators/study_case.h"

namespace {

using namespace qxtest;

// Worked from the definitions.
const std::vector<StudyCase> kCases = {
    row(inPlace(study<qxSimpleMA>()), {3}, {2},
        {{0, 0, 52, 52, 50.66666667, 50, 50.66666667, 52.66666667, 54, 53.66666667, 53.66666667,
          54.66666667}}),
    row(inPlace(study<qxMovingSum>()), {3}, {2},
        {{0, 0, 156, 156, 152, 150, 152, 158, 162, 161, 161, 164}}),
    row(study<qxWeightedMA>(), {3}, {2},
        {{0, 0, 52.16666667, 51.66666667, 50.16666667, 49.83333333, 51.33333333, 53.5, 54.16666667,
          53.16666667, 53.83333333, 55.5}}),
    row(study<qxTriangularMA>(), {4}, {3},
        {{0, 0, 0, 52, 51.33333333, 50.33333333, 50.33333333, 51.66666667, 53.33333333, 53.83333333,
          53.66666667, 54.16666667}}),
    row(study<qxTriangularMA>(), {5}, {4},
        {{0, 0, 0, 0, 51.55555556, 50.88888889, 50.44444444, 51.11111111, 52.44444444, 53.44444444,
          53.77777778, 54}}),
    row(study<qxLstSqrMA>(), {4}, {3},
        {{0, 0, 0, 51.5, 48, 48.5, 52.5, 57, 56.5, 52.5, 53.5, 57.5}}),
    row(study<qxVolAdjustedMA>("cv"), {3}, {2},
        {{0, 0, 52.06451613, 52.03125, 50.4, 49.8974359, 50.8, 52.84782609, 53.97674419, 53.7,
          53.57534247, 54.86516854}}),
    row(inPlace(study<qxExpMA>()), {3}, {0},
        {{51, 52, 52, 51.5, 50.25, 50.125, 51.5625, 53.28125, 53.640625, 52.8203125, 53.91015625,
          55.45507812}}),
    row(study<qxDEMA>(), {3}, {1},
        {{51, 52.5, 52.25, 51.375, 49.5625, 49.71875, 52.078125, 54.3984375, 54.37890625,
          52.77929688, 54.43457031, 56.48974609}}),
    row(study<qxTEMA>(), {3}, {1},
        {{51, 52.75, 52.25, 51.1875, 49.1875, 49.671875, 52.515625, 54.91796875, 54.44921875,
          52.42480469, 54.54003906, 56.79760742}}),
    row(study<qxT3>(), {3, 0.7, 2}, {0},
        {{51, 51.91125, 52.130625, 51.681875, 50.3928125, 49.96304688, 51.23089844, 53.16539063,
          53.93703125, 53.26311035, 53.97956299, 55.51701416}}),
    row(study<qxZeroLagExpMA>(), {5}, {1},
        {{0, 51, 51.66666667, 50.77777778, 49.18518519, 49.12345679, 51.74897119, 54.49931413,
          54.66620942, 52.77747295, 53.85164863, 56.56776575}}),
    row(inPlace(study<qxWellesMA>()), {3}, {2},
        {{0, 0, 52, 51.66666667, 50.77777778, 50.51851852, 51.34567901, 52.56378601, 53.04252401,
          52.695016, 53.463344, 54.64222934}}),
    row(inPlace(study<qxWellesSum>()), {3}, {2},
        {{0, 0, 156, 155, 152.3333333, 151.5555556, 154.037037, 157.691358, 159.127572, 158.085048,
          160.390032, 163.926688}}),
    row(study<qxCMO>(), {3}, {3},
        {{0, 0, 0, 0, -100, -50, 33.33333333, 100, 66.66666667, -20, 0, 42.85714286}}),
    row(study<qxVIDYA>(), {3, 5}, {3},
        {{0, 0, 52, 52, 51, 50.83333333, 51.07407407, 52.38271605, 52.74211248, 52.69263832,
          52.69263832, 53.3079757}}),
};

TEST(MovingAverages, WorkedCases) {
  checkCases(kCases);
}

TEST(MovingAverages, RealPrices) {
  checkRealPrices(kCases);
  checkRealPrices({row(study<qxVariableMA>(), {20}, {}, {})});
}

TEST(MovingAverages, InPlaceKeepsWhatLiesBeforeTheStart) {
  for (const StudyCase& c : kCases) {
    if (!c.study.inPlace) continue;
    SCOPED_TRACE(describe(c));
    BarSet bars(workedBars());
    Series out, both;
    ASSERT_EQ(run(c, bars, &out, 2), QX_SUCCESS);
    Values expected = out.values();
    expected[0] = 51;
    expected[1] = 53;
    both.record = bars->close;
    EXPECT_TRUE(gives(run(c, bars, &both, 2), both, expected, 0));
    EXPECT_EQ(both.record.firstvalid, out.record.firstvalid);
    both.record = {};
  }
}

// A short series of closes from `start` on, into an output that is longer.
void checkShortSeries(const std::vector<StudyCase>& cases, int32_t start) {
  for (const StudyCase& c : cases) {
    SCOPED_TRACE(describe(c));
    BarSet bars(barsFrom("0 0 0 2 / 0 0 0 3 / 0 0 0 4 / 0 0 0 5"));
    Series out{9, 9, 9, 9, 9};
    EXPECT_TRUE(gives(run(c, bars, &out, start), out, c.values[0], 1e-14));
    EXPECT_EQ(out.record.firstvalid, c.firstValid[0]);
  }
}

TEST(MovingAverages, SeriesShorterThanTheWindow) {
  const Values none(4);
  const std::vector<StudyCase> cases = {
      row(study<qxSimpleMA>(), {10}, {10}, {{0, 0, 0, 1.2}}),  // the sum so far over the period
      row(study<qxMovingSum>(), {10}, {10}, {{0, 0, 0, 12}}),
      row(study<qxWellesMA>(), {10}, {10}, {{0, 0, 0, 1.2}}),
      row(study<qxWellesSum>(), {10}, {10}, {{0, 0, 0, 12}}),
      row(study<qxWeightedMA>(), {10}, {10}, {none}),
      row(study<qxLstSqrMA>(), {4}, {4}, {none}),
      row(study<qxLstSqrMA>(), {1}, {1}, {{0, 3, 4, 5}}),  // an element is its own line
      row(study<qxSimpleMA>(), {INT32_MAX}, {INT32_MAX}, {{0, 0, 0, 12.0 / INT32_MAX}}),
      row(study<qxWeightedMA>(), {INT32_MAX}, {INT32_MAX}, {none}),
      row(study<qxCMO>(), {INT32_MAX}, {INT32_MAX}, {none}),
      row(study<qxZeroLagExpMA>(), {kInfinity}, {INT32_MAX}, {none}),
      row(study<qxZeroLagExpMA>(), {2}, {1}, {{0, 3, 4 + 1.0 / 3, 5 + 4.0 / 9}}),  // a lag of 1
      row(study<qxVIDYA>(), {3, 2}, {4}, {{0, 0, 0, 5}}),                          // the seed alone
  };
  checkShortSeries(cases, 1);
}

TEST(MovingAverages, PeriodsBelowOne) {
  const Values none(4), noNumbers(4, kNaN);
  const std::vector<StudyCase> cases = {
      row(study<qxSimpleMA>(), {0}, {0}, {noNumbers}),
      row(study<qxMovingSum>(), {0}, {0}, {none}),           // nothing but zeros is rolled
      row(study<qxMovingSum>(), {-1}, {0}, {{1, 0, 0, 0}}),  // rolls in what lies ahead
      row(study<qxWeightedMA>(), {0}, {0}, {noNumbers}),
      row(study<qxWeightedMA>(), {-2}, {0}, {none}),  // divisor 1
      row(study<qxLstSqrMA>(), {0}, {0}, {noNumbers}),
      // Element 0 has no predecessor.
      row(study<qxWellesMA>(), {0}, {0}, {{0, kInfinity, -kInfinity, kInfinity}}),
      row(study<qxExpMA>(), {0}, {0}, {{2, 4, 4, 6}}),  // factor 2
      row(study<qxCMO>(), {0}, {0}, {none}),
      row(study<qxVIDYA>(), {0, 1}, {0}, {none}),
  };
  checkShortSeries(cases, 0);
}

TEST(MovingAverages, StartPastTheDataSetsTheLastElementInPlace) {
  Series both{1, 2, 3};
  EXPECT_TRUE(gives(qxSimpleMA(both, both, 2, 3), both, {1, 2, 0}));
}

TEST(MovingAverages, MethodsByCode) {
  const Study direct[] = {study<qxExpMA>(),      study<qxLstSqrMA>(),    study<qxSimpleMA>(),
                          study<qxWeightedMA>(), study<qxWellesMA>(),    study<qxTriangularMA>(),
                          study<qxVariableMA>(), study<qxZeroLagExpMA>()};
  std::vector<Bar> walk(60);
  for (int i = 0; i < 60; ++i)
    walk[static_cast<size_t>(i)].close = 50 + (i * 7 % 11) - (i * 5 % 13) * 0.5;
  BarSet bars(walk);
  for (int32_t method = 0; method < 8; ++method) {
    Series byCode, plain;
    EXPECT_EQ(direct[method].call({bars, "c", &plain, {3}, 2}), QX_SUCCESS);
    EXPECT_TRUE(
        gives(qxMovingAverage(&bars->close, byCode, method, 3, 2), byCode, plain.values(), 0))
        << method;
    EXPECT_EQ(byCode.record.firstvalid, plain.record.firstvalid) << method;
  }
  Series untouched({9}, 5);
  for (int32_t method : {8, -1, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(qxMovingAverage(&bars->close, untouched, method, 3, 0), QX_ERR_INVALID_PARM);
  }
  EXPECT_EQ(untouched[0], 9.0);
  EXPECT_EQ(untouched.record.firstvalid, 5);
}

TEST(MovingAverages, VariableAverageWarmsUpThirteenBarsLonger) {
  Values ramp(30);
  std::iota(ramp.begin(), ramp.end(), 0.0);
  Series in(ramp), out;
  EXPECT_EQ(qxVariableMA(in, out, 3, 1), QX_SUCCESS);
  EXPECT_EQ(out.record.firstvalid, 23);
  EXPECT_EQ(out[21], 0.0);
  EXPECT_EQ(out[22], 22.0) << "the seed";
  EXPECT_EQ(out[23], 22.5) << "momentum 100 and factor 1/2";
  for (int32_t other : {8, 10}) {
    EXPECT_EQ(qxVIDYA(in, out, other, 3, 1), QX_SUCCESS);
    EXPECT_EQ(out.record.firstvalid, 1 + other);
  }
}

TEST(MovingAverages, T3ClampsItsFactorAndEndsForAnyCount) {
  Series in{51, 53, 52, 51, 49, 50, 53, 55, 54, 52, 55, 57}, a, b;
  for (auto [given, clamped] : {std::pair(1.5, 1.0), std::pair(-0.2, 0.0)}) {
    qxT3(in, b, 4.0, clamped, 3, 0);
    EXPECT_TRUE(gives(qxT3(in, a, 4.0, given, 3, 0), a, b.values(), 0));
  }
  qxExpMA(in, b, 4.0, 0);
  EXPECT_TRUE(gives(qxT3(in, a, 4.0, 0.0, -7, 0), a, b.values(), 1e-14)) << "one pass, no factor";
  EXPECT_TRUE(gives(qxT3(in, a, 4.0, 0.0, INT32_MAX, 0), a, Values(12, 51.0), 1e-12))
      << "the seed spreads over the series";

  // A first pass of zeros is no standstill when the seed is none.
  Series pulse{1, -0.5, 0, 0}, once, twice;
  qxT3(pulse, once, 2.0, 0.0, 1, 0);
  qxT3(pulse, twice, 2.0, 0.0, 2, 0);
  EXPECT_NE(once.values(), twice.values());
}

TEST(MovingAverages, ScalarHelpers) {
  EXPECT_DOUBLE_EQ(qxEMA(10, 20, 4), 14.0);
  EXPECT_DOUBLE_EQ(qxPeriodToExp(9), 0.2);
  EXPECT_DOUBLE_EQ(qxExpToPeriod(0.2), 9.0);
}

TEST(MovingAverages, ZeroWeightsKeepZeros) {
  Series in{1, 2, 3, 4}, weights{0, 0, 1, 0}, out;
  EXPECT_TRUE(gives(qxVolAdjustedMA(in, weights, out, 2, 0), out, {0, 0, 3, 3}));
}

}  // namespace
