#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;
using qxtest::near;
using qxtest::Series;
using qxtest::seriesNear;
using qxtest::workedBars;

using Values = std::vector<double>;

const Values kCloses = {51, 53, 52, 51, 49, 50, 53, 55, 54, 52, 55, 57};
const Values kVolumes = {1000, 1200, 900, 1100, 1500, 1300, 1700, 1600, 1000, 1400, 1250, 1800};

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
  Series plateau{1, 3, 3, 2}, late({9, 8, 7}, 1);
  EXPECT_EQ(qxLastHigh(plateau, 0, 3), 2) << "equal neighbours stop the walk";
  EXPECT_EQ(qxLastLow(late, 0, 0), 1) << "nothing valid in the range";
}

TEST(Statistics, BarPrices) {
  BarSet bars({{1, 10, 14, 8, 12, 0, 0}, {2, 0, 15, 13, 14, 0, 0}, {3, 9, 11, 9, 10, 0, 0}});
  struct {
    double (*price)(const qxBars* bars, int32_t index);
    Values expected;
  } const scalars[] = {
      {qxTypicalPrice, {34.0 / 3, 14, 10}},
      {qxWeightedClose, {11.5, 14, 10}},
      {qxMedianPrice, {11, 14, 10}},
      {qxAvgPrice, {11, 14, 9.75}},
      {qxTrueHigh, {14, 15, 14}},
      {qxTrueLow, {8, 12, 9}},
      {qxTrueRange, {6, 3, 5}},
  };
  for (const auto& c : scalars) {
    for (int32_t i = 0; i < 3; ++i) {
      EXPECT_TRUE(near(c.price(bars, i), c.expected[static_cast<size_t>(i)]));
    }
    for (int32_t i : {3, -1, INT32_MAX, INT32_MIN}) EXPECT_EQ(c.price(bars, i), 0.0);
    EXPECT_EQ(c.price(nullptr, 0), 0.0);
  }
  struct {
    int32_t (*prices)(const qxBars* bars, qxArray* out, int32_t start);
    Values expected;
  } const series[] = {
      {qxTypicalPrices, {0, 14, 10}},
      {qxWeightedCloses, {0, 14, 10}},
      {qxMedianPrices, {0, 14, 10}},
      {qxAvgPrices, {0, 14, 9.75}},
      {qxTR, {0, 2, 5}},  // the first bar ignores the previous close
  };
  bars->date.firstvalid = 2;
  for (const auto& c : series) {
    Series out;
    EXPECT_EQ(c.prices(bars, out, 1), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(out, c.expected)) << "the start is not raised";
    EXPECT_EQ(out.record.firstvalid, 1);
    EXPECT_EQ(c.prices(bars, out, 7), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(out, {0, 0, 0}));
  }
}

// A moving form with period and start, beside the scalar on one window.
struct MovingCase {
  const char* name;
  std::function<int32_t(const qxArray* x, const qxArray* y, qxArray* out, int32_t p, int32_t s)>
      moving;
  std::function<double(const qxArray* x, const qxArray* y, int32_t from, int32_t to)> scalar;
  Values worked;  // over closes and volumes, period 4
};

const MovingCase kMoving[] = {
    {"standard deviation",
     [](auto x, auto, auto out, auto p, auto s) { return qxStdDevMv(x, out, 1, p, s); },
     [](auto x, auto, auto from, auto to) { return qxStdDev(x, 1, from, to); },
     {0, 0, 0, 0.957427107756, 1.70782512766, 1.29099444874, 1.70782512766, 2.75378527364,
      2.16024689947, 1.29099444874, 1.41421356237, 2.08166599947}},
    {"standard error",
     [](auto x, auto, auto out, auto p, auto s) { return qxStdErrMv(x, out, p, s); },
     [](auto x, auto, auto from, auto to) { return qxStdErr(x, from, to); },
     {0, 0, 0, 1.16189500386, 0.387298334621, 0.948683298051, 1.77482393493, 0.59160797831,
      1.44913767462, 1.44913767462, 1.70293863659, 1.70293863659}},
    {"dispersion",
     [](auto x, auto, auto out, auto p, auto s) { return qxDispersionMv(x, out, p, s); },
     [](auto x, auto, auto from, auto to) { return qxDispersion(x, from, to); },
     {0, 0, 0, 0.160138025523, 0.161731892795, 0.162917287591, 0.198726738727, 0.196225114874,
      0.194644392395, 0.176191882457, 0.193372639656, 0.207804296744}},
    {"correlation",
     [](auto x, auto y, auto out, auto p, auto s) { return qxCorCoefMv(x, y, out, 1, p, s); },
     [](auto x, auto y, auto from, auto to) { return qxCorCoef(x, y, 1, from, to); },
     {0, 0, 0, 0.404519917478, -0.683130051064, -1, 0.377964473009, 0.655612168543, 0.146385010942,
      -0.0417028828114, 0.0465999212462, 0.53758414929}},
    {"correlation of the population",
     [](auto x, auto y, auto out, auto p, auto s) { return qxCorCoefMv(x, y, out, 0, p, s); },
     [](auto x, auto y, auto from, auto to) { return qxCorCoef(x, y, 0, from, to); },
     {}},
    {"covariance",
     [](auto x, auto y, auto out, auto p, auto s) { return qxCovarianceMv(x, y, out, p, s); },
     [](auto x, auto y, auto from, auto to) { return qxCovariance(x, y, from, to); },
     {0, 0, 0, 50, -291.666666667, -333.333333333, 166.666666667, 308.333333333, 100,
      -16.6666666667, 16.6666666667, 375}},
    {"determination",
     [](auto x, auto, auto out, auto p, auto s) { return qxRSquared(x, out, p, s); },
     nullptr,
     {0, 0, 0, 0.0181818181818, 0.965714285714, 0.64, 0.28, 0.969230769231, 0.7, 0.16,
      0.0333333333333, 0.553846153846}},
};

