// Date and time text read from a span of characters, for sources that cut fields out of lines.
#ifndef QUORVEX_DATES_DATE_STRINGS_H
#define QUORVEX_DATES_DATE_STRINGS_H

#include <cstdint>
#include <string_view>

namespace qx {

// The date number of a text as qxDateStrToDate reads it.
double dateFromText(std::string_view text, int32_t order);

// The time fraction of a text as qxTimeStrToTime reads it.
double timeFromText(std::string_view text);

}  // namespace qx

#endif  // QUORVEX_DATES_DATE_STRINGS_H
