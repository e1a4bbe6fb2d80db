#include "core/number_conversion.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "core/ascii.h"

namespace qx {
namespace {

constexpr int32_t kMostDecimals = 1074;  // no double has more
constexpr int32_t kUsualDecimals = 6;

int32_t takeNumber(std::string_view* text) {
  int32_t value = 0;
  for (; !text->empty() && isDigit(text->front()); text->remove_prefix(1)) {
    value = std::min(value * 10 + (text->front() - '0'), kMostConversionWidth);
  }
  return value;
}

// What is printed of a number: its sign, zeros, digits, more zeros.
struct NumberParts {
  char sign;  // 0 for none
  int32_t leadingZeros;
  std::string_view digits;
  int32_t trailingZeros;
};

char signOf(const Conversion& conversion, bool negative) {
  return negative ? '-' : conversion.plus ? '+' : conversion.blank ? ' ' : '\0';
}

void repeat(std::FILE* file, char c, int64_t count) {
  for (; count > 0; --count) std::fputc(c, file);
}

void printParts(std::FILE* file, const Conversion& conversion, const NumberParts& parts,
                bool padWithZeros) {
  const int64_t length = (parts.sign != 0 ? 1 : 0) + parts.leadingZeros +
                         static_cast<int64_t>(parts.digits.size()) + parts.trailingZeros;
  const int64_t padding = conversion.width - length;
  const bool zeros = padWithZeros && conversion.zeros && !conversion.left;
  if (!zeros && !conversion.left) repeat(file, ' ', padding);
  if (parts.sign != 0) std::fputc(parts.sign, file);
  if (zeros) repeat(file, '0', padding);
  repeat(file, '0', parts.leadingZeros);
  std::fwrite(parts.digits.data(), 1, parts.digits.size(), file);
  repeat(file, '0', parts.trailingZeros);
  if (conversion.left) repeat(file, ' ', padding);
}

}  // namespace

Conversion parseConversion(std::string_view text) {
  Conversion conversion = {};
  for (; !text.empty(); text.remove_prefix(1)) {
    const char c = text.front();
    if (c == '-') {
      conversion.left = true;
    } else if (c == '+') {
      conversion.plus = true;
    } else if (c == ' ') {
      conversion.blank = true;
    } else if (c == '0') {
      conversion.zeros = true;
    } else if (c == '#') {
      conversion.alternate = true;
    } else {
      break;
    }
  }
  conversion.width = takeNumber(&text);
  conversion.precision = -1;
  if (!text.empty() && text.front() == '.') {
    text.remove_prefix(1);
    conversion.precision = takeNumber(&text);
  }
  return conversion;
}

void printReal(std::FILE* file, const Conversion& conversion, double value) {
  char digits[1500];  // 309 before the point, kMostDecimals after it
  const int32_t precision = conversion.precision < 0 ? kUsualDecimals : conversion.precision;
  const int32_t decimals = std::min(precision, kMostDecimals);
  char* end = std::to_chars(digits, digits + sizeof digits - 1, std::fabs(value),
                            std::chars_format::fixed, decimals)
                  .ptr;
  const bool finite = std::isfinite(value);
  if (finite && precision == 0 && conversion.alternate) *end++ = '.';
  const bool negative = std::signbit(value) && !std::isnan(value);
  const NumberParts parts = {signOf(conversion, negative), 0,
                             std::string_view(digits, static_cast<size_t>(end - digits)),
                             finite ? precision - decimals : 0};
  printParts(file, conversion, parts, finite);
}

void printInteger(std::FILE* file, const Conversion& conversion, int64_t value) {
  char digits[24];
  const auto unsignedValue = static_cast<uint64_t>(value);
  const uint64_t magnitude = value < 0 ? 0 - unsignedValue : unsignedValue;
  const char* const end = std::to_chars(digits, digits + sizeof digits, magnitude).ptr;
  auto count = static_cast<int32_t>(end - digits);
  if (value == 0 && conversion.precision == 0) count = 0;
  const NumberParts parts = {signOf(conversion, value < 0),
                             std::max(conversion.precision - count, 0),
                             std::string_view(digits, static_cast<size_t>(count)), 0};
  printParts(file, conversion, parts, conversion.precision < 0);
}

}  // namespace qx
