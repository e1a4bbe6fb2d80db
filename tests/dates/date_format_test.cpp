#include <string>
#include <tuple>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

std::string format(double date, const char* picture) {
  char text[128];
  const int32_t length = qxFormatDate(date, picture, text);
  EXPECT_EQ(static_cast<size_t>(length), std::string(text).size());
  return text;
}

struct Picture {
  const char* picture;
  const char* text;
};

void expectTexts(double date, const std::vector<Picture>& pictures) {
  for (const auto& [picture, text] : pictures) EXPECT_EQ(format(date, picture), text) << picture;
}

TEST(FormatDate, Days) {
  // Any run of Y but four gives two digits; other characters stand for themselves.
  expectTexts(36586.75,  // 1 March 2000, 18:00
              {{"mm/dd/yyyy h:nn AM/PM", "03/01/2000 6:00 PM"},
               {"", ""},
               {"dDd MmM yYyY", "01 03 2000"},
               {"y yy yyy yyyyy", "00 00 00 00"},
               {"weEk %d of 7, q.", "weEk %1 of 7, q."}});
  expectTexts(2.0, {{"d/m/yy", "1/1/00"}, {"YYYY-MM-DD", "1900-01-01"}});
  expectTexts(0.0, {{"yyyy/mm/dd", "1899/12/30"}});
  expectTexts(dateOf(2009, 10, 10), {{"d/m", "10/10"}});
}

TEST(FormatDate, Times) {
  // M is the minute once an H has been seen, until an M or N has used it.
  expectTexts(
      36586.765625,
      {{"h:m m", "18:22 3"}, {"h d y s m n m", "18 1 00 30 22 22 3"}, {"h n m", "18 22 3"}});
  // A marker keeps the case of the picture and may spell anything; near the picture's end it stops.
  expectTexts(dateOf(2005, 11, 9, 0, 4, 30),  // reads back to the second
              {{"h:nn a/p", "12:04 a"}, {"hh:nn", "00:04"}, {"Aa-Pp", "Aa"}, {"hA", "12A"}});
  expectTexts(dateOf(2005, 11, 9, 13, 7, 30), {{"hh:nnA/P", "01:07P"},
                                               {"h am/pm", "1 pm"},
                                               {"Aa-Pp", "Pp"},
                                               {"hA", "1"},
                                               {"hA/", "1"},
                                               {"hAM/P", "1P"}});
  expectTexts(36586.5, {{"h AM/PM", "12 PM"}});
}

TEST(FormatDate, OddDatesStayInBounds) {
  for (const double date :
       {-1e300, 1e300, -700000.0, -5e9, 5e9, 1e18, kInfinity, -kInfinity, kNaN}) {
    EXPECT_LE(format(date, "yyyy/mm/dd hh:nn:ss").size(), 27u) << date;
  }
  // A fraction next to 1 is 24 o'clock of the same day.
  EXPECT_EQ(format(36585.999999999, "yyyy/mm/dd hh:nn:ss"), "2000/02/29 24:00:00");
  EXPECT_EQ(format(36585.999999999, "h am/pm"), "24 pm");
  char text[8] = "abc";
  expectNullsRefused("qxFormatDate", qxFormatDate, 0, 1.0, "yy", text);
  EXPECT_STREQ(text, "abc");
}

}  // namespace
