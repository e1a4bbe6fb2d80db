#include <cmath>
#include <random>

#include "tests/indicators/study_case.h"

namespace {

using namespace qxtest;

const std::vector<StudyCase> kCases = {
    row(study<qxOBV>(), {}, {1},
        {{0, 1200, 300, -800, -2300, -1000, 700, 2300, 1300, -100, 1150, 2950}},
        {{0, 0, 0, -200, -200, 200, -300, -200}}),
    row(study<qxOBVolMv>(), {notBelow(0, 3)}, {3},
        {{0, 0, 0, -800, -3500, -1300, 1500, 4600, 2300, -800, -1150, 1650}},
        {{0, 0, 0, 0, 0, 200, -100, 0}}),
    row(study<qxOBOiMv>(), {period(3)}, {2},
        {{0, 0, 5050, -4950, -5150, 5100, 15900, 16150, 5400, -5300, 5500, 16150}},
        {{0, 0, 0, 0, -15, 160, 160, 130}}),
    row(study<qxOBVolExp>(), {period(3)}, {1},
        {{0, 1200, 750, -25, -1162.5, -1081.25, -190.625, 1054.6875, 1177.34375, 538.671875,
          844.3359375, 1897.167969}},
        {{0, 0, 0, -200, -200, 0, -150, -175}}),
    row(study<qxAccumDist>(), {}, {0},
        {{333.3333333, 933.3333333, 33.33333333, -333.3333333, -1083.333333, -433.3333333,
          1266.666667, 2066.666667, 1066.666667, 600, 1850, 2750}},
        {{0, 0, 300, 100, 100, 300, 0, 100}}),
    row(study<qxAccumulate>("v"), {}, {0},
        {{1000, 2200, 3100, 4200, 5700, 7000, 8700, 10300, 11300, 12700, 13950, 15750}},
        {{0, 0, 300, 500, 700, 1100, 1600, 1700}}),
    row(study<qxChaikinMoneyFlow>(), {period(3)}, {2},
        {{0, 0, 0.01075268817, -0.2083333333, -0.5761904762, -0.1196581197, 0.3555555556,
          0.6847826087, 0.3488372093, -0.1666666667, -0.05936073059, 0.3782771536}},
        {{0, 0, 0, 0, 0.1428571429, 0, -0.09090909091, 0}}),
    row(study<qxChaikinOscillator>(), {2, 4}, {0},
        {{0, 160, -90.66666667, -214.4, -381.9733333, -140.2951111, 398.7858963, 613.5925254,
          226.2625111, -35.9846058, 254.495199, 484.7257736}},
        {{0, 0, 0, -53.33333333, -49.77777778, 17.54074074, -53.67308642, -26.93636214}}),
    row(study<qxNVI>(), {}, {1},
        {{0, 0, -0.01886792453, -0.01886792453, -0.01886792453, 0.001540238737, 0.001540238737,
          0.03927608779, 0.02109426961, 0.02109426961, 0.0787865773, 0.0787865773}},
        {{0, 0, 0, -0.08333333333, -0.08333333333, -0.08333333333, -0.08333333333, 0.25}}),
    row(study<qxPVI>(), {}, {1},
        {{0, 0.03921568627, 0.03921568627, 0.01998491704, -0.01923076923, -0.01923076923,
          0.04076923077, 0.04076923077, 0.04076923077, 0.003732193732, 0.003732193732,
          0.0400958301}},
        {{0, 0, 0, 0, 0, 0.1818181818, -0.1258741259, -0.1258741259}}),
    row(study<qxPVT>(), {}, {1},
        {{0, 47.05882353, 30.07769145, 8.9238453, -49.89968411, -23.36907187, 78.63092813,
          139.0082866, 120.8264684, 68.97461659, 141.0900012, 206.5445467}},
        {{0, 0, 0, -16.66666667, -16.66666667, 56.06060606, -97.78554779, -64.45221445}}),
    row(study<qxPVO>(), {2, 4, QX_MA_EXPONENTIAL}, {3},
        {{0, 0, 0, 1.383926039, 10.28677782, 4.901369387, 9.687564014, 6.042434689, -7.935550127,
          -0.5788456191, -2.040224623, 8.212468317}},
        {{0, 0, 0, 0, 0, 11.74968072, 16.98840097, -19.86389795}}),
    row(study<qxPVO>(), {4, 2, QX_MA_SIMPLE}, {3},
        {{0, 0, 0, 5, -9.615384615, -14.28571429, -6.666666667, -7.575757576, 7.692307692, 18.75,
          -0.9433962264, -10.6557377}},
        {{0, 0, 0, 0, 0, -8.333333333, -27.77777778, 0}}),
    row(study<qxPVrank>(), {}, {1}, {{0, 1, 3, 4, 4, 2, 1, 2, 3, 4, 2, 1}},
        {{0, 0, 0, 3, 1, 1, 4, 2}}),
    row(study<qxArmsEMV>(), {1000}, {1},
        {{0, 5, 5, -5.454545455, -4, -3.076923077, 4.411764706, 6.25, 4.5, -6.428571429, 2.4,
          5.555555556}},
        {{0, 0, 0, 0, 0, 10, -15, 0}}),
    row(readingOn(study<qxMFI>()), {}, {0},
        {{3.9375, 4.375, 4.375, 3.579545455, 3.5, 4.038461538, 2.316176471, 3.28125, 3.9375, 2.8125,
          3.15, 2.916666667}},
        {{0, 0, 0, 0, 5.666666667, 2.833333333, 2.833333333, 8.5}}),
};

TEST(Volume, WorkedCases) {
  checkCases(kCases);
}

TEST(Volume, RealPrices) {
  checkRealPrices(kCases);
}

TEST(Volume, RangesOverBarsAreClippedAndNotSwapped) {
  BarSet bars(workedBars());
  const struct {
    int32_t from, to;
    double volume, openInterest;
  } cases[] = {{0, 3, -800, 50},
               {1, 1, 0, 5100},
               {0, 1, 1200, 10100},
               {5, 3, 0, 5300},
               {9, INT32_MAX, 3050, 16150},
               {12, 20, 0, 0},
               {INT32_MAX, 3, 0, 0},
               {INT32_MIN, 1, 1200, 10100},
               {3, INT32_MIN, 0, 5000}};
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
    std::vector<Bar> data;
    for (int i = 0; i < 60; ++i) {
      const double close = 10 + below(5);
      data.push_back({1.0 * i, 1, 1, 1, close, below(900) * unit, below(90) * unit});
    }
    BarSet bars(data);
    for (const int32_t length : {1, 2, 7, 30, 59, 60, 61}) {
      Series volume, openInterest;
      EXPECT_EQ(qxOBVolMv(bars, volume, length, 1), QX_SUCCESS);
      EXPECT_EQ(qxOBOiMv(bars, openInterest, length, 1), QX_SUCCESS);
      for (int32_t i = 0; i < 60; ++i) {
        EXPECT_EQ(volume[i], i < 1 + length ? 0.0 : qxOBVol(bars, i - length, i));
        EXPECT_EQ(openInterest[i], i < length ? 0.0 : qxOBOi(bars, i - length + 1, i));
      }
    }
  }
}

