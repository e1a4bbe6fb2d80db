#include <cmath>
#include <random>

#include "tests/indicators/bar_study_cases.h"

namespace {

using qxtest::BarSet;
using qxtest::BarStudyCase;
using qxtest::near;
using qxtest::Series;

const BarStudyCase kCases[] = {
    {"qxOBV",
     qxOBV,
     1,
     {0, 1200, 300, -800, -2300, -1000, 700, 2300, 1300, -100, 1150, 2950},
     {0, 0, 0, -200, -200, 200, -300, -200}},
    {"qxOBVolMv",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxOBVolMv(b, o, 3, s); },
     3,
     {0, 0, 0, -800, -3500, -1300, 1500, 4600, 2300, -800, -1150, 1650},
     {0, 0, 0, 0, 0, 200, -100, 0}},
    {"qxOBOiMv",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxOBOiMv(b, o, 3, s); },
     2,
     {0, 0, 5050, -4950, -5150, 5100, 15900, 16150, 5400, -5300, 5500, 16150},
     {0, 0, 0, 0, -15, 160, 160, 130}},
    {"qxOBVolExp",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxOBVolExp(b, o, 3, s); },
     1,
     {0, 1200, 750, -25, -1162.5, -1081.25, -190.625, 1054.6875, 1177.34375, 538.671875,
      844.3359375, 1897.16796875},
     {0, 0, 0, -200, -200, 0, -150, -175}},
    {"qxAccumDist",
     qxAccumDist,
     0,
     {333.333333333, 933.333333333, 33.3333333333, -333.333333333, -1083.33333333, -433.333333333,
      1266.66666667, 2066.66666667, 1066.66666667, 600, 1850, 2750},
     {0, 0, 300, 100, 100, 300, 0, 100}},
    {"qxAccumulate",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxAccumulate(&b->volume, o, s); },
     0,
     {1000, 2200, 3100, 4200, 5700, 7000, 8700, 10300, 11300, 12700, 13950, 15750},
     {0, 0, 300, 500, 700, 1100, 1600, 1700}},
    {"qxChaikinMoneyFlow",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxChaikinMoneyFlow(b, o, 3, s); },
     2,
     {0, 0, 0.010752688172, -0.208333333333, -0.57619047619, -0.119658119658, 0.355555555556,
      0.684782608696, 0.348837209302, -0.166666666667, -0.0593607305936, 0.378277153558},
     {0, 0, 0, 0, 0.142857142857, 0, -0.0909090909091, 0}},
    {"qxChaikinOscillator",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxChaikinOscillator(b, o, 2, 4, s); },
     0,
     {0, 160, -90.6666666667, -214.4, -381.973333333, -140.295111111, 398.785896296, 613.592525432,
      226.262511144, -35.9846057964, 254.495199028, 484.725773585},
     {0, 0, 0, -53.3333333333, -49.7777777778, 17.5407407407, -53.6730864198, -26.9363621399}},
    {"qxNVI",
     qxNVI,
     1,
     {0, 0, -0.0188679245283, -0.0188679245283, -0.0188679245283, 0.001540238737, 0.001540238737,
      0.0392760877936, 0.0210942696118, 0.0210942696118, 0.0787865773041, 0.0787865773041},
     {0, 0, 0, -0.0833333333333, -0.0833333333333, -0.0833333333333, -0.0833333333333, 0.25}},
    {"qxPVI",
     qxPVI,
     1,
     {0, 0.0392156862745, 0.0392156862745, 0.0199849170437, -0.0192307692308, -0.0192307692308,
      0.0407692307692, 0.0407692307692, 0.0407692307692, 0.00373219373219, 0.00373219373219,
      0.0400958300958},
     {0, 0, 0, 0, 0, 0.181818181818, -0.125874125874, -0.125874125874}},
    {"qxPVT",
     qxPVT,
     1,
     {0, 47.0588235294, 30.0776914539, 8.92384530009, -49.8996841117, -23.3690718668, 78.6309281332,
      139.008286624, 120.826468442, 68.9746165901, 141.090001206, 206.54454666},
     {0, 0, 0, -16.6666666667, -16.6666666667, 56.0606060606, -97.7855477855, -64.4522144522}},
    {"qxPVO, exponential",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxPVO(b, o, 2, 4, QX_MA_EXPONENTIAL, s); },
     3,
     {0, 0, 0, 1.38392603936, 10.2867778229, 4.9013693868, 9.68756401375, 6.04243468894,
      -7.93555012742, -0.578845619146, -2.04022462327, 8.21246831664},
     {0, 0, 0, 0, 0, 11.7496807152, 16.9884009727, -19.8638979475}},
    {"qxPVO, simple",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxPVO(b, o, 4, 2, QX_MA_SIMPLE, s); },
     3,
     {0, 0, 0, 5, -9.61538461538, -14.2857142857, -6.66666666667, -7.57575757576, 7.69230769231,
      18.75, -0.943396226415, -10.6557377049},
     {0, 0, 0, 0, 0, -8.33333333333, -27.7777777778, 0}},
    {"qxPVrank", qxPVrank, 1, {0, 1, 3, 4, 4, 2, 1, 2, 3, 4, 2, 1}, {0, 0, 0, 3, 1, 1, 4, 2}},
    {"qxArmsEMV",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxArmsEMV(b, o, 1000, s); },
     1,
     {0, 5, 5, -5.45454545455, -4, -3.07692307692, 4.41176470588, 6.25, 4.5, -6.42857142857, 2.4,
      5.55555555556},
     {0, 0, 0, 0, 0, 10, -15, 0}},
    {"qxMFI",
     qxMFI,
     0,
     {3.9375, 4.375, 4.375, 3.57954545455, 3.5, 4.03846153846, 2.31617647059, 3.28125, 3.9375,
      2.8125, 3.15, 2.91666666667},
     {0, 0, 0, 0, 5.66666666667, 2.83333333333, 2.83333333333, 8.5}},
};

