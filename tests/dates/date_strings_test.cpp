#include <string>

#include "tests/support/test_support.h"

namespace {

struct Parts {
  int32_t year = -1, month = -1, day = -1, hour = -1, minute = -1, second = -1;
  bool operator==(const Parts&) const = default;
};

std::string show(const Parts& p) {
  return std::to_string(p.year) + "/" + std::to_string(p.month) + "/" + std::to_string(p.day) +
         " " + std::to_string(p.hour) + ":" + std::to_string(p.minute) + ":" +
         std::to_string(p.second);
}

struct DateCase {
  const char* text;
  int32_t order;
  Parts parts;
  int32_t valid;
};

void expectParts(const DateCase& c) {
  SCOPED_TRACE(std::string("\"") + c.text + "\" in order " + std::to_string(c.order));
  Parts p;
  const int32_t valid =
      qxDateStrToYMD(c.text, c.order, &p.year, &p.month, &p.day, &p.hour, &p.minute, &p.second);
  EXPECT_EQ(show(p), show(c.parts));
  EXPECT_EQ(valid, c.valid);
  EXPECT_EQ(qxDateStrValidate(c.text, c.order), c.valid);
  const double date = c.valid == 0 ? 0.0
                                   : qxYMDtoDate(c.parts.year, c.parts.month, c.parts.day,
                                                 c.parts.hour, c.parts.minute, c.parts.second);
  EXPECT_EQ(qxDateStrToDate(c.text, c.order), date);
}

TEST(DateStrings, SeparatedFieldsFollowTheOrder) {
  const DateCase cases[] = {
      {"1999/03/15", 0, {1999, 3, 15, 0, 0, 0}, 1},
      {"1999-3-5", 0, {1999, 3, 5, 0, 0, 0}, 1},
      {"03/15/1999", 1, {1999, 3, 15, 0, 0, 0}, 1},
      {"3.5.99", 2, {1999, 5, 3, 0, 0, 0}, 1},
      {"3 - 5 - 19", 1, {2019, 3, 5, 0, 0, 0}, 1},
      {"3/5/20", 1, {1920, 3, 5, 0, 0, 0}, 1},
      {"15-Mar-99", 2, {1999, 3, 15, 0, 0, 0}, 1},
      {"15MAR99", 2, {1999, 3, 15, 0, 0, 0}, 1},
      {"december 31, 2004", 1, {2004, 12, 31, 0, 0, 0}, 1},
      {"1999 sept 7", 0, {1999, 9, 7, 0, 0, 0}, 1},
      {"1999 se 7", 0, {1999, 0, 7, 0, 0, 0}, 0},
      {"1999-00-10", 0, {1999, 0, 10, 0, 0, 0}, 0},
      {"2001-02-29", 0, {2001, 2, 29, 0, 0, 0}, 0},
      // Orders that do not exist count as 0.
      {"1999/03/15", 3, {1999, 3, 15, 0, 0, 0}, 1},
      {"1999/03/15", INT32_MIN, {1999, 3, 15, 0, 0, 0}, 1},
      // A leading separator leaves the first field empty: the year is then the year 0, in 2000.
      {"/1999/03/15", 0, {2000, 1999, 3, 15, 0, 0}, 0},
      {" 03/15/1999", 1, {2015, 0, 3, 1999, 0, 0}, 0},
  };
  for (const DateCase& c : cases) expectParts(c);
}

TEST(DateStrings, CompactFormsAreCutByPosition) {
  const DateCase cases[] = {
      {"19990315", 0, {1999, 3, 15, 0, 0, 0}, 1},
      {"990315", 0, {1999, 3, 15, 0, 0, 0}, 1},
      {"031599", 1, {1999, 3, 15, 0, 0, 0}, 1},
      {"03151999", 1, {1999, 3, 15, 0, 0, 0}, 1},
      {"15031999", 2, {1999, 3, 15, 0, 0, 0}, 1},
      {"311299", 2, {1999, 12, 31, 0, 0, 0}, 1},
      {"19990315", 1, {315, 19, 99, 0, 0, 0}, 0},
      {"1999031", 0, {1999, 3, 1, 0, 0, 0}, 1},
      {"199903159999", 0, {1999, 3, 15, 0, 0, 0}, 1},
      {"19990315 143059", 0, {1999, 3, 15, 14, 30, 59}, 1},
      {"19990315 14305999", 0, {1999, 3, 15, 14, 30, 59}, 1},
      {"990315 93", 0, {1999, 3, 15, 93, 0, 0}, 0},
      {"990315,0930", 0, {1999, 3, 15, 9, 30, 0}, 1},
      // With two fields the marker is looked for in the seconds.
      {"990315 PM", 0, {1999, 3, 15, 0, 0, 0}, 1},
      {"990315 xxxxpm", 0, {1999, 3, 15, 12, 0, 0}, 1},
      {"", 0, {2000, 0, 0, 0, 0, 0}, 0},
      {"--", 2, {2000, 0, 0, 0, 0, 0}, 0},
      {"hello", 0, {2000, 0, 0, 0, 0, 0}, 0},
  };
  for (const DateCase& c : cases) expectParts(c);
}

TEST(DateStrings, TimesFollowTheDate) {
  const DateCase cases[] = {
      {"03/15/1999 2:30 PM", 1, {1999, 3, 15, 14, 30, 0}, 1},
      {"03/15/1999 12:30 AM", 1, {1999, 3, 15, 12, 30, 0}, 1},
      {"03/15/1999 12:30p", 1, {1999, 3, 15, 12, 30, 0}, 1},
      {"03/15/1999 2:30:45pm", 1, {1999, 3, 15, 14, 30, 45}, 1},
      {"03/15/1999 2:30 p.m.", 1, {1999, 3, 15, 2, 30, 0}, 1},  // the last field is "m"
      {"03/15/1999 PM", 1, {1999, 3, 15, 12, 0, 0}, 1},
      {"1999-03-15 23:59:59", 0, {1999, 3, 15, 23, 59, 59}, 1},
      {"1999-03-15 143000", 0, {1999, 3, 15, 143000, 0, 0}, 0},
      // The T is a field of its own.
      {"1999-03-15T14:30", 0, {1999, 3, 15, 0, 14, 30}, 1},
      // A ninth field ends the text; characters beyond the eighth of a field are dropped.
      {"1999 3 15 1 2 3 x p 9", 0, {1999, 3, 15, 13, 2, 3}, 1},
      {"1999 3 15 1 2 3 x y p", 0, {1999, 3, 15, 1, 2, 3}, 1},
      {"0000199912 3 15", 0, {1999, 3, 15, 0, 0, 0}, 1},
  };
  for (const DateCase& c : cases) expectParts(c);
}

TEST(DateStrings, CutoffMovesTwoDigitYears) {
  qxSet2DigitYearCutoff(0);
  EXPECT_EQ(qxDateStrToDate("19/06/01", 0), qxYMDtoDate(1919, 6, 1, 0, 0, 0));
  qxSet2DigitYearCutoff(20);
  EXPECT_EQ(qxDateStrToDate("19/06/01", 0), qxYMDtoDate(2019, 6, 1, 0, 0, 0));
}

TEST(DateStrings, NullAddressesAndTextsAreAccepted) {
  int32_t day = 0;
  EXPECT_EQ(qxDateStrToYMD("1999/03/15", 0, nullptr, nullptr, &day, nullptr, nullptr, nullptr), 1);
  EXPECT_EQ(day, 15);
  EXPECT_EQ(qxDateStrToYMD(nullptr, 0, nullptr, nullptr, &day, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(qxDateStrValidate(nullptr, 0), 0);
  EXPECT_EQ(qxDateStrToDate(nullptr, 0), 0.0);
  EXPECT_EQ(qxTimeStrToHMS(nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(qxTimeStrToTime(nullptr), 0.0);
}

TEST(TimeStrings, NumbersEndAtTwoDigitsOrASeparator) {
  const struct {
    const char* text;
    int32_t hour, minute, second, valid;
  } cases[] = {
      {"093015", 9, 30, 15, 1},       {"9:30", 9, 30, 0, 1},       {"09:30", 9, 30, 0, 1},
      {"9: 30", 9, 0, 30, 1},         {"09: 30", 9, 0, 30, 1},     {"2p", 14, 0, 0, 1},
      {"2:30 PM", 14, 30, 0, 1},      {"12:30 am", 12, 30, 0, 1},  {"12:30 pm", 12, 30, 0, 1},
      {"pm 2:30", 14, 30, 0, 1},      {"at 7", 7, 0, 0, 1},        {"9303", 93, 3, 0, 0},
      {"930", 93, 0, 0, 0},           {"24:00", 24, 0, 0, 0},      {"12:60", 12, 60, 0, 0},
      {"10:20:30:40", 10, 20, 30, 1}, {"10203040", 10, 20, 30, 1}, {"", 0, 0, 0, 1},
      {"noon? p", 12, 0, 0, 1},       {"1::2", 1, 0, 2, 1},        {"1:::2", 1, 0, 0, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    int32_t hour = -1, minute = -1, second = -1;
    EXPECT_EQ(qxTimeStrToHMS(c.text, &hour, &minute, &second), c.valid);
    EXPECT_EQ(hour, c.hour);
    EXPECT_EQ(minute, c.minute);
    EXPECT_EQ(second, c.second);
    const double time = c.valid == 0 ? 0.0 : (c.hour * 3600 + c.minute * 60 + c.second) / 86400.0;
    EXPECT_EQ(qxTimeStrToTime(c.text), time);
  }
}

}  // namespace
