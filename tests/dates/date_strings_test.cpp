#include <string>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

struct Parts {
  int32_t year, month, day, hour = 0, minute = 0, second = 0;
  bool operator==(const Parts&) const = default;
};

struct DateCase {
  const char* text;
  int32_t order;
  Parts parts;
};

void expectParts(const std::vector<DateCase>& cases, int32_t valid = 1) {
  for (const auto& [text, order, parts] : cases) {
    SCOPED_TRACE(std::string("\"") + text + "\" in order " + std::to_string(order));
    Parts p = {-1, -1, -1, -1, -1, -1};
    EXPECT_EQ(qxDateStrToYMD(text, order, &p.year, &p.month, &p.day, &p.hour, &p.minute, &p.second),
              valid);
    EXPECT_EQ(p, parts) << p.year << "/" << p.month << "/" << p.day << " " << p.hour << ":"
                        << p.minute << ":" << p.second;
    EXPECT_EQ(qxDateStrValidate(text, order), valid);
    const double date = dateOf(p.year, p.month, p.day, p.hour, p.minute, p.second);
    EXPECT_EQ(qxDateStrToDate(text, order), valid == 0 ? 0.0 : date);
  }
}

TEST(DateStrings, SeparatedFieldsFollowTheOrder) {
  // Orders that do not exist count as 0.
  const std::vector<DateCase> cases = {
      {"1999/03/15", 0, {1999, 3, 15}},         {"1999-3-5", 0, {1999, 3, 5}},
      {"03/15/1999", 1, {1999, 3, 15}},         {"3.5.99", 2, {1999, 5, 3}},
      {"3 - 5 - 19", 1, {2019, 3, 5}},          {"3/5/20", 1, {1920, 3, 5}},
      {"15-Mar-99", 2, {1999, 3, 15}},          {"15MAR99", 2, {1999, 3, 15}},
      {"1999/03/15", 3, {1999, 3, 15}},         {"1999 sept 7", 0, {1999, 9, 7}},
      {"1999/03/15", INT32_MIN, {1999, 3, 15}}, {"0019/03/15", 0, {2019, 3, 15}},
      {"1999/03/1:", 0, {1999, 3, 1}},          {"december 31, 2004", 1, {2004, 12, 31}}};
  expectParts(cases);
  // A leading separator leaves the first field empty: the year is then the year 0, in 2000.
  const std::vector<DateCase> invalid = {
      {"1999 se 7", 0, {1999, 0, 7}},         {"1999-00-10", 0, {1999, 0, 10}},
      {"2001-02-29", 0, {2001, 2, 29}},       {"1999 3 p", 0, {1999, 3, 0}},
      {"1999/03x15", 0, {1999, 3, 0, 15}},    {"03/15x1999", 1, {2000, 3, 15, 1999}},
      {"15/03x1999", 2, {2000, 3, 15, 1999}}, {"/1999/03/15", 0, {2000, 1999, 3, 15}},
      {" 03/15/1999", 1, {2015, 0, 3, 1999}}};
  expectParts(invalid, 0);
}

TEST(DateStrings, EveryMonthHasItsName) {
  const std::string names = "JanFebMarAprMayJunJulAugSepOctNovDec";
  for (int32_t month = 1; month <= 12; ++month) {
    const std::string text = "7-" + names.substr(static_cast<size_t>(3 * month - 3), 3) + "-99";
    EXPECT_EQ(qxDateStrToDate(text.c_str(), 2), dateOf(1999, month, 7)) << text;
  }
}

TEST(DateStrings, CompactFormsAreCutByPosition) {
  const std::vector<DateCase> days = {
      {"19990315", 0, {1999, 3, 15}}, {"990315", 0, {1999, 3, 15}},
      {"031599", 1, {1999, 3, 15}},   {"03151999", 1, {1999, 3, 15}},
      {"15031999", 2, {1999, 3, 15}}, {"311299", 2, {1999, 12, 31}},
      {"1999031", 0, {1999, 3, 1}},   {"199903159999", 0, {1999, 3, 15}}};
  expectParts(days);
  // With two fields the marker is looked for in the seconds.
  expectParts({{"19990315 143059", 0, {1999, 3, 15, 14, 30, 59}},
               {"19990315 14305999", 0, {1999, 3, 15, 14, 30, 59}},
               {"990315,0930", 0, {1999, 3, 15, 9, 30}},
               {"990315 PM", 0, {1999, 3, 15}},
               {"990315 xxxxpm", 0, {1999, 3, 15, 12}}});
  const std::vector<DateCase> invalid = {{"19990315", 1, {315, 19, 99}},
                                         {"990315 93", 0, {1999, 3, 15, 93}},
                                         {"", 0, {2000, 0, 0}},
                                         {"--", 2, {2000, 0, 0}},
                                         {"hello", 0, {2000, 0, 0}}};
  expectParts(invalid, 0);
}

