// Numbers printed under a caller's conversion such as "-8.2f", without handing it to the C library:
// the same text on every platform and under every C locale, whatever the conversion holds.
#ifndef QUORVEX_CORE_NUMBER_CONVERSION_H
#define QUORVEX_CORE_NUMBER_CONVERSION_H

#include <cstdint>
#include <cstdio>
#include <string_view>

namespace qx {

// Width and precision are cut to this.
inline constexpr int32_t kMostConversionWidth = 4096;

struct Conversion {
  bool left;       // "-"
  bool plus;       // "+"
  bool blank;      // " "
  bool zeros;      // "0"
  bool alternate;  // "#"
  int32_t width;
  int32_t precision;  // -1 when there is none
};

// The flags, width and precision at the start of a conversion without its percent sign. Everything
// after them is ignored: length modifiers, "*" and what is no part of a conversion.
Conversion parseConversion(std::string_view text);

// As "%f" prints. Not a number is "nan" with either sign.
void printReal(std::FILE* file, const Conversion& conversion, double value);

// As "%lli" prints.
void printInteger(std::FILE* file, const Conversion& conversion, int64_t value);

}  // namespace qx

#endif  // QUORVEX_CORE_NUMBER_CONVERSION_H
