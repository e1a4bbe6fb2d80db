#include <functional>
#include <string>
#include <tuple>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

std::string textOf(decltype(&qxJulianToDateTxt) write, double date, int16_t layout,
                   const char* separator) {
  char text[256] = "x";
  const int32_t length = write(date, layout, separator, text);
  EXPECT_EQ(static_cast<size_t>(length), std::string(text).size());
  return text;
}

const auto dateText = std::bind_front(textOf, qxJulianToDateTxt);
const auto timeText = std::bind_front(textOf, qxJulianToTimeTxt);

TEST(Julian, PartsAndDifferences) {
  EXPECT_EQ(qxYMDToJulian(1900, 1, 1), 2.0);
  EXPECT_EQ(qxYMDToJulian(2001, 2, 29), 0.0);
  EXPECT_EQ(qxHMSToJulian(6, 0, 0), 0.25);
  int16_t a = -1, b = -1, c = -1;
  qxJulianToYMD(36586.75, &a, &b, &c);
  EXPECT_EQ(a * 10000 + b * 100 + c, 20000301);
  qxJulianToHMS(36586.75, &a, &b, &c);
  EXPECT_EQ(a * 10000 + b * 100 + c, 180000);
  qxJulianToYMD(1e17, &a, nullptr, nullptr);
  EXPECT_EQ(a, INT16_MAX) << "a year beyond 16 bits saturates";
  qxJulianToYMD(-1e17, &a, &b, &c);
  EXPECT_EQ(a, INT16_MIN);
  EXPECT_EQ(b, 0) << "no month";
  EXPECT_EQ(qxJulianDOW(2.0), 0);
  EXPECT_EQ(qxJulianDif(1.9, 5.1), 4);
  EXPECT_EQ(qxYMDDif(1999, 12, 31, 2000, 1, 1), 1);
  EXPECT_EQ(qxYMDDif(2000, 1, 1, 1800, 1, 1), -73048) << "beyond 16 bits";
  EXPECT_EQ(qxHMSDif(9, 0, 0, 10, 30, 0), 5400);
  EXPECT_EQ(qxHMSDif(23, 0, 0, 1, 0, 0), -79200);
}

TEST(Julian, TextIsReadInTheOrderOfItsLayout) {
  const double date = dateOf(1999, 12, 31);
  const char* const texts[] = {"99/12/31", "1999-12-31", "12/31/99", "12.31.1999",
                               "31/12/99", "31.12.1999", "991231",   "19991231",
                               "123199",   "12311999",   "311299",   "31121999"};
  for (int16_t layout = 1; layout <= 12; ++layout) {
    EXPECT_EQ(qxDateTxtToJulian(texts[layout - 1], layout), date) << layout;
    EXPECT_EQ(qxDateTxtVal(texts[layout - 1], layout), 1) << layout;
  }
  for (const int16_t unknown : std::initializer_list<int16_t>{0, 13, INT16_MIN}) {
    EXPECT_EQ(qxDateTxtToJulian("1999-12-31", unknown), date);
  }
  EXPECT_EQ(qxDateTxtVal("1999-12-32", 2), 0);
  EXPECT_EQ(qxDateTxtDif("12/31/1999", "02.01.2000", 4, 6), 2);
  EXPECT_EQ(qxTimeTxtToJulian("6:00"), 0.25);
  EXPECT_EQ(qxTimeTxtDif("9:00", "10:30"), 5400);
}

TEST(Julian, TextIsWrittenUnderALayout) {
  const double date = dateOf(2001, 2, 3) + 0.0859375;  // 02:03:45
  const char* const texts[] = {"01/02/03", "2001/02/03", "02/03/01", "02/03/2001",
                               "03/02/01", "03/02/2001", "010203",   "20010203",
                               "020301",   "02032001",   "030201",   "03022001"};
  for (int16_t layout = 1; layout <= 12; ++layout) {
    EXPECT_EQ(dateText(date, layout, "/"), texts[layout - 1]) << layout;
  }
  EXPECT_EQ(dateText(2.0, 3, "-"), "01-01-00");
  const char* const times[] = {"02:03:45", "02:03", "020345", "0203"};
  for (int16_t layout = 1; layout <= 4; ++layout) {
    EXPECT_EQ(timeText(date, layout, ":"), times[layout - 1]) << layout;
  }
}

TEST(Julian, SeparatorsOfAnyKind) {
  const double date = dateOf(2001, 2, 3);
  EXPECT_EQ(dateText(date, 2, nullptr), "20010203");
  EXPECT_EQ(dateText(date, 2, ""), "20010203");
  const std::string wide(100, '.');
  EXPECT_EQ(dateText(date, 2, wide.c_str()), "2001" + wide + "02" + wide + "03");
  EXPECT_EQ(dateText(date, 6, " of "), "03 of 02 of 2001");
  // The layout becomes "YYyMMyDD": the first run of Y has three letters, the second one.
  EXPECT_EQ(dateText(date, 1, "y"), "01020103");
  for (const int16_t unknown : std::initializer_list<int16_t>{INT16_MIN, -1, 0, 13}) {
    EXPECT_EQ(dateText(date, unknown, "/"), "");
    EXPECT_EQ(timeText(date, unknown, "/"), "");
  }
  EXPECT_EQ(timeText(date, 5, "/"), "");
}

TEST(Julian, NullArguments) {
  char text[256] = "";
  expectNullsRefused("qxDateTxtToJulian", qxDateTxtToJulian, 0.0, "1999-12-31", 2);
  expectNullsRefused("qxDateTxtVal", qxDateTxtVal, 0, "1999-12-31", 2);
  expectNullsRefused("qxDateTxtDif", qxDateTxtDif, 0, "1999-12-30", "1999-12-31", 2, 2);
  expectNullsRefused("qxTimeTxtToJulian", qxTimeTxtToJulian, 0.0, "9:00");
  expectNullsRefused("qxTimeTxtDif", qxTimeTxtDif, 0, "9:00", "10:00");
  expectNullsRefused("qxJulianToDateTxt", qxJulianToDateTxt, 0, 1.0, 1, nullptr, text);
  expectNullsRefused("qxJulianToTimeTxt", qxJulianToTimeTxt, 0, 1.0, 1, nullptr, text);
  qxJulianToYMD(1.0, nullptr, nullptr, nullptr);
  qxJulianToHMS(1.0, nullptr, nullptr, nullptr);
}

}  // namespace
