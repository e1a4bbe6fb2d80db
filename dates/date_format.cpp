// Dates written as text under a picture, and the default date order.
#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/ascii.h"
#include "dates/date_pictures.h"
#include "quorvex.h"

namespace qx {
namespace {

struct Pictures {
  const char* date;
  const char* shortDate;
  const char* dateTime;
  const char* shortDateTime;
};

// Indexed by the date order.
constexpr Pictures kPictures[] = {
    {"yyyy/mm/dd", "yy/mm/dd", "yyyy/mm/dd hh:nn:ss", "yy/mm/dd hh:nn:ss"},
    {"mm/dd/yyyy", "mm/dd/yy", "mm/dd/yyyy hh:nn:ss", "mm/dd/yy hh:nn:ss"},
    {"dd/mm/yyyy", "dd/mm/yy", "dd/mm/yyyy hh:nn:ss", "dd/mm/yy hh:nn:ss"}};

int32_t defaultDateOrder = QX_ORDER_YMD;

// Writes a value of 0 to 99, with a leading zero when `run` letters ask for two digits. Returns the
// new end.
char* writeNumber(char* out, int32_t value, size_t run) {
  if (run >= 2 || value >= 10) *out++ = static_cast<char>('0' + value / 10);
  *out++ = static_cast<char>('0' + value % 10);
  return out;
}

char* writeYear(char* out, int32_t year, size_t run) {
  if (run != 4) return writeNumber(out, std::abs(year % 100), 2);
  char digits[16];
  const int length = std::snprintf(digits, sizeof digits, "%04" PRId32, year);
  std::memcpy(out, digits, static_cast<size_t>(length));
  return out + length;
}

// Characters of the marker token at `at`: three as in A/P or five as in AM/PM, cut at the end of
// the picture.
size_t markerLength(const char* at) {
  const size_t whole = at[1] == '/' ? 3 : 5;
  size_t length = 0;
  while (length < whole && at[length] != '\0') ++length;
  return length;
}

// One half of the marker: A or P, AM or PM.
char* writeMarker(char* out, const char* token, size_t length, bool afternoon) {
  const bool brief = token[1] == '/';
  const size_t from = !afternoon ? 0 : brief ? 2 : 3;
  const size_t to = from + (brief ? 1 : 2);
  for (size_t i = from; i < to && i < length; ++i) *out++ = token[i];
  return out;
}

}  // namespace

const char* datePicture() {
  return kPictures[defaultDateOrder].date;
}
const char* shortDatePicture() {
  return kPictures[defaultDateOrder].shortDate;
}
const char* dateTimePicture() {
  return kPictures[defaultDateOrder].dateTime;
}
const char* shortDateTimePicture() {
  return kPictures[defaultDateOrder].shortDateTime;
}

}  // namespace qx

void qxSetDefaultDateFormat(int32_t order) {
  if (order >= QX_ORDER_YMD && order <= QX_ORDER_DMY) qx::defaultDateOrder = order;
}

int32_t qxFormatDate(double date, const char* picture, char* output) {
  if (picture == nullptr || output == nullptr) return 0;
  int32_t year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  qxDateToYMD(date, &year, &month, &day, &hour, &minute, &second);
  int32_t shownHour = hour;
  if (std::strpbrk(picture, "Aa") != nullptr) {
    if (hour >= 13 && hour <= 23) shownHour = hour - 12;
    if (hour == 0) shownHour = 12;
  }

  char* out = output;
  bool afterHour = false;
  for (const char* at = picture; *at != '\0';) {
    const char letter = qx::toUpper(*at);
    size_t run = 1;
    while (qx::toUpper(at[run]) == letter) ++run;
    switch (letter) {
      case 'D':
        out = qx::writeNumber(out, day, run);
        break;
      case 'H':
        out = qx::writeNumber(out, shownHour, run);
        afterHour = true;
        break;
      case 'M':
        out = qx::writeNumber(out, afterHour ? minute : month, run);
        afterHour = false;
        break;
      case 'N':
        out = qx::writeNumber(out, minute, run);
        afterHour = false;
        break;
      case 'S':
        out = qx::writeNumber(out, second, run);
        break;
      case 'Y':
        out = qx::writeYear(out, year, run);
        break;
      case 'A':
        run = qx::markerLength(at);
        out = qx::writeMarker(out, at, run, hour >= 12);
        break;
      default:
        out = std::copy_n(at, run, out);
    }
    at += run;
  }
  *out = '\0';
  return static_cast<int32_t>(out - output);
}
