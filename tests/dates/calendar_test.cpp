#include <cmath>
#include <tuple>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

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
    ASSERT_EQ(dateOf(counted.year, counted.month, counted.day), number);
    int32_t year = 0, month = 0, day = 0;
    qxDateToYMD(number, &year, &month, &day, nullptr, nullptr, nullptr);
    ASSERT_EQ(std::tuple(year, month, day), std::tuple(counted.year, counted.month, counted.day));
    ASSERT_EQ(qxDayOfWeek(number), (number + 5) % 7);
  }
}

TEST(Calendar, KnownNumbers) {
  // The time is subtracted below day 0.
  const std::tuple<int32_t, int32_t, int32_t, int32_t, double> cases[] = {
      {1900, 1, 1, 0, 2},       {2000, 3, 1, 12, 36586.5}, {1899, 12, 30, 0, 0},
      {1899, 12, 30, 18, 0.75}, {1899, 12, 29, 18, -1.75}, {100, 1, 1, 0, 36526},
      {101, 1, 1, 0, -657069},  {2001, 2, 29, 0, 0},       {0, 0, 0, 24, 0},
      {0, 0, 0, 6, 0.25}};
  for (const auto& [year, month, day, hour, number] : cases) {
    EXPECT_EQ(dateOf(year, month, day, hour), number) << year << " " << hour;
  }
  EXPECT_EQ(qxYearToDays(1899), 1.0);
  EXPECT_EQ(qxYearToDays(1900), 366.0);
  EXPECT_EQ(qxDayOfWeek(-693594.0), 6) << "31 December of the year 0";
}

TEST(Calendar, TwoDigitYears) {
  EXPECT_EQ(dateOf(19, 6, 1), dateOf(2019, 6, 1));
  EXPECT_EQ(dateOf(20, 6, 1), dateOf(1920, 6, 1));
  qxSet2DigitYearCutoff(10);
  qxSet2DigitYearCutoff(-1);   // ignored
  qxSet2DigitYearCutoff(100);  // ignored
  EXPECT_EQ(dateOf(19, 6, 1), dateOf(1919, 6, 1));
  qxSet2DigitYearCutoff(0);
  EXPECT_EQ(qxDateValidate(0, 2, 29, 0, 0, 0), 0) << "1900";
  qxSet2DigitYearCutoff(20);
  // Year -4 is 1996.
  const std::pair<int32_t, int32_t> leap[] = {{0, 1}, {99, 0}, {1900, 0}, {2000, 1}, {-4, 1}};
  for (const auto& [year, expected] : leap) EXPECT_EQ(qxIsLeapYear(year), expected) << year;
  EXPECT_EQ(qxYearToDays(-1), qxYearToDays(1999));
  EXPECT_EQ(qxYearToDays(-3001), -1001 * 365 - 250 + 10 - 2 - 693594) << "-1001, not floored";
}

TEST(Calendar, NumbersOfDataFiles) {
  // 2000 is a leap year, 100 is none.
  const std::pair<int32_t, double> cases[] = {
      {991231, 36525}, {1000101, 36526}, {19990315, 36234}, {1000301, 36586}, {190601, 43617},
      {0, 0},          {-991231, 0},     {991331, 0},       {INT32_MIN, 0},   {INT32_MAX, 0}};
  for (const auto& [number, date] : cases) EXPECT_EQ(qxNumToDate(number), date) << number;
  EXPECT_EQ(qxNumToDate(18990315), dateOf(3799, 3, 15)) << "1899 counts from 1900";
  EXPECT_EQ(qxNumToTime(93015), (9 * 3600 + 30 * 60 + 15) / 86400.0);
  EXPECT_EQ(qxNumToTime(240000), 0.0);
}

TEST(Calendar, SecondsAreRoundedUp) {
  const auto split = [](double date) {
    int32_t hour, minute, second;
    qxDateToYMD(date, nullptr, nullptr, nullptr, &hour, &minute, &second);
    return hour * 10000 + minute * 100 + second;
  };
  EXPECT_EQ(split(36586.75), 180000);
  EXPECT_EQ(split(std::nextafter(36586.75, 40000.0)), 180001);
  EXPECT_EQ(split(-1.75), 180000);
  EXPECT_EQ(split(0.9999999), 240000) << "24 o'clock, without a carry to the day";
}

