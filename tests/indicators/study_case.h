// One row per indicator: its outputs over twelve worked bars, and what holds for every indicator
// whatever it computes.
#ifndef QUORVEX_TESTS_INDICATORS_STUDY_CASE_H
#define QUORVEX_TESTS_INDICATORS_STUDY_CASE_H

#include <cmath>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "tests/support/name_of.h"
#include "tests/support/test_support.h"

namespace qxtest {

using Values = std::vector<double>;

// The series of a bar set by its letter: open, high, low, close, volume, open interest.
qxArray* column(qxBars* bars, char letter);

// What one call is made of. The columns are the series that it reads, in order.
struct Arguments {
  qxBars* bars;  // null: no input at all
  const char* columns;
  Series* outputs;
  const Values& numbers;
  int32_t start;
  size_t number = 0;

  // The next argument of a type. The last number of every study is its start.
  template <typename T>
  T next() {
    if constexpr (std::is_same_v<T, const qxBars*>) {
      return bars;
    } else if constexpr (std::is_same_v<T, const qxArray*>) {
      return bars == nullptr ? nullptr : column(bars, *columns++);
    } else if constexpr (std::is_same_v<T, qxArray*>) {
      return outputs == nullptr ? nullptr : &(outputs++)->record;
    } else {
      return number < numbers.size() ? static_cast<T>(numbers[number++]) : static_cast<T>(start);
    }
  }
};

// An exported function as a study.
struct Study {
  std::string name;
  int32_t (*call)(Arguments arguments);
  std::string columns;   // the series that it reads
  std::string raising;   // those of them whose first valid index raises the start
  bool inPlace = false;  // the output may be the input
  bool readsOn = false;  // a short output does not shorten what is read
};

// The columns of a study of bars.
inline const std::string kBars = "ohlcvi";

template <auto kFunction>
struct ByType;

template <typename... Parameters, int32_t (*kFunction)(Parameters...)>
struct ByType<kFunction> {
  static constexpr bool kReadsBars = (std::is_same_v<Parameters, const qxBars*> || ...);
  static constexpr size_t kSeries = (size_t{std::is_same_v<Parameters, const qxArray*>} + ...);

  static int32_t call(Arguments arguments) {
    const std::tuple<Parameters...> parameters{arguments.next<Parameters>()...};
    return std::apply(kFunction, parameters);
  }
};

// A function of bars, or of series: closes and opens unless other columns are named.
template <auto kFunction>
Study study(const std::string& columns = "co") {
  using Function = ByType<kFunction>;
  if (Function::kReadsBars) return {nameOf<kFunction>(), Function::call, kBars, ""};
  const std::string read = columns.substr(0, Function::kSeries);
  return {nameOf<kFunction>(), Function::call, read, read};
}

inline Study raisedBy(const char* columns, Study study) {
  study.raising = columns;
  return study;
}

inline Study inPlace(Study study) {
  study.inPlace = true;
  return study;
}

inline Study readingOn(Study study) {
  study.readsOn = true;
  return study;
}

// A number of a row; calls with less than `least` are refused.
struct Number {
  double value;
  double least = -HUGE_VAL;
  Number(double given) : value(given) {}
};

inline Number notBelow(double least, double value) {
  Number number(value);
  number.least = least;
  return number;
}

inline Number period(int32_t bars) {
  return notBelow(1, bars);
}

struct StudyCase {
  Study study;
  std::vector<Number> numbers;
  std::vector<int32_t> firstValid;  // of each output, from start 0
  std::vector<Values> values;       // of each output, from start 0
  std::vector<Values> awkward;      // over degenerate bars from bar 2; none: not looked at
};

// A case in a table.
StudyCase row(Study study, std::vector<Number> numbers, std::vector<int32_t> firstValid,
              std::vector<Values> values, std::vector<Values> awkward = {});

// The name of the function and the numbers of a case, for messages.
std::string describe(const StudyCase& c);

// Calls the study of a case with the case's numbers.
int32_t run(const StudyCase& c, qxBars* bars, Series* outputs, int32_t start);

// Everything that is checked of each case, over its bars.
void checkCases(const std::vector<StudyCase>& cases, const std::vector<Bar>& market = workedBars());

// Real daily and intraday bars give finite values throughout.
void checkRealPrices(const std::vector<StudyCase>& cases);

}  // namespace qxtest

#endif  // QUORVEX_TESTS_INDICATORS_STUDY_CASE_H
