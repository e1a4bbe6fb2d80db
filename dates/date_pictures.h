// The pictures in which the library prints dates itself: those of the default date order.
#ifndef QUORVEX_DATES_DATE_PICTURES_H
#define QUORVEX_DATES_DATE_PICTURES_H

#include <cstddef>

namespace qx {

// Room for any date number formatted with one of these pictures, terminator included.
inline constexpr size_t kDateTextSize = 64;

const char* datePicture();           // such as "yyyy/mm/dd"
const char* shortDatePicture();      // such as "yy/mm/dd"
const char* dateTimePicture();       // such as "yyyy/mm/dd hh:nn:ss"
const char* shortDateTimePicture();  // such as "yy/mm/dd hh:nn:ss"

}  // namespace qx

#endif  // QUORVEX_DATES_DATE_PICTURES_H
