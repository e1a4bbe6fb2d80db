#include <algorithm>
#include <cmath>

#include "tests/indicators/study_case.h"

namespace {

using namespace qxtest;

const std::vector<StudyCase> kCases = {
    row(study<qxOscillator>(), {}, {0}, {{1, 2, -1, -1, -2, 1, 3, 2, -1, -2, 3, 2}}),
    row(study<qxOscillatorPct>(), {}, {0},
        {{2, 3.921568627, -1.886792453, -1.923076923, -3.921568627, 2.040816327, 6, 3.773584906,
          -1.818181818, -3.703703704, 5.769230769, 3.636363636}}),
    row(raisedBy("c", study<qxRatio>()), {}, {0},
        {{1.02, 1.039215686, 0.9811320755, 0.9807692308, 0.9607843137, 1.020408163, 1.06,
          1.037735849, 0.9818181818, 0.962962963, 1.057692308, 1.036363636}}),
    row(study<qxMomentum>(), {notBelow(0, 4)}, {4}, {{0, 0, 0, 0, -2, -3, 1, 4, 5, 2, 2, 2}}),
    row(study<qxRateOfChange>(), {100, notBelow(0, 3)}, {3},
        {{0, 0, 0, 0, -7.547169811, -3.846153846, 3.921568627, 12.24489796, 8, -1.886792453, 0,
          5.555555556}}),
    row(study<qxRMI>(), {3, notBelow(0, 2)}, {4},
        {{0, 0, 0, 0, 16.66666667, 13.33333333, 60.60606061, 80.52434457, 83.08943089, 52.16947422,
          59.67290725, 81.47214395}}),
    row(study<qxRSI>(), {3}, {3},
        {{0, 0, 0, 50, 28.57142857, 45.94594595, 74.19354839, 83.05084746, 66.04886268, 40.91858038,
          68.16871705, 78.216107}}),
    row(study<qxUpAverage>(), {3}, {3},
        {{0, 0, 0, 0.6666666667, 0.4444444444, 0.6296296296, 1.419753086, 1.613168724, 1.075445816,
          0.7169638775, 1.477975918, 1.651983946}}),
    row(study<qxDownAverage>(), {3}, {3},
        {{0, 0, 0, 0.6666666667, 1.111111111, 0.7407407407, 0.4938271605, 0.329218107, 0.5528120713,
          1.035208048, 0.6901386984, 0.4600924656}}),
    row(raisedBy("", study<qxPriceOscillator>()), {2, 4, QX_MA_SIMPLE}, {3},
        {{0, 0, 0, -0.25, -1.25, -1, 0.75, 2.25, 1.5, -0.5, -0.5, 1.5}}),
    row(raisedBy("", study<qxPriceOscillatorPct>()), {5, 2, QX_MA_EXPONENTIAL}, {4},
        {{0, 0, 0, 0, 1.78527151, 1.046732053, -1.298461376, -2.699841634, -1.804520192,
          0.03077305978, -1.415038209, -2.563629926}}),
    row(study<qxDPO>(), {notBelow(0, 5)}, {1}, {{0, 1.8, 1, 0, -2.6, -2.2, 0.2, 1.2, -0.6}}),
    row(study<qxMACD>(), {3}, {1, 1},
        {{0, 0.15, 0.19125, 0.14653125, -0.04027734375, -0.1117024805, 0.05839615869, 0.3414792569,
          0.4852117013, 0.442762704, 0.6294060995, 0.9190736506},
         {0, 0.15, 0.170625, 0.158578125, 0.05915039063, -0.02627604492, 0.01606005688,
          0.1787696569, 0.3319906791, 0.3873766916, 0.5083913956, 0.7137325231}}),
    row(study<qxMACDx>(), {5, 2, 2}, {0, 0, 0, 1, 1},
        {{51, 52.33333333, 52.11111111, 51.37037037, 49.79012346, 49.93004115, 51.97668038,
          53.99222679, 53.99740893, 52.66580298, 54.22193433, 56.07397811},
         {51, 51.66666667, 51.77777778, 51.51851852, 50.67901235, 50.4526749, 51.30178326,
          52.53452218, 53.02301478, 52.68200986, 53.45467324, 54.63644883},
         {0, 0.6666666667, 0.3333333333, -0.1481481481, -0.8888888889, -0.5226337449, 0.6748971193,
          1.457704618, 0.9743941472, -0.01620687903, 0.7672610882, 1.437529284},
         {0, 0.6666666667, 0.4444444444, 0.04938271605, -0.5761316872, -0.5404663923, 0.2697759488,
          1.061728395, 1.003505563, 0.3236972684, 0.6194064816, 1.164821683},
         {0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 1, 0}}),
    row(study<qxTRIX>(), {3}, {1},
        {{0, 0.487804878, 0.4854368932, 0.1212121212, -0.6097560976, -0.7061713233, 0.1532801962,
          1.159003106, 1.278791505, 0.5965544797, 0.7909583687, 1.353618668}}),
    row(study<qxTSI>(), {4, 2}, {1},
        {{0, 1, 0.6923076923, 0.3053892216, -0.2227666792, -0.1049839184, 0.39916643, 0.6376850475,
          0.434710503, -0.04764305947, 0.2739672539, 0.5082567473}}),
    row(study<qxRVIoriginal>(), {2}, {10},
        {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 52.41526119, 79.27142295}}),
    row(study<qxRVI>(), {2}, {10}, {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 49.62619357, 76.65492467}}),
    row(study<qxInertia>(), {1, 2}, {10}, {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 200, 100}}),
    row(study<qxNMO>(), {period(3)}, {3},
        {{0, 0, 0, 0, -42.85714286, -8.108108108, 48.38709677, 66.10169492, 32.09772536,
          -18.16283925, 36.33743409, 56.43221399}}),
};