TEST(Volume, AgreesWithAnIndependentComputation) {
  for (const BarStudyCase& c : kCases) checkStudy(c);
}

TEST(Volume, StaysFiniteOnRealBars) {
  checkFiniteOnRealBars(kCases);
}

TEST(Volume, RangesOverBarsAreClippedAndNotSwapped) {
  BarSet bars(qxtest::workedBars());
  const struct {
    int32_t from, to;
    double volume, openInterest;
  } cases[] = {
      {0, 3, -800, 50},
      {1, 1, 0, 5100},
      {0, 1, 1200, 10100},
      {5, 3, 0, 5300},
      {9, INT32_MAX, 3050, 16150},
      {12, 20, 0, 0},
      {INT32_MAX, 3, 0, 0},
      {INT32_MIN, 1, 1200, 10100},
      {3, INT32_MIN, 0, 5000},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(qxOBVol(bars, c.from, c.to), c.volume) << c.from << ".." << c.to;
    EXPECT_EQ(qxOBOi(bars, c.from, c.to), c.openInterest) << c.from << ".." << c.to;
  }
  EXPECT_EQ(qxOBVol(nullptr, 0, 1), 0.0);
  EXPECT_EQ(qxOBOi(nullptr, 0, 1), 0.0);
}

// The moving forms have a fast way for whole numbers; either way gives the bits of the range form.
TEST(Volume, MovingBalancesEqualTheRangeForm) {
  std::mt19937 random(7);
  const auto below = [&random](uint32_t bound) { return static_cast<double>(random() % bound); };
  for (const double unit : {1.0, 0.1, 1e13}) {
    std::vector<qxtest::Bar> data;
    for (int i = 0; i < 60; ++i) {
      const double close = 10 + below(5);
      data.push_back({1.0 * i, 1, 1, 1, close, below(900) * unit, below(90) * unit});
    }
    BarSet bars(data);
    for (const int32_t period : {1, 2, 7, 30, 59, 60, 61}) {
      Series volume, openInterest;
      EXPECT_EQ(qxOBVolMv(bars, volume, period, 1), QX_SUCCESS);
      EXPECT_EQ(qxOBOiMv(bars, openInterest, period, 1), QX_SUCCESS);
      for (int32_t i = 0; i < 60; ++i) {
        EXPECT_EQ(volume[i], i < 1 + period ? 0.0 : qxOBVol(bars, i - period, i));
        EXPECT_EQ(openInterest[i], i < period ? 0.0 : qxOBOi(bars, i - period + 1, i));
      }
    }
  }
}

