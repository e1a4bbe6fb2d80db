#include "tests/indicators/study_case.h"

namespace {

using namespace qxtest;

const std::vector<StudyCase> kCases = {
    row(study<qxStochastic>(), {period(4)}, {3},
        {{0, 0, 0, 0, 0, 33.33333333, 100, 100, 80, 0, 100, 100}}),
    row(study<qxRawK>(), {period(3)}, {2},
        {{0, 0, 50, 20, 14.28571429, 50, 100, 88.88888889, 57.14285714, 16.66666667, 66.66666667,
          85.71428571}}),
    row(study<qxFastD>(), {period(3), 3}, {2},
        {{0, 0, 50, 35, 24.64285714, 37.32142857, 68.66071429, 78.77480159, 67.95882937,
          42.31274802, 54.48970734, 70.10199653}}),
    row(study<qxSlowD>(), {period(3), 3, 2}, {2},
        {{0, 0, 50, 40, 29.76190476, 34.8015873, 57.37433862, 71.64131393, 69.18632422, 51.27060675,
          53.41667381, 64.54022229}}),
    row(study<qxStochasticOscillator>(), {QX_MA_SIMPLE, period(4), 2, 3}, {4, 6},
        {{0, 0, 0, 0, 23.80952381, 25.89285714, 68.75, 94.44444444, 79.44444444, 49.28571429,
          47.61904762, 76.19047619},
         {0, 0, 0, 0, 0, 0, 39.48412698, 63.02910053, 80.87962963, 74.39153439, 58.78306878,
          57.6984127}}),
    row(study<qxStochasticOscillator>(), {QX_MA_WEIGHTED, period(4), 2, 3}, {3, 5},
        {{0, 0, 0, 33.33333333, 14.28571429, 37.5, 100, 88.88888889, 70, 28.57142857, 66.66666667,
          85.71428571},
         {0, 0, 0, 0, 0, 29.06746032, 64.88095238, 84.02777778, 81.2962963, 52.43386243,
          54.52380952, 69.84126984}}),
    row(study<qxStochRSI>(), {period(3)}, {5},
        {{0, 0, 0, 0, 0, 81.08108108, 100, 100, 0, 0, 100, 100}}),
    row(study<qxWilliamsR>(), {period(3)}, {2},
        {{0, 0, 50, 80, 85.71428571, 50, 0, 11.11111111, 42.85714286, 83.33333333, 33.33333333,
          14.28571429}}),
    row(study<qxSMI>(), {period(3), 3, 2, 4}, {2, 2},
        {{0, 0, 0, -17.64705882, -41.28440367, -31.41122914, 13.48742697, 47.34075561, 41.38331794,
          8.668180213, 10.22791694, 32.13259781},
         {0, 0, 0, -7.058823529, -20.74905559, -25.01392501, -9.613384213, 13.16827172, 24.4542902,
          18.13984621, 14.9750745, 21.83808382}}),
    row(study<qxCCI>(), {period(4)}, {3},
        {{0, 0, 0, -40, -117.9487179, -75, 87.17948718, 109.0909091, 77.77777778, -57.77777778,
          7.01754386, 102.2222222}}),
    row(study<qxUltimateOsc>(), {period(2), period(3), period(4)}, {4},
        {{0, 0, 0, 0, 27.14285714, 46.66048237, 75.32467532, 81.88002474, 50.81632653, 28.64468864,
          58.48595849, 76.67189953}}),
    row(study<qxIMI>(), {period(3)}, {2},
        {{0, 0, 75, 50, 0, 25, 66.66666667, 100, 83.33333333, 40, 50, 71.42857143}}),
    row(study<qxQstick>(), {period(3)}, {2},
        {{0, 0, 0.6666666667, 0, -1.333333333, -0.6666666667, 0.6666666667, 2, 1.333333333,
          -0.3333333333, 0, 1}}),
    row(study<qxLineOsc>(), {period(4)}, {3},
        {{0, 0, 0, -0.6, -0.3, 0.7, 1.2, 0.1, -1.1, -0.9, 1.3, 0.7}}),
    row(study<qxForecastOscillator>(), {period(3)}, {3},
        {{0, 0, 0, -3.921568627, -2.040816327, 4.666666667, 7.547169811, 0.6060606061, -6.790123457,
          -5.769230769, 7.878787879, 4.093567251}}),
};

TEST(Stochastics, WorkedCases) {
  checkCases(kCases);
}

TEST(Stochastics, RealPrices) {
  checkRealPrices(kCases);
}

TEST(Stochastics, FlatWindows) {
  Series flat{4, 4, 4, 4, 4, 4}, out, other;
  EXPECT_TRUE(gives(qxStochastic(flat, out, 3, 0), out, {0, 0, 100, 100, 100, 100}));
  EXPECT_TRUE(gives(qxLineOsc(flat, out, 1, 0), out, Values(6))) << "an element is its own line";

  BarSet bars(barsFrom("4 4 4 4 / 4 4 4 4 / 4 4 4 4 / 4 4 4 4 / 4 4 4 4"));
  const Values zeros(5), full = {0, 100, 100, 100, 100};
  EXPECT_TRUE(gives(qxRawK(bars, out, 2, 0), out, full, 0));
  EXPECT_TRUE(gives(qxStochasticOscillator(bars, out, other, 9, 2, 1, 1, 0), out, full, 0));
  EXPECT_TRUE(seriesNear(other, zeros, 0)) << "an unknown method averages nothing";
  EXPECT_EQ(other.record.firstvalid, 1);
  EXPECT_TRUE(gives(qxWilliamsR(bars, out, 2, 0), out, zeros, 0));
  EXPECT_TRUE(gives(qxSMI(bars, out, other, 2, 2, 2, 2, 0), out, zeros, 0));
  EXPECT_TRUE(gives(qxCCI(bars, out, 2, 0), out, zeros, 0));
  EXPECT_TRUE(gives(qxUltimateOsc(bars, out, 1, 2, 3, 0), out, zeros, 0));
  EXPECT_TRUE(gives(qxIMI(bars, out, 2, 0), out, zeros, 0));
}

TEST(Stochastics, MissingPrices) {
  // Bars without an open; the extremes are those of the other three prices.
  BarSet bars(barsFrom("0 9 5 6 / 0 8 4 8 / 0 7 6 6"));
  Series k, d;
  EXPECT_EQ(qxStochasticOscillator(bars, k, d, QX_MA_EXPONENTIAL, 2, 1, 1, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(k, {0, 80, 50}));
  EXPECT_TRUE(seriesNear(d, {0, 80, 50}));
  Series in{1, 2, 0, 4}, forecast;
  EXPECT_TRUE(
      gives(qxForecastOscillator(in, forecast, 2, 0), forecast, {0, 0, 0, 100 * (4.0 + 2.0) / 4}));
}

TEST(Stochastics, LongSeriesAgreeWithAScanOfEachWindow) {
  std::vector<Bar> walk;
  double price = 60;
  for (int i = 0; i < 300; ++i) {
    price += i * 7919 % 13 - 6;
    walk.push_back({1.0 + i, price, price + i % 4, price - i % 3, price + i % 2, 0, 0});
  }
  BarSet bars(walk);
  for (int32_t length : {1, 2, 7, 8, 50, 299, 300}) {
    Series k, r, s;
    ASSERT_EQ(qxRawK(bars, k, length, 0), QX_SUCCESS);
    ASSERT_EQ(qxWilliamsR(bars, r, length, 0), QX_SUCCESS);
    ASSERT_EQ(qxStochastic(&bars->close, s, length, 0), QX_SUCCESS);
    for (int32_t i = length - 1; i < 300; ++i) {
      double low, high, least, most;
      const double close = bars->close.data[i];
      qxArrayStats(&bars->low, &low, nullptr, nullptr, nullptr, i - length + 1, i, 0);
      qxArrayStats(&bars->high, nullptr, &high, nullptr, nullptr, i - length + 1, i, 0);
      qxArrayStats(&bars->close, &least, &most, nullptr, nullptr, i - length + 1, i, 0);
      EXPECT_EQ(k[i], high == low ? 100.0 : 100 * (close - low) / (high - low));
      EXPECT_EQ(r[i], high == low ? 0.0 : 100 * (high - close) / (high - low));
      EXPECT_EQ(s[i], most == least ? 100.0 : 100 * (close - least) / (most - least));
    }
  }
}

}  // namespace
