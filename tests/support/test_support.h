// Fixtures shared by the tests: owned series and bar sets, comparisons that print both values.
#ifndef QUORVEX_TESTS_SUPPORT_TEST_SUPPORT_H
#define QUORVEX_TESTS_SUPPORT_TEST_SUPPORT_H

#include <gtest/gtest.h>

#include <array>
#include <initializer_list>
#include <limits>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "quorvex.h"

namespace qxtest {

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// The elements of a series that are in use, and their sum.
std::vector<double> valuesOf(const qxArray& series);
double sumOf(const qxArray& series);

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
  std::vector<double> values() const { return valuesOf(record); }
};

// A date number.
inline double dateOf(int32_t year, int32_t month, int32_t day, int32_t hour = 0, int32_t minute = 0,
                     int32_t second = 0) {
  return qxYMDtoDate(year, month, day, hour, minute, second);
}

// One bar as written in a test.
struct Bar {
  double date, open, high, low, close, volume, openint;
  bool operator==(const Bar&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Bar& bar);

// Bars written as "open high low close / open high low close 1500 / ...", the volume and the open
// interest at will (else 100 and 0), dated from 40000 on.
std::vector<Bar> barsFrom(const std::string& text);

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

// The seven series of a set, the dates first, and the bars in use.
std::array<qxArray*, 7> seriesOf(qxBars& bars);
std::vector<Bar> barsOf(const qxBars* bars);

// The twelve daily bars that many worked examples use.
const std::vector<Bar>& workedBars();

// Equal within `tolerance` (absolute, scaled by the magnitude when that is above 1), NaN equal to
// NaN; a failure prints both values with 17 digits.
::testing::AssertionResult near(double actual, double expected, double tolerance = 1e-9);

// The elements in use compared one by one.
::testing::AssertionResult seriesNear(const Series& actual, const std::vector<double>& expected,
                                      double tolerance = 1e-9);

// The same of an output, after the status of the call that filled it: EXPECT_TRUE(gives(call, out,
// {...})).
::testing::AssertionResult gives(int32_t status, const Series& out,
                                 const std::vector<double>& expected, double tolerance = 1e-9);

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
  operator const char*() const { return path.c_str(); }
};

// The bytes of a file; line ends are brought to "\n" when `text` is set.
std::string readFile(const std::string& path, bool text = true);

// What `write` puts into a new file, whose path it is given.
template <typename Write>
std::string written(Write write) {
  const TemporaryFolder folder;
  const std::string path = folder.file("out.txt");
  EXPECT_EQ(write(path.c_str()), QX_SUCCESS);
  return readFile(path);
}

// Calls `function` with each of its pointers in turn replaced by null: every call gives `refusal`.
// Pointers that may be null are given as null from the start.
template <typename Result, typename... Parameters>
void expectNullsRefused(const char* name, Result (*function)(Parameters...),
                        std::type_identity_t<Result> refusal,
                        std::type_identity_t<Parameters>... arguments) {
  const std::tuple<Parameters...> given(arguments...);
  const auto refuses = [&]<size_t Position>(std::integral_constant<size_t, Position>) {
    auto changed = given;
    auto& argument = std::get<Position>(changed);
    if constexpr (std::is_pointer_v<std::remove_reference_t<decltype(argument)>>) {
      if (std::exchange(argument, nullptr) == nullptr) return;
      EXPECT_EQ(std::apply(function, changed), refusal) << name << ", argument " << Position;
    }
  };
  [&]<size_t... Positions>(std::index_sequence<Positions...>) {
    (refuses(std::integral_constant<size_t, Positions>()), ...);
  }
  (std::index_sequence_for<Parameters...>());
}

}  // namespace qxtest

#endif  // QUORVEX_TESTS_SUPPORT_TEST_SUPPORT_H
