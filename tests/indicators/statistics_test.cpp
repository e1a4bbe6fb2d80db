#include <algorithm>
#include <cmath>
#include <random>

#include "tests/indicators/study_case.h"

namespace {

using namespace qxtest;

const Values kCloses = {51, 53, 52, 51, 49, 50, 53, 55, 54, 52, 55, 57};

int32_t linesToTheEnd(const qxArray* in, qxArray* slope, qxArray* intercept, int32_t length,
                      int32_t start) {
  return qxRegressionLineMv(in, slope, intercept, length, start, INT32_MAX);
}

// Prices of the bars, and statistics of closes and volumes.
const std::vector<StudyCase> kCases = {
    row(study<qxTypicalPrices>(), {}, {0},
        {{50.66666667, 52.33333333, 53, 51.33333333, 49.66666667, 49.33333333, 52, 54.33333333, 55,
          52.33333333, 54, 56.33333333}}),
    row(study<qxWeightedCloses>(), {}, {0},
        {{50.75, 52.5, 52.75, 51.25, 49.5, 49.5, 52.25, 54.5, 54.75, 52.25, 54.25, 56.5}}),
    row(study<qxMedianPrices>(), {}, {0},
        {{50.5, 52, 53.5, 51.5, 50, 49, 51.5, 54, 55.5, 52.5, 53.5, 56}}),
    row(study<qxAvgPrices>(), {}, {0},
        {{50.5, 52, 53, 51.5, 50, 49.25, 51.5, 54, 55, 52.75, 53.5, 56}}),
    row(study<qxTR>(), {}, {0}, {{3, 4, 3, 3, 4, 4, 3, 4, 3, 3, 3, 4}}),
    row(study<qxStdDevMv>(), {1, period(4)}, {3},
        {{0, 0, 0, 0.9574271078, 1.707825128, 1.290994449, 1.707825128, 2.753785274, 2.160246899,
          1.290994449, 1.414213562, 2.081665999}}),
    row(study<qxStdErrMv>(), {period(4)}, {3},
        {{0, 0, 0, 1.161895004, 0.3872983346, 0.9486832981, 1.774823935, 0.5916079783, 1.449137675,
          1.449137675, 1.702938637, 1.702938637}}),
    row(study<qxDispersionMv>(), {period(4)}, {3},
        {{0, 0, 0, 0.1601380255, 0.1617318928, 0.1629172876, 0.1987267387, 0.1962251149,
          0.1946443924, 0.1761918825, 0.1933726397, 0.2078042967}}),
    row(study<qxCorCoefMv>("cv"), {1, period(4)}, {3},
        {{0, 0, 0, 0.4045199175, -0.6831300511, -1, 0.377964473, 0.6556121685, 0.1463850109,
          -0.04170288281, 0.04659992125, 0.5375841493}}),
    row(study<qxCovarianceMv>("cv"), {period(4)}, {3},
        {{0, 0, 0, 50, -291.6666667, -333.3333333, 166.6666667, 308.3333333, 100, -16.66666667,
          16.66666667, 375}}),
    row(study<qxRSquared>(), {period(4)}, {3},
        {{0, 0, 0, 0.01818181818, 0.9657142857, 0.64, 0.28, 0.9692307692, 0.7, 0.16, 0.03333333333,
          0.5538461538}}),
};

TEST(Statistics, WorkedCases) {
  checkCases(kCases);
}

TEST(Statistics, RealPrices) {
  checkRealPrices(kCases);
  checkRealPrices({row(study<linesToTheEnd>(), {20}, {}, {})});
}

TEST(Statistics, ArrayStatsTreatsZerosAsMissingForAllButTheMaximum) {
  struct {
    Values values;
    int32_t skipZeros;
    double min, max, avg, sum;
    int32_t minPos, maxPos;
  } const cases[] = {
      {{0, 5, 0, 3}, 1, 0, 5, 4, 8, 0, 1},    {{2, 0, 3}, 1, 2, 3, 2.5, 5, 0, 2},
      {{2, 0, 3}, 0, 0, 3, 5.0 / 3, 5, 1, 2}, {{-2, 0, -1}, 1, -2, 0, -1.5, -3, 0, 1},
      {{4, 1, 4, 1}, 0, 1, 4, 2.5, 10, 1, 0}, {{NAN, 1, 2}, 0, NAN, NAN, NAN, NAN, 0, 0},
      {{1, NAN, 0}, 0, 0, 1, NAN, NAN, 2, 0},
  };
  for (const auto& c : cases) {
    Series a(c.values);
    double min, max, avg, sum;
    int32_t minPos, maxPos;
    EXPECT_EQ(qxArrayStats(a, &min, &max, &avg, &sum, 0, 99, c.skipZeros), QX_SUCCESS);
    EXPECT_EQ(qxArrayStatsPos(a, &minPos, &maxPos, 0, 99, c.skipZeros), QX_SUCCESS);
    EXPECT_TRUE(near(min, c.min));
    EXPECT_TRUE(near(max, c.max));
    EXPECT_TRUE(near(avg, c.avg));
    EXPECT_TRUE(near(sum, c.sum));
    EXPECT_EQ(minPos, c.minPos);
    EXPECT_EQ(maxPos, c.maxPos);
  }
}

TEST(Statistics, RangesAreSwappedAndCutToTheValidPart) {
  Series a({9, 1, 2, 3, -9}, 1);
  double min, max, avg, sum;
  struct {
    int32_t from, to;
    double sum;
  } const cases[] = {{3, 1, 6}, {INT32_MIN, 2, 3}, {INT32_MAX, 2, -4}, {0, 0, 0}, {7, 5, 0}};
  for (const auto& c : cases) {
    EXPECT_EQ(qxArrayStats(a, nullptr, nullptr, nullptr, &sum, c.from, c.to, 0), QX_SUCCESS);
    EXPECT_EQ(sum, c.sum) << c.from << ".." << c.to;
  }
  EXPECT_EQ(qxArrayStats(a, &min, &max, &avg, &sum, 7, 5, 0), QX_SUCCESS);
  EXPECT_TRUE(min == 0 && max == 0 && std::isnan(avg)) << "an empty range";
  int32_t minPos, maxPos;
  EXPECT_EQ(qxArrayStatsPos(a, &minPos, &maxPos, 0, 0, 0), QX_SUCCESS);
  EXPECT_TRUE(minPos == 1 && maxPos == 1) << "the raised start";
  EXPECT_EQ(qxArrayStats(a, nullptr, nullptr, nullptr, nullptr, 0, 9, 0), QX_SUCCESS);
  EXPECT_EQ(qxArrayStats(nullptr, &min, &max, &avg, &sum, 0, 9, 0), QX_ERR_INVALID_PARM);
}

TEST(Statistics, BarStatsSkipsZerosForTheLowOnly) {
  BarSet bars({{1, 0, 5, 4, 0, 0, 0}, {2, 6, 9, 3, 8, 0, 0}, {3, 7, 7, 0, 7, 0, 0}});
  double low = -1, high = -1;
  EXPECT_EQ(qxBarStats(bars, &low, &high, 2, -5), QX_SUCCESS);
  EXPECT_TRUE(low == 3 && high == 9);
  EXPECT_EQ(qxBarStats(bars, &low, &high, 0, 0), QX_SUCCESS);
  EXPECT_TRUE(low == 0 && high == 5) << "no non-zero close to start from";
  EXPECT_EQ(qxBarStats(bars, &low, nullptr, 2, 99), QX_SUCCESS);
  EXPECT_EQ(low, 7);
  bars->close.data[0] = NAN;
  EXPECT_EQ(qxBarStats(bars, &low, nullptr, 0, 2), QX_SUCCESS);
  EXPECT_TRUE(std::isnan(low)) << "a NaN is a non-zero close";
  EXPECT_EQ(qxBarStats(bars, &low, &high, 3, 9), QX_SUCCESS);
  EXPECT_TRUE(low == 0 && high == 0);
}

TEST(Statistics, ScalarValues) {
  Series a{2, 4, 4, 4, 5, 5, 7, 9}, line{1, 2, 3}, bent{1, 2, 4, 4}, doubled({2, 4, 8, 8, 77}, 1);
  EXPECT_TRUE(near(qxStdDev(a, 0, 0, 7), 2.0));
  EXPECT_TRUE(near(qxStdDev(a, 1, 7, 0), std::sqrt(32.0 / 7)));
  EXPECT_TRUE(std::isnan(qxStdDev(a, 1, 3, 3)));
  double slope, intercept;
  EXPECT_EQ(qxRegressionLine(line, &slope, &intercept, 0, 9), QX_SUCCESS);
  EXPECT_TRUE(slope == 1 && intercept == 0);
  EXPECT_EQ(qxRegressionLine(line, &slope, &intercept, 2, 2), QX_SUCCESS);
  EXPECT_TRUE(slope == 0 && intercept == 3);
  EXPECT_EQ(qxRegressionLine(line, &slope, &intercept, 2, 1), QX_SUCCESS);
  EXPECT_TRUE(std::isnan(slope) && std::isnan(intercept)) << "the ends are not swapped";
  // Residuals of 1, 2, 4, 4 about 0 + 1.1 x: -0.1, -0.2, 0.7, -0.4.
  EXPECT_TRUE(near(qxStdErr(bent, 0, 3), std::sqrt(0.7 / 2)));
  EXPECT_EQ(qxStdErr(line, 0, 2), 0.0);
  EXPECT_EQ(qxStdErr(line, 0, 1), 0.0) << "no degrees of freedom";
  EXPECT_TRUE(near(qxCorCoef(bent, doubled, 0, 0, 9), 3.0 / 2)) << "three pairs from index 1";
  EXPECT_TRUE(near(qxCorCoef(bent, doubled, 1, 0, 9), 1.0));
  Series flat{5, 5, 5, 5};
  EXPECT_EQ(qxCorCoef(bent, flat, 1, 0, 3), 0.0);
  EXPECT_TRUE(near(qxCovariance(bent, doubled, 0, 9), 8.0 / 3));
  EXPECT_TRUE(near(qxDispersion(bent, 0, 2), std::sqrt(std::log(2.0))));
  EXPECT_TRUE(near(qxSlopePts(1, 2, 3, 8), 3.0));
  EXPECT_TRUE(near(qxSlopeArrayPts(bent, 3, 0), 1.0));
  EXPECT_EQ(qxSlopeArrayPts(bent, 0, 4), 0.0);
  EXPECT_EQ(qxSlopeArrayPts(bent, INT32_MIN, INT32_MAX), 0.0);
}

TEST(Statistics, SumPrevAndFirstNonZero) {
  Series a({100, 1, 2, 3}, 1);
  struct {
    int32_t count, index;
    double sum;
  } const cases[] = {{2, 3, 5},  {9, 3, 6},         {3, 5, 3},  {0, 3, 0},
                     {-4, 2, 0}, {INT32_MAX, 2, 3}, {1, -1, 0}, {INT32_MAX, INT32_MAX, 6}};
  for (const auto& c : cases) EXPECT_EQ(qxSumPrev(a, c.count, c.index), c.sum) << c.count;
  EXPECT_EQ(qxFirstNonZeroItem(a), 1);
  EXPECT_EQ(qxFirstNonZeroItem(Series({7, 0, -0.0, NAN}, 1)), 3);
  EXPECT_EQ(qxFirstNonZeroItem(Series({7, 0, 0}, 1)), 0);
}

TEST(Statistics, TurningPoints) {
  Series closes(kCloses);
  struct {
    int32_t from, to, high, low;
  } const cases[] = {{0, 11, 7, 9}, {0, 9, 7, 4}, {0, 4, 1, 0},  {1, 4, 1, 1},  {0, 1, 1, 1},
                     {5, 8, 7, 8},  {8, 8, 8, 8}, {11, 0, 7, 9}, {-9, 99, 7, 9}};
  for (const auto& c : cases) {
    EXPECT_EQ(qxLastHigh(closes, c.from, c.to), c.high) << c.from << ".." << c.to;
    EXPECT_EQ(qxLastLow(closes, c.from, c.to), c.low) << c.from << ".." << c.to;
  }
  Series plateau{1, 3, 3, 2}, floor{5, 3, 3, 4}, valley{3, 1, 3}, late({9, 8, 7}, 1);
  EXPECT_EQ(qxLastHigh(plateau, 0, 3), 2) << "equal neighbours stop the walk";
  EXPECT_EQ(qxLastHigh(floor, 0, 3), 2);
  EXPECT_EQ(qxLastLow(plateau, 0, 3), 2);
  EXPECT_EQ(qxLastHigh(valley, 0, 2), 0) << "of equal ends the first";
  EXPECT_EQ(qxLastLow(late, 0, 0), 1) << "nothing valid in the range";
}

TEST(Statistics, BarPrices) {
  BarSet bars(barsFrom("10 14 8 12 / 0 15 13 14 / 9 11 9 10"));
  const struct {
    double (*price)(const qxBars* bars, int32_t index);
    int32_t (*prices)(const qxBars* bars, qxArray* out, int32_t start);
    Values expected;
  } cases[] = {{qxTypicalPrice, qxTypicalPrices, {34.0 / 3, 14, 10}},
               {qxWeightedClose, qxWeightedCloses, {11.5, 14, 10}},
               {qxMedianPrice, qxMedianPrices, {11, 14, 10}},
               {qxAvgPrice, qxAvgPrices, {11, 14, 9.75}},
               {qxTrueRange, qxTR, {6, 3, 5}},
               {qxTrueHigh, nullptr, {14, 15, 14}},
               {qxTrueLow, nullptr, {8, 12, 9}}};
  for (const auto& c : cases) {
    for (int32_t i = 0; i < 3; ++i) {
      EXPECT_TRUE(near(c.price(bars, i), c.expected[static_cast<size_t>(i)]));
    }
    for (int32_t i : {3, -1, INT32_MAX, INT32_MIN}) EXPECT_EQ(c.price(bars, i), 0.0);
    EXPECT_EQ(c.price(nullptr, 0), 0.0);
    if (c.prices == nullptr) continue;
    Series out;
    EXPECT_TRUE(gives(c.prices(bars, out, 0), out, c.expected));
  }
}

// A moving form beside the scalar on one window.
const struct {
  const char* name;
  int32_t (*moving)(const qxArray* x, const qxArray* y, qxArray* out, int32_t length);
  double (*scalar)(const qxArray* x, const qxArray* y, int32_t from, int32_t to);
} kMoving[] = {
    {"deviation",
     [](auto x, auto, auto out, auto length) { return qxStdDevMv(x, out, 1, length, 1); },
     [](auto x, auto, auto from, auto to) { return qxStdDev(x, 1, from, to); }},
    {"error", [](auto x, auto, auto out, auto length) { return qxStdErrMv(x, out, length, 1); },
     [](auto x, auto, auto from, auto to) { return qxStdErr(x, from, to); }},
    {"dispersion",
     [](auto x, auto, auto out, auto length) { return qxDispersionMv(x, out, length, 1); },
     [](auto x, auto, auto from, auto to) { return qxDispersion(x, from, to); }},
    {"correlation",
     [](auto x, auto y, auto out, auto length) { return qxCorCoefMv(x, y, out, 1, length, 1); },
     [](auto x, auto y, auto from, auto to) { return qxCorCoef(x, y, 1, from, to); }},
    {"of the population",
     [](auto x, auto y, auto out, auto length) { return qxCorCoefMv(x, y, out, 0, length, 1); },
     [](auto x, auto y, auto from, auto to) { return qxCorCoef(x, y, 0, from, to); }},
    {"covariance",
     [](auto x, auto y, auto out, auto length) { return qxCovarianceMv(x, y, out, length, 1); },
     [](auto x, auto y, auto from, auto to) { return qxCovariance(x, y, from, to); }},
    {"line", [](auto x, auto, auto out, auto length) { return qxLstSqrMA(x, out, length, 1); },
     [](auto x, auto, auto from, auto to) {
       double slope, intercept;
       qxRegressionLine(x, &slope, &intercept, from, to);
       return intercept + (to - from + 2) * slope;
     }},
};

TEST(MovingStatistics, EqualTheScalarFunctionsToTheLastBit) {
  std::mt19937 random(4);
  std::uniform_real_distribution<double> price(10.0, 90.0);
  for (int32_t round = 0; round < 24; ++round) {
    Values xs(160), ys(170);
    for (double& value : xs) value = price(random);
    for (double& value : ys)
      value = round % 2 == 0 ? price(random) : std::floor(price(random) / 20);
    if (round % 3 == 0) xs[static_cast<size_t>(random() % 160)] = kNaN;
    if (round % 4 == 0) std::fill(ys.begin() + 40, ys.begin() + 80, 7.0);
    const int32_t length = round < 4 ? round + 1 : 1 + static_cast<int32_t>(random() % 60);
    Series x(xs, 2), y(ys, static_cast<int32_t>(random() % 5));
    for (const auto& c : kMoving) {
      Series out;
      ASSERT_EQ(c.moving(x, y, out, length), QX_SUCCESS);
      for (int32_t i = out.record.firstvalid; i < 160; ++i) {
        ASSERT_TRUE(near(out[i], c.scalar(x, y, i - length + 1, i), 0))
            << c.name << " over " << length << " bars, bar " << i;
      }
    }
  }
}

TEST(MovingStatistics, RegressionLineEndsWhereItIsTold) {
  Series in(kCloses), slope, intercept;
  EXPECT_EQ(qxRegressionLineMv(in, slope, intercept, 4, 0, 3), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxRegressionLineMv(in, slope, intercept, 0, 0, 9), QX_ERR_INVALID_PARM);
  EXPECT_EQ(slope.record.data, nullptr);
  EXPECT_EQ(qxRegressionLineMv(in, slope, intercept, 4, 0, 99), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(slope, {0, 0, 0, -0.1, -1.3, -0.8, 0.7, 2.1, 1.4, -0.4, -0.2, 1.2}));
  EXPECT_TRUE(seriesNear(intercept, {0, 0, 0, 52, 54.5, 52.5, 49, 46.5, 49.5, 54.5, 54.5, 51.5}));
  EXPECT_EQ(qxRegressionLineMv(in, slope, intercept, 4, 2, 6), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(slope, {0, 0, 0, 0, 0, -0.8, 0.7, 0, 0, 0, 0, 0}));
  EXPECT_EQ(slope.record.firstvalid, 5);
  EXPECT_EQ(intercept.record.firstvalid, 5);
  EXPECT_TRUE(gives(qxRegressionLineMv(in, slope, intercept, 20, 0, 50), slope, Values(12), 0));
  EXPECT_EQ(slope.record.firstvalid, 19);
  EXPECT_EQ(qxRegressionLineMv(in, slope, intercept, INT32_MIN, 0, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxRegressionLineMv(in, slope, intercept, 4, INT32_MAX, INT32_MAX), QX_ERR_INVALID_PARM);
}

}  // namespace
