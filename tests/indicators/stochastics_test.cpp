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
    {"qxStochastic",
     [](X x, Series* o, N n, int32_t s) { return qxStochastic(x.in, o[0], n.p[0], s); },
     {{4}},
     {3},
     {{0, 0, 0, 0, 0, 33.3333333333, 100, 100, 80, 0, 100, 100}}},
    {"qxRawK",
     [](X x, Series* o, N n, int32_t s) { return qxRawK(x.bars, o[0], n.p[0], s); },
     {{3}},
     {2},
     {{0, 0, 50, 20, 14.2857142857, 50, 100, 88.8888888889, 57.1428571429, 16.6666666667,
       66.6666666667, 85.7142857143}}},
    {"qxFastD",
     [](X x, Series* o, N n, int32_t s) { return qxFastD(x.bars, o[0], n.p[0], n.p[1], s); },
     {{3, 3}},
     {2},
     {{0, 0, 50, 35, 24.6428571429, 37.3214285714, 68.6607142857, 78.7748015873, 67.9588293651,
       42.3127480159, 54.4897073413, 70.1019965278}}},
    {"qxSlowD",
     [](X x, Series* o, N n, int32_t s) {
       return qxSlowD(x.bars, o[0], n.p[0], n.p[1], n.p[2], s);
     },
     {{3, 3, 2}},
     {2},
     {{0, 0, 50, 40, 29.7619047619, 34.8015873016, 57.3743386243, 71.641313933, 69.186324221,
       51.2706067509, 53.4166738112, 64.5402222889}}},
    {"qxStochasticOscillator simple",
     [](X x, Series* o, N n, int32_t s) {
       return qxStochasticOscillator(x.bars, o[0], o[1], n.method, n.p[0], n.p[1], n.p[2], s);
     },
     {{4, 2, 3}, 0.0, QX_MA_SIMPLE},
     {4, 6},
     {{0, 0, 0, 0, 23.8095238095, 25.8928571429, 68.75, 94.4444444444, 79.4444444444, 49.2857142857,
       47.619047619, 76.1904761905},
      {0, 0, 0, 0, 0, 0, 39.4841269841, 63.0291005291, 80.8796296296, 74.3915343915, 58.7830687831,
       57.6984126984}}},
    {"qxStochasticOscillator unslowed",
     [](X x, Series* o, N n, int32_t s) {
       return qxStochasticOscillator(x.bars, o[0], o[1], n.method, n.p[0], n.p[1], n.p[2], s);
     },
     {{4, 2, 3}, 0.0, QX_MA_WEIGHTED},
     {3, 5},
     {{0, 0, 0, 33.3333333333, 14.2857142857, 37.5, 100, 88.8888888889, 70, 28.5714285714,
       66.6666666667, 85.7142857143},
      {0, 0, 0, 0, 0, 29.0674603175, 64.880952381, 84.0277777778, 81.2962962963, 52.4338624339,
       54.5238095238, 69.8412698413}}},
    {"qxStochRSI",
     [](X x, Series* o, N n, int32_t s) { return qxStochRSI(x.in, o[0], n.p[0], s); },
     {{3}},
     {5},
     {{0, 0, 0, 0, 0, 81.0810810811, 100, 100, 0, 0, 100, 100}}},
    {"qxWilliamsR",
     [](X x, Series* o, N n, int32_t s) { return qxWilliamsR(x.bars, o[0], n.p[0], s); },
     {{3}},
     {2},
     {{0, 0, 50, 80, 85.7142857143, 50, 0, 11.1111111111, 42.8571428571, 83.3333333333,
       33.3333333333, 14.2857142857}}},
    {"qxSMI",
     [](X x, Series* o, N n, int32_t s) {
       return qxSMI(x.bars, o[0], o[1], n.p[0], n.p[1], n.p[2], n.p[3], s);
     },
     {{3, 3, 2, 4}},
     {2, 2},
     {{0, 0, 0, -17.6470588235, -41.2844036697, -31.4112291351, 13.4874269749, 47.3407556123,
       41.3833179366, 8.66818021333, 10.227916937, 32.1325978088},
      {0, 0, 0, -7.05882352941, -20.7490555855, -25.0139250053, -9.61338421326, 13.168271717,
       24.4542902048, 18.1398462082, 14.9750744997, 21.8380838233}}},
    {"qxCCI",
     [](X x, Series* o, N n, int32_t s) { return qxCCI(x.bars, o[0], n.p[0], s); },
     {{4}},
     {3},
     {{0, 0, 0, -40, -117.948717949, -75, 87.1794871795, 109.090909091, 77.7777777778,
       -57.7777777778, 7.01754385965, 102.222222222}}},
    {"qxUltimateOsc",
     [](X x, Series* o, N n, int32_t s) {
       return qxUltimateOsc(x.bars, o[0], n.p[0], n.p[1], n.p[2], s);
     },
     {{2, 3, 4}},
     {4},
     {{0, 0, 0, 0, 27.1428571429, 46.6604823748, 75.3246753247, 81.8800247372, 50.8163265306,
       28.6446886447, 58.485958486, 76.671899529}}},
    {"qxIMI",
     [](X x, Series* o, N n, int32_t s) { return qxIMI(x.bars, o[0], n.p[0], s); },
     {{3}},
     {2},
     {{0, 0, 75, 50, 0, 25, 66.6666666667, 100, 83.3333333333, 40, 50, 71.4285714286}}},
    {"qxQstick",
     [](X x, Series* o, N n, int32_t s) { return qxQstick(x.bars, o[0], n.p[0], s); },
     {{3}},
     {2},
     {{0, 0, 0.666666666667, 0, -1.33333333333, -0.666666666667, 0.666666666667, 2, 1.33333333333,
       -0.333333333333, 0, 1}}},
    {"qxLineOsc",
     [](X x, Series* o, N n, int32_t s) { return qxLineOsc(x.in, o[0], n.p[0], s); },
     {{4}},
     {3},
     {{0, 0, 0, -0.6, -0.3, 0.7, 1.2, 0.1, -1.1, -0.9, 1.3, 0.7}}},
    {"qxForecastOscillator",
     [](X x, Series* o, N n, int32_t s) { return qxForecastOscillator(x.in, o[0], n.p[0], s); },
     {{3}},
     {3},
     {{0, 0, 0, -3.92156862745, -2.04081632653, 4.66666666667, 7.54716981132, 0.606060606061,
       -6.79012345679, -5.76923076923, 7.87878787879, 4.09356725146}}},
};