TEST(Volume, DegenerateStudies) {
  BarSet bars(barsFrom("0 1 1 0 5 / 0 1 1 3 4 / 0 1 1 3 9"));
  Series out;
  EXPECT_TRUE(gives(qxNVI(bars, out, 0), out, {0, INFINITY, INFINITY})) << "unguarded";
  EXPECT_TRUE(gives(qxPVT(bars, out, 0), out, {0, INFINITY, INFINITY})) << "unguarded";
  EXPECT_TRUE(gives(qxPVO(bars, out, 1, 2, 8, 0), out, {0, 0, 0}, 0)) << "unknown method";
  EXPECT_EQ(out.record.firstvalid, 1);
  BarSet worked(workedBars());
  EXPECT_TRUE(gives(qxOBVolMv(worked, out, 0, 1), out, {0, 0, 0})) << "no change in the window";
  EXPECT_EQ(out.record.firstvalid, 1);
  EXPECT_TRUE(gives(qxArmsEMV(worked, out, 0, 0), out, {0, 0, 0})) << "an infinite box";
}

TEST(Volume, RankTakesEqualsForRises) {
  BarSet bars(barsFrom("9 9 9 9 5 / 9 9 9 9 4 / 9 9 9 9 4 / 9 9 9 8 4 / 9 9 9 8 5"));
  Series out;
  EXPECT_TRUE(gives(qxPVrank(bars, out, 0), out, {0, 2, 1, 4, 1}));
}

TEST(Volume, CloseLocationOfABarWithoutRange) {
  // The start bar counts as up wherever it lies, later ones follow the close.
  BarSet bars(barsFrom("0 9 9 9 5 / 0 8 8 8 7 / 0 8 8 8 11"));
  Series out;
  EXPECT_TRUE(gives(qxAccumDist(bars, out, 0), out, {5, -2, 9}, 0));
  EXPECT_TRUE(gives(qxAccumDist(bars, out, 1), out, {0, 7, 18}, 0));
}

TEST(Volume, SumsBeginWithTheirFirstTerm) {
  // A close at the low on no volume flows -0.0, which the line starts with, bit for bit.
  BarSet bars(barsFrom("9 9 8 8 0 / 9 9 8 9 3"));
  Series in({-0.0, 2}), none({0.0, 0}), out;
  EXPECT_TRUE(gives(qxAccumDist(bars, out, 0), out, {0, 3}));
  EXPECT_TRUE(std::signbit(out[0]));
  qxAccumulate(in, out, 0);
  EXPECT_TRUE(std::signbit(out[0]));
  qxCVI(in, none, out, 0);
  EXPECT_TRUE(std::signbit(out[0]));
}

TEST(Volume, FacilitationAveragesToTheEndOfTheBars) {
  BarSet bars(barsFrom("0 3 1 2 10 / 0 3 1 2 0 / 0 3 1 2 30"));
  Series whole, cut{0};
  EXPECT_TRUE(gives(qxMFI(bars, whole, 0), whole, {4, 0, 20 * 2.0 / 30}, 0));
  EXPECT_TRUE(gives(qxMFI(bars, cut, 0), cut, {4})) << "a small output leaves the average alone";
}

}  // namespace
