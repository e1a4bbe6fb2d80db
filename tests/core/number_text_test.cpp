#include "core/number_text.h"

#include <cmath>
#include <limits>
#include <string>

#include "tests/support/test_support.h"

namespace {

TEST(NumberText, FixedNotationRoundsLikePrintf) {
  const double inf = std::numeric_limits<double>::infinity();
  const struct {
    double value;
    int32_t decimals;
    const char* text;
  } rows[] = {
      {1.0005, 3, "1.000"},      {2.5, 0, "2"},         {3.5, 0, "4"},
      {-0.0004, 3, "-0.000"},    {10.199, 3, "10.199"}, {1e22, 1, "10000000000000000000000.0"},
      {inf, 2, "inf"},           {-inf, 2, "-inf"},     {std::nan(""), 2, "nan"},
      {-std::nan(""), 2, "nan"}, {1.5, -4, "2"},        {0.1, 99, "0.100000000"}};
  for (const auto& row : rows) {
    EXPECT_STREQ(qx::fixedText(row.value, row.decimals).text, row.text);
  }
  const double largest = std::numeric_limits<double>::max();
  EXPECT_EQ(std::string(qx::fixedText(-largest, 9).text).size(), 1u + 309 + 1 + 9);
}

TEST(NumberText, MoneyIsCut) {
  const struct {
    double value;
    int32_t digits;
    const char* text;
  } rows[] = {{12.345, 2, "12.34"},
              {-7.25, 2, "-7.25"},
              {-0.5, 2, "0.50"},
              {0.29, 2, "0.28"},
              {3.05, 2, "3.04"},
              {3.0, 0, "3"},
              {-3.9, 0, "-3"},
              {0.0625, 8, "0.06250000"},
              {std::nan(""), 2, "0.00"},
              {1e30, 2, "9223372036854775807.00"},
              {-1e30, 2, "-9223372036854775808.00"}};
  for (const auto& row : rows) {
    EXPECT_STREQ(qx::decimalText(row.value, row.digits).text, row.text);
  }
  EXPECT_STREQ(qx::moneyText(5.5).text, "5.50");
  EXPECT_STREQ(qx::wholeText(std::numeric_limits<int64_t>::min()).text, "-9223372036854775808");
}

}  // namespace
