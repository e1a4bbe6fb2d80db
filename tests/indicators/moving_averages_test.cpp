#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

#include "tests/support/test_support.h"

namespace {

using qxtest::Series;
using qxtest::seriesNear;

using Values = std::vector<double>;

const Values kCloses = {51, 53, 52, 51, 49, 50, 53, 55, 54, 52, 55, 57};
const Values kVolumes = {1000, 1200, 900, 1100, 1500, 1300, 1700, 1600, 1000, 1400, 1250, 1800};

using Average = std::function<int32_t(const qxArray* in, qxArray* out, int32_t start)>;

// An average with its period bound.
template <typename Function, typename... Parameters>
Average bind(Function function, Parameters... parameters) {
  return [=](const qxArray* in, qxArray* out, int32_t start) {
    return function(in, out, parameters..., start);
  };
}

int32_t volumeAdjusted(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  Series weights(kVolumes);
  return qxVolAdjustedMA(in, weights, out, period, start);
}

struct Case {
  const char* name;
  Average average;
  int32_t firstValid;
  Values expected;
};

// Worked on the closes of the twelve bars, from the definitions.
const Case kWorked[] = {
    {"simple",
     bind(qxSimpleMA, 3),
     2,
     {0, 0, 52, 52, 50.6666666667, 50, 50.6666666667, 52.6666666667, 54, 53.6666666667,
      53.6666666667, 54.6666666667}},
    {"sum", bind(qxMovingSum, 3), 2, {0, 0, 156, 156, 152, 150, 152, 158, 162, 161, 161, 164}},
    {"weighted",
     bind(qxWeightedMA, 3),
     2,
     {0, 0, 52.1666666667, 51.6666666667, 50.1666666667, 49.8333333333, 51.3333333333, 53.5,
      54.1666666667, 53.1666666667, 53.8333333333, 55.5}},
    {"triangular, even",
     bind(qxTriangularMA, 4),
     3,
     {0, 0, 0, 52, 51.3333333333, 50.3333333333, 50.3333333333, 51.6666666667, 53.3333333333,
      53.8333333333, 53.6666666667, 54.1666666667}},
    {"triangular, odd",
     bind(qxTriangularMA, 5),
     4,
     {0, 0, 0, 0, 51.5555555556, 50.8888888889, 50.4444444444, 51.1111111111, 52.4444444444,
      53.4444444444, 53.7777777778, 54}},
    {"least squares",
     bind(qxLstSqrMA, 4),
     3,
     {0, 0, 0, 51.5, 48, 48.5, 52.5, 57, 56.5, 52.5, 53.5, 57.5}},
    {"volume adjusted",
     bind(volumeAdjusted, 3),
     2,
     {0, 0, 52.064516129, 52.03125, 50.4, 49.8974358974, 50.8, 52.847826087, 53.976744186, 53.7,
      53.5753424658, 54.8651685393}},
    {"exponential",
     bind(qxExpMA, 3.0),
     0,
     {51, 52, 52, 51.5, 50.25, 50.125, 51.5625, 53.28125, 53.640625, 52.8203125, 53.91015625,
      55.455078125}},
    {"double exponential",
     bind(qxDEMA, 3.0),
     1,
     {51, 52.5, 52.25, 51.375, 49.5625, 49.71875, 52.078125, 54.3984375, 54.37890625, 52.779296875,
      54.4345703125, 56.4897460938}},
    {"triple exponential",
     bind(qxTEMA, 3.0),
     1,
     {51, 52.75, 52.25, 51.1875, 49.1875, 49.671875, 52.515625, 54.91796875, 54.44921875,
      52.4248046875, 54.5400390625, 56.7976074219}},
    {"T3",
     bind(qxT3, 3.0, 0.7, 2),
     0,
     {51, 51.91125, 52.130625, 51.681875, 50.3928125, 49.963046875, 51.2308984375, 53.165390625,
      53.93703125, 53.2631103516, 53.9795629883, 55.5170141602}},
    {"zero lag",
     bind(qxZeroLagExpMA, 5.0),
     1,
     {0, 51, 51.6666666667, 50.7777777778, 49.1851851852, 49.1234567901, 51.7489711934,
      54.4993141289, 54.6662094193, 52.7774729462, 53.8516486308, 56.5677657539}},
    {"Welles",
     bind(qxWellesMA, 3),
     2,
     {0, 0, 52, 51.6666666667, 50.7777777778, 50.5185185185, 51.3456790123, 52.5637860082,
      53.0425240055, 52.6950160037, 53.4633440024, 54.642229335}},
    {"Welles sum",
     bind(qxWellesSum, 3),
     2,
     {0, 0, 156, 155, 152.333333333, 151.555555556, 154.037037037, 157.691358025, 159.127572016,
      158.085048011, 160.390032007, 163.926688005}},
    {"Chande momentum",
     bind(qxCMO, 3),
     3,
     {0, 0, 0, 0, -100, -50, 33.3333333333, 100, 66.6666666667, -20, 0, 42.8571428571}},
    {"VIDYA",
     bind(qxVIDYA, 3, 5),
     3,
     {0, 0, 52, 52, 51, 50.8333333333, 51.0740740741, 52.3827160494, 52.7421124829, 52.6926383173,
      52.6926383173, 53.3079757006}},
};

TEST(MovingAverages, WorkedValues) {
  for (const Case& c : kWorked) {
    SCOPED_TRACE(c.name);
    Series in(kCloses), out;
    qxSetMaxFirstValid(0);
    EXPECT_EQ(c.average(in, out, INT32_MIN), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(out, c.expected));
    EXPECT_EQ(out.record.firstvalid, c.firstValid);
    EXPECT_EQ(qxGetMaxFirstValid(), c.firstValid);
  }
}

TEST(MovingAverages, FirstValidInputAndStartShiftTheWholeResult) {
  for (const Case& c : kWorked) {
    if (std::strcmp(c.name, "volume adjusted") == 0) continue;  // its weights would not shift
    SCOPED_TRACE(c.name);
    Values shifted = {7e9, -7e9, NAN};  // never to be read
    shifted.insert(shifted.end(), kCloses.begin(), kCloses.end());
    Values expected(3, 0.0);
    expected.insert(expected.end(), c.expected.begin(), c.expected.end());
    Series raised(shifted, 3), plain(shifted), out(Values(20, 9.0), 11);
    EXPECT_EQ(c.average(raised, out, 1), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(out, expected));
    EXPECT_EQ(out.record.firstvalid, c.firstValid + 3);
    for (int32_t i = 15; i < 20; ++i) EXPECT_EQ(out[i], 0.0) << "cleared over its capacity";
    EXPECT_EQ(c.average(plain, out, 3), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(out, expected));
  }
}

TEST(MovingAverages, RefuseBeforeWriting) {
  for (const Case& c : kWorked) {
    SCOPED_TRACE(c.name);
    Series in(kCloses), none, out{9, 9};
    EXPECT_EQ(c.average(nullptr, out, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(c.average(in, nullptr, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(c.average(none, out, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(c.average(none, none, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(out[0], 9.0);
    Series empty{1};
    qxReSizeArray(empty, 0);
    EXPECT_EQ(c.average(empty, empty, 0), QX_ERR_INVALID_PARM);
  }
}

TEST(MovingAverages, InPlaceKeepsWhatLiesBeforeTheStart) {
  const char* const inPlace[] = {"simple", "sum", "exponential", "Welles", "Welles sum"};
  for (const Case& c : kWorked) {
    SCOPED_TRACE(c.name);
    Series in(kCloses), out, both(kCloses);
    ASSERT_EQ(c.average(in, out, 2), QX_SUCCESS);
    const bool allowed = std::any_of(std::begin(inPlace), std::end(inPlace),
                                     [&](const char* n) { return std::strcmp(n, c.name) == 0; });
    if (!allowed) {
      EXPECT_EQ(c.average(both, both, 2), QX_ERR_INVALID_PARM);
      EXPECT_EQ(both.values(), kCloses);
      continue;
    }
    EXPECT_EQ(c.average(both, both, 2), QX_SUCCESS);
    Values expected = out.values();
    expected[0] = kCloses[0];
    expected[1] = kCloses[1];
    EXPECT_EQ(both.values(), expected);
    EXPECT_EQ(both.record.firstvalid, out.record.firstvalid);
  }
}

TEST(MovingAverages, SeriesShorterThanTheWindow) {
  const double inf = std::numeric_limits<double>::infinity();
  const Case cases[] = {
      {"partial sum over the period", bind(qxSimpleMA, 10), 10, {0, 0, 0, 1.2}},
      {"partial sum", bind(qxMovingSum, 10), 10, {0, 0, 0, 12}},
      {"partial Welles", bind(qxWellesMA, 10), 10, {0, 0, 0, 1.2}},
      {"partial Welles sum", bind(qxWellesSum, 10), 10, {0, 0, 0, 12}},
      {"no weighted window", bind(qxWeightedMA, 10), 10, {0, 0, 0, 0}},
      {"no line", bind(qxLstSqrMA, 4), 4, {0, 0, 0, 0}},
      {"line of one", bind(qxLstSqrMA, 1), 1, {0, 3, 4, 5}},
      {"huge", bind(qxSimpleMA, INT32_MAX), INT32_MAX, {0, 0, 0, 12.0 / INT32_MAX}},
      {"huge weighted", bind(qxWeightedMA, INT32_MAX), INT32_MAX, {0, 0, 0, 0}},
      {"huge CMO", bind(qxCMO, INT32_MAX), INT32_MAX, {0, 0, 0, 0}},
      {"infinite lag", bind(qxZeroLagExpMA, inf), INT32_MAX, {0, 0, 0, 0}},
      {"lag raised to 1", bind(qxZeroLagExpMA, 2.0), 1, {0, 3, 4 + 1.0 / 3, 5 + 4.0 / 9}},
      {"VIDYA seed only", bind(qxVIDYA, 3, 2), 4, {0, 0, 0, 5}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Series in{2, 3, 4, 5}, out;
    EXPECT_EQ(c.average(in, out, 1), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(out, c.expected, 1e-14));
    EXPECT_EQ(out.record.firstvalid, c.firstValid);
  }
}

TEST(MovingAverages, PeriodsBelowOne) {
  const double inf = std::numeric_limits<double>::infinity();
  const Case cases[] = {
      {"0 / 0 throughout", bind(qxSimpleMA, 0), 0, {NAN, NAN, NAN, NAN}},
      {"nothing but zeros is rolled", bind(qxMovingSum, 0), 0, {0, 0, 0, 0}},
      {"rolls in what lies ahead", bind(qxMovingSum, -1), 0, {1, 0, 0, 0}},
      {"weights of no window", bind(qxWeightedMA, 0), 0, {NAN, NAN, NAN, NAN}},
      {"divisor 1", bind(qxWeightedMA, -2), 0, {0, 0, 0, 0}},
      {"line of no window", bind(qxLstSqrMA, 0), 0, {NAN, NAN, NAN, NAN}},
      {"no predecessor of element 0", bind(qxWellesMA, 0), 0, {0, inf, -inf, inf}},
      {"factor 2", bind(qxExpMA, 0.0), 0, {2, 4, 4, 6}},
      {"nothing accumulates", bind(qxCMO, 0), 0, {0, 0, 0, 0}},
      {"no seed", bind(qxVIDYA, 0, 1), 0, {0, 0, 0, 0}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Series in{2, 3, 4, 5}, out{9, 9, 9, 9, 9};
    EXPECT_EQ(c.average(in, out, 0), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(out, c.expected));
    EXPECT_EQ(out.record.firstvalid, c.firstValid);
  }
  for (int32_t period : {INT32_MIN, -1000, -3, -1, 0}) {
    for (int32_t start : {INT32_MIN, 0, 3, 4, 100, INT32_MAX}) {
      for (int32_t method = 0; method < 8; ++method) {
        Series in{2, 3, 4, 5}, out;
        EXPECT_EQ(qxMovingAverage(in, out, method, period, start), QX_SUCCESS);
        EXPECT_GE(out.record.firstvalid, 0);
      }
      Series in{2, 3, 4, 5}, out;
      EXPECT_EQ(qxVolAdjustedMA(in, in, out, period, start), QX_SUCCESS);
      EXPECT_EQ(qxWellesSum(in, in, period, start), QX_SUCCESS);
      EXPECT_EQ(qxVIDYA(in, out, period, period, start), QX_SUCCESS);
      EXPECT_EQ(qxSimpleMA(in, in, period, start), QX_SUCCESS);
    }
  }
}

TEST(MovingAverages, StartPastTheDataSetsOnlyTheLastElementOfRunningSums) {
  for (const Case& c : kWorked) {
    SCOPED_TRACE(c.name);
    Series in(kCloses), out;
    EXPECT_EQ(c.average(in, out, 12), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(out, Values(12, 0.0), 0));
    EXPECT_EQ(out.record.firstvalid, c.firstValid + 12);
  }
  Series both{1, 2, 3};
  EXPECT_EQ(qxSimpleMA(both, both, 2, 3), QX_SUCCESS);
  EXPECT_EQ(both.values(), (Values{1, 2, 0}));
}

TEST(MovingAverages, MethodsByCode) {
  const Average direct[] = {bind(qxExpMA, 3.0),    bind(qxLstSqrMA, 3),
                            bind(qxSimpleMA, 3),   bind(qxWeightedMA, 3),
                            bind(qxWellesMA, 3),   bind(qxTriangularMA, 3),
                            bind(qxVariableMA, 3), bind(qxZeroLagExpMA, 3.0)};
  Values walk;
  for (int i = 0; i < 60; ++i) walk.push_back(50 + (i * 7 % 11) - (i * 5 % 13) * 0.5);
  Series in(walk);
  for (int32_t method = 0; method < 8; ++method) {
    Series byCode, plain;
    EXPECT_EQ(qxMovingAverage(in, byCode, method, 3, 2), QX_SUCCESS);
    EXPECT_EQ(direct[method](in, plain, 2), QX_SUCCESS);
    EXPECT_EQ(byCode.values(), plain.values()) << method;
    EXPECT_EQ(byCode.record.firstvalid, plain.record.firstvalid) << method;
  }
  Series untouched({9}, 5);
  for (int32_t method : {8, -1, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(qxMovingAverage(in, untouched, method, 3, 0), QX_ERR_INVALID_PARM);
  }
  EXPECT_EQ(untouched[0], 9.0);
  EXPECT_EQ(untouched.record.firstvalid, 5);
}

TEST(MovingAverages, VariableAverageWarmsUpThirteenBarsLonger) {
  Values ramp;
  for (int i = 0; i < 30; ++i) ramp.push_back(i);
  Series in(ramp), out;
  EXPECT_EQ(qxVariableMA(in, out, 3, 1), QX_SUCCESS);
  EXPECT_EQ(out.record.firstvalid, 23);
  EXPECT_EQ(out[21], 0.0);
  EXPECT_EQ(out[22], 22.0) << "the seed";
  EXPECT_EQ(out[23], 22.5) << "momentum 100 and factor 1/2";
  for (int32_t other : {8, 10}) {
    Series usual;
    EXPECT_EQ(qxVIDYA(in, usual, other, 3, 1), QX_SUCCESS);
    EXPECT_EQ(usual.record.firstvalid, 1 + other);
  }
}

TEST(MovingAverages, T3ClampsItsFactorAndEndsForAnyCount) {
  Series in(kCloses), a, b;
  for (auto [given, clamped] : {std::pair(1.5, 1.0), std::pair(-0.2, 0.0)}) {
    qxT3(in, a, 4.0, given, 3, 0);
    qxT3(in, b, 4.0, clamped, 3, 0);
    EXPECT_EQ(a.values(), b.values());
  }
  qxT3(in, a, 4.0, 0.0, -7, 0);
  qxExpMA(in, b, 4.0, 0);
  EXPECT_TRUE(seriesNear(a, b.values(), 1e-14)) << "one pass without a factor";
  EXPECT_EQ(qxT3(in, a, 4.0, 0.0, INT32_MAX, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(a, Values(12, 51.0), 1e-12)) << "the seed spreads over the series";

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
  EXPECT_EQ(qxVolAdjustedMA(in, weights, out, 2, 0), QX_SUCCESS);
  EXPECT_EQ(out.values(), (Values{0, 0, 3, 3}));
}

}  // namespace
