#include "core/decimal_text.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "core/ascii.h"

namespace qx {
namespace {

constexpr uint64_t kExactMantissa = uint64_t{1} << 53;  // every integer up to here is a double
constexpr int64_t kExactPower = 22;                     // 10^22 is the last power of ten exact
constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                              1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                              1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int64_t kMostDigits = 19;  // digits that always fit into 64 bits
constexpr int64_t kExponentBound = 1'000'000'000'000;

unsigned digitValue(char c) {
  return static_cast<unsigned>(static_cast<unsigned char>(c)) - '0';
}

// The text after white space and a sign.
struct Signed {
  const char* at;
  bool negative;
};

Signed skipSign(const char* at, const char* end) {
  while (at != end && isWhiteSpace(*at)) ++at;
  const bool negative = at != end && *at == '-';
  if (at != end && (*at == '-' || *at == '+')) ++at;
  return {at, negative};
}

// The exponent that follows a mantissa, 0 when there is none; moves `at` behind it.
int64_t readExponent(const char*& at, const char* end) {
  if (at == end || (*at != 'e' && *at != 'E')) return 0;
  const char* p = at + 1;
  const bool negative = p != end && *p == '-';
  if (p != end && (*p == '-' || *p == '+')) ++p;
  if (p == end || !isDigit(*p)) return 0;
  int64_t value = 0;
  for (; p != end && isDigit(*p); ++p) {
    value = std::min(value * 10 + digitValue(*p), kExponentBound);
  }
  at = p;
  return negative ? -value : value;
}

// Whether a mantissa with this exponent, known to lie outside the doubles, is above them and not
// too near zero: decided by the power of ten of its first significant digit.
bool isAboveDoubles(const char* mantissa, const char* end, int64_t exponent) {
  const char* const point = std::find_if_not(mantissa, end, isDigit);
  const char* first = mantissa;
  while (first != end && (*first == '0' || first == point)) ++first;
  return exponent + (point - first) > 0;
}

double convertExactly(const char* first, const char* last, int64_t exponent) {
  double value = 0.0;
  const auto result = std::from_chars(first, last, value);
  if (result.ec != std::errc::result_out_of_range) return value;
  return isAboveDoubles(first, last, exponent) ? std::numeric_limits<double>::infinity() : 0.0;
}

}  // namespace

double decimalFromText(std::string_view text) {
  const char* const end = text.data() + text.size();
  const auto [first, negative] = skipSign(text.data(), end);
  const char* at = first;
  uint64_t mantissa = 0;
  for (; at != end && digitValue(*at) <= 9; ++at) mantissa = mantissa * 10 + digitValue(*at);
  int64_t digits = at - first;
  int64_t scale = 0;  // digits after the point
  if (at != end && *at == '.') {
    const char* const fraction = ++at;
    for (; at != end && digitValue(*at) <= 9; ++at) mantissa = mantissa * 10 + digitValue(*at);
    scale = at - fraction;
    digits += scale;
  }
  if (digits == 0) return 0.0;
  const int64_t exponent = readExponent(at, end);
  const int64_t power = exponent - scale;

  double value;
  if (digits <= kMostDigits && mantissa <= kExactMantissa && power >= -kExactPower &&
      power <= kExactPower) {
    // Both operands are exact, so the one operation rounds as the exact conversion would.
    value = static_cast<double>(static_cast<int64_t>(mantissa));
    value = power < 0 ? value / kPowers[-power] : value * kPowers[power];
  } else {
    value = convertExactly(first, at, exponent);
  }
  return negative ? -value : value;
}

int32_t integerFromText(std::string_view text) {
  const char* const end = text.data() + text.size();
  auto [at, negative] = skipSign(text.data(), end);
  constexpr int64_t kBound = int64_t{1} << 31;
  int64_t value = 0;
  for (; at != end && isDigit(*at); ++at) value = std::min(value * 10 + digitValue(*at), kBound);
  return static_cast<int32_t>(negative ? -value : std::min(value, kBound - 1));
}

}  // namespace qx
