// Calls a function of the library and prints the bits of everything it gives back.
#ifndef QUORVEX_TESTS_SAME_BITS_RECORDER_H
#define QUORVEX_TESTS_SAME_BITS_RECORDER_H

#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "quorvex.h"

namespace same_bits {

// Where a call takes the address of a result: a series, a double, a 32-bit integer.
struct OutSeries {};
struct OutValue {};
struct OutWhole {};
constexpr OutSeries out;
constexpr OutValue value;
constexpr OutWhole whole;

constexpr int kMostResults = 8;

// One call under way: its parameters as text and the places of its results.
struct Call {
  const char* name;
  std::string parameters;
  std::vector<double> numbers;  // what it gave back, in order
  qxArray series[kMostResults] = {};
  double values[kMostResults] = {};
  int32_t wholes[kMostResults] = {};
  int seriesCount = 0, valueCount = 0, wholeCount = 0;
};

// What a function is called with; numbers and texts become part of the printed parameters.
template <typename Argument>
Argument pass(Call*, Argument argument) {
  return argument;
}
int32_t pass(Call* call, int32_t argument);
double pass(Call* call, double argument);
const char* pass(Call* call, const char* argument);
qxArray* pass(Call* call, OutSeries);
double* pass(Call* call, OutValue);
int32_t* pass(Call* call, OutWhole);

// A function under its name.
template <typename Function>
struct Named {
  const char* name;
  Function* function;
};

// Parameters that no call carries, as text for `print`.
std::string label(const char* text);
std::string label(double number);

// Prints one line: the name, the parameters, and a digest of the numbers, or, where the function
// calls the C library's exp, log, pow, sin, cos or atan, the last numbers themselves.
void print(const char* name, const std::string& parameters, const std::vector<double>& numbers);

// Prints a text that the library wrote, a line each behind "| ".
void printText(const char* name, const std::string& text);

void appendSeries(const qxArray& series, std::vector<double>* numbers);
void appendBars(const qxBars& bars, std::vector<double>* numbers);
void finish(Call* call);

// Calls a function once and prints what it returned and stored.
template <typename Result, typename... Parameters, typename... Arguments>
void compute(const char* name, Result (*function)(Parameters...), Arguments... arguments) {
  Call call{};
  call.name = name;
  qxSetMaxFirstValid(0);
  // The braces fix the order in which the results get their places.
  std::tuple<decltype(pass(&call, arguments))...> passed{pass(&call, arguments)...};
  if constexpr (std::is_void_v<Result>) {
    std::apply(function, passed);
  } else {
    call.numbers.push_back(static_cast<double>(std::apply(function, passed)));
  }
  finish(&call);
}

template <typename Function, typename... Arguments>
void compute(const Named<Function>& entry, Arguments... arguments) {
  compute(entry.name, entry.function, arguments...);
}

// Calls a function with each index up to `count` as the last argument, and prints all it returned.
template <typename Function, typename... Arguments>
void computeEach(const char* name, Function* function, int32_t count, Arguments... arguments) {
  std::vector<double> numbers;
  for (int32_t i = 0; i < count; ++i) {
    numbers.push_back(static_cast<double>(function(arguments..., i)));
  }
  print(name, "", numbers);
}

// The sample prices and series derived from them.
struct Prices {
  std::string path;    // the price file
  qxBars bars = {};    // with an open interest made of the volume
  qxBars other = {};   // a second market: same dates, other prices, the first bars missing
  qxArray close = {};  // copies, so that a series' first valid index may differ
  qxArray late = {};   // the closes, valid from element 7 on
  qxArray volume = {};
  qxArray advances = {}, declines = {}, unchanged = {}, upVolume = {}, downVolume = {};
};

// Reads and derives them; false when the file cannot be read.
bool loadPrices(const char* path, Prices* prices);
void freePrices(Prices* prices);

void computeSeriesStudies(const Prices& prices);
void computeBarStudies(const Prices& prices);
void computePatterns(const Prices& prices);
void computeStatistics(const Prices& prices);
void computeTransforms(const Prices& prices);
void computeFinance();
void computeDates();
void computeTrading(const Prices& prices);

}  // namespace same_bits

#endif  // QUORVEX_TESTS_SAME_BITS_RECORDER_H
