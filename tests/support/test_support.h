// Fixtures shared by the tests: owned series and bar sets, comparisons that print both values.
#ifndef QUORVEX_TESTS_SUPPORT_TEST_SUPPORT_H
#define QUORVEX_TESTS_SUPPORT_TEST_SUPPORT_H

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "quorvex.h"

namespace qxtest {

// A series that releases itself. Converts to the record's address for calls.
struct Series {
  qxArray record = {};

  Series() = default;
  Series(std::initializer_list<double> values, int32_t firstValid = 0);
  explicit Series(const std::vector<double>& values, int32_t firstValid = 0);
  ~Series() { qxFreeArray(&record); }
  Series(const Series&) = delete;
  Series& operator=(const Series&) = delete;

  operator qxArray*() { return &record; }
  double operator[](int32_t i) const { return record.data[i]; }
  std::vector<double> values() const;  // the elements in use
};

// One bar as written in a test.
struct Bar {
  double date, open, high, low, close, volume, openint;
};

// A bar set that releases itself.
struct BarSet {
  qxBars record = {};

  BarSet() = default;
  BarSet(std::initializer_list<Bar> bars);
  explicit BarSet(const std::vector<Bar>& bars);
  ~BarSet() { qxFreeBars(&record); }
  BarSet(const BarSet&) = delete;
  BarSet& operator=(const BarSet&) = delete;

  operator qxBars*() { return &record; }
  qxBars* operator->() { return &record; }
};

// The twelve daily bars that many worked examples use.
const std::vector<Bar>& workedBars();

// Equal within `tolerance` (absolute, scaled by the magnitude when that is above 1), NaN equal to
// NaN; a failure prints both values with 17 digits.
::testing::AssertionResult near(double actual, double expected, double tolerance = 1e-9);

// The elements in use compared one by one.
::testing::AssertionResult seriesNear(const Series& actual, const std::vector<double>& expected,
                                      double tolerance = 1e-9);

// A file of the repository's samples folder; a file of the folder that QX_TEST_DATA names, or an
// empty text when that is unset.
std::string samplePath(const std::string& name);
std::string testDataPath(const std::string& name);

// A folder for one test's files, empty at first and removed with its files at the end.
struct TemporaryFolder {
  std::string path;
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  // Writes a file byte for byte and returns its path.
  std::string write(const std::string& name, const std::string& bytes) const;
  std::string file(const std::string& name) const;
};

// The bytes of a file; line ends are brought to "\n" when `text` is set.
std::string readFile(const std::string& path, bool text = true);

}  // namespace qxtest

#endif  // QUORVEX_TESTS_SUPPORT_TEST_SUPPORT_H
