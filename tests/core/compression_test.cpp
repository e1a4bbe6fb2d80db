#include <algorithm>
#include <cstring>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>

#include "tests/support/test_support.h"

namespace {

using qxtest::Bar;
using qxtest::BarSet;
using qxtest::testDataPath;

bool operator==(const Bar& a, const Bar& b) {
  return a.date == b.date && a.open == b.open && a.high == b.high && a.low == b.low &&
         a.close == b.close && a.volume == b.volume && a.openint == b.openint;
}

Bar barAt(const qxBars& bars, int32_t i) {
  return {bars.date.data[i],  bars.open.data[i],   bars.high.data[i],   bars.low.data[i],
          bars.close.data[i], bars.volume.data[i], bars.openint.data[i]};
}

std::vector<Bar> barsOf(const qxBars& bars) {
  std::vector<Bar> result;
  for (int32_t i = 0; i < bars.barsize; ++i) result.push_back(barAt(bars, i));
  return result;
}

::testing::AssertionResult sameBars(const std::vector<Bar>& actual,
                                    const std::vector<Bar>& expected, bool withDates = true) {
  if (actual.size() != expected.size()) {
    return ::testing::AssertionFailure() << actual.size() << " bars, expected " << expected.size();
  }
  for (size_t i = 0; i < actual.size(); ++i) {
    Bar bar = actual[i];
    if (!withDates) bar.date = expected[i].date;
    if (!(bar == expected[i])) return ::testing::AssertionFailure() << "bar " << i << " differs";
  }
  return ::testing::AssertionSuccess();
}

// One bar of several, merged the plain way.
Bar merge(const std::vector<Bar>& bars, size_t from, size_t to) {
  Bar merged = bars[from];
  for (size_t i = from + 1; i <= to; ++i) {
    merged.high = std::max(merged.high, bars[i].high);
    merged.low = std::min(merged.low, bars[i].low);
    merged.volume += bars[i].volume;
    merged.openint += bars[i].openint;
  }
  merged.close = bars[to].close;
  merged.date = bars[to].date;
  return merged;
}

// Neighbours for which `same` holds, merged.
template <typename Same>
std::vector<Bar> mergeNaively(const std::vector<Bar>& bars, Same same) {
  std::vector<Bar> merged;
  for (size_t from = 0, i = 1; i <= bars.size(); ++i) {
    if (i < bars.size() && same(bars[i - 1].date, bars[i].date)) continue;
    merged.push_back(merge(bars, from, i - 1));
    from = i;
  }
  return merged;
}

// Trading days from 2003 on with gaps; with `perDay` above 1 bars one to three minutes apart.
std::vector<Bar> randomBars(int count, int perDay, unsigned seed) {
  std::mt19937 random(seed);
  const auto below = [&random](unsigned limit) { return static_cast<double>(random() % limit); };
  std::vector<Bar> bars;
  double date = qxYMDtoDate(2003, 1, 1, 0, 0, 0);
  int minute = 540, left = perDay;
  for (int i = 0; i < count; ++i) {
    const double low = 100 + below(50), high = low + below(20);
    const double time = perDay > 1 ? minute / 1440.0 : 0.0;
    bars.push_back(
        {date + time, low + below(3), high, low, low + below(7), below(1000), below(5000)});
    minute += 1 + static_cast<int>(random() % 3);
    if (--left > 0) continue;
    date += 1 + (random() % 5 == 0 ? below(10) : 0);
    minute = 540;
    left = perDay;
  }
  return bars;
}

// Comma-separated daily bars, or bars with a time in the second field.
std::vector<Bar> readBars(const std::string& path, bool withTime) {
  std::vector<Bar> bars;
  std::ifstream in(path);
  std::string line;
  std::getline(in, line);
  while (std::getline(in, line)) {
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == ',' || c == ':'; }, ' ');
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    char dash = ' ';
    std::istringstream fields(line);
    fields >> year >> dash >> month >> dash >> day;
    if (withTime) fields >> hour >> minute >> second;
    Bar bar = {};
    bar.date = qxYMDtoDate(year, month, day, hour, minute, second);
    fields >> bar.open >> bar.high >> bar.low >> bar.close >> bar.volume >> bar.openint;
    bars.push_back(bar);
  }
  return bars;
}

