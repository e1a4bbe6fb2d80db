#include <algorithm>
#include <cstring>
#include <random>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

using Bars = std::vector<Bar>;

// The bars from..to in one, merged the plain way.
Bar merge(const Bars& bars, size_t from, size_t to) {
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

// Neighbours for which `same` holds of their dates, merged.
template <typename Same>
Bars mergeNaively(const Bars& bars, Same same) {
  Bars merged;
  for (size_t from = 0, i = 1; i <= bars.size(); ++i) {
    if (i < bars.size() && same(bars[i - 1].date, bars[i].date)) continue;
    merged.push_back(merge(bars, from, i - 1));
    from = i;
  }
  return merged;
}

// What `group` makes of the bars, which has to be the same in place.
template <typename Group>
Bars grouped(const Bars& source, Group group) {
  BarSet bars(source), merged;
  EXPECT_EQ(group(bars, merged), QX_SUCCESS);
  EXPECT_EQ(group(bars, bars), QX_SUCCESS);
  EXPECT_EQ(barsOf(bars), barsOf(merged)) << "in place";
  return barsOf(merged);
}

Bars byDate(const Bars& source, int32_t frequency, double start = 0, double end = 0) {
  return grouped(source, [=](qxBars* from, qxBars* to) {
    return qxGroupBarsDate(from, to, frequency, start, end);
  });
}

Bars bySeconds(const Bars& source, int32_t seconds) {
  return grouped(
      source, [=](qxBars* from, qxBars* to) { return qxGroupBarsTime(from, to, seconds, 0, 0); });
}

// Trading days from 2003 on with gaps; with `perDay` above 1 bars one to three minutes apart.
Bars randomBars(int days, int perDay, unsigned seed) {
  std::mt19937 random(seed);
  const auto below = [&random](unsigned limit) { return static_cast<double>(random() % limit); };
  Bars bars;
  double date = dateOf(2003, 1, 1);
  for (int day = 0; day < days; ++day) {
    double minute = perDay > 1 ? 540 : 0;
    for (int i = 0; i < perDay; ++i) {
      const double low = 100 + below(50), high = low + below(20);
      bars.push_back({date + minute / 1440, low + below(3), high, low, low + below(7), below(1000),
                      below(5000)});
      minute += 1 + below(3);
    }
    date += 1 + (below(5) == 0 ? below(10) : 0);
  }
  return bars;
}

bool samePeriod(int32_t frequency, double a, double b) {
  const int dayA = static_cast<int>(a), dayB = static_cast<int>(b);
  if (frequency == QX_FREQ_DAILY) return dayA == dayB;
  if (frequency == QX_FREQ_WEEKLY) return (dayA - 2) / 7 == (dayB - 2) / 7;  // day 2 is a Monday
  const auto month = [](double date) {
    return 12 * qxDatePart("Y", date) + qxDatePart("M", date) - 1;
  };
  const int32_t length = frequency == QX_FREQ_MONTHLY ? 1 : frequency == QX_FREQ_QUARTERLY ? 3 : 12;
  return month(a) / length == month(b) / length;
}

TEST(GroupBars, MergesTheBarsThatEndAtOne) {
  BarSet bars(workedBars());
  Bar merged = {};
  const auto group = [&](int32_t period, int32_t index) {
    return qxGroupBars(bars, &merged.open, &merged.high, &merged.low, &merged.close, &merged.volume,
                       &merged.openint, period, index);
  };
  EXPECT_EQ(group(3, 4), QX_SUCCESS);
  EXPECT_EQ(merged, (Bar{0, 53, 55, 48, 49, 3500, 15250}));
  EXPECT_EQ(group(99, 1), QX_SUCCESS) << "from bar 0 on";
  EXPECT_EQ(merged, (Bar{0, 50, 54, 49, 53, 2200, 10100}));
  EXPECT_EQ(group(1, 11), QX_SUCCESS);
  EXPECT_EQ(merged, (Bar{0, 55, 58, 54, 57, 1800, 5500}));
  EXPECT_EQ(group(INT32_MAX, 11), QX_SUCCESS);
  for (const auto& [period, index] : {std::pair{3, 12}, {3, -1}, {0, 5}, {INT32_MIN, 5}}) {
    EXPECT_EQ(group(period, index), QX_ERR_INVALID_PARM) << period << " at " << index;
  }
  EXPECT_EQ(qxGroupBars(bars, nullptr, nullptr, &merged.low, nullptr, nullptr, nullptr, 2, 5), 0);
  EXPECT_EQ(merged.low, 47.0);
}

TEST(GroupBarsPeriods, EachBarIsTheMergeOfItsWindow) {
  const Bars source = randomBars(100, 1, 7);
  for (const int32_t period : {1, 2, 7, 40, 99, 100, 1000, INT32_MAX}) {
    for (const int32_t first : {INT32_MIN, 0, 3, 50, 100}) {
      for (const int32_t firstValid : {0, 30}) {
        BarSet bars(source), merged;
        bars->high.firstvalid = bars->volume.firstvalid = firstValid;
        Bars expected(100), inPlace = source;
        for (int32_t i = std::max(0, first); i < 100; ++i) {
          Bar bar = {source[static_cast<size_t>(i)].date, 0, 0, 0, 0, 0, 0};
          qxGroupBars(bars, &bar.open, &bar.high, &bar.low, &bar.close, &bar.volume, &bar.openint,
                      period, i);
          expected[static_cast<size_t>(i)] = inPlace[static_cast<size_t>(i)] = bar;
        }
        EXPECT_EQ(qxGroupBarsPeriods(bars, merged, period, first), QX_SUCCESS);
        EXPECT_EQ(barsOf(merged), expected) << period << " from " << first;
        EXPECT_EQ(qxGroupBarsArray(bars, bars, period, first), QX_SUCCESS);
        EXPECT_EQ(barsOf(bars), inPlace) << period << " from " << first << " in place";
      }
    }
  }
}

TEST(GroupBarsPeriods, TheDestinationLimitsTheBars) {
  const Bars& source = workedBars();
  BarSet bars(source);
  std::strcpy(bars->symbol, "SYM");
  BarSet small(Bars(4)), large(Bars(20));
  EXPECT_EQ(qxGroupBarsPeriods(bars, small, 2, 1), QX_SUCCESS);
  EXPECT_STREQ(small->symbol, "SYM");
  EXPECT_EQ(barsOf(small),
            (Bars{{}, merge(source, 0, 1), merge(source, 1, 2), merge(source, 2, 3)}));
  EXPECT_EQ(qxGroupBarsPeriods(bars, large, 2, 1), QX_SUCCESS);
  EXPECT_EQ(large->barsize, 12);
  EXPECT_EQ(large->openint.size, 12) << "the series are resized with the set";
}

TEST(GroupBarsDate, RandomBarsMatchANaiveGrouping) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    const Bars source = seed % 2 == 0 ? randomBars(1500, 1, seed) : randomBars(375, 4, seed);
    for (int32_t frequency = QX_FREQ_DAILY; frequency <= QX_FREQ_YEARLY; ++frequency) {
      const auto same = [=](double a, double b) { return samePeriod(frequency, a, b); };
      EXPECT_EQ(byDate(source, frequency), mergeNaively(source, same)) << frequency;
    }
  }
}

