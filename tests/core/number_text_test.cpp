#include "core/number_text.h"

#include <limits>
#include <string>
#include <tuple>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

using Row = std::tuple<double, int32_t, const char*>;

TEST(NumberText, FixedNotationRoundsLikePrintf) {
  const Row rows[] = {
      {1.0005, 3, "1.000"},   {2.5, 0, "2"},           {3.5, 0, "4"},
      {-0.0004, 3, "-0.000"}, {10.199, 3, "10.199"},   {1e22, 1, "10000000000000000000000.0"},
      {kInfinity, 2, "inf"},  {-kInfinity, 2, "-inf"}, {kNaN, 2, "nan"},
      {-kNaN, 2, "nan"},      {1.5, -4, "2"},          {0.1, 99, "0.100000000"}};
  for (const auto& [value, decimals, text] : rows) {
    EXPECT_STREQ(qx::fixedText(value, decimals).text, text);
  }
  const double largest = std::numeric_limits<double>::max();
  EXPECT_EQ(std::string(qx::fixedText(-largest, 9).text).size(), 1u + 309 + 1 + 9);
}

TEST(NumberText, MoneyIsCut) {
  const Row rows[] = {{12.345, 2, "12.34"}, {-7.25, 2, "-7.25"},       {-0.5, 2, "0.50"},
                      {0.29, 2, "0.28"},    {3.05, 2, "3.04"},         {3.0, 0, "3"},
                      {-3.9, 0, "-3"},      {0.0625, 8, "0.06250000"}, {kNaN, 2, "0.00"}};
  for (const auto& [value, digits, text] : rows) {
    EXPECT_STREQ(qx::decimalText(value, digits).text, text);
  }
  EXPECT_STREQ(qx::decimalText(1e30, 2).text, "9223372036854775807.00");
  EXPECT_STREQ(qx::decimalText(-1e30, 2).text, "-9223372036854775808.00");
  EXPECT_STREQ(qx::moneyText(5.5).text, "5.50");
  EXPECT_STREQ(qx::wholeText(std::numeric_limits<int64_t>::min()).text, "-9223372036854775808");
}

}  // namespace