TEST(Momentum, WorkedCases) {
  checkCases(kCases);
}

TEST(Momentum, RealPrices) {
  checkRealPrices(kCases);
}

TEST(Momentum, ZeroDivisors) {
  Series a{0, 2, 3}, b({4, 0, 2}, 2), out;
  EXPECT_TRUE(gives(qxRatio(a, b, out, 0), out, {0, 0, 1.5}));
  EXPECT_EQ(out.record.firstvalid, 0) << "only the first series counts";
  b.record.firstvalid = 0;
  EXPECT_TRUE(gives(qxOscillatorPct(a, b, out, 0), out, {0, INFINITY, 50}))
      << "the test is on a, the divisor is b";
  EXPECT_TRUE(gives(qxRateOfChange(a, out, 10, 1, 0), out, {0, 0, 5}));
  EXPECT_TRUE(gives(qxRateOfChange(a, out, 0, 1, 0), out, {0, 2, 1}))
      << "a scale of 0 gives the plain change";
  Series zeros{0, 0, 0};
  EXPECT_TRUE(gives(qxTRIX(zeros, out, 3, 0), out, {0, NAN, NAN})) << "unguarded";
}

TEST(Momentum, RateOfChangeOfOneElement) {
  Series a({5, 0, 2, 3}, 1);
  const struct {
    int32_t index, lag;
    double scale, expected;
  } cases[] = {{3, 1, 100, 50}, {3, 1, 0, 1},  {2, 1, 100, 0}, {2, 1, 0, 2},   {1, 1, 1, 0},
               {4, 1, 1, 0},    {3, -1, 1, 0}, {-1, -3, 1, 0}, {1, -1, 0, -2}, {2, -1, 3, -1}};
  for (const auto& c : cases) {
    EXPECT_TRUE(near(qxROC(a, c.index, c.lag, c.scale), c.expected)) << c.index << " " << c.lag;
  }
  EXPECT_EQ(qxROC(a, INT32_MAX, INT32_MIN, 1), 0.0);
  EXPECT_EQ(qxROC(a, INT32_MIN, INT32_MAX, 1), 0.0);
  EXPECT_EQ(qxROC(nullptr, 0, 0, 1), 0.0);
}

TEST(Momentum, StrengthOfOneSidedAndFlatSeries) {
  Series rising{1, 2, 4, 5, 9}, flat{3, 3, 3, 3, 3}, out;
  EXPECT_TRUE(gives(qxRSI(rising, out, 2, 0), out, {0, 0, 100, 100, 100}));
  EXPECT_TRUE(gives(qxNMO(rising, out, 2, 0), out, {0, 0, 100, 100, 100}));
  EXPECT_TRUE(gives(qxRSI(flat, out, 2, 0), out, {0, 0, 0, 0, 0}));
}

TEST(Momentum, SeriesThatEndWithinTheSeed) {
  Series in{1, 3, 2}, out;
  EXPECT_TRUE(gives(qxRSI(in, out, 5, 0), out, {0, 0, 100 * 2 / 3.0})) << "gains 2, losses 1";
  EXPECT_EQ(out.record.firstvalid, 5);
  EXPECT_TRUE(gives(qxUpAverage(in, out, 5, 0), out, {0, 0, 1})) << "2 over two moves";
  EXPECT_TRUE(gives(qxDownAverage(in, out, 5, 0), out, {0, 0, 0.5}));
  EXPECT_TRUE(gives(qxDownAverage(in, out, 5, 2), out, {0, 0, 0})) << "no move at all";
}