TEST(MovingStatistics, WorkedValuesAndRefusals) {
  for (const MovingCase& c : kMoving) {
    SCOPED_TRACE(c.name);
    Series x(kCloses), y(kVolumes), out;
    EXPECT_EQ(c.moving(x, y, out, 4, -3), QX_SUCCESS);
    if (!c.worked.empty()) {
      EXPECT_TRUE(seriesNear(out, c.worked));
    }
    EXPECT_EQ(out.record.firstvalid, 3);
    EXPECT_EQ(c.moving(x, y, out, 13, 0), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(out, Values(12, 0.0), 0)) << "no window fits";
    EXPECT_EQ(c.moving(x, y, out, INT32_MAX, INT32_MAX), QX_SUCCESS);
    EXPECT_EQ(out.record.firstvalid, INT32_MAX);
    for (int32_t period : {0, -1, INT32_MIN}) {
      Series untouched;
      EXPECT_EQ(c.moving(x, y, untouched, period, 5), QX_ERR_INVALID_PARM);
      EXPECT_EQ(untouched.record.data, nullptr);
    }
    EXPECT_EQ(c.moving(nullptr, y, out, 4, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(c.moving(x, y, x, 4, 0), QX_ERR_INVALID_PARM);
  }
}

TEST(MovingStatistics, EqualTheScalarFunctionsToTheLastBit) {
  std::mt19937 random(4);
  std::uniform_real_distribution<double> price(10.0, 90.0);
  for (int32_t round = 0; round < 24; ++round) {
    Values xs(160), ys(170);
    for (double& value : xs) value = price(random);
    for (double& value : ys)
      value = round % 2 == 0 ? price(random) : std::floor(price(random) / 20);
    if (round % 3 == 0) xs[static_cast<size_t>(random() % 160)] = NAN;
    if (round % 4 == 0) std::fill(ys.begin() + 40, ys.begin() + 80, 7.0);
    const int32_t period = round < 4 ? round + 1 : 1 + static_cast<int32_t>(random() % 60);
    Series x(xs, 2), y(ys, static_cast<int32_t>(random() % 5));
    for (const MovingCase& c : kMoving) {
      if (!c.scalar) continue;
      Series out;
      ASSERT_EQ(c.moving(x, y, out, period, 1), QX_SUCCESS);
      for (int32_t i = out.record.firstvalid; i < 160; ++i) {
        const double expected = c.scalar(x, y, i - period + 1, i);
        ASSERT_TRUE(out[i] == expected || (std::isnan(out[i]) && std::isnan(expected)))
            << c.name << " period " << period << " bar " << i << ": " << out[i] << " is not "
            << expected;
      }
    }
    Series line;
    ASSERT_EQ(qxLstSqrMA(x, line, period, 0), QX_SUCCESS);
    for (int32_t i = line.record.firstvalid; i < 160; ++i) {
      double slope, intercept;
      qxRegressionLine(x, &slope, &intercept, i - period + 1, i);
      const double expected = intercept + (period + 1) * slope;
      ASSERT_TRUE(line[i] == expected || std::isnan(expected)) << "period " << period;
    }
  }
}

TEST(MovingStatistics, RegressionLineEndsWhereItIsTold) {
  const Values slopes = {0, 0, 0, -0.1, -1.3, -0.8, 0.7, 2.1, 1.4, -0.4, -0.2, 1.2};
  const Values intercepts = {0, 0, 0, 52, 54.5, 52.5, 49, 46.5, 49.5, 54.5, 54.5, 51.5};
  Series in(kCloses), slope, intercept;
  EXPECT_EQ(qxRegressionLineMv(in, slope, intercept, 4, 0, 3), QX_ERR_INVALID_PARM);
  EXPECT_EQ(slope.record.data, nullptr);
  EXPECT_EQ(qxRegressionLineMv(in, slope, intercept, 4, 0, 99), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(slope, slopes));
  EXPECT_TRUE(seriesNear(intercept, intercepts));
  EXPECT_EQ(qxRegressionLineMv(in, slope, intercept, 4, 2, 6), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(slope, {0, 0, 0, 0, 0, -0.8, 0.7, 0, 0, 0, 0, 0}));
  EXPECT_EQ(slope.record.firstvalid, 5);
  EXPECT_EQ(intercept.record.firstvalid, 5);
  EXPECT_EQ(qxRegressionLineMv(in, slope, intercept, 20, 0, 50), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(slope, Values(12, 0.0), 0));
  EXPECT_EQ(slope.record.firstvalid, 19);
  EXPECT_EQ(qxRegressionLineMv(in, slope, intercept, INT32_MIN, 0, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxRegressionLineMv(in, slope, intercept, 4, INT32_MAX, INT32_MAX), QX_ERR_INVALID_PARM);
}

}  // namespace
