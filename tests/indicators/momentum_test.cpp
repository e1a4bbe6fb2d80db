#include <algorithm>
#include <cmath>

#include "tests/indicators/worked_case.h"

namespace {

using qxtest::BarSet;
using qxtest::near;
using qxtest::Series;
using qxtest::seriesNear;
using qxtest::WorkedCase;
using N = qxtest::Numbers;
using X = qxtest::Inputs;

const WorkedCase kCases[] = {
    {"qxOscillator",
     [](X x, Series* o, N, int32_t s) { return qxOscillator(x.in, x.other, o[0], s); },
     {},
     {0},
     {{1, 2, -1, -1, -2, 1, 3, 2, -1, -2, 3, 2}}},
    {"qxOscillatorPct",
     [](X x, Series* o, N, int32_t s) { return qxOscillatorPct(x.in, x.other, o[0], s); },
     {},
     {0},
     {{2, 3.92156862745, -1.88679245283, -1.92307692308, -3.92156862745, 2.04081632653, 6,
       3.77358490566, -1.81818181818, -3.7037037037, 5.76923076923, 3.63636363636}}},
    {"qxRatio",
     [](X x, Series* o, N, int32_t s) { return qxRatio(x.in, x.other, o[0], s); },
     {},
     {0},
     {{1.02, 1.03921568627, 0.981132075472, 0.980769230769, 0.960784313725, 1.02040816327, 1.06,
       1.03773584906, 0.981818181818, 0.962962962963, 1.05769230769, 1.03636363636}}},
    {"qxMomentum",
     [](X x, Series* o, N n, int32_t s) { return qxMomentum(x.in, o[0], n.p[0], s); },
     {{4}},
     {4},
     {{0, 0, 0, 0, -2, -3, 1, 4, 5, 2, 2, 2}}},
    {"qxRateOfChange",
     [](X x, Series* o, N n, int32_t s) { return qxRateOfChange(x.in, o[0], n.k, n.p[0], s); },
     {{3}, 100.0},
     {3},
     {{0, 0, 0, 0, -7.54716981132, -3.84615384615, 3.92156862745, 12.2448979592, 8, -1.88679245283,
       0, 5.55555555556}}},
    {"qxRMI",
     [](X x, Series* o, N n, int32_t s) { return qxRMI(x.in, o[0], n.p[0], n.p[1], s); },
     {{3, 2}},
     {4},
     {{0, 0, 0, 0, 16.6666666667, 13.3333333333, 60.6060606061, 80.5243445693, 83.0894308943,
       52.1694742215, 59.672907252, 81.4721439518}}},
    {"qxRSI",
     [](X x, Series* o, N n, int32_t s) { return qxRSI(x.in, o[0], n.p[0], s); },
     {{3}},
     {3},
     {{0, 0, 0, 50, 28.5714285714, 45.9459459459, 74.1935483871, 83.0508474576, 66.048862679,
       40.9185803758, 68.1687170475, 78.2161069951}}},
    {"qxUpAverage",
     [](X x, Series* o, N n, int32_t s) { return qxUpAverage(x.in, o[0], n.p[0], s); },
     {{3}},
     {3},
     {{0, 0, 0, 0.666666666667, 0.444444444444, 0.62962962963, 1.41975308642, 1.61316872428,
       1.07544581619, 0.716963877458, 1.47797591831, 1.65198394554}}},
    {"qxDownAverage",
     [](X x, Series* o, N n, int32_t s) { return qxDownAverage(x.in, o[0], n.p[0], s); },
     {{3}},
     {3},
     {{0, 0, 0, 0.666666666667, 1.11111111111, 0.740740740741, 0.493827160494, 0.329218106996,
       0.552812071331, 1.03520804755, 0.690138698369, 0.460092465579}}},
    {"qxPriceOscillator",
     [](X x, Series* o, N n, int32_t s) {
       return qxPriceOscillator(x.in, o[0], n.p[0], n.p[1], n.method, s);
     },
     {{2, 4}, 0.0, QX_MA_SIMPLE},
     {3},
     {{0, 0, 0, -0.25, -1.25, -1, 0.75, 2.25, 1.5, -0.5, -0.5, 1.5}}},
    {"qxPriceOscillatorPct",
     [](X x, Series* o, N n, int32_t s) {
       return qxPriceOscillatorPct(x.in, o[0], n.p[0], n.p[1], n.method, s);
     },
     {{5, 2}, 0.0, QX_MA_EXPONENTIAL},
     {4},
     {{0, 0, 0, 0, 1.78527151004, 1.04673205308, -1.29846137605, -2.69984163413, -1.80452019183,
       0.0307730597779, -1.41503820878, -2.56362992618}}},
    {"qxDPO",
     [](X x, Series* o, N n, int32_t s) { return qxDPO(x.in, o[0], n.p[0], s); },
     {{5}},
     {1},
     {{0, 1.8, 1, 0, -2.6, -2.2, 0.2, 1.2, -0.6}}},
    {"qxMACD",
     [](X x, Series* o, N n, int32_t s) { return qxMACD(x.in, o[0], o[1], n.p[0], s); },
     {{3}},
     {1, 1},
     {{0, 0.15, 0.19125, 0.14653125, -0.04027734375, -0.111702480469, 0.0583961586914,
       0.341479256946, 0.485211701308, 0.442762704047, 0.629406099531, 0.91907365061},
      {0, 0.15, 0.170625, 0.158578125, 0.059150390625, -0.0262760449219, 0.0160600568848,
       0.178769656915, 0.331990679111, 0.387376691579, 0.508391395555, 0.713732523083}}},
    {"qxMACDx",
     [](X x, Series* o, N n, int32_t s) {
       return qxMACDx(x.in, o[0], o[1], o[2], o[3], o[4], n.p[0], n.p[1], n.p[2], s);
     },
     {{5, 2, 2}},
     {0, 0, 0, 1, 1},
     {{51, 52.3333333333, 52.1111111111, 51.3703703704, 49.7901234568, 49.9300411523, 51.9766803841,
       53.9922267947, 53.9974089316, 52.6658029772, 54.2219343257, 56.0739781086},
      {51, 51.6666666667, 51.7777777778, 51.5185185185, 50.6790123457, 50.4526748971, 51.3017832647,
       52.5345221765, 53.0230147843, 52.6820098562, 53.4546732375, 54.636448825},
      {0, 0.666666666667, 0.333333333333, -0.148148148148, -0.888888888889, -0.522633744856,
       0.674897119342, 1.4577046182, 0.974394147234, -0.0162068790327, 0.767261088249,
       1.43752928359},
      {0, 0.666666666667, 0.444444444444, 0.0493827160494, -0.576131687243, -0.540466392318,
       0.269775948788, 1.06172839506, 1.00350556318, 0.32369726837, 0.619406481623, 1.16482168293},
      {0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 1, 0}}},
    {"qxTRIX",
     [](X x, Series* o, N n, int32_t s) { return qxTRIX(x.in, o[0], n.p[0], s); },
     {{3}},
     {1},
     {{0, 0.487804878049, 0.485436893204, 0.121212121212, -0.609756097561, -0.706171323304,
       0.153280196199, 1.15900310583, 1.27879150464, 0.596554479734, 0.790958368671,
       1.35361866784}}},
    {"qxTSI",
     [](X x, Series* o, N n, int32_t s) { return qxTSI(x.in, o[0], n.p[0], n.p[1], s); },
     {{4, 2}},
     {1},
     {{0, 1, 0.692307692308, 0.305389221557, -0.222766679231, -0.10498391841, 0.399166429994,
       0.637685047532, 0.434710503005, -0.0476430594667, 0.273967253886, 0.508256747266}}},
    {"qxRVIoriginal",
     [](X x, Series* o, N n, int32_t s) { return qxRVIoriginal(x.in, o[0], n.p[0], s); },
     {{2}},
     {10},
     {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 52.4152611919, 79.2714229515}}},
    {"qxRVI",
     [](X x, Series* o, N n, int32_t s) { return qxRVI(x.bars, o[0], n.p[0], s); },
     {{2}},
     {10},
     {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 49.6261935669, 76.6549246731}}},
    {"qxInertia",
     [](X x, Series* o, N n, int32_t s) { return qxInertia(x.bars, o[0], n.p[0], n.p[1], s); },
     {{1, 2}},
     {10},
     {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 200, 100}}},
    {"qxNMO",
     [](X x, Series* o, N n, int32_t s) { return qxNMO(x.in, o[0], n.p[0], s); },
     {{3}},
     {3},
     {{0, 0, 0, 0, -42.8571428571, -8.10810810811, 48.3870967742, 66.1016949153, 32.097725358,
       -18.1628392484, 36.3374340949, 56.4322139902}}},
};

