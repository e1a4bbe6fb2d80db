#include "core/number_conversion.h"

#include <clocale>
#include <cstdio>
#include <random>
#include <string>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

std::string randomConversion(std::mt19937& random) {
  std::string text;
  for (unsigned n = random() % 4; n > 0; --n) text += "-+ 0#"[random() % 5];
  if (random() % 2) text += std::to_string(random() % 30);
  if (random() % 2) text += "." + (random() % 4 ? std::to_string(random() % 25) : "");
  return text;
}

// The C library, in the C locale, is the reference for what it can do.
TEST(NumberConversion, PrintsAsTheStandardFormatter) {
  std::setlocale(LC_ALL, "C");
  const double values[] = {0.0,  -0.0,  0.5,   1.5,    -2.5,         3.14159265358979, -1234567.891,
                           1e15, -1e22, 1e-10, 0.0005, 99.999999999, kInfinity,        -kInfinity};
  const int64_t integers[] = {0, 5, -5, 123456789012, INT64_MAX, INT64_MIN};
  std::mt19937 random(7);
  std::string expected;
  const std::string actual = written([&](const char* path) {
    std::FILE* file = std::fopen(path, "wb");
    for (int i = 0; i < 3000; ++i) {
      const std::string text = randomConversion(random);
      const double value = values[random() % std::size(values)];
      const int64_t integer = integers[random() % std::size(integers)];
      char line[256];
      std::snprintf(line, sizeof line, ("%" + text + "f %" + text + "lli " + text + "\n").c_str(),
                    value, static_cast<long long>(integer));
      expected += line;
      const auto conversion = qx::parseConversion(text + "lf");
      qx::printReal(file, conversion, value);
      std::fputc(' ', file);
      qx::printInteger(file, conversion, integer);
      std::fprintf(file, " %s\n", text.c_str());
    }
    return std::fclose(file);
  });
  EXPECT_EQ(actual, expected);
}

}  // namespace
