#include <cmath>
#include <limits>

#include "tests/support/test_support.h"

namespace {

// Days since 30 December 1899 counted month by month, with no formula of the calendar in it.
struct CountedDay {
  int32_t year = 1899, month = 12, day = 30;
  void next() {
    static const int32_t lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    if (++day <= lengths[month - 1] + (leap && month == 2 ? 1 : 0)) return;
    day = 1;
    if (++month <= 12) return;
    month = 1;
    ++year;
  }
};

TEST(Calendar, EveryDayOfThreeCenturiesConvertsBothWays) {
  CountedDay counted;
  for (int32_t number = 0; number < 110000; ++number, counted.next()) {
    ASSERT_EQ(qxYMDtoDate(counted.year, counted.month, counted.day, 0, 0, 0), number);
    int32_t year = 0, month = 0, day = 0;
    qxDateToYMD(number, &year, &month, &day, nullptr, nullptr, nullptr);
    ASSERT_EQ(year, counted.year) << number;
    ASSERT_EQ(month, counted.month) << number;
    ASSERT_EQ(day, counted.day) << number;
    ASSERT_EQ(qxDayOfWeek(number), (number + 5) % 7);
  }
}

TEST(Calendar, KnownNumbers) {
  EXPECT_EQ(qxYMDtoDate(1900, 1, 1, 0, 0, 0), 2.0);
  EXPECT_EQ(qxYMDtoDate(2000, 3, 1, 12, 0, 0), 36586.5);
  EXPECT_EQ(qxYMDtoDate(1899, 12, 30, 0, 0, 0), 0.0);
  EXPECT_EQ(qxYMDtoDate(1899, 12, 30, 18, 0, 0), 0.75);
  EXPECT_EQ(qxYMDtoDate(1899, 12, 29, 18, 0, 0), -1.75) << "the time is subtracted below day 0";
  EXPECT_EQ(qxYMDtoDate(100, 1, 1, 0, 0, 0), qxYMDtoDate(2000, 1, 1, 0, 0, 0));
  EXPECT_EQ(qxYMDtoDate(101, 1, 1, 0, 0, 0), -657069.0);
  EXPECT_EQ(qxYMDtoDate(2001, 2, 29, 0, 0, 0), 0.0);
  EXPECT_EQ(qxYMDtoDate(0, 0, 0, 24, 0, 0), 0.0);
  EXPECT_EQ(qxYMDtoDate(0, 0, 0, 6, 0, 0), 0.25);
  EXPECT_EQ(qxYearToDays(1899), 1.0);
  EXPECT_EQ(qxYearToDays(1900), 366.0);
  EXPECT_EQ(qxDayOfWeek(2.0), 0);
  EXPECT_EQ(qxDayOfWeek(0.0), 5);
  EXPECT_EQ(qxDayOfWeek(-693594.0), 6) << "31 December of the year 0";
}

TEST(Calendar, TwoDigitYears) {
  const double june2019 = qxYMDtoDate(2019, 6, 1, 0, 0, 0);
  EXPECT_EQ(qxYMDtoDate(19, 6, 1, 0, 0, 0), june2019);
  EXPECT_EQ(qxYMDtoDate(20, 6, 1, 0, 0, 0), qxYMDtoDate(1920, 6, 1, 0, 0, 0));
  qxSet2DigitYearCutoff(10);
  qxSet2DigitYearCutoff(-1);   // ignored
  qxSet2DigitYearCutoff(100);  // ignored
  EXPECT_EQ(qxYMDtoDate(19, 6, 1, 0, 0, 0), qxYMDtoDate(1919, 6, 1, 0, 0, 0));
  qxSet2DigitYearCutoff(0);
  EXPECT_EQ(qxDateValidate(0, 2, 29, 0, 0, 0), 0) << "1900";
  qxSet2DigitYearCutoff(20);
  EXPECT_EQ(qxIsLeapYear(0), 1);
  EXPECT_EQ(qxIsLeapYear(99), 0);
  EXPECT_EQ(qxIsLeapYear(1900), 0);
  EXPECT_EQ(qxIsLeapYear(2000), 1);
  EXPECT_EQ(qxIsLeapYear(-4), 1) << "1996";
  EXPECT_EQ(qxYearToDays(-1), qxYearToDays(1999));
  EXPECT_EQ(qxYearToDays(-3001), -1001 * 365 - 250 + 10 - 2 - 693594) << "-1001, not floored";
}

TEST(Calendar, NumbersOfDataFiles) {
  EXPECT_EQ(qxNumToDate(991231), qxYMDtoDate(1999, 12, 31, 0, 0, 0));
  EXPECT_EQ(qxNumToDate(1000101), qxYMDtoDate(2000, 1, 1, 0, 0, 0));
  EXPECT_EQ(qxNumToDate(1000301), 36586.0) << "2000 is a leap year, 100 is none";
  EXPECT_EQ(qxNumToDate(19990315), qxYMDtoDate(1999, 3, 15, 0, 0, 0));
  EXPECT_EQ(qxNumToDate(18990315), qxYMDtoDate(3799, 3, 15, 0, 0, 0)) << "1899 counts from 1900";
  EXPECT_EQ(qxNumToDate(190601), qxYMDtoDate(2019, 6, 1, 0, 0, 0));
  EXPECT_EQ(qxNumToTime(93015), (9 * 3600 + 30 * 60 + 15) / 86400.0);
  EXPECT_EQ(qxNumToTime(240000), 0.0);
  for (const int32_t bad : {0, -991231, 991331, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(qxNumToDate(bad), 0.0) << bad;
  }
}

TEST(Calendar, SecondsAreRoundedUp) {
  int32_t hour, minute, second;
  const auto split = [&](double date) {
    qxDateToYMD(date, nullptr, nullptr, nullptr, &hour, &minute, &second);
    return hour * 10000 + minute * 100 + second;
  };
  EXPECT_EQ(split(36586.75), 180000);
  EXPECT_EQ(split(std::nextafter(36586.75, 40000.0)), 180001);
  EXPECT_EQ(split(-1.75), 180000);
  EXPECT_EQ(split(0.9999999), 240000) << "24 o'clock, without a carry to the day";
  EXPECT_EQ(qxDatePart("Year", 36586.75), 2000);
  EXPECT_EQ(qxDatePart("m", 36586.75), 3);
  EXPECT_EQ(qxDatePart("D", 36586.75), 1);
  EXPECT_EQ(qxDatePart("D", -1.75), 29);
  int32_t day = 0;
  qxDateToYMD(36586.75, nullptr, nullptr, &day, nullptr, nullptr, nullptr);
  EXPECT_EQ(day, 1) << "asked for alone";
  EXPECT_EQ(qxDatePart("h", 36586.75), 18);
  EXPECT_EQ(qxDatePart("N", 36586.765625), 22);
  EXPECT_EQ(qxDatePart("S", 36586.765625), 30);
  EXPECT_EQ(qxDatePart("W", 36586.75), 0);
  EXPECT_EQ(qxDatePart("", 36586.75), 0);
  EXPECT_EQ(qxDatePart(nullptr, 36586.75), 0);
}

TEST(Calendar, Differences) {
  EXPECT_EQ(qxDateDiff("S", 1.25, 5.5), 21600);
  EXPECT_EQ(qxDateDiff("d", 1.9, 5.1), 4);
  EXPECT_EQ(qxDateDiff("d", 5.1, 1.9), -4);
  EXPECT_EQ(qxDateDiff("d", -1.75, 5.1), 6);
  EXPECT_EQ(qxDateDiff("D", -1e300, 1e300), INT32_MAX);
  EXPECT_EQ(qxDateDiff("D", std::nan(""), 7.0), 7);
  EXPECT_EQ(qxDateDiff("H", 1.0, 5.0), 0);
  EXPECT_EQ(qxDateDiff(nullptr, 1.0, 5.0), 0);
}

TEST(Calendar, Validation) {
  const struct {
    int32_t year, month, day, hour, minute, second, valid;
  } cases[] = {
      {0, 0, 0, 0, 0, 0, 1},
      {0, 0, 0, 23, 59, 59, 1},
      {0, 0, 0, 24, 0, 0, 0},
      {0, 0, 0, 0, 60, 0, 0},
      {0, 0, 0, 0, 0, 60, 0},
      {0, 0, 0, -1, 0, 0, 0},
      {0, 0, 0, 0, -1, 0, 0},
      {0, 0, 0, 0, 0, -1, 0},
      {1999, 0, 1, 0, 0, 0, 0},
      {1999, 13, 1, 0, 0, 0, 0},
      {1999, 4, 31, 0, 0, 0, 0},
      {1999, 4, 0, 0, 0, 0, 0},
      {2000, 2, 29, 12, 0, 0, 1},
      {1900, 2, 29, 0, 0, 0, 0},
      {-1, 2, 28, 0, 0, 0, 1},
      {INT32_MAX, 1, 1, 0, 0, 0, 1},
      {INT32_MIN, 2, 29, 0, 0, 0, 1},
      {1999, INT32_MIN, 1, 0, 0, 0, 0},
      {1999, 1, INT32_MAX, 0, 0, 0, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(qxDateValidate(c.year, c.month, c.day, c.hour, c.minute, c.second), c.valid)
        << c.year << "/" << c.month << "/" << c.day << " " << c.hour << ":" << c.minute;
  }
}

TEST(Calendar, HostileDatesNeitherLoopNorTrap) {
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double date : {-infinity, infinity, std::nan(""), 1e300, -1e300, 9e17, -9e17}) {
    int32_t parts[6] = {};
    qxDateToYMD(date, &parts[0], &parts[1], &parts[2], &parts[3], &parts[4], &parts[5]);
    EXPECT_LE(static_cast<uint32_t>(qxDayOfWeek(date)), 6U);
    EXPECT_TRUE(std::isfinite(qxYearToDays(parts[0])));
  }
  EXPECT_TRUE(std::isfinite(qxYMDtoDate(INT32_MAX, 12, 31, 23, 59, 59)));
  EXPECT_TRUE(std::isfinite(qxYMDtoDate(INT32_MIN, 12, 31, 23, 59, 59)));
  EXPECT_EQ(qxYearToDays(INT32_MAX), INT32_MAX * 365.0 + 536870911 - 21474836 + 5368709 - 693594);
}

}  // namespace
