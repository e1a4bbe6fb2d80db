// Numbers as text in fixed notation, the same on every platform and under every C locale.
#ifndef QUORVEX_CORE_NUMBER_TEXT_H
#define QUORVEX_CORE_NUMBER_TEXT_H

#include <cstdint>

namespace qx {

// Room for every double in fixed notation.
struct NumberText {
  char text[352];
};

inline constexpr int32_t kMostTextDecimals = 9;

// Rounded to `decimals` (0 to kMostTextDecimals) as "%.*f" does. Not a number is "nan" with either
// sign.
NumberText fixedText(double value, int32_t decimals);

NumberText wholeText(int64_t value);

// The whole part truncated toward zero and, with `digits` above 0 (at most kMostTextDecimals), a
// point and as many decimals of qxDecimals: the text of "%li.%02li" for 2 digits. The sign of a
// value between -1 and 0 is lost.
NumberText decimalText(double value, int32_t digits);

// Money in reports: the whole part and two decimals.
inline NumberText moneyText(double value) {
  return decimalText(value, 2);
}

}  // namespace qx

#endif  // QUORVEX_CORE_NUMBER_TEXT_H
