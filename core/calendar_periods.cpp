// Where days, weeks, months, quarters and years begin in a series of dates.
#include "core/calendar_periods.h"

#include <algorithm>

#include "core/numeric.h"
#include "quorvex.h"

namespace qx {
namespace {

constexpr uint64_t kDaysPerWeek = 7;

bool startsWeek(const CalendarDay& before, const CalendarDay& now) {
  if (now.weekday < before.weekday) return true;
  // Whole days may be as far apart as 64 bits go: their distance fits an unsigned number only.
  const auto [earlier, later] = std::minmax(now.day, before.day);
  return static_cast<uint64_t>(later) - static_cast<uint64_t>(earlier) >= kDaysPerWeek;
}

bool startsQuarter(const CalendarDay& before, const CalendarDay& now) {
  if (now.year != before.year) return true;
  for (int32_t first : {4, 7, 10}) {
    if (before.month < first && now.month >= first) return true;
  }
  return false;
}

}  // namespace

bool isCalendarFrequency(int32_t frequency) {
  return frequency >= QX_FREQ_DAILY && frequency <= QX_FREQ_YEARLY;
}

CalendarDay calendarDay(int32_t frequency, double date) {
  CalendarDay result;
  result.day = truncateToInt64(date);
  if (frequency == QX_FREQ_WEEKLY) result.weekday = qxDayOfWeek(date);
  if (frequency > QX_FREQ_WEEKLY) {
    qxDateToYMD(date, &result.year, &result.month, nullptr, nullptr, nullptr, nullptr);
  }
  return result;
}

bool startsPeriod(int32_t frequency, const CalendarDay& before, const CalendarDay& now) {
  switch (frequency) {
    case QX_FREQ_DAILY:
      return now.day != before.day;
    case QX_FREQ_WEEKLY:
      return startsWeek(before, now);
    case QX_FREQ_MONTHLY:
      return now.month != before.month || now.year != before.year;
    case QX_FREQ_QUARTERLY:
      return startsQuarter(before, now);
    default:
      return now.year != before.year;
  }
}

}  // namespace qx
