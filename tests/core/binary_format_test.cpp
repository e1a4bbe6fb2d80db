#include <array>
#include <cstring>

#include "tests/support/test_support.h"

namespace {

using Bytes = std::array<uint8_t, 4>;

Bytes toMs(Bytes ieee) {
  EXPECT_EQ(qxIEEEtoMS(ieee.data(), ieee.data()), 0);  // in place
  return ieee;
}

Bytes toIeee(Bytes ms) {
  Bytes ieee{};
  EXPECT_EQ(qxMStoIEEE(ms.data(), ieee.data()), 0);
  return ieee;
}

TEST(BinaryFormat, WorkedValuesConvertBothWays) {
  const std::pair<Bytes, Bytes> pairs[] = {
      {{0, 0, 0x80, 0x3F}, {0, 0, 0, 0x81}},                  // 1
      {{0, 0, 0x80, 0xBF}, {0, 0, 0x80, 0x81}},               // -1
      {{0, 0, 0, 0x3F}, {0, 0, 0, 0x80}},                     // 0.5
      {{0, 0, 0x20, 0x41}, {0, 0, 0x20, 0x84}},               // 10
      {{0x79, 0xE9, 0xF6, 0xC2}, {0x79, 0xE9, 0xF6, 0x87}}};  // -123.456
  for (const auto& [ieee, ms] : pairs) {
    EXPECT_EQ(toMs(ieee), ms);
    EXPECT_EQ(toIeee(ms), ieee);
  }
}

TEST(BinaryFormat, ZeroesAndWrappingExponents) {
  const Bytes zero{};
  EXPECT_EQ(toMs({0, 0, 0, 0x80}), zero) << "negative zero";
  EXPECT_EQ(toIeee({0x12, 0x34, 0x96, 0}), zero) << "zero exponent byte";
  EXPECT_EQ(toMs({0, 0, 0x80, 0x7E})[3], 0xFF) << "exponent field 253";
  EXPECT_EQ(toMs({0, 0, 0, 0x7F})[3], 0x00) << "exponent field 254";
  EXPECT_EQ(toMs({0, 0, 0x80, 0x7F})[3], 0x01) << "infinity";
  EXPECT_EQ(toMs({1, 0, 0, 0}), (Bytes{1, 0, 0, 2})) << "denormal";
  EXPECT_EQ(toIeee({0, 0, 0, 1}), (Bytes{0, 0, 0x80, 0x7F})) << "wraps to an infinity";
  EXPECT_EQ(toIeee({0, 0, 0, 2}), zero) << "zero as some files store it";
  Bytes bytes{};
  for (auto* convert : {qxIEEEtoMS, qxMStoIEEE}) {
    qxtest::expectNullsRefused("convert", convert, QX_ERR_INVALID_PARM, bytes.data(), bytes.data());
  }
}

TEST(Status, TextsAndTheirLengths) {
  const char* const texts[] = {"Sucessfull",     "Invalid Parm",     "File Open", "Malloc",
                               "File Read",      "File Write",       "File Seek", "File Exists",
                               "File Not Found", "Record Not Found", "Unknown"};
  char buffer[17];
  for (int32_t code = 0; code >= -10; --code) {
    EXPECT_EQ(qxErrDesc(code, buffer), static_cast<int32_t>(std::strlen(texts[-code])));
    EXPECT_STREQ(buffer, texts[-code]);
  }
  for (int32_t code : {5, -11, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(qxErrDesc(code, buffer), 7);
    EXPECT_STREQ(buffer, "Unknown");
  }
}

}  // namespace
