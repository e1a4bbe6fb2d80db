#include <limits>
#include <string>

#include "tests/support/test_support.h"

namespace {

std::string format(double date, const char* picture) {
  char text[128];
  const int32_t length = qxFormatDate(date, picture, text);
  EXPECT_EQ(static_cast<size_t>(length), std::string(text).size());
  return text;
}

TEST(FormatDate, Pictures) {
  const double evening = 36586.75;                            // 1 March 2000, 18:00
  const double morning = qxYMDtoDate(2005, 11, 9, 0, 4, 30);  // read back to the second
  const double afternoon = qxYMDtoDate(2005, 11, 9, 13, 7, 30);
  const struct {
    double date;
    const char* picture;
    const char* text;
  } cases[] = {
      {evening, "mm/dd/yyyy h:nn AM/PM", "03/01/2000 6:00 PM"},
      {2.0, "d/m/yy", "1/1/00"},
      {2.0, "YYYY-MM-DD", "1900-01-01"},
      {0.0, "yyyy/mm/dd", "1899/12/30"},
      {evening, "", ""},
      {evening, "dDd MmM yYyY", "01 03 2000"},
      // Any run of Y but four gives two digits.
      {evening, "y yy yyy yyyyy", "00 00 00 00"},
      // M is the minute once an H has been seen, until an M or N has used it.
      {36586.765625, "h:m m", "18:22 3"},
      {36586.765625, "h d y s m n m", "18 1 00 30 22 22 3"},
      {36586.765625, "h n m", "18 22 3"},
      {morning, "h:nn a/p", "12:04 a"},
      {morning, "hh:nn", "00:04"},
      {afternoon, "hh:nnA/P", "01:07P"},
      {afternoon, "h am/pm", "1 pm"},
      {36586.5, "h AM/PM", "12 PM"},
      // A marker keeps the case of the picture and may spell anything.
      {morning, "Aa-Pp", "Aa"},
      {afternoon, "Aa-Pp", "Pp"},
      // A marker near the end of the picture stops there.
      {morning, "hA", "12A"},
      {afternoon, "hA", "1"},
      {afternoon, "hA/", "1"},
      {afternoon, "hAM/P", "1P"},
      // Other characters stand for themselves.
      {evening, "week %d of 7, q.", "week %1 of 7, q."},
  };
  for (const auto& c : cases) EXPECT_EQ(format(c.date, c.picture), c.text) << c.picture;
}

TEST(FormatDate, OddDatesStayInBounds) {
  const double dates[] = {-1e300,
                          1e300,
                          -700000.0,
                          -5e9,
                          5e9,
                          1e18,
                          std::numeric_limits<double>::infinity(),
                          -std::numeric_limits<double>::infinity(),
                          std::numeric_limits<double>::quiet_NaN()};
  for (const double date : dates)
    EXPECT_LE(format(date, "yyyy/mm/dd hh:nn:ss").size(), 27u) << date;
  // A fraction next to 1 is 24 o'clock of the same day.
  EXPECT_EQ(format(36585.999999999, "yyyy/mm/dd hh:nn:ss"), "2000/02/29 24:00:00");
  EXPECT_EQ(format(36585.999999999, "h am/pm"), "24 pm");
  char text[8] = "abc";
  EXPECT_EQ(qxFormatDate(1.0, nullptr, text), 0);
  EXPECT_STREQ(text, "abc");
  EXPECT_EQ(qxFormatDate(1.0, "yy", nullptr), 0);
}

}  // namespace
