// Which calendar and clock boundaries fall between bars, and which of them a date axis marks.
#ifndef QUORVEX_CHARTING_DATE_MARKS_H
#define QUORVEX_CHARTING_DATE_MARKS_H

#include <cstdint>

#include "quorvex.h"

namespace qx {

// The bits of a boundary mask.
enum DateBoundary : uint32_t {
  kNewYear = 0x1,
  kNewQuarter = 0x2,
  kNewMonth = 0x4,
  kNewWeek = 0x8,
  kNewDay = 0x10,
  kNewHalfDay = 0x20,
  kNewTwoHours = 0x40,
  kNewHour = 0x80,
  kNewHalfHour = 0x100,
  kNewQuarterHour = 0x200,
  kNewTenMinutes = 0x400,
  kNewFiveMinutes = 0x800,
  kNewMinute = 0x1000
};

// The mask of a bar that has nothing before it.
inline constexpr uint32_t kFirstBarMask = 0x1FF7;

// A date number taken apart.
struct BarDate {
  int64_t day;  // the whole part of the date number
  int32_t year, month, dayOfMonth, hour, minute, weekday;
};

BarDate splitDate(double date);

// The boundaries that fall between a bar and the one before it.
uint32_t boundaryMask(const BarDate& date, const BarDate& previous);

// Widths of label texts in pixels.
struct LabelWidths {
  int32_t month;         // widest full month name, plus 1
  int32_t abbreviation;  // widest abbreviated one, plus 1
  int32_t day;           // " 00"
  int32_t monthAndDay;   // an abbreviation and a day
  int32_t minute;        // ":00 "
};

// What a date axis marks at one bar width.
struct DateMarking {
  uint32_t grid;    // boundaries that get a grid line
  uint32_t labels;  // boundaries that get a label
  int32_t level;    // how labels are worded, 1..5
};

// Pixels for each minute of an intraday series, from its first 100 steps; 0 for all other series.
double pixelsPerMinute(const qxArray& dates, int32_t length, int32_t barWidth);

// Pixels for each calendar day between the first and the last of `length` dates.
double pixelsPerDay(const qxArray& dates, int32_t length, int32_t barWidth);

// Chooses from the density of the bars and, unless they are intraday, their frequency.
DateMarking chooseMarking(double perMinute, double perDay, int32_t frequency,
                          const LabelWidths& widths);

inline constexpr int32_t kDateLabelSize = 96;

// The label of a bar in the words of a level.
void formatDateLabel(const BarDate& date, uint32_t mask, int32_t level,
                     char (&label)[kDateLabelSize]);

}  // namespace qx

#endif  // QUORVEX_CHARTING_DATE_MARKS_H
