// The older, compact date interface: 16-bit parts, and layout codes in place of pictures.
#include <algorithm>
#include <cstring>

#include "core/memory.h"
#include "quorvex.h"

namespace qx {
namespace {

// A picture with "%" where the caller's separator stands, and the order in which text is read.
struct DateLayout {
  const char* picture;
  int32_t order;
};

// Indexed by the layout code less 1.
constexpr DateLayout kDateLayouts[] = {
    {"YY%MM%DD", QX_ORDER_YMD},   {"YYYY%MM%DD", QX_ORDER_YMD}, {"MM%DD%YY", QX_ORDER_MDY},
    {"MM%DD%YYYY", QX_ORDER_MDY}, {"DD%MM%YY", QX_ORDER_DMY},   {"DD%MM%YYYY", QX_ORDER_DMY},
    {"YYMMDD", QX_ORDER_YMD},     {"YYYYMMDD", QX_ORDER_YMD},   {"MMDDYY", QX_ORDER_MDY},
    {"MMDDYYYY", QX_ORDER_MDY},   {"DDMMYY", QX_ORDER_DMY},     {"DDMMYYYY", QX_ORDER_DMY}};

constexpr const char* kTimePictures[] = {"HH%NN%SS", "HH%NN", "HHNNSS", "HHNN"};

int32_t orderOf(int16_t code) {
  return code >= 1 && code <= 12 ? kDateLayouts[code - 1].order : QX_ORDER_YMD;
}

int16_t saturateToInt16(int32_t value) {
  return static_cast<int16_t>(value > INT16_MAX   ? INT16_MAX
                              : value < INT16_MIN ? INT16_MIN
                                                  : value);
}

void store(int16_t* target, int32_t value) {
  if (target != nullptr) *target = saturateToInt16(value);
}

// Formats under a layout with the separator, of any length, put in its places. Without memory for
// the picture the text is empty.
int32_t formatUnder(double date, const char* layout, const char* separator, char* output) {
  const size_t length = std::strlen(separator);
  char* const picture = static_cast<char*>(allocateZeroed(std::strlen(layout) + 2 * length + 1, 1));
  *output = '\0';
  if (picture == nullptr) return 0;
  char* end = picture;
  for (const char* at = layout; *at != '\0'; ++at) {
    if (*at != '%') {
      *end++ = *at;
      continue;
    }
    end = std::copy_n(separator, length, end);
  }
  const int32_t written = qxFormatDate(date, picture, output);
  release(picture);
  return written;
}

}  // namespace
}  // namespace qx

double qxYMDToJulian(int16_t year, int16_t month, int16_t day) {
  return qxYMDtoDate(year, month, day, 0, 0, 0);
}

double qxHMSToJulian(int16_t hour, int16_t minute, int16_t second) {
  return qxYMDtoDate(0, 0, 0, hour, minute, second);
}

void qxJulianToYMD(double date, int16_t* year, int16_t* month, int16_t* day) {
  int32_t y = 0, m = 0, d = 0;
  qxDateToYMD(date, &y, &m, &d, nullptr, nullptr, nullptr);
  qx::store(year, y);
  qx::store(month, m);
  qx::store(day, d);
}

void qxJulianToHMS(double date, int16_t* hour, int16_t* minute, int16_t* second) {
  int32_t h = 0, m = 0, s = 0;
  qxDateToYMD(date, nullptr, nullptr, nullptr, &h, &m, &s);
  qx::store(hour, h);
  qx::store(minute, m);
  qx::store(second, s);
}

int32_t qxJulianDOW(double date) {
  return qxDayOfWeek(date);
}

int32_t qxJulianDif(double first, double second) {
  return qxDateDiff("D", first, second);
}

int32_t qxYMDDif(int16_t year1, int16_t month1, int16_t day1, int16_t year2, int16_t month2,
                 int16_t day2) {
  return qxDateDiff("D", qxYMDToJulian(year1, month1, day1), qxYMDToJulian(year2, month2, day2));
}

int32_t qxHMSDif(int16_t hour1, int16_t minute1, int16_t second1, int16_t hour2, int16_t minute2,
                 int16_t second2) {
  return qxDateDiff("S", qxHMSToJulian(hour1, minute1, second1),
                    qxHMSToJulian(hour2, minute2, second2));
}

double qxDateTxtToJulian(const char* text, int16_t layout) {
  return qxDateStrToDate(text, qx::orderOf(layout));
}

int32_t qxDateTxtVal(const char* text, int16_t layout) {
  return qxDateStrValidate(text, qx::orderOf(layout));
}

int32_t qxDateTxtDif(const char* first, const char* second, int16_t layout1, int16_t layout2) {
  if (first == nullptr || second == nullptr) return 0;
  return qxDateDiff("D", qxDateTxtToJulian(first, layout1), qxDateTxtToJulian(second, layout2));
}

double qxTimeTxtToJulian(const char* text) {
  return qxTimeStrToTime(text);
}

int32_t qxTimeTxtDif(const char* first, const char* second) {
  if (first == nullptr || second == nullptr) return 0;
  return qxDateDiff("S", qxTimeTxtToJulian(first), qxTimeTxtToJulian(second));
}

int32_t qxJulianToDateTxt(double date, int16_t layout, const char* separator, char* output) {
  if (output == nullptr) return 0;
  const bool known = layout >= 1 && layout <= 12;
  return qx::formatUnder(date, known ? qx::kDateLayouts[layout - 1].picture : "",
                         known && separator != nullptr ? separator : "", output);
}

int32_t qxJulianToTimeTxt(double date, int16_t layout, const char* separator, char* output) {
  if (output == nullptr) return 0;
  const bool known = layout >= 1 && layout <= 4;
  return qx::formatUnder(date, known ? qx::kTimePictures[layout - 1] : "",
                         known && separator != nullptr ? separator : "", output);
}