TEST(Stochastics, WorkedCases) {
  for (const WorkedCase& c : kCases) qxtest::checkCase(c);
}

TEST(Stochastics, RealPrices) {
  qxtest::checkRealPrices(kCases);
}

TEST(Stochastics, FlatWindows) {
  Series flat{4, 4, 4, 4, 4, 4}, out, other;
  EXPECT_EQ(qxStochastic(flat, out, 3, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0, 100, 100, 100, 100}));
  EXPECT_EQ(qxLineOsc(flat, out, 1, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0, 0, 0, 0, 0})) << "an element is its own line";

  BarSet bars(std::vector<qxtest::Bar>(5, {1, 4, 4, 4, 4, 0, 0}));
  const std::vector<double> zeros(5), full = {0, 100, 100, 100, 100};
  EXPECT_EQ(qxRawK(bars, out, 2, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, full, 0));
  EXPECT_EQ(qxStochasticOscillator(bars, out, other, 9, 2, 1, 1, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, full, 0));
  EXPECT_TRUE(seriesNear(other, zeros, 0)) << "an unknown method averages nothing";
  EXPECT_EQ(other.record.firstvalid, 1);
  EXPECT_EQ(qxWilliamsR(bars, out, 2, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, zeros, 0));
  EXPECT_EQ(qxSMI(bars, out, other, 2, 2, 2, 2, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, zeros, 0));
  EXPECT_EQ(qxCCI(bars, out, 2, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, zeros, 0));
  EXPECT_EQ(qxUltimateOsc(bars, out, 1, 2, 3, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, zeros, 0));
  EXPECT_EQ(qxIMI(bars, out, 2, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, zeros, 0));
}

