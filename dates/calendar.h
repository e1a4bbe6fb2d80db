// Calendar facts that the date sources share.
#ifndef QUORVEX_DATES_CALENDAR_H
#define QUORVEX_DATES_CALENDAR_H

#include <cstdint>

namespace qx {

// The two-digit-year rule: a year below 100 (negative ones included) lies in 2000 + year when it is
// below the cutoff, else in 1900 + year.
int64_t expandYear(int64_t year);

}  // namespace qx

#endif  // QUORVEX_DATES_CALENDAR_H
