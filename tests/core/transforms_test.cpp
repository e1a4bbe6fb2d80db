#include <numeric>
#include <tuple>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

using Values = std::vector<double>;

// Bars that carry dates alone.
BarSet datedBars(const Values& dates) {
  std::vector<Bar> bars;
  for (double date : dates) bars.push_back({date, 0, 0, 0, 0, 0, 0});
  return BarSet(bars);
}

TEST(MultAddArray, MapsFromTheFirstValidElement) {
  Series in({1, 2, 3, 4}, 1), out;
  EXPECT_TRUE(gives(qxMultAddArray(in, out, 2, 0.5, 0), out, {0, 4.5, 6.5, 8.5}));
  EXPECT_EQ(out.record.firstvalid, 0) << "not set";
  // In place, earlier elements stay.
  EXPECT_TRUE(gives(qxMultAddArray(in, in, 10, 0, 2), in, {1, 2, 30, 40}));
  qxArray alias = in.record;
  EXPECT_TRUE(gives(qxMultAddArray(in, &alias, 1, 1, INT32_MIN), in, {1, 3, 31, 41}));
  EXPECT_TRUE(gives(qxMultAddArray(in, in, 9, 9, INT32_MAX), in, {1, 3, 31, 41}));
}

TEST(MultAddArray, Refusals) {
  Series in{1, 2}, none, other;
  EXPECT_EQ(qxMultAddArray(none, other, 1, 1, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxMultAddArray(none, none, 1, 1, 0), QX_ERR_INVALID_PARM);
  expectNullsRefused("qxMultAddArray", qxMultAddArray, QX_ERR_INVALID_PARM, in, other, 1, 1, 0);
  qxReSizeArray(in, 0);
  EXPECT_EQ(qxMultAddArray(in, in, 1, 1, 0), 0) << "an empty series in place returns its count";
  EXPECT_EQ(qxMultAddArray(in, other, 1, 1, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxScaleArray(in, other, 0, 0, 0, 1, 0, 0), QX_ERR_INVALID_PARM);
}

TEST(ScaleArray, MapsTheSourceRangeUpwards) {
  const std::tuple<double, double, double, double, Values> rows[] = {
      {0, 0, 0, 100, {0, 50, 100}},  {0, 0, 100, 0, {100, 150, 200}},
      {2, 10, 0, 100, {0, 25, 50}},  {10, 2, 0, 100, {-100, -75, -50}},
      {-4, 4, -1, 1, {0.5, 1, 1.5}}, {0, 8, 10, 10, {10, 10, 10}},
      {0, 8, 0, 4, {1, 2, 3}}};
  for (const auto& [low, high, targetLow, targetHigh, expected] : rows) {
    Series in{2, 4, 6}, out;
    for (Series* result : {&out, &in}) {  // apart, then in place
      const int32_t status = qxScaleArray(in, *result, low, high, targetLow, targetHigh, 0, 0);
      EXPECT_TRUE(gives(status, *result, expected));
    }
  }
}

TEST(ScaleArray, ExtremesOfTheElementsMapped) {
  Series in({-50, 4, 0, 8, 6}, 1), flat{3, 3}, out, shorter{9, 9, 9};
  const auto scale = [](Series& from, Series& to, int32_t skipZeros, int32_t first) {
    return qxScaleArray(from, to, 0, 0, 0, 100, skipZeros, first);
  };
  EXPECT_TRUE(gives(scale(in, out, 1, 0), out, {0, 0, -100, 100, 50})) << "the least but zeros";
  EXPECT_TRUE(gives(scale(in, out, 0, 0), out, {0, 50, 0, 100, 75}));
  EXPECT_TRUE(gives(scale(in, shorter, 0, 1), shorter, {0, 50, 0}))
      << "extremes to the input's end";
  EXPECT_TRUE(gives(scale(in, out, 0, 5), out, {0, 0, 0, 0, 0})) << "nothing to map";
  EXPECT_TRUE(gives(scale(flat, out, 0, 0), out, {kNaN, kNaN})) << "a flat source divides by zero";
}

TEST(ShiftArray, MovesValuesWithinTheCapacity) {
  // Three of five elements are in use, the first valid one is element 1.
  const auto expectShifted = [](int32_t count, int32_t firstValid, const Values& expected) {
    Series series({1, 2, 3, 77, 77}, 1);
    qxReSizeArray(series, 3);
    qxShiftArray(series, count);
    EXPECT_EQ(series.values(), expected) << count;
    EXPECT_EQ(series.record.firstvalid, firstValid) << count;
  };
  expectShifted(0, 1, {1, 2, 3});
  expectShifted(1, 2, {0, 1, 2, 3});
  expectShifted(2, 3, {0, 0, 1, 2, 3});
  expectShifted(3, 4, {0, 0, 0, 1, 2});
  expectShifted(4, 5, {0, 0, 0, 0, 1});
  for (const int32_t all : {5, INT32_MAX}) expectShifted(all, 5, {0, 0, 0, 0, 0});
  expectShifted(-1, 0, {2, 3});
  expectShifted(-2, 0, {3});
  for (const int32_t none : {-3, -5, INT32_MIN}) expectShifted(none, 0, {});
  Series tail{1, 2, 3}, none;
  qxShiftArray(tail, -1);
  EXPECT_EQ(tail[2], 3.0) << "the vacated tail is not cleared";
  for (const int32_t count : {3, -3}) qxShiftArray(none, count);
  qxShiftArray(nullptr, 1);
  EXPECT_EQ(none.record.size, 0);
}

// The periods themselves are compared with a naive grouping where bars are merged.
TEST(GroupArray, SumsWithinCalendarPeriods) {
  const double monday = dateOf(2006, 1, 2);
  const std::tuple<int32_t, Values, Values> rows[] = {
      {QX_FREQ_DAILY, {40000.1, 40000.9, 40001.0, 40003.5}, {3, 3, 4}},
      {QX_FREQ_WEEKLY, {monday + 2, monday + 9}, {1, 2}},   // two Wednesdays
      {QX_FREQ_WEEKLY, {monday + 2, monday + 11}, {1, 2}},  // Wednesday, Friday a week later
      {QX_FREQ_WEEKLY, {monday, monday + 6}, {3}},          // Monday, Sunday of that week
      {QX_FREQ_WEEKLY, {1e300, 1e300}, {3}},                // the same day beyond any calendar
      {QX_FREQ_WEEKLY, {-1e300, 1e300}, {1, 2}},
      {QX_FREQ_MONTHLY, {dateOf(2005, 3, 1), dateOf(2006, 3, 1)}, {1, 2}},
      {QX_FREQ_QUARTERLY, {dateOf(2006, 2, 1), dateOf(2006, 8, 1)}, {1, 2}},  // one is skipped
      {QX_FREQ_YEARLY, {dateOf(2005, 1, 1), dateOf(2005, 12, 31), dateOf(2006, 1, 1)}, {3, 3}}};
  for (const auto& [frequency, dates, expected] : rows) {
    SCOPED_TRACE(::testing::PrintToString(dates));
    const BarSet dated = datedBars(dates);
    Values ascending(dates.size());
    std::iota(ascending.begin(), ascending.end(), 1);
    Series in(ascending), out;
    EXPECT_TRUE(gives(qxGroupArray(&dated.record, in, out, frequency), out, expected));
    EXPECT_TRUE(gives(qxGroupArray(&dated.record, in, in, frequency), in, expected));
  }
}

TEST(GroupArray, FirstValidIsThatOfThePeriods) {
  const BarSet bars = datedBars({1.0, 1.5, 2.0, 2.5, 3.0, 3.5});
  // With 3 the second day begins before the first valid element and is added to 0.
  const std::tuple<int32_t, Values, int32_t> rows[] = {
      {0, {3, 7, 11}, 0}, {-4, {3, 7, 11}, 0}, {1, {2, 7, 11}, 1}, {2, {0, 7, 11}, 1},
      {3, {0, 4, 11}, 2}, {5, {0, 0, 6}, 0},   {99, {0, 0, 0}, 0}};
  for (const auto& [firstValid, expected, outFirstValid] : rows) {
    Series in({1, 2, 3, 4, 5, 6}, firstValid), out;
    qxSetMaxFirstValid(0);
    EXPECT_TRUE(gives(qxGroupArray(&bars.record, in, out, QX_FREQ_DAILY), out, expected));
    EXPECT_EQ(out.record.firstvalid, outFirstValid) << firstValid;
    EXPECT_EQ(qxGetMaxFirstValid(), outFirstValid);
  }
  // In place the first slot keeps what it held.
  Series in({1, 2, 3, 4, 5, 6}, 2);
  EXPECT_TRUE(gives(qxGroupArray(&bars.record, in, in, QX_FREQ_DAILY), in, {1, 7, 11}));
  EXPECT_EQ(in.record.firstvalid, 1);
  qxSetMaxFirstValid(0);
}

TEST(GroupArray, LimitsAndRefusals) {
  const BarSet bars = datedBars({1, 2, 3, 4}), undated;
  Series in{1, 2, 3, 4}, longer{1, 2, 3, 4, 5, 6}, two{9, 9}, out, none, untouched{7};
  // A full output ends the walk.
  EXPECT_TRUE(gives(qxGroupArray(&bars.record, in, two, QX_FREQ_DAILY), two, {1, 2}));
  EXPECT_TRUE(gives(qxGroupArray(&bars.record, longer, out, QX_FREQ_DAILY), out, {1, 2, 3, 4}));
  EXPECT_EQ(out.record.datasize, 6);

  constexpr int32_t kRefused = QX_ERR_INVALID_PARM;
  for (const int32_t frequency : {0, 1, 7, INT32_MIN}) {
    EXPECT_EQ(qxGroupArray(&bars.record, in, untouched, frequency), kRefused);
  }
  EXPECT_EQ(qxGroupArray(&undated.record, in, untouched, QX_FREQ_DAILY), kRefused);
  EXPECT_EQ(qxGroupArray(&bars.record, none, untouched, QX_FREQ_DAILY), kRefused);
  EXPECT_EQ(qxGroupArray(&bars.record, none, none, QX_FREQ_DAILY), kRefused);
  expectNullsRefused("qxGroupArray", qxGroupArray, kRefused, &bars.record, in, untouched,
                     QX_FREQ_DAILY);
  EXPECT_EQ(untouched.values(), (Values{7}));
}

}  // namespace