TEST(DateStrings, TimesFollowTheDate) {
  expectParts({{"03/15/1999 2:30 PM", 1, {1999, 3, 15, 14, 30}},
               {"03/15/1999 12:30 AM", 1, {1999, 3, 15, 12, 30}},
               {"03/15/1999 12:30p", 1, {1999, 3, 15, 12, 30}},
               {"03/15/1999 2:30:45pm", 1, {1999, 3, 15, 14, 30, 45}},
               {"03/15/1999 2:30 p.m.", 1, {1999, 3, 15, 2, 30}},  // the last field is "m"
               {"03/15/1999 PM", 1, {1999, 3, 15, 12}},
               {"1999-03-15 23:59:59", 0, {1999, 3, 15, 23, 59, 59}},
               {"1999-03-15T14:30", 0, {1999, 3, 15, 0, 14, 30}},  // the T is a field of its own
               // A ninth field ends the text; characters beyond the eighth of a field are dropped.
               {"1999 3 15 1 2 3 z p 9", 0, {1999, 3, 15, 13, 2, 3}},
               {"1999 3 15 1 2 3 p y p", 0, {1999, 3, 15, 1, 2, 3}},
               {"0000199912 3 15", 0, {1999, 3, 15}}});
  expectParts({{"1999-03-15 143000", 0, {1999, 3, 15, 143000}}}, 0);
}

TEST(DateStrings, CutoffMovesTwoDigitYears) {
  qxSet2DigitYearCutoff(0);
  EXPECT_EQ(qxDateStrToDate("19/06/01", 0), dateOf(1919, 6, 1));
  qxSet2DigitYearCutoff(20);
  EXPECT_EQ(qxDateStrToDate("19/06/01", 0), dateOf(2019, 6, 1));
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
  using Times = std::array<int32_t, 4>;  // hour, minute, second and whether they are a time
  const std::pair<const char*, Times> cases[] = {
      {"093015", {9, 30, 15, 1}},       {"9:30", {9, 30, 0, 1}},       {"09:30", {9, 30, 0, 1}},
      {"9: 30", {9, 0, 30, 1}},         {"09: 30", {9, 0, 30, 1}},     {"2p", {14, 0, 0, 1}},
      {"2:30 PM", {14, 30, 0, 1}},      {"12:30 am", {12, 30, 0, 1}},  {"12:30 pm", {12, 30, 0, 1}},
      {"pm 2:30", {14, 30, 0, 1}},      {"at 7", {7, 0, 0, 1}},        {"9303", {93, 3, 0, 0}},
      {"930", {93, 0, 0, 0}},           {"24:00", {24, 0, 0, 0}},      {"12:60", {12, 60, 0, 0}},
      {"10:20:30:40", {10, 20, 30, 1}}, {"10203040", {10, 20, 30, 1}}, {"", {0, 0, 0, 1}},
      {"noon? p", {12, 0, 0, 1}},       {"1::2", {1, 0, 2, 1}},        {"1:::2", {1, 0, 0, 1}}};
  for (const auto& [text, expected] : cases) {
    SCOPED_TRACE(text);
    Times parts = {-1, -1, -1};
    auto& [hour, minute, second, valid] = parts;
    valid = qxTimeStrToHMS(text, &hour, &minute, &second);
    EXPECT_EQ(parts, expected);
    const double time = valid == 0 ? 0.0 : (hour * 3600 + minute * 60 + second) / 86400.0;
    EXPECT_EQ(qxTimeStrToTime(text), time);
  }
}

}  // namespace
