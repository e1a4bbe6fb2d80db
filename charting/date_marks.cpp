// Boundary masks, the choice of what a date axis marks, and the words of its labels.
#include "charting/date_marks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "charting/graph_state.h"
#include "core/numeric.h"

namespace qx {
namespace {

constexpr int32_t kSampledSteps = 100;
constexpr double kMinutesPerDay = 1440.0;

// The clock boundaries between two bars of one day, from the coarsest down.
uint32_t clockMask(const BarDate& date, const BarDate& previous) {
  if (date.hour / 12 != previous.hour / 12) return 0x1FE0;
  if (date.hour / 2 != previous.hour / 2) return 0x1FC0;
  if (date.hour != previous.hour) return 0x1F80;
  if (date.minute / 30 != previous.minute / 30) return 0x1F00;
  // Kept: a quarter hour leaves out the ten-minute bit, since it is no ten-minute boundary.
  if (date.minute / 15 != previous.minute / 15) return 0x1A00;
  if (date.minute / 10 != previous.minute / 10) return 0x1C00;
  if (date.minute / 5 != previous.minute / 5) return 0x1800;
  if (date.minute != previous.minute) return 0x1000;
  return 0;
}

DateMarking intradayMarking(double perMinute, const LabelWidths& widths) {
  static constexpr struct {
    int32_t minutes;
    DateMarking marking;
  } kRows[] = {
      {1, {kNewFiveMinutes, kNewMinute, 1}},     {5, {kNewFiveMinutes, kNewFiveMinutes, 1}},
      {10, {kNewTenMinutes, kNewTenMinutes, 1}}, {15, {kNewQuarterHour, kNewQuarterHour, 1}},
      {30, {kNewHalfHour, kNewHalfHour, 1}},     {60, {kNewHour, kNewHour, 1}},
      {120, {kNewTwoHours, kNewTwoHours, 1}},    {720, {0, kNewHalfDay, 1}}};
  for (const auto& row : kRows) {
    if (row.minutes * perMinute > widths.minute) return row.marking;
  }
  return {kNewDay, 0, 1};
}

DateMarking dailyMarking(double perDay, const LabelWidths& widths) {
  if (perDay > widths.day) return {kNewWeek, kNewDay, 2};
  if (7 * perDay > widths.monthAndDay) return {kNewWeek, kNewWeek | kNewMonth, 2};
  if (30 * perDay > widths.month) return {kNewMonth, kNewMonth, 3};
  if (30 * perDay > widths.abbreviation) return {kNewMonth, kNewMonth, 4};
  if (90 * perDay > widths.abbreviation) return {kNewMonth, kNewQuarter, 4};
  return {kNewMonth, kNewYear, 5};
}

// Hours on a 12-hour clock; noon stays 12.
int32_t clockHour(int32_t hour) {
  if (hour > 12) return hour - 12;
  return hour == 0 ? 12 : hour;
}

}  // namespace

BarDate splitDate(double date) {
  BarDate parts = {};
  parts.day = truncateToInt64(date);
  qxDateToYMD(date, &parts.year, &parts.month, &parts.dayOfMonth, &parts.hour, &parts.minute,
              nullptr);
  parts.weekday = qxDayOfWeek(date);
  return parts;
}

uint32_t boundaryMask(const BarDate& date, const BarDate& previous) {
  uint32_t mask = date.day != previous.day ? 0x1FF0 : clockMask(date, previous);
  if (date.year != previous.year) {
    mask |= kNewYear | kNewQuarter | kNewMonth;
  } else if (date.month != previous.month) {
    mask |= (date.month - 1) % 3 == 0 ? kNewQuarter | kNewMonth : kNewMonth;
  }
  if (date.weekday < previous.weekday) mask |= kNewWeek;
  return mask;
}

double pixelsPerMinute(const qxArray& dates, int32_t length, int32_t barWidth) {
  double sum = 0.0;
  int32_t count = 0;
  for (int32_t i = 1; i < length && i <= kSampledSteps; ++i) {
    const double step = dates.data[i] - dates.data[i - 1];
    if (!(step >= 0.0 && step < 1.0)) continue;
    sum += step;
    ++count;
  }
  return count == 0 || sum == 0.0 ? 0.0 : barWidth / (sum * kMinutesPerDay / count);
}

double pixelsPerDay(const qxArray& dates, int32_t length, int32_t barWidth) {
  return barWidth / ((dates.data[length - 1] - dates.data[0] + 1.0) / length);
}

DateMarking chooseMarking(double perMinute, double perDay, int32_t frequency,
                          const LabelWidths& widths) {
  if (perMinute != 0.0) return intradayMarking(perMinute, widths);
  switch (frequency) {
    case QX_FREQ_WEEKLY:
      return {kNewMonth, kNewWeek, 2};
    case QX_FREQ_MONTHLY:
      return {kNewQuarter, kNewMonth, 4};
    case QX_FREQ_QUARTERLY:
      return {kNewYear, kNewQuarter, 4};
    case QX_FREQ_YEARLY:
      return {kNewYear, kNewYear, 5};
    default:
      return dailyMarking(perDay, widths);
  }
}

void formatDateLabel(const BarDate& date, uint32_t mask, int32_t level,
                     char (&label)[kDateLabelSize]) {
  const MonthNames& names = monthNames();
  const int32_t month = std::clamp(date.month, 1, 12) - 1;
  const char* full = names.full[month];
  const char* abbreviated = names.abbreviated[month];
  switch (level) {
    case 1:
      if ((mask & kNewDay) != 0) {
        std::snprintf(label, sizeof label, "%s %i %i:%02i ", abbreviated, date.dayOfMonth,
                      clockHour(date.hour), date.minute);
      } else if ((mask & kNewHour) != 0) {
        std::snprintf(label, sizeof label, "%i:%02i ", clockHour(date.hour), date.minute);
      } else {
        std::snprintf(label, sizeof label, ":%02i", date.minute);
      }
      break;
    case 2:
      if ((mask & kNewMonth) != 0) {
        std::snprintf(label, sizeof label, "%s", abbreviated);
      } else {
        std::snprintf(label, sizeof label, "%02i", date.dayOfMonth);
      }
      break;
    case 3:
      if ((mask & kNewYear) != 0) {
        std::snprintf(label, sizeof label, "%s %i", abbreviated, date.year);
      } else {
        std::snprintf(label, sizeof label, "%s", full);
      }
      break;
    case 4:
      if ((mask & kNewYear) != 0) {
        std::snprintf(label, sizeof label, "%i", date.year);
      } else {
        std::snprintf(label, sizeof label, "%s", abbreviated);
      }
      break;
    default:
      std::snprintf(label, sizeof label, "%i", date.year);
      break;
  }
}

}  // namespace qx
