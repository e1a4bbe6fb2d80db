#include "core/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "core/numeric.h"
#include "quorvex.h"

namespace qx {

NumberText fixedText(double value, int32_t decimals) {
  NumberText number;
  char* const end = number.text + sizeof number.text - 1;
  // The sign of a NaN says nothing and is not the same on every platform.
  const double shown = std::isnan(value) ? std::fabs(value) : value;
  const auto written = std::to_chars(number.text, end, shown, std::chars_format::fixed,
                                     std::clamp(decimals, 0, kMostTextDecimals));
  *written.ptr = '\0';
  return number;
}

NumberText wholeText(int64_t value) {
  NumberText number;
  *std::to_chars(number.text, number.text + sizeof number.text - 1, value).ptr = '\0';
  return number;
}

NumberText decimalText(double value, int32_t digits) {
  NumberText number = wholeText(truncateToInt64(value));
  const int32_t count = std::clamp(digits, 0, kMostTextDecimals);
  if (count == 0) return number;
  char* at = std::find(number.text, number.text + sizeof number.text, '\0');
  *at = '.';
  at[count + 1] = '\0';
  int32_t decimals = qxDecimals(value, count);
  for (char* digit = at + count; digit > at; --digit, decimals /= 10) {
    *digit = static_cast<char>('0' + decimals % 10);
  }
  return number;
}

}  // namespace qx