TEST(Momentum, DetrendedPriceCutsItsTail) {
  Series in{1, 2, 4, 8, 16, 32}, out;
  // Sums of 4: 15, 30, 60; the first element is stored before the sum is rolled.
  EXPECT_TRUE(gives(qxDPO(in, out, 4, 0), out, {1 - 15 / 4.0, 2 - 30 / 4.0, 4 - 60 / 4.0}));
  EXPECT_EQ(out.record.firstvalid, 0);
  EXPECT_EQ(out.record.datasize, 6);
  // A period of 1 sums two elements; with 2 the first element would lie before the series.
  EXPECT_TRUE(gives(qxDPO(in, out, 1, 0), out, {1 - 3, 2 - 5, 4 - 9, 8 - 17, 16 - 33}));
  EXPECT_TRUE(
      gives(qxDPO(in, out, 2, 0), out, {1 - 6 / 2.0, 2 - 12 / 2.0, 4 - 24 / 2.0, 8 - 48 / 2.0}));
  EXPECT_TRUE(gives(qxDPO(in, out, 6, 0), out, {0, 0})) << "the window takes the whole series";
  EXPECT_EQ(qxDPO(in, out, 20, 0), QX_SUCCESS);
  EXPECT_EQ(out.record.size, 0);
  EXPECT_EQ(out.record.firstvalid, 8);
}

TEST(Momentum, PriceOscillatorOfEachMethod) {
  Series in({9, 1, 3, 2, 5, 4, 6, 8, 7, 9, 9, 12, 10, 8, 9, 13, 11, 14, 12, 15, 13, 14, 11, 16, 12},
            1);
  for (int32_t method = 0; method < 8; ++method) {
    Series fast, slow, out, pct;
    ASSERT_EQ(qxMovingAverage(in, fast, method, 2, 1), QX_SUCCESS);
    ASSERT_EQ(qxMovingAverage(in, slow, method, 3, 1), QX_SUCCESS);
    EXPECT_EQ(qxPriceOscillator(in, out, 2, 3, method, 1), QX_SUCCESS);
    EXPECT_EQ(qxPriceOscillatorPct(in, pct, 2, 3, method, 1), QX_SUCCESS);
    const int32_t first = std::max({3, fast.record.firstvalid, slow.record.firstvalid});
    EXPECT_EQ(out.record.firstvalid, first);
    for (int32_t i = 0; i < 25; ++i) {
      EXPECT_EQ(out[i], i < first ? 0.0 : fast[i] - slow[i]) << method << " " << i;
      EXPECT_EQ(pct[i], i < first ? 0.0 : 100 * (fast[i] - slow[i]) / slow[i]) << method;
    }
  }
  Series out;
  EXPECT_TRUE(gives(qxPriceOscillator(in, out, 2, 3, 8, 1), out, Values(25)))
      << "an unknown method gives zeros";
  EXPECT_EQ(out.record.firstvalid, 3);
}

TEST(Momentum, RelativeVolatilityUsesTheDeviationsOfTenBars) {
  Values walk;
  double price = 50;
  for (int i = 0; i < 120; ++i) walk.push_back(price += (i * 7919 % 31 - 15) / 9.7);
  Series in(walk, 3), out;
  EXPECT_EQ(qxRVIoriginal(in, out, 6, 0), QX_SUCCESS);
  EXPECT_EQ(out.record.firstvalid, 3 + 6 + 8);
  double up = 0, down = 0;
  for (int32_t i = 12; i < 120; ++i) {
    const double deviation = qxStdDev(in, 1, i - 9, i);
    const double u = in[i] > in[i - 1] ? deviation : 0;
    const double d = in[i] < in[i - 1] ? deviation : 0;
    // The plain sums of six, then Wilder's averages.
    up = i < 18 ? up + u : (up * 5 + u) / 6;
    down = i < 18 ? down + d : (down * 5 + d) / 6;
    if (i == 17) {
      up /= 6;
      down /= 6;
    }
    EXPECT_EQ(out[i], i < 17 ? 0.0 : 100 * up / (up + down)) << i;
  }
  qxReSizeArray(in, 15);
  EXPECT_EQ(qxRVIoriginal(in, out, 6, 0), QX_SUCCESS);
  EXPECT_GT(out[14], 0.0) << "the moves so far";
  EXPECT_EQ(out[13], 0.0);
}

TEST(Momentum, CrossoversLeaveTheLastElementUntested) {
  // The difference falls through its signal at the very last element.
  Series in{1, 2, 4, 8, 16, 1}, fast, slow, macd, signal, cross;
  EXPECT_EQ(qxMACDx(in, fast, slow, macd, signal, cross, 4, 2, 3, 0), QX_SUCCESS);
  EXPECT_LT(macd[5], signal[5]);
  EXPECT_GT(macd[4], signal[4]);
  EXPECT_EQ(cross[5], 0.0);
  EXPECT_GT(fast[4], slow[4]) << "the smaller period is the fast one";
}

}  // namespace