double sumOfVolumes(const std::vector<Bar>& bars) {
  double sum = 0;
  for (const Bar& bar : bars) sum += bar.volume;
  return sum;
}

TEST(GroupBars, MergesTheBarsThatEndAtOne) {
  BarSet bars(qxtest::workedBars());
  Bar merged = {};
  const auto group = [&](int32_t period, int32_t index) {
    return qxGroupBars(bars, &merged.open, &merged.high, &merged.low, &merged.close, &merged.volume,
                       &merged.openint, period, index);
  };
  EXPECT_EQ(group(3, 4), QX_SUCCESS);
  EXPECT_TRUE(merged == (Bar{0, 53, 55, 48, 49, 3500, 15250}));
  EXPECT_EQ(group(99, 1), QX_SUCCESS) << "from bar 0 on";
  EXPECT_TRUE(merged == (Bar{0, 50, 54, 49, 53, 2200, 10100}));
  EXPECT_EQ(group(1, 11), QX_SUCCESS);
  EXPECT_TRUE(merged == (Bar{0, 55, 58, 54, 57, 1800, 5500}));
  EXPECT_EQ(group(INT32_MAX, 11), QX_SUCCESS);
  for (const auto& [period, index] : {std::pair{3, 12}, {3, -1}, {0, 5}, {INT32_MIN, 5}}) {
    EXPECT_EQ(group(period, index), QX_ERR_INVALID_PARM) << period << " at " << index;
  }
  EXPECT_EQ(qxGroupBars(bars, nullptr, nullptr, &merged.low, nullptr, nullptr, nullptr, 2, 5), 0);
  EXPECT_EQ(merged.low, 47.0);
  EXPECT_EQ(qxGroupBars(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 2, 5),
            QX_ERR_INVALID_PARM);
}

TEST(GroupBarsPeriods, EachBarIsTheMergeOfItsWindow) {
  const std::vector<Bar> source = randomBars(100, 1, 7);
  for (int32_t firstValid : {0, 30}) {
    for (int32_t period : {1, 2, 7, 40, 99, 100, 1000, INT32_MAX}) {
      for (int32_t first : {INT32_MIN, 0, 3, 50, 100}) {
        BarSet bars(source), merged;
        bars->high.firstvalid = firstValid;
        bars->volume.firstvalid = firstValid;
        EXPECT_EQ(qxGroupBarsPeriods(bars, merged, period, first), QX_SUCCESS);
        ASSERT_EQ(merged->barsize, 100);
        for (int32_t i = 0; i < 100; ++i) {
          Bar expected = {};
          if (i >= first) {
            qxGroupBars(bars, &expected.open, &expected.high, &expected.low, &expected.close,
                        &expected.volume, &expected.openint, period, i);
            expected.date = source[static_cast<size_t>(i)].date;
          }
          ASSERT_TRUE(barAt(merged.record, i) == expected) << period << ", " << first << ": " << i;
        }
        if (first > 0) continue;
        EXPECT_EQ(qxGroupBarsArray(bars, bars, period, first), QX_SUCCESS);
        EXPECT_TRUE(sameBars(barsOf(bars.record), barsOf(merged.record))) << "in place, " << period;
      }
    }
  }
}