TEST(Calendar, PartsAndDifferences) {
  int32_t day = 0;
  qxDateToYMD(36586.75, nullptr, nullptr, &day, nullptr, nullptr, nullptr);
  EXPECT_EQ(day, 1) << "asked for alone";
  EXPECT_EQ(qxDatePart("D", -1.75), 29);
  const std::pair<const char*, int32_t> parts[] = {{"Year", 2000}, {"m", 3},  {"D", 1},
                                                   {"h", 18},      {"N", 22}, {"S", 30},
                                                   {"W", 0},       {"", 0},   {nullptr, 0}};
  for (const auto& [part, value] : parts) EXPECT_EQ(qxDatePart(part, 36586.765625), value);
  const std::tuple<const char*, double, double, int32_t> differences[] = {
      {"S", 1.25, 5.5, 21600},
      {"d", 1.9, 5.1, 4},
      {"d", -1.75, 5.1, 6},
      {"d", 5.1, 1.9, -4},
      {"D", -1e300, 1e300, INT32_MAX},
      {"D", kNaN, 7.0, 7},
      {"H", 1.0, 5.0, 0},
      {nullptr, 1.0, 5.0, 0}};
  for (const auto& [unit, from, to, value] : differences) {
    EXPECT_EQ(qxDateDiff(unit, from, to), value) << from << " to " << to;
  }
}

TEST(Calendar, Validation) {
  using Case = std::array<int32_t, 7>;  // the parts and whether they are a date
  const Case cases[] = {{0, 0, 0, 0, 0, 0, 1},           {0, 0, 0, 23, 59, 59, 1},
                        {0, 0, 0, 24, 0, 0, 0},          {0, 0, 0, 0, 60, 0, 0},
                        {0, 0, 0, 0, 0, 60, 0},          {0, 0, 0, -1, 0, 0, 0},
                        {0, 0, 0, 0, -1, 0, 0},          {0, 0, 0, 0, 0, -1, 0},
                        {1999, 0, 1, 0, 0, 0, 0},        {1999, 13, 1, 0, 0, 0, 0},
                        {1999, 4, 31, 0, 0, 0, 0},       {1999, 4, 0, 0, 0, 0, 0},
                        {2000, 2, 29, 12, 0, 0, 1},      {1900, 2, 29, 0, 0, 0, 0},
                        {-1, 2, 28, 0, 0, 0, 1},         {INT32_MAX, 1, 1, 0, 0, 0, 1},
                        {INT32_MIN, 2, 29, 0, 0, 0, 1},  {1999, INT32_MIN, 1, 0, 0, 0, 0},
                        {1999, 1, INT32_MAX, 0, 0, 0, 0}};
  for (const Case& c : cases) {
    EXPECT_EQ(qxDateValidate(c[0], c[1], c[2], c[3], c[4], c[5]), c[6])
        << testing::PrintToString(c);
  }
}

TEST(Calendar, HostileDatesNeitherLoopNorTrap) {
  for (const double date : {-kInfinity, kInfinity, kNaN, 1e300, -1e300, 9e17, -9e17}) {
    EXPECT_LE(static_cast<uint32_t>(qxDayOfWeek(date)), 6U);
    EXPECT_TRUE(std::isfinite(qxYearToDays(qxDatePart("Y", date))));
  }
  EXPECT_TRUE(std::isfinite(dateOf(INT32_MAX, 12, 31, 23, 59, 59)));
  EXPECT_TRUE(std::isfinite(dateOf(INT32_MIN, 12, 31, 23, 59, 59)));
  EXPECT_EQ(qxYearToDays(INT32_MAX), INT32_MAX * 365.0 + 536870911 - 21474836 + 5368709 - 693594);
}

}  // namespace
