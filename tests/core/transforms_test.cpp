#include <cmath>
#include <numeric>

#include "tests/support/test_support.h"

namespace {

using qxtest::Bar;
using qxtest::BarSet;
using qxtest::expectNullsRefused;
using qxtest::Series;

using Values = std::vector<double>;

// Bars that carry dates alone.
BarSet datedBars(const Values& dates) {
  std::vector<Bar> bars;
  for (double date : dates) bars.push_back({date, 0, 0, 0, 0, 0, 0});
  return BarSet(bars);
}

double day(int32_t year, int32_t month, int32_t dayOfMonth) {
  return qxYMDtoDate(year, month, dayOfMonth, 0, 0, 0);
}

TEST(MultAddArray, MapsFromTheFirstValidElement) {
  Series in({1, 2, 3, 4}, 1), out;
  EXPECT_EQ(qxMultAddArray(in, out, 2, 0.5, 0), QX_SUCCESS);
  EXPECT_EQ(out.values(), (Values{0, 4.5, 6.5, 8.5}));
  EXPECT_EQ(out.record.firstvalid, 0) << "not set";
  EXPECT_EQ(qxMultAddArray(in, in, 10, 0, 2), QX_SUCCESS);
  EXPECT_EQ(in.values(), (Values{1, 2, 30, 40})) << "in place, earlier elements stay";
  qxArray alias = in.record;
  EXPECT_EQ(qxMultAddArray(in, &alias, 1, 1, INT32_MIN), QX_SUCCESS);
  EXPECT_EQ(in.values(), (Values{1, 3, 31, 41}));
  EXPECT_EQ(qxMultAddArray(in, in, 9, 9, INT32_MAX), QX_SUCCESS);
  EXPECT_EQ(in.values(), (Values{1, 3, 31, 41}));
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
  const struct {
    double low, high, targetLow, targetHigh;
    Values expected;
  } rows[] = {{0, 0, 0, 100, {0, 50, 100}},  {0, 0, 100, 0, {100, 150, 200}},
              {2, 10, 0, 100, {0, 25, 50}},  {10, 2, 0, 100, {-100, -75, -50}},
              {-4, 4, -1, 1, {0.5, 1, 1.5}}, {0, 8, 10, 10, {10, 10, 10}}};
  for (const auto& row : rows) {
    Series in{2, 4, 6}, out;
    for (qxArray* result : {&out.record, &in.record}) {  // apart, then in place
      EXPECT_EQ(qxScaleArray(in, result, row.low, row.high, row.targetLow, row.targetHigh, 0, 0),
                0);
    }
    EXPECT_EQ(out.values(), row.expected);
    EXPECT_EQ(in.values(), row.expected);
  }
}

TEST(ScaleArray, ExtremesOfTheElementsMapped) {
  Series in({-50, 4, 0, 8, 6}, 1), out;
  EXPECT_EQ(qxScaleArray(in, out, 0, 0, 0, 100, 1, 0), QX_SUCCESS);
  EXPECT_EQ(out.values(), (Values{0, 0, -100, 100, 50})) << "zeros left out of the minimum";
  EXPECT_EQ(qxScaleArray(in, out, 0, 0, 0, 100, 0, 0), QX_SUCCESS);
  EXPECT_EQ(out.values(), (Values{0, 50, 0, 100, 75}));
  Series shorter{9, 9, 9};  // the extremes still run to the input's own end
  EXPECT_EQ(qxScaleArray(in, shorter, 0, 0, 0, 100, 0, 1), QX_SUCCESS);
  EXPECT_EQ(shorter.values(), (Values{0, 50, 0}));
  EXPECT_EQ(qxScaleArray(in, out, 0, 0, 0, 100, 0, 5), QX_SUCCESS) << "nothing to map";
  EXPECT_EQ(out.values(), (Values{0, 0, 0, 0, 0}));
  Series flat{3, 3};
  EXPECT_EQ(qxScaleArray(flat, out, 0, 0, 0, 100, 0, 0), QX_SUCCESS);
  EXPECT_TRUE(std::isnan(out[1])) << "a flat source divides by zero";
}

TEST(ShiftArray, MovesValuesWithinTheCapacity) {
  const struct {
    int32_t count, firstValid;
    Values expected;
  } rows[] = {{0, 1, {1, 2, 3}},
              {1, 2, {0, 1, 2, 3}},
              {2, 3, {0, 0, 1, 2, 3}},
              {3, 4, {0, 0, 0, 1, 2}},
              {4, 5, {0, 0, 0, 0, 1}},
              {5, 5, {0, 0, 0, 0, 0}},
              {INT32_MAX, 5, {0, 0, 0, 0, 0}},
              {-1, 0, {2, 3}},
              {-2, 0, {3}},
              {-3, 0, {}},
              {-5, 0, {}},
              {INT32_MIN, 0, {}}};
  for (const auto& row : rows) {
    // Three of five elements are in use, the first valid one is element 1.
    Series series({1, 2, 3, 77, 77}, 1);
    qxReSizeArray(series, 3);
    qxShiftArray(series, row.count);
    EXPECT_EQ(series.values(), row.expected) << row.count;
    EXPECT_EQ(series.record.firstvalid, row.firstValid) << row.count;
    if (row.count == -1) {
      EXPECT_EQ(series[2], 3.0) << "the vacated tail is not cleared";
    }
  }
  Series none;
  qxShiftArray(none, 3);
  qxShiftArray(none, -3);
  qxShiftArray(nullptr, 1);
  EXPECT_EQ(none.record.size, 0);
}

TEST(GroupArray, SumsWithinCalendarPeriods) {
  const double monday = day(2006, 1, 2);
  const struct {
    int32_t frequency;
    Values dates, expected;
  } rows[] = {
      {QX_FREQ_DAILY, {40000.1, 40000.9, 40001.0, 40003.5}, {3, 3, 4}},
      {QX_FREQ_WEEKLY,  // Monday to Friday, Monday to Wednesday
       {monday, monday + 1, monday + 2, monday + 3, monday + 4, monday + 7, monday + 8, monday + 9},
       {15, 21}},
      {QX_FREQ_WEEKLY, {monday + 2, monday + 9}, {1, 2}},   // two Wednesdays
      {QX_FREQ_WEEKLY, {monday + 2, monday + 11}, {1, 2}},  // Wednesday, Friday a week later
      {QX_FREQ_WEEKLY, {monday, monday + 6}, {3}},          // Monday, Sunday of that week
      {QX_FREQ_WEEKLY, {1e300, 1e300}, {3}},                // the same day beyond any calendar
      {QX_FREQ_WEEKLY, {-1e300, 1e300}, {1, 2}},
      {QX_FREQ_MONTHLY, {day(2005, 3, 1), day(2006, 3, 1)}, {1, 2}},
      {QX_FREQ_MONTHLY, {day(2004, 2, 1), day(2004, 2, 29), day(2004, 3, 1)}, {3, 3}},
      {QX_FREQ_QUARTERLY,
       {day(2005, 12, 31), day(2006, 1, 1), day(2006, 3, 31), day(2006, 4, 1), day(2006, 6, 30),
        day(2006, 7, 1), day(2006, 9, 30), day(2006, 10, 1), day(2006, 12, 31)},
       {1, 5, 9, 13, 17}},
      {QX_FREQ_QUARTERLY, {day(2006, 2, 1), day(2006, 8, 1)}, {1, 2}},  // one is skipped
      {QX_FREQ_YEARLY, {day(2005, 1, 1), day(2005, 12, 31), day(2006, 1, 1)}, {3, 3}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(::testing::PrintToString(row.dates));
    const BarSet dated = datedBars(row.dates);
    Values ascending(row.dates.size());
    std::iota(ascending.begin(), ascending.end(), 1);
    Series in(ascending), out;
    EXPECT_EQ(qxGroupArray(&dated.record, in, out, row.frequency), QX_SUCCESS);
    EXPECT_EQ(out.values(), row.expected);
    EXPECT_EQ(qxGroupArray(&dated.record, in, in, row.frequency), QX_SUCCESS);
    EXPECT_EQ(in.values(), row.expected) << "in place";
  }
}

TEST(GroupArray, FirstValidIsThatOfThePeriods) {
  const BarSet bars = datedBars({1.0, 1.5, 2.0, 2.5, 3.0, 3.5});
  // With 3 the second day begins before the first valid element and is added to 0.
  const struct {
    int32_t firstValid;
    Values expected;
    int32_t outFirstValid;
  } rows[] = {{0, {3, 7, 11}, 0}, {-4, {3, 7, 11}, 0}, {1, {2, 7, 11}, 1}, {2, {0, 7, 11}, 1},
              {3, {0, 4, 11}, 2}, {5, {0, 0, 6}, 0},   {99, {0, 0, 0}, 0}};
  for (const auto& row : rows) {
    Series in({1, 2, 3, 4, 5, 6}, row.firstValid), out;
    qxSetMaxFirstValid(0);
    EXPECT_EQ(qxGroupArray(&bars.record, in, out, QX_FREQ_DAILY), QX_SUCCESS);
    EXPECT_EQ(out.values(), row.expected) << row.firstValid;
    EXPECT_EQ(out.record.firstvalid, row.outFirstValid) << row.firstValid;
    EXPECT_EQ(qxGetMaxFirstValid(), row.outFirstValid);
  }
  Series in({1, 2, 3, 4, 5, 6}, 2);
  EXPECT_EQ(qxGroupArray(&bars.record, in, in, QX_FREQ_DAILY), QX_SUCCESS);
  EXPECT_EQ(in.values(), (Values{1, 7, 11})) << "in place the first slot keeps what it held";
  EXPECT_EQ(in.record.firstvalid, 1);
  qxSetMaxFirstValid(0);
}

TEST(GroupArray, LimitsAndRefusals) {
  const BarSet bars = datedBars({1, 2, 3, 4}), undated;
  Series in{1, 2, 3, 4}, longer{1, 2, 3, 4, 5, 6}, two{9, 9}, out, none, untouched{7};
  EXPECT_EQ(qxGroupArray(&bars.record, in, two, QX_FREQ_DAILY), QX_SUCCESS);
  EXPECT_EQ(two.values(), (Values{1, 2})) << "a full output ends the walk";
  EXPECT_EQ(qxGroupArray(&bars.record, longer, out, QX_FREQ_DAILY), QX_SUCCESS);
  EXPECT_EQ(out.values(), (Values{1, 2, 3, 4}));
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
