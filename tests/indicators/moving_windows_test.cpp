#include "indicators/moving_windows.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <random>

#include "tests/support/test_support.h"

namespace {

using qx::Windows;
using qxtest::BarSet;
using qxtest::Series;

constexpr double kUntouched = -777.0;

// Few distinct values, so that ties are common, and the special ones among them.
std::vector<double> roughValues(std::mt19937& random, int32_t size, bool special) {
  const double specials[] = {0.0, -0.0, NAN, HUGE_VAL, -HUGE_VAL};
  std::vector<double> values(static_cast<size_t>(size));
  for (double& value : values) {
    value = static_cast<double>(random() % 9) - 4.0;
    if (special && random() % 3 == 0) value = specials[random() % 5];
  }
  return values;
}

// The two zeros differ.
bool sameBits(double a, double b) {
  return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b) || (a != a && b != b);
}

TEST(MovingWindows, ExtremesEqualAScanOfEachWindow) {
  std::mt19937 random(1);
  for (int32_t round = 0; round < 600; ++round) {
    const int32_t size = 1 + static_cast<int32_t>(random() % 40);
    const int32_t period = 1 + static_cast<int32_t>(random() % 20);
    const int32_t floor = static_cast<int32_t>(random() % 5);
    const int32_t first = static_cast<int32_t>(random() % 30);
    Series a(roughValues(random, size, round % 2 == 0));
    std::vector<double> low(64, kUntouched), high = low, lowAt = low, highAt = low;
    const Windows windows = {first, size - 1, period, floor};
    ASSERT_EQ(qx::movingLowest(a.record.data, windows, low.data()), QX_SUCCESS);
    ASSERT_EQ(qx::movingHighest(a.record.data, windows, high.data()), QX_SUCCESS);
    ASSERT_EQ(qx::movingLowestPosition(a.record.data, windows, lowAt.data()), QX_SUCCESS);
    ASSERT_EQ(qx::movingHighestPosition(a.record.data, windows, highAt.data()), QX_SUCCESS);
    for (int32_t i = 0; i < 64; ++i) {
      const auto k = static_cast<size_t>(i);
      if (i < first || i < floor || i >= size) {
        EXPECT_EQ(low[k], kUntouched);
        EXPECT_EQ(highAt[k], kUntouched);
        continue;
      }
      const int32_t from = std::max({i - period + 1, floor, 0});
      double min, max;
      int32_t minPos, maxPos;
      qxArrayStats(a, &min, &max, nullptr, nullptr, from, i, 0);
      qxArrayStatsPos(a, &minPos, &maxPos, from, i, 0);
      EXPECT_TRUE(sameBits(low[k], min)) << "round " << round << " bar " << i;
      EXPECT_TRUE(sameBits(high[k], max)) << "round " << round << " bar " << i;
      EXPECT_EQ(lowAt[k], minPos) << "round " << round << " bar " << i;
      EXPECT_EQ(highAt[k], maxPos) << "round " << round << " bar " << i;
    }
  }
}

TEST(MovingWindows, BarExtremesEqualAScanOfEachWindow) {
  std::mt19937 random(2);
  for (int32_t round = 0; round < 600; ++round) {
    const int32_t size = 1 + static_cast<int32_t>(random() % 40);
    const int32_t period = 1 + static_cast<int32_t>(random() % 12);
    BarSet bars;
    ASSERT_EQ(qxAllocBars(bars, size), QX_SUCCESS);
    for (qxArray* series : {&bars->open, &bars->high, &bars->low, &bars->close}) {
      const std::vector<double> values = roughValues(random, size, round % 3 != 0);
      std::copy(values.begin(), values.end(), series->data);
    }
    for (int32_t i = 0; i < size; ++i) {  // runs of missing closes
      if (random() % 2 == 0) bars->close.data[i] = 0.0;
    }
    std::vector<double> low(40, kUntouched), high = low;
    const Windows windows = {period - 1, size - 1, period};
    ASSERT_EQ(qx::movingBarLowest(bars.record, windows, low.data()), QX_SUCCESS);
    ASSERT_EQ(qx::movingBarHighest(bars.record, windows, high.data()), QX_SUCCESS);
    for (int32_t i = period - 1; i < size; ++i) {
      double min, max;
      qxBarStats(bars, &min, &max, i - period + 1, i);
      EXPECT_TRUE(sameBits(low[static_cast<size_t>(i)], min)) << "round " << round << " bar " << i;
      EXPECT_TRUE(sameBits(high[static_cast<size_t>(i)], max)) << "round " << round;
    }
  }
}

TEST(MovingWindows, HostileWindowsTouchNothing) {
  Series a{3, 1, 2};
  double out[3] = {kUntouched, kUntouched, kUntouched};
  EXPECT_EQ(qx::movingLowest(a.record.data, {0, 2, 0}, out), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qx::movingLowest(a.record.data, {int64_t{1} << 31, 2, int64_t{1} << 31}, out), 0);
  EXPECT_EQ(qx::movingLowest(a.record.data, {0, -1, 2}, out), QX_SUCCESS);
  for (double value : out) EXPECT_EQ(value, kUntouched);
  EXPECT_EQ(qx::movingLowest(a.record.data, {-5, 2, INT32_MAX}, out), QX_SUCCESS);
  EXPECT_EQ(out[0], 3.0);
  EXPECT_EQ(out[2], 1.0);
}

TEST(MovingWindows, SumsKeepTheirOwnOrder) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> price(-1.0, 1.0);
  std::vector<double> a(100), out(100);
  for (double& value : a) value = price(random) * std::pow(10.0, static_cast<int>(random() % 30));
  const int64_t period = 13;
  qx::byLanes(period - 1, 99, [&](auto lanes, int64_t i) {
    const auto sums = qx::windowSums<lanes>(
        i - period + 1, period,
        [&a](int64_t j, int64_t, size_t) { return a[static_cast<size_t>(j)]; });
    for (size_t lane = 0; lane < lanes; ++lane) out[static_cast<size_t>(i) + lane] = sums[lane];
  });
  for (size_t i = 12; i < 100; ++i) {
    double sum = 0.0;
    for (size_t j = i - 12; j <= i; ++j) sum += a[j];
    EXPECT_EQ(out[i], sum);
  }
}

}  // namespace
