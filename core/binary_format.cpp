// Microsoft Binary Format singles, the 4-byte floats of older price-data files.
#include <cstdint>
#include <cstring>

#include "quorvex.h"

// Both conversions work on bytes, modulo 256.
// Kept: exponents wrap without a range check, so that converted files match byte for byte.

int32_t qxIEEEtoMS(const void* source, void* destination) {
  if (source == nullptr || destination == nullptr) return QX_ERR_INVALID_PARM;
  uint8_t b[4];
  float value;
  std::memcpy(b, source, sizeof b);
  std::memcpy(&value, source, sizeof value);
  if (value == 0.0f) {
    std::memset(destination, 0, sizeof b);
    return QX_SUCCESS;
  }
  const uint8_t sign = b[3] & 0x80;
  const uint8_t exponent = static_cast<uint8_t>((b[3] << 1) + (b[2] > 127 ? 1 : 0));
  b[2] = static_cast<uint8_t>((b[2] & 0x7F) + sign);
  b[3] = static_cast<uint8_t>(exponent + 2);
  std::memcpy(destination, b, sizeof b);
  return QX_SUCCESS;
}

int32_t qxMStoIEEE(const void* source, void* destination) {
  if (source == nullptr || destination == nullptr) return QX_ERR_INVALID_PARM;
  uint8_t b[4];
  std::memcpy(b, source, sizeof b);
  if (b[3] == 0) {
    std::memset(destination, 0, sizeof b);
    return QX_SUCCESS;
  }
  const uint8_t exponent = static_cast<uint8_t>(b[3] - 2);
  const uint8_t sign = b[2] & 0x80;
  b[2] = static_cast<uint8_t>(b[2] - sign - ((exponent & 1) << 7));
  b[3] = static_cast<uint8_t>((exponent >> 1) + sign);
  std::memcpy(destination, b, sizeof b);
  return QX_SUCCESS;
}
