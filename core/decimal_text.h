// Numbers read from decimal text, whatever the C locale says.
#ifndef QUORVEX_CORE_DECIMAL_TEXT_H
#define QUORVEX_CORE_DECIMAL_TEXT_H

#include <cstdint>
#include <string_view>

namespace qx {

// The number at the start of a text: white space, sign, digits, point, exponent, up to the first
// character that cannot continue it. Rounded to the nearest double; beyond the range of doubles an
// infinity or 0. A text that is no number is 0; hexadecimal, "inf" and "nan" are no numbers.
double decimalFromText(std::string_view text);

// The integer at the start of a text: white space, sign, digits. Saturates; no integer is 0.
int32_t integerFromText(std::string_view text);

}  // namespace qx

#endif  // QUORVEX_CORE_DECIMAL_TEXT_H
