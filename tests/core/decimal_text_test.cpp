#include "core/decimal_text.h"

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

void expectValue(double value, std::initializer_list<std::string> texts) {
  for (const std::string& text : texts) EXPECT_EQ(qx::decimalFromText(text), value) << text;
}

TEST(DecimalText, StopsAtWhatCannotContinueANumber) {
  const std::string zeros(400, '0');
  expectValue(0, {"", "abc", ".", "-", "+-1", "0x10", "inf", "nan", "- 1", "1e-400", "2.4e-324",
                  "0e99999999999999999999", "1e-99999999999999999999", "0." + zeros + "1",
                  "1" + zeros + "e-800"});
  expectValue(1, {"1", "1,234", "1e", "1e+", "1e-x", "1d5", "1 2", "1" + zeros + "e-400"});
  expectValue(kInfinity, {"1e400", "1e99999999999999999999", "1.7976931348623159e308",
                          "0." + zeros + "1e800", "1" + zeros});
  const std::pair<const char*, double> cases[] = {
      {"  12.5", 12.5}, {"\t-3", -3},           {"+.5", 0.5},          {"5.", 5},  {"1.2.3", 1.2},
      {"1e3", 1000},    {"1E+3x", 1000},        {"2.5e-1", 0.25},      {"007", 7}, {"0.1", 0.1},
      {"1e23", 1e23},   {"-1e400", -kInfinity}, {"4.9e-324", 4.9e-324}};
  for (const auto& [text, value] : cases) EXPECT_EQ(qx::decimalFromText(text), value) << text;
  expectValue(9007199254740992.0, {"9007199254740993"});
  expectValue(9007199254740994.0, {"9007199254740993.0000000000000000001"});
  expectValue(1.7976931348623157e308, {"1.7976931348623157e308"});
  expectValue(10, {"0." + zeros + "1e402"});
  EXPECT_TRUE(std::signbit(qx::decimalFromText("-0")));
  EXPECT_TRUE(std::signbit(qx::decimalFromText("-1e-400")));
  EXPECT_FALSE(std::signbit(qx::decimalFromText("-x"))) << "no number at all";
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
  const std::pair<const char*, int32_t> cases[] = {{" -12abc", -12},
                                                   {"+7.9", 7},
                                                   {"x", 0},
                                                   {"2147483647", INT32_MAX},
                                                   {"2147483648", INT32_MAX},
                                                   {"-2147483648", INT32_MIN}};
  for (const auto& [text, value] : cases) EXPECT_EQ(qx::integerFromText(text), value) << text;
  EXPECT_EQ(qx::integerFromText("-99999999999999999999999"), INT32_MIN);
}

}  // namespace
