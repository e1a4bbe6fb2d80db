#include "core/decimal_text.h"

#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include "tests/support/test_support.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(DecimalText, StopsAtWhatCannotContinueANumber) {
  const struct {
    const char* text;
    double value;
  } cases[] = {
      {"", 0},
      {"abc", 0},
      {".", 0},
      {"-", 0},
      {"+-1", 0},
      {"1", 1},
      {"  12.5", 12.5},
      {"\t-3", -3},
      {"+.5", 0.5},
      {"5.", 5},
      {"1.2.3", 1.2},
      {"1,234", 1},
      {"1e3", 1000},
      {"1E+3x", 1000},
      {"1e", 1},
      {"1e+", 1},
      {"1e-x", 1},
      {"2.5e-1", 0.25},
      {"0x10", 0},
      {"inf", 0},
      {"nan", 0},
      {"1d5", 1},
      {"1 2", 1},
      {"- 1", 0},
      {"007", 7},
      {"0.1", 0.1},
      {"1e23", 1e23},
      {"9007199254740993", 9007199254740992.0},
      {"9007199254740993.0000000000000000001", 9007199254740994.0},
      {"1e400", kInfinity},
      {"-1e400", -kInfinity},
      {"1e-400", 0},
      {"0e99999999999999999999", 0},
      {"1e99999999999999999999", kInfinity},
      {"1e-99999999999999999999", 0},
      {"4.9e-324", 4.9e-324},
      {"2.4e-324", 0},
      {"1.7976931348623159e308", kInfinity},
      {"1.7976931348623157e308", 1.7976931348623157e308},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(qx::decimalFromText(c.text), c.value) << "\"" << c.text << "\"";
  }
  EXPECT_TRUE(std::signbit(qx::decimalFromText("-0")));
  EXPECT_TRUE(std::signbit(qx::decimalFromText("-1e-400")));
  EXPECT_EQ(qx::decimalFromText("0." + std::string(400, '0') + "1"), 0.0);
  EXPECT_EQ(qx::decimalFromText("0." + std::string(400, '0') + "1e402"), 10.0);
  EXPECT_EQ(qx::decimalFromText("0." + std::string(400, '0') + "1e800"), kInfinity);
  EXPECT_EQ(qx::decimalFromText("1" + std::string(400, '0')), kInfinity);
  EXPECT_EQ(qx::decimalFromText("1" + std::string(400, '0') + "e-400"), 1.0);
  EXPECT_EQ(qx::decimalFromText("1" + std::string(400, '0') + "e-800"), 0.0);
}

TEST(DecimalText, RoundsAsTheStandardConversion) {
  std::setlocale(LC_NUMERIC, "C");
  std::mt19937_64 random(20000103);
  const auto pick = [&](uint64_t n) { return random() % n; };
  for (int i = 0; i < 200000; ++i) {
    std::string text = pick(3) == 0 ? "-" : "";
    for (uint64_t n = pick(20); n > 0; --n) text += static_cast<char>('0' + pick(10));
    if (pick(4) != 0) text += '.';
    for (uint64_t n = pick(8); n > 0; --n) text += static_cast<char>('0' + pick(10));
    if (pick(4) == 0) text += "e" + std::to_string(static_cast<int>(pick(700)) - 350);
    const double expected = std::strtod(text.c_str(), nullptr);
    ASSERT_EQ(qx::decimalFromText(text), expected) << text;
  }
}

TEST(DecimalText, IntegersSaturate) {
  EXPECT_EQ(qx::integerFromText(" -12abc"), -12);
  EXPECT_EQ(qx::integerFromText("+7.9"), 7);
  EXPECT_EQ(qx::integerFromText("x"), 0);
  EXPECT_EQ(qx::integerFromText("2147483647"), INT32_MAX);
  EXPECT_EQ(qx::integerFromText("2147483648"), INT32_MAX);
  EXPECT_EQ(qx::integerFromText("-2147483648"), INT32_MIN);
  EXPECT_EQ(qx::integerFromText("-99999999999999999999999"), INT32_MIN);
}

}  // namespace
