// Optimisation variables: counting, choosing and printing combinations of parameters.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "core/number_text.h"
#include "core/numeric.h"
#include "quorvex.h"

namespace qx {
namespace {

constexpr uint64_t kMostCombinations = std::numeric_limits<uint32_t>::max();
constexpr int32_t kDigits = 8;  // most decimals of a printed value

// The places that every value of a variable is printed with.
struct Places {
  int32_t whole;
  int32_t decimals;
};

Places placesOf(const qxOptVar& variable) {
  const double largest = std::max(std::fabs(variable.from), std::fabs(variable.to));
  const NumberText text = decimalText(largest + std::fabs(variable.step), kDigits);
  const char* const point = std::strchr(text.text, '.');
  const char* end = point + 1 + kDigits;
  while (end[-1] == '0') --end;
  const int32_t sign = variable.from < 0 || variable.to < 0 ? 1 : 0;
  return {static_cast<int32_t>(point - text.text) + sign, static_cast<int32_t>(end - point - 1)};
}

// The current value, padded to its variable's places. One beyond the variable's range is written
// out in full.
struct ValueText {
  NumberText number;
  int64_t blanks, length;
};

ValueText valueText(const qxOptVar& variable) {
  const Places places = placesOf(variable);
  ValueText result;
  result.number = decimalText(variable.value, places.decimals);
  result.length = static_cast<int64_t>(std::strlen(result.number.text));
  const int32_t tail = places.decimals > 0 ? places.decimals + 1 : 0;
  result.blanks = std::max<int64_t>(0, places.whole + tail - result.length);
  return result;
}

}  // namespace
}  // namespace qx

uint32_t qxOptVarCount(qxOptVar* vars, int32_t n) {
  if (vars == nullptr) return 0;
  uint64_t product = 1;
  for (int32_t i = 0; i < n; ++i) {
    const double steps = (vars[i].to - vars[i].from) / vars[i].step + 1;
    vars[i].count = vars[i].step != 0 ? qx::truncateToInt32(steps) : 1;
    // 0 stays 0, so one empty variable leaves no combination whatever the others hold.
    product = vars[i].count < 1 ? 0 : product * static_cast<uint64_t>(vars[i].count);
    product = std::min(product, qx::kMostCombinations);
  }
  return static_cast<uint32_t>(product);
}

int32_t qxOptVarValue(qxOptVar* vars, int32_t n, uint32_t k) {
  const uint32_t combinations = qxOptVarCount(vars, n);
  if (k < 1 || k > combinations) return QX_ERR_INVALID_PARM;
  uint64_t left = k - 1;  // (k - 1) / stride
  for (int32_t i = 0; i < n; ++i) {
    const auto count = static_cast<uint64_t>(vars[i].count);
    vars[i].value = vars[i].from + vars[i].step * static_cast<double>(left % count);
    left /= count;
  }
  return QX_SUCCESS;
}

int32_t qxOptVarString(const qxOptVar* vars, int32_t n, const char* separator, char* out) {
  if (vars == nullptr || separator == nullptr || out == nullptr) return QX_ERR_INVALID_PARM;
  const size_t separatorLength = std::strlen(separator);
  for (int32_t i = 0; i < n; ++i) {
    const qx::ValueText value = qx::valueText(vars[i]);
    std::memset(out, ' ', static_cast<size_t>(value.blanks));
    out += value.blanks;
    std::memcpy(out, value.number.text, static_cast<size_t>(value.length));
    out += value.length;
    if (i == n - 1) break;
    std::memcpy(out, separator, separatorLength);
    out += separatorLength;
  }
  *out = '\0';
  return QX_SUCCESS;
}

int32_t qxOptVarStringLen(const qxOptVar* vars, int32_t n, const char* separator) {
  if (vars == nullptr || separator == nullptr) return 0;
  int64_t length = 1;
  for (int32_t i = 0; i < n; ++i) {
    const qx::ValueText value = qx::valueText(vars[i]);
    length += value.blanks + value.length;
  }
  if (n > 1) length += static_cast<int64_t>(std::strlen(separator)) * (int64_t{n} - 1);
  return qx::saturateToInt32(length);
}