TEST(GroupBarsPeriods, CapacityAndRefusals) {
  BarSet bars(qxtest::workedBars()), none;
  std::strcpy(bars->symbol, "SYM");
  BarSet small(std::vector<Bar>(4));
  EXPECT_EQ(qxGroupBarsPeriods(bars, small, 2, 1), QX_SUCCESS);
  EXPECT_STREQ(small->symbol, "SYM");
  EXPECT_TRUE(sameBars(barsOf(small.record), {{},
                                              merge(qxtest::workedBars(), 0, 1),
                                              merge(qxtest::workedBars(), 1, 2),
                                              merge(qxtest::workedBars(), 2, 3)}));
  BarSet large(std::vector<Bar>(20));
  EXPECT_EQ(qxGroupBarsPeriods(bars, large, 2, 1), QX_SUCCESS);
  EXPECT_EQ(large->barsize, 12);
  EXPECT_EQ(large->openint.size, 12) << "the series are resized with the set";
  EXPECT_EQ(qxGroupBarsPeriods(none, large, 2, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGroupBarsPeriods(bars, large, 0, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGroupBarsPeriods(bars, nullptr, 2, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGroupBarsPeriods(nullptr, large, 2, 0), QX_ERR_INVALID_PARM);
}

bool samePeriod(int32_t frequency, double a, double b) {
  const int32_t monthA = qxDatePart("M", a), monthB = qxDatePart("M", b);
  const bool sameYear = qxDatePart("Y", a) == qxDatePart("Y", b);
  switch (frequency) {
    case QX_FREQ_DAILY:
      return static_cast<int>(a) == static_cast<int>(b);
    case QX_FREQ_WEEKLY:  // day 2 is a Monday
      return (static_cast<int>(a) - 2) / 7 == (static_cast<int>(b) - 2) / 7;
    case QX_FREQ_MONTHLY:
      return sameYear && monthA == monthB;
    case QX_FREQ_QUARTERLY:
      return sameYear && (monthA - 1) / 3 == (monthB - 1) / 3;
    default:
      return sameYear;
  }
}

TEST(GroupBarsDate, RandomBarsMatchANaiveGrouping) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    const std::vector<Bar> source = randomBars(1500, seed % 2 == 0 ? 1 : 4, seed);
    for (int32_t frequency = QX_FREQ_DAILY; frequency <= QX_FREQ_YEARLY; ++frequency) {
      const std::vector<Bar> expected = mergeNaively(
          source, [frequency](double a, double b) { return samePeriod(frequency, a, b); });
      BarSet bars(source), merged;
      EXPECT_EQ(qxGroupBarsDate(bars, merged, frequency, 0, 0), QX_SUCCESS);
      EXPECT_TRUE(sameBars(barsOf(merged.record), expected)) << frequency;
      EXPECT_EQ(merged->frequency, frequency);
      EXPECT_EQ(sumOfVolumes(barsOf(merged.record)), sumOfVolumes(source));
      EXPECT_EQ(qxGroupBarsDate(bars, bars, frequency, 0, 0), QX_SUCCESS);
      EXPECT_TRUE(sameBars(barsOf(bars.record), expected)) << frequency << " in place";
    }
    BarSet bars(source), weeks, viaDays;
    qxGroupBarsDate(bars, weeks, QX_FREQ_WEEKLY, 0, 0);
    qxGroupBarsDate(bars, viaDays, QX_FREQ_DAILY, 0, 0);
    qxGroupBarsDate(viaDays, viaDays, QX_FREQ_WEEKLY, 0, 0);
    EXPECT_TRUE(sameBars(barsOf(viaDays.record), barsOf(weeks.record)));
  }
}

TEST(GroupBarsDate, StartAndEndLimitTheBars) {
  const std::vector<Bar> source = qxtest::workedBars();  // 40000 .. 40011
  struct Row {
    double start, end;
    std::vector<Bar> expected;
  };
  ASSERT_EQ(qxDayOfWeek(40000), 0) << "weeks begin at 40000 and 40007";
  const Row rows[] = {{0, 0, {merge(source, 0, 6), merge(source, 7, 11)}},
                      {40003, 0, {merge(source, 3, 6), merge(source, 7, 11)}},
                      {40002.5, 40008, {merge(source, 3, 6), merge(source, 7, 8)}},
                      {40002, 40001, {source[2]}},
                      {50000, 0, {}}};
  for (const Row& row : rows) {
    BarSet bars(source), merged;
    EXPECT_EQ(qxGroupBarsDate(bars, merged, QX_FREQ_WEEKLY, row.start, row.end), QX_SUCCESS);
    EXPECT_TRUE(sameBars(barsOf(merged.record), row.expected)) << row.start << ", " << row.end;
    EXPECT_EQ(qxGroupBarsDate(bars, bars, QX_FREQ_WEEKLY, row.start, row.end), QX_SUCCESS);
    EXPECT_TRUE(sameBars(barsOf(bars.record), row.expected)) << "in place";
  }
  // NaN is neither before nor at any date: nothing is skipped, and the first bar alone is taken.
  BarSet bars(source), merged;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(qxGroupBarsDate(bars, merged, QX_FREQ_WEEKLY, nan, nan), QX_SUCCESS);
  EXPECT_TRUE(sameBars(barsOf(merged.record), {source[0]}));
}

TEST(GroupBarsDate, AFullDestinationEndsTheMerge) {
  const std::vector<Bar> source = randomBars(60, 3, 11);
  const auto days =
      mergeNaively(source, [](double a, double b) { return samePeriod(QX_FREQ_DAILY, a, b); });
  BarSet bars(source), small(std::vector<Bar>(2));
  EXPECT_EQ(qxGroupBarsDate(bars, small, QX_FREQ_DAILY, 0, 0), QX_SUCCESS);
  EXPECT_TRUE(sameBars(barsOf(small.record), {days[0], days[1]})) << "its last bar is complete";
}

TEST(GroupBarsDate, TwoRecordsOnOneStorageEndEqual) {
  const std::vector<Bar> source = randomBars(60, 1, 3);
  BarSet bars(source), expected;
  std::strcpy(bars->symbol, "SYM");
  bars->frequency = QX_FREQ_DAILY;
  qxGroupBarsDate(bars, expected, QX_FREQ_MONTHLY, 0, 0);
  qxBars alias = bars.record;
  std::memset(alias.symbol, 0, sizeof alias.symbol);
  EXPECT_EQ(qxGroupBarsDate(bars, &alias, QX_FREQ_MONTHLY, 0, 0), QX_SUCCESS);
  EXPECT_TRUE(sameBars(barsOf(bars.record), barsOf(expected.record)));
  EXPECT_EQ(std::memcmp(&bars.record, &alias, sizeof alias), 0);
  EXPECT_STREQ(bars->symbol, "SYM");
  EXPECT_EQ(bars->frequency, QX_FREQ_MONTHLY);
}

TEST(GroupBarsDate, Refusals) {
  BarSet bars(qxtest::workedBars()), none, out;
  for (int32_t frequency : {0, 1, 7, INT32_MIN}) {
    EXPECT_EQ(qxGroupBarsDate(bars, out, frequency, 0, 0), QX_ERR_INVALID_PARM);
  }
  EXPECT_EQ(out->date.data, nullptr);
  EXPECT_EQ(qxGroupBarsDate(none, out, QX_FREQ_DAILY, 0, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGroupBarsDate(nullptr, out, QX_FREQ_DAILY, 0, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGroupBarsDate(bars, nullptr, QX_FREQ_DAILY, 0, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGroupBarsTime(none, out, 60, 0, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGroupBarsTime(nullptr, out, 60, 0, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGroupBarsTime(bars, nullptr, 60, 0, 0), QX_ERR_INVALID_PARM);
}

TEST(GroupBarsTime, GroupsBySecondsOfTheDayRoundedDown) {
  const std::vector<Bar> source = randomBars(600, 30, 5);
  const auto second = [](double date) {
    return static_cast<int>(86400 * (date - static_cast<int>(date)));
  };
  for (int32_t seconds : {60, 300, 301, 3600, 86400, INT32_MAX, 0, -5}) {
    double groupStart = source[0].date;
    const auto expected = mergeNaively(source, [&](double a, double b) {
      const bool same = samePeriod(QX_FREQ_DAILY, a, b) && second(b) - second(groupStart) < seconds;
      if (!same) groupStart = b;
      return same;
    });
    BarSet bars(source), merged;
    bars->frequency = QX_FREQ_INTRADAY;
    EXPECT_EQ(qxGroupBarsTime(bars, merged, seconds, 0, 0), QX_SUCCESS);
    EXPECT_TRUE(sameBars(barsOf(merged.record), expected)) << seconds;
    EXPECT_EQ(merged->frequency, QX_FREQ_INTRADAY);
    EXPECT_EQ(qxGroupBarsTime(bars, bars, seconds, 0, 0), QX_SUCCESS);
    EXPECT_TRUE(sameBars(barsOf(bars.record), expected)) << seconds << " in place";
  }
}

TEST(GroupBarsTime, ExactSecondsDecide) {
  // A whole second may read back one early from the fraction, so the distance is taken as it reads.
  std::vector<Bar> source;
  for (int minute : {30, 34, 35, 36}) {
    source.push_back({qxYMDtoDate(2006, 1, 2, 9, minute, 0), 1, 1, 1, 1, 1, 0});
  }
  const auto second = [](double date) { return static_cast<int>(86400 * (date - 38719.0)); };
  ASSERT_EQ(static_cast<int>(source[0].date), 38719);
  const int32_t sinceStart = second(source[2].date) - second(source[0].date);
  BarSet bars(source), merged;
  EXPECT_EQ(qxGroupBarsTime(bars, merged, sinceStart, 0, 0), QX_SUCCESS);
  EXPECT_TRUE(sameBars(barsOf(merged.record), {merge(source, 0, 1), merge(source, 2, 3)}));
  EXPECT_EQ(qxGroupBarsTime(bars, bars, sinceStart + 1, 0, 0), QX_SUCCESS);
  EXPECT_TRUE(sameBars(barsOf(bars.record), {merge(source, 0, 2), source[3]}));
}

TEST(GroupBars, SeriesOfUnequalSizesAreNotOverrun) {
  BarSet bars(qxtest::workedBars()), merged;
  bars->openint.size = 3;
  EXPECT_EQ(qxGroupBars(bars, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 2, 3),
            QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGroupBarsDate(bars, merged, QX_FREQ_DAILY, 0, 0), QX_SUCCESS);
  EXPECT_EQ(merged->barsize, 3);
  bars->barsize = INT32_MAX;
  EXPECT_EQ(qxGroupBarsPeriods(bars, merged, 3, 0), QX_SUCCESS);
  EXPECT_EQ(merged->barsize, 12);
}

TEST(RealBars, DailyBarsGiveTheWeeklyAndMonthlyFiles) {
  if (testDataPath("").empty()) GTEST_SKIP() << "QX_TEST_DATA is unset";
  const auto days = readBars(testDataPath("text/estx50-day-2006.txt"), false);
  ASSERT_EQ(days.size(), 255u);
  for (const auto& [frequency, file] : {std::pair{QX_FREQ_WEEKLY, "text/estx50-week-2006.txt"},
                                        std::pair{QX_FREQ_MONTHLY, "text/estx50-month-2006.txt"}}) {
    BarSet bars(days), merged;
    EXPECT_EQ(qxGroupBarsDate(bars, merged, frequency, 0, 0), QX_SUCCESS);
    EXPECT_TRUE(sameBars(barsOf(merged.record), readBars(testDataPath(file), false))) << file;
  }
}

TEST(RealBars, IntradayBarsGiveDaysAndLongerBars) {
  if (testDataPath("").empty()) GTEST_SKIP() << "QX_TEST_DATA is unset";
  const auto fiveMinutes = readBars(testDataPath("text/estx50-5min-2006-01.txt"), true);
  auto days = readBars(testDataPath("text/estx50-day-2006.txt"), false);
  BarSet bars(fiveMinutes), merged;
  EXPECT_EQ(qxGroupBarsDate(bars, merged, QX_FREQ_DAILY, 0, 0), QX_SUCCESS);
  ASSERT_EQ(merged->barsize, 21);
  days.resize(21);
  EXPECT_EQ(days[19].high, 3685.48);
  days[19].high = 3685.95;  // the daily file missed a tick that the intraday one has
  EXPECT_TRUE(sameBars(barsOf(merged.record), days, false)) << "but for the times of day";

  const auto minutes = readBars(testDataPath("text/fesx-1min-2006-01-extract.txt"), true);
  ASSERT_EQ(sumOfVolumes(minutes), 2076654.0);
  BarSet minuteBars(minutes);
  for (int32_t seconds : {300, 900, 3600}) {
    BarSet longer;
    EXPECT_EQ(qxGroupBarsTime(minuteBars, longer, seconds, 0, 0), QX_SUCCESS);
    EXPECT_EQ(sumOfVolumes(barsOf(longer.record)), 2076654.0) << seconds;
    EXPECT_LT(longer->barsize, minuteBars->barsize * 120 / seconds);
  }
}

}  // namespace