TEST(GroupBarsDate, StartAndEndLimitTheBars) {
  const Bars& source = workedBars();  // 40000 .. 40011
  const auto weeks = [&](double start, double end) {
    return byDate(source, QX_FREQ_WEEKLY, start, end);
  };
  ASSERT_EQ(qxDayOfWeek(40000), 0) << "weeks begin at 40000 and 40007";
  EXPECT_EQ(weeks(0, 0), (Bars{merge(source, 0, 6), merge(source, 7, 11)}));
  EXPECT_EQ(weeks(40003, 0), (Bars{merge(source, 3, 6), merge(source, 7, 11)}));
  EXPECT_EQ(weeks(40002.5, 40008), (Bars{merge(source, 3, 6), merge(source, 7, 8)}));
  EXPECT_EQ(weeks(40002, 40001), Bars{source[2]});
  EXPECT_EQ(weeks(50000, 0), Bars{});
  // NaN is neither before nor at any date: nothing is skipped, one bar is taken.
  EXPECT_EQ(weeks(kNaN, kNaN), Bars{source[0]});
}

TEST(GroupBarsDate, AFullDestinationEndsTheMerge) {
  const Bars source = randomBars(20, 3, 11);
  BarSet bars(source), small(Bars(2));
  EXPECT_EQ(qxGroupBarsDate(bars, small, QX_FREQ_DAILY, 0, 0), QX_SUCCESS);
  EXPECT_EQ(barsOf(small), (Bars{merge(source, 0, 2), merge(source, 3, 5)}));
}

