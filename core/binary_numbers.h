// Numbers in the bytes of binary price files, little-endian.
#ifndef QUORVEX_CORE_BINARY_NUMBERS_H
#define QUORVEX_CORE_BINARY_NUMBERS_H

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "core/numeric.h"
#include "quorvex.h"

namespace qx {

inline uint16_t unsigned16(const unsigned char* bytes) {
  return static_cast<uint16_t>(bytes[0] | bytes[1] << 8);
}
inline int16_t signed16(const unsigned char* bytes) {
  return static_cast<int16_t>(unsigned16(bytes));
}
inline uint32_t unsigned32(const unsigned char* bytes) {
  return unsigned16(bytes) | static_cast<uint32_t>(unsigned16(bytes + 2)) << 16;
}

// A Microsoft Binary Format single.
inline float mbfSingle(const unsigned char* bytes) {
  float value;
  qxMStoIEEE(bytes, &value);
  return value;
}

// Its whole part; what is not finite counts as 0.
inline int32_t wholeMbf(const unsigned char* bytes) {
  const float value = mbfSingle(bytes);
  return std::isfinite(value) ? truncateToInt32(value) : 0;
}

}  // namespace qx

#endif  // QUORVEX_CORE_BINARY_NUMBERS_H