TEST(Momentum, WorkedCases) {
  for (const WorkedCase& c : kCases) qxtest::checkCase(c);
}

TEST(Momentum, RealPrices) {
  qxtest::checkRealPrices(kCases);
}

TEST(Momentum, ZeroDivisors) {
  Series a{0, 2, 3}, b({4, 0, 2}, 2), out;
  EXPECT_EQ(qxRatio(a, b, out, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0, 1.5}));
  EXPECT_EQ(out.record.firstvalid, 0) << "only the first series counts";
  b.record.firstvalid = 0;
  EXPECT_EQ(qxOscillatorPct(a, b, out, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, INFINITY, 50})) << "the test is on a, the divisor is b";
  EXPECT_EQ(qxRateOfChange(a, out, 10, 1, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0, 5}));
  EXPECT_EQ(qxRateOfChange(a, out, 0, 1, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 2, 1})) << "a scale of 0 gives the plain change";
  Series zeros{0, 0, 0};
  EXPECT_EQ(qxTRIX(zeros, out, 3, 0), QX_SUCCESS);
  EXPECT_TRUE(std::isnan(out[1])) << "unguarded";
}

TEST(Momentum, RateOfChangeOfOneElement) {
  Series a({5, 0, 2, 3}, 1);
  const struct {
    int32_t index, period;
    double scale, expected;
  } cases[] = {{3, 1, 100, 50},
               {3, 1, 0, 1},
               {2, 1, 100, 0},
               {2, 1, 0, 2},
               {1, 1, 1, 0},
               {4, 1, 1, 0},
               {3, -1, 1, 0},
               {-1, -3, 1, 0},
               {2, -1, 1, -1.0 / 3},
               {INT32_MAX, INT32_MIN, 1, 0},
               {INT32_MIN, INT32_MAX, 1, 0}};
  for (const auto& c : cases) {
    EXPECT_TRUE(near(qxROC(a, c.index, c.period, c.scale), c.expected)) << c.index << c.period;
  }
  EXPECT_EQ(qxROC(nullptr, 0, 0, 1), 0.0);
}

