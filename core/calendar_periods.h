// Where days, weeks, months, quarters and years begin in a series of dates.
#ifndef QUORVEX_CORE_CALENDAR_PERIODS_H
#define QUORVEX_CORE_CALENDAR_PERIODS_H

#include <cstdint>

namespace qx {

// What tells one period from the next. The weekday serves weekly periods alone, month and year the
// longer ones; what a frequency does not need stays 0.
struct CalendarDay {
  int64_t day = 0;      // whole days of the date number
  int32_t weekday = 0;  // 0 Monday .. 6 Sunday
  int32_t month = 0;
  int32_t year = 0;
};

// True for the daily, weekly, monthly, quarterly and yearly frequency codes.
bool isCalendarFrequency(int32_t frequency);

CalendarDay calendarDay(int32_t frequency, double date);

// True when a bar dated `now` begins a new period after a bar dated `before`.
bool startsPeriod(int32_t frequency, const CalendarDay& before, const CalendarDay& now);

}  // namespace qx

#endif  // QUORVEX_CORE_CALENDAR_PERIODS_H