TEST(Volume, HostilePeriods) {
  BarSet bars(qxtest::workedBars());
  Series out{3, 3, 3};
  for (const int32_t period : {0, -1, INT32_MIN}) {
    EXPECT_EQ(qxOBOiMv(bars, out, period, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxChaikinMoneyFlow(bars, out, period, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxOBVolExp(bars, out, period, 0), QX_ERR_INVALID_PARM);
  }
  EXPECT_EQ(qxOBVolMv(bars, out, -1, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(out.values(), (std::vector<double>{3, 3, 3})) << "checks precede writes";
  EXPECT_EQ(qxOBVolMv(bars, out, 0, 1), QX_SUCCESS) << "no change in the window";
  EXPECT_EQ(out.values(), (std::vector<double>{0, 0, 0}));
  EXPECT_EQ(out.record.firstvalid, 1);
  for (auto study : {qxOBVolMv, qxOBOiMv, qxChaikinMoneyFlow}) {
    EXPECT_EQ(study(bars, out, INT32_MAX, INT32_MAX), QX_SUCCESS);
    EXPECT_EQ(out.record.firstvalid, INT32_MAX);
  }
  EXPECT_EQ(qxChaikinOscillator(bars, out, INT32_MIN, -1, 0), QX_SUCCESS);
  EXPECT_EQ(qxArmsEMV(bars, out, 0, 0), QX_SUCCESS);
  EXPECT_EQ(out[1], 0.0) << "an infinite box";
  qxSetMaxFirstValid(0);
}

TEST(Volume, CloseLocationOfABarWithoutRange) {
  // The start bar counts as up wherever it lies, later ones follow the close.
  BarSet bars({{0, 0, 9, 9, 9, 5, 0}, {0, 0, 8, 8, 8, 7, 0}, {0, 0, 8, 8, 8, 11, 0}});
  Series out;
  qxAccumDist(bars, out, 0);
  EXPECT_TRUE(seriesNear(out, {5, -2, 9}, 0));
  qxAccumDist(bars, out, 1);
  EXPECT_TRUE(seriesNear(out, {0, 7, 18}, 0));
}

TEST(Volume, AccumulateUsesTheStartIndexRule) {
  Series in({1, 2, 3, 4}, 2), out;
  EXPECT_EQ(qxAccumulate(in, out, 1), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0, 3, 7}, 0));
  EXPECT_EQ(out.record.firstvalid, 2);
  EXPECT_EQ(qxAccumulate(in, in, 0), QX_ERR_INVALID_PARM);
}

TEST(Volume, SumsBeginWithTheirFirstTerm) {
  // A close at the low on no volume flows -0.0, which the line starts with, bit for bit.
  BarSet bars({{0, 9, 9, 8, 8, 0, 0}, {0, 9, 9, 8, 9, 3, 0}});
  Series in({-0.0, 2}), none({0.0, 0}), out;
  qxAccumDist(bars, out, 0);
  EXPECT_TRUE(std::signbit(out[0]));
  EXPECT_EQ(out[1], 3.0);
  qxAccumulate(in, out, 0);
  EXPECT_TRUE(std::signbit(out[0]));
  qxCVI(in, none, out, 0);
  EXPECT_TRUE(std::signbit(out[0]));
}

TEST(Volume, FacilitationAveragesToTheEndOfTheBars) {
  BarSet bars({{0, 0, 3, 1, 2, 10, 0}, {0, 0, 3, 1, 2, 0, 0}, {0, 0, 3, 1, 2, 30, 0}});
  Series whole, cut{0};
  qxMFI(bars, whole, 0);
  EXPECT_TRUE(seriesNear(whole, {4, 0, 20 * 2.0 / 30}, 0));
  qxMFI(bars, cut, 0);
  EXPECT_EQ(cut[0], 4.0) << "a small output leaves the average alone";
}

TEST(Volume, UnguardedDivisionsFollowIeee) {
  BarSet bars({{0, 0, 1, 1, 0, 5, 0}, {0, 0, 1, 1, 3, 4, 0}, {0, 0, 1, 1, 3, 9, 0}});
  Series out;
  qxNVI(bars, out, 0);
  EXPECT_EQ(out[1], INFINITY);
  qxPVT(bars, out, 0);
  EXPECT_EQ(out[2], INFINITY);
  EXPECT_EQ(qxPVO(bars, out, 1, 2, 8, 0), QX_SUCCESS) << "unknown method";
  EXPECT_TRUE(seriesNear(out, {0, 0, 0}, 0));
  EXPECT_EQ(out.record.firstvalid, 1);
}

}  // namespace