TEST(Momentum, StrengthOfOneSidedAndFlatSeries) {
  Series rising{1, 2, 4, 5, 9}, flat{3, 3, 3, 3, 3}, out;
  qxRSI(rising, out, 2, 0);
  EXPECT_TRUE(seriesNear(out, {0, 0, 100, 100, 100}));
  qxNMO(rising, out, 2, 0);
  EXPECT_TRUE(seriesNear(out, {0, 0, 100, 100, 100}));
  qxRSI(flat, out, 2, 0);
  EXPECT_TRUE(seriesNear(out, {0, 0, 0, 0, 0}));
}

TEST(Momentum, SeriesThatEndWithinTheSeed) {
  Series in{1, 3, 2}, out;
  // Gains 2 and losses 1 over two of five bars.
  EXPECT_EQ(qxRSI(in, out, 5, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0, 100 * (2.0 / 5) / (2.0 / 5 + 1.0 / 5)}));
  EXPECT_EQ(out.record.firstvalid, 5);
  EXPECT_EQ(qxUpAverage(in, out, 5, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0, 1})) << "2 over the two moves there are";
  EXPECT_EQ(qxDownAverage(in, out, 5, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0, 0.5}));
  EXPECT_EQ(qxDownAverage(in, out, 5, 2), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0, 0})) << "no move at all";
}

TEST(Momentum, DetrendedPriceCutsItsTail) {
  Series in{1, 2, 4, 8, 16, 32}, out;
  // Sums of 4: 15, 30, 60; the first element is stored before the sum is rolled.
  EXPECT_EQ(qxDPO(in, out, 4, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {1 - 15 / 4.0, 2 - 30 / 4.0, 4 - 60 / 4.0}));
  EXPECT_EQ(out.record.firstvalid, 0);
  EXPECT_EQ(out.record.datasize, 6);
  // A period of 1 sums two elements; with 2 the first element would lie before the series.
  EXPECT_EQ(qxDPO(in, out, 1, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {1 - 3, 2 - 5, 4 - 9, 8 - 17, 16 - 33}));
  EXPECT_EQ(qxDPO(in, out, 2, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {1 - 6 / 2.0, 2 - 12 / 2.0, 4 - 24 / 2.0, 8 - 48 / 2.0}));
  EXPECT_EQ(qxDPO(in, out, 6, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0})) << "the window takes the whole series";
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
  EXPECT_EQ(qxPriceOscillator(in, out, 2, 3, 8, 1), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, std::vector<double>(25))) << "an unknown method gives zeros";
  EXPECT_EQ(out.record.firstvalid, 3);
}

TEST(Momentum, RelativeVolatilityUsesTheDeviationsOfTenBars) {
  std::vector<double> walk;
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
    if (i < 12 + 6) {
      up += u;
      down += d;
      if (i == 17) {
        up /= 6;
        down /= 6;
      }
    } else {
      up = (up * 5 + u) / 6;
      down = (down * 5 + d) / 6;
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
