// Calls with arguments made of sample prices: what a sensible caller would pass.
#ifndef QUORVEX_TESTS_EVERY_FUNCTION_SAMPLES_H
#define QUORVEX_TESTS_EVERY_FUNCTION_SAMPLES_H

#include "tests/every_function/function_table.h"

namespace every_function {

// Passed in turn: to a function of two bar sets both, to one of a single series the first.
struct Samples {
  const char* name;
  const qxBars* bars[2];
  const qxArray* series[4];
  const qxCandles* candles;
};

// True for a function that reads samples and otherwise takes only numbers and places of results.
bool takesSamples(const Function& function);

// True where the function fills a record that the caller releases.
bool fillsRecords(const Function& function);

struct SampleCall {
  Arguments arguments;          // those that point to results are gone
  std::vector<double> numbers;  // what was returned, then everything stored
};

// Calls with samples where the function reads, fresh records and cells where it writes, and for the
// rest the given arguments in turn, each kind from the beginning again when there are no more.
SampleCall callWithSamples(const Function& function, const Samples& samples,
                           const Arguments& given);

void appendSeries(const qxArray& series, std::vector<double>* numbers);
void appendBars(const qxBars& bars, std::vector<double>* numbers);

}  // namespace every_function

#endif  // QUORVEX_TESTS_EVERY_FUNCTION_SAMPLES_H