TEST(GroupBarsDate, TwoRecordsOnOneStorageEndEqual) {
  BarSet bars(randomBars(60, 1, 3)), expected;
  std::strcpy(bars->symbol, "SYM");
  bars->frequency = QX_FREQ_DAILY;
  qxGroupBarsDate(bars, expected, QX_FREQ_MONTHLY, 0, 0);
  qxBars alias = bars.record;
  std::memset(alias.symbol, 0, sizeof alias.symbol);
  EXPECT_EQ(qxGroupBarsDate(bars, &alias, QX_FREQ_MONTHLY, 0, 0), QX_SUCCESS);
  EXPECT_EQ(barsOf(bars), barsOf(expected));
  EXPECT_EQ(std::memcmp(&bars.record, &alias, sizeof alias), 0);
  EXPECT_STREQ(bars->symbol, "SYM");
  EXPECT_EQ(bars->frequency, QX_FREQ_MONTHLY);
}

TEST(GroupBarsTime, GroupsBySecondsOfTheDayRoundedDown) {
  const Bars source = randomBars(20, 30, 5);
  const auto second = [](double date) {
    return static_cast<int>(86400 * (date - static_cast<int>(date)));
  };
  for (const int32_t seconds : {60, 300, 301, 3600, 86400, INT32_MAX, 0, -5}) {
    double groupStart = source[0].date;
    const auto expected = mergeNaively(source, [&](double a, double b) {
      const bool same = samePeriod(QX_FREQ_DAILY, a, b) && second(b) - second(groupStart) < seconds;
      if (!same) groupStart = b;
      return same;
    });
    EXPECT_EQ(bySeconds(source, seconds), expected) << seconds;
  }
}

TEST(GroupBars, SeriesOfUnequalSizesAreNotOverrun) {
  BarSet bars(workedBars()), merged;
  bars->frequency = QX_FREQ_INTRADAY;
  bars->openint.size = 3;
  EXPECT_EQ(qxGroupBars(bars, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 2, 3),
            QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGroupBarsTime(bars, merged, 60, 0, 0), QX_SUCCESS);
  EXPECT_EQ(merged->barsize, 3);
  EXPECT_EQ(merged->frequency, QX_FREQ_INTRADAY) << "as in the source";
  bars->barsize = INT32_MAX;
  EXPECT_EQ(qxGroupBarsPeriods(bars, merged, 3, 0), QX_SUCCESS);
  EXPECT_EQ(merged->barsize, 12);
}

TEST(GroupBars, Refusals) {
  BarSet bars(workedBars()), none, out;
  for (const int32_t frequency : {0, 1, 7, INT32_MIN}) {
    EXPECT_EQ(qxGroupBarsDate(bars, out, frequency, 0, 0), QX_ERR_INVALID_PARM);
  }
  EXPECT_EQ(qxGroupBarsDate(none, out, QX_FREQ_DAILY, 0, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGroupBarsTime(none, out, 60, 0, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGroupBarsPeriods(none, out, 2, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGroupBarsPeriods(bars, out, 0, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(out->date.data, nullptr);
  constexpr int32_t kRefused = QX_ERR_INVALID_PARM;
  expectNullsRefused("qxGroupBarsDate", qxGroupBarsDate, kRefused, bars, out, QX_FREQ_DAILY, 0, 0);
  expectNullsRefused("qxGroupBarsTime", qxGroupBarsTime, kRefused, bars, out, 60, 0, 0);
  expectNullsRefused("qxGroupBarsPeriods", qxGroupBarsPeriods, kRefused, bars, out, 2, 0);
  EXPECT_EQ(qxGroupBars(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 2, 5),
            QX_ERR_INVALID_PARM);
}

}  // namespace
