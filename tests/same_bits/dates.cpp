// Calendar, date texts and Julian text dates.
#include <cstring>

#include "tests/same_bits/recorder.h"

namespace same_bits {
namespace {

const double kDates[] = {0.0,     0.5,      1.0,         60.25,     36585.999988426, 36586.75,
                         41234.1, 43000.01, 73050.33333, -1000.625, -657000.25,      2958465.9};
const char* const kDateTexts[] = {"1999/03/15",      "03-15-99", "15 March 2004 2:30 PM",
                                  "990315",          "19990315", "02/30/2001",
                                  "20000229 235959", "",         "x"};
const char* const kTimeTexts[] = {"9:30", "14:05:59", "2:30 PM", "9: 30", "25:00", "", "noon"};
const char* const kPictures[] = {"yyyy/mm/dd hh:nn:ss", "m/d/yy h:n am/pm", "ddd A/P", "hh:mm ss"};
const char* const kParts[] = {"D", "H", "M", "N", "S", "Y", "?"};

void printLetters(const char* name, const std::string& parameters, int32_t length,
                  const char* text) {
  std::vector<double> numbers = {static_cast<double>(length)};
  for (const char* c = text; *c != '\0'; ++c) numbers.push_back(*c);
  print(name, parameters, numbers);
}

void computeParts(double date) {
  char text[96];
  compute("qxDateToYMD", qxDateToYMD, date, whole, whole, whole, whole, whole, whole);
  compute("qxDayOfWeek", qxDayOfWeek, date);
  compute("qxJulianDOW", qxJulianDOW, date);
  for (const char* part : kParts) compute("qxDatePart", qxDatePart, part, date);
  for (const char* unit : {"D", "S"}) compute("qxDateDiff", qxDateDiff, unit, 36000.625, date);
  compute("qxJulianDif", qxJulianDif, 36000.625, date);
  for (const char* picture : kPictures) {
    const int32_t length = qxFormatDate(date, picture, text);
    printLetters("qxFormatDate", label(picture), length, text);
  }
  for (int16_t layout = 1; layout <= 12; ++layout) {
    const int32_t length = qxJulianToDateTxt(date, layout, "-", text);
    printLetters("qxJulianToDateTxt", label(layout), length, text);
    if (layout > 4) continue;
    const int32_t timeLength = qxJulianToTimeTxt(date, layout, ":", text);
    printLetters("qxJulianToTimeTxt", label(layout), timeLength, text);
  }
  int16_t year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  qxJulianToYMD(date, &year, &month, &day);
  qxJulianToHMS(date, &hour, &minute, &second);
  print("qxJulianToYMD", label(date),
        {static_cast<double>(year), static_cast<double>(month), static_cast<double>(day)});
  print("qxJulianToHMS", label(date),
        {static_cast<double>(hour), static_cast<double>(minute), static_cast<double>(second)});
}

void computeTexts() {
  for (const char* text : kDateTexts) {
    for (const int32_t order : {QX_ORDER_YMD, QX_ORDER_MDY, QX_ORDER_DMY}) {
      compute("qxDateStrToYMD", qxDateStrToYMD, text, order, whole, whole, whole, whole, whole,
              whole);
      compute("qxDateStrValidate", qxDateStrValidate, text, order);
      compute("qxDateStrToDate", qxDateStrToDate, text, order);
      compute("qxDateTxtToJulian", qxDateTxtToJulian, text, 2 * order + 1);
      compute("qxDateTxtVal", qxDateTxtVal, text, 2 * order + 8);
      compute("qxDateTxtDif", qxDateTxtDif, "2001/09/10", text, 2, 2 * order + 2);
    }
  }
  for (const char* text : kTimeTexts) {
    compute("qxTimeStrToHMS", qxTimeStrToHMS, text, whole, whole, whole);
    compute("qxTimeStrToTime", qxTimeStrToTime, text);
    compute("qxTimeTxtToJulian", qxTimeTxtToJulian, text);
    compute("qxTimeTxtDif", qxTimeTxtDif, "8:15", text);
  }
}

}  // namespace

void computeDates() {
  for (const double date : kDates) computeParts(date);
  for (const int32_t year : {-5, 0, 19, 20, 99, 100, 1899, 1900, 2000, 2004, 2100, 9999}) {
    compute("qxIsLeapYear", qxIsLeapYear, year);
    compute("qxYearToDays", qxYearToDays, year);
    for (const int32_t month : {0, 2, 12}) {
      compute("qxYMDtoDate", qxYMDtoDate, year, month, 29, 13, 59, 58);
      compute("qxDateValidate", qxDateValidate, year, month, 29, 13, 59, 58);
      compute("qxYMDToJulian", qxYMDToJulian, year, month, 28);
      compute("qxYMDDif", qxYMDDif, 1999, 12, 31, year, month, 28);
    }
    compute("qxNumToDate", qxNumToDate, year * 10000 + 228);
    compute("qxNumToTime", qxNumToTime, year * 13);
    compute("qxHMSToJulian", qxHMSToJulian, year % 24, year % 60, 59);
    compute("qxHMSDif", qxHMSDif, 9, 30, 0, year % 24, year % 60, 59);
  }
  computeTexts();
}

}  // namespace same_bits