TEST(Stochastics, OscillatorIgnoresZerosInItsLow) {
  // Bars without an open; the extremes are those of the other three prices.
  BarSet bars({{1, 0, 9, 5, 6, 0, 0}, {2, 0, 8, 4, 8, 0, 0}, {3, 0, 7, 6, 6, 0, 0}});
  Series k, d;
  EXPECT_EQ(qxStochasticOscillator(bars, k, d, QX_MA_EXPONENTIAL, 2, 1, 1, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(k, {0, 80, 50}));
  EXPECT_TRUE(seriesNear(d, {0, 80, 50}));
}

TEST(Stochastics, ChannelIndexIsThatOfTheTypicalPrice) {
  BarSet bars(qxtest::workedBars());
  Series typical, mean, out;
  qxTypicalPrices(bars, typical, 0);
  qxSimpleMA(typical, mean, 5, 0);
  EXPECT_EQ(qxCCI(bars, out, 5, 0), QX_SUCCESS);
  for (int32_t i = 4; i < 12; ++i) {
    double deviation = 0;
    for (int32_t j = i - 4; j <= i; ++j) deviation += std::fabs(typical[j] - mean[i]) / 5;
    EXPECT_TRUE(near(out[i], (typical[i] - mean[i]) / (0.015 * deviation))) << i;
  }
}

TEST(Stochastics, LongSeriesAgreeWithAScanOfEachWindow) {
  std::vector<qxtest::Bar> walk;
  double price = 60;
  for (int i = 0; i < 300; ++i) {
    price += i * 7919 % 13 - 6;
    walk.push_back({1.0 + i, price, price + i % 4, price - i % 3, price + i % 2, 0, 0});
  }
  BarSet bars(walk);
  for (int32_t period : {1, 2, 7, 8, 50, 299, 300}) {
    Series k, r, s;
    ASSERT_EQ(qxRawK(bars, k, period, 0), QX_SUCCESS);
    ASSERT_EQ(qxWilliamsR(bars, r, period, 0), QX_SUCCESS);
    ASSERT_EQ(qxStochastic(&bars->close, s, period, 0), QX_SUCCESS);
    for (int32_t i = period - 1; i < 300; ++i) {
      double low, high, least, most;
      const double close = bars->close.data[i];
      qxArrayStats(&bars->low, &low, nullptr, nullptr, nullptr, i - period + 1, i, 0);
      qxArrayStats(&bars->high, nullptr, &high, nullptr, nullptr, i - period + 1, i, 0);
      qxArrayStats(&bars->close, &least, &most, nullptr, nullptr, i - period + 1, i, 0);
      EXPECT_EQ(k[i], high == low ? 100.0 : 100 * (close - low) / (high - low));
      EXPECT_EQ(r[i], high == low ? 0.0 : 100 * (high - close) / (high - low));
      EXPECT_EQ(s[i], most == least ? 100.0 : 100 * (close - least) / (most - least));
    }
  }
}

TEST(Stochastics, ForecastOfZeroIsZero) {
  Series in{1, 2, 0, 4}, out;
  EXPECT_EQ(qxForecastOscillator(in, out, 2, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0, 0, 100 * (4.0 + 2.0) / 4}));
}

TEST(Stochastics, WindowsOfNoBarAreRefused) {
  BarSet bars(qxtest::workedBars());
  Series out, other;
  for (int32_t period : {0, -1, INT32_MIN}) {
    EXPECT_EQ(qxStochastic(&bars->close, out, period, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxFastD(bars, out, period, 3, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxSMI(bars, out, other, period, 3, 3, 3, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxUltimateOsc(bars, out, 2, period, 4, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxForecastOscillator(&bars->close, out, period, 0), QX_ERR_INVALID_PARM);
  }
  EXPECT_EQ(out.record.data, nullptr);
}

}  // namespace
