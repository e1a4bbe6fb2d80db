// Real price files of the folder that QX_TEST_DATA names: daily and intraday bars, with and without
// volume.
#ifndef QUORVEX_TESTS_SUPPORT_REAL_BARS_H
#define QUORVEX_TESTS_SUPPORT_REAL_BARS_H

#include <cmath>

#include "tests/support/test_support.h"

namespace qxtest {

struct RealBarsFile {
  const char* name;
  qxTXTinfo layout;
};

inline constexpr RealBarsFile kRealBarsFiles[] = {
    {"orcl-daily-1995-2014.txt", {1, 0, 2, 3, 4, 5, 7, 0, QX_ORDER_YMD, 1, ","}},
    {"fesx-daily-oi-2006.txt", {1, 0, 2, 3, 4, 5, 6, 7, QX_ORDER_YMD, 1, ","}},
    {"fesx-1min-2006-01-extract.txt", {1, 2, 3, 4, 5, 6, 7, 8, QX_ORDER_YMD, 1, ","}},
    {"estx50-5min-2006-01.txt", {1, 2, 3, 4, 5, 6, 7, 8, QX_ORDER_YMD, 1, ","}}};

// Calls check(bars, name) for every file; the test is skipped without the folder.
template <typename Check>
void withRealBars(Check check) {
  const std::string folder = testDataPath("text");
  if (folder.empty()) GTEST_SKIP() << "QX_TEST_DATA is not set";
  for (const RealBarsFile& file : kRealBarsFiles) {
    BarSet bars;
    ASSERT_EQ(qxTXTread(bars, folder.c_str(), file.name, &file.layout, 0, -1), QX_SUCCESS);
    ASSERT_GT(bars->barsize, 250);
    SCOPED_TRACE(file.name);
    check(bars);
  }
  qxSetMaxFirstValid(0);
}

inline void expectFinite(const Series& series, const char* what) {
  int32_t infinite = 0;
  for (const double value : series.values()) infinite += std::isfinite(value) ? 0 : 1;
  EXPECT_EQ(infinite, 0) << what;
}

}  // namespace qxtest

#endif  // QUORVEX_TESTS_SUPPORT_REAL_BARS_H
