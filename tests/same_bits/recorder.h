// Calls functions of the library and prints the bits of everything they give back.
#ifndef QUORVEX_TESTS_SAME_BITS_RECORDER_H
#define QUORVEX_TESTS_SAME_BITS_RECORDER_H

#include <string>
#include <vector>

#include "tests/every_function/samples.h"

namespace same_bits {

using every_function::Arguments;
using every_function::Function;
using every_function::Kind;
using every_function::Samples;

// Parameters as text for `print`.
std::string label(const char* text);
std::string label(double number);

// Prints one line: the name, the parameters, and a digest of the numbers, or, where the function
// calls the C library's exp, log, pow, sin, cos or atan, the last numbers themselves.
void print(const std::string& name, const std::string& parameters,
           const std::vector<double>& numbers);

// Prints a text that the library wrote, a line each behind "| ".
void printText(const char* name, const std::string& text);

// Calls a function once with samples and the given arguments and prints all that it gave back.
void compute(const Function& function, const Samples& samples, const Arguments& given);

// Calls each function with every combination of one argument of each choice.
void computeAll(const std::vector<std::string>& names, const std::vector<Arguments>& choices,
                const Samples& samples = {});

// The sample prices, a second market, and the series that breadth studies need.
struct Prices {
  std::string path;   // the price file
  qxBars bars = {};   // with an open interest made of the volume
  qxBars other = {};  // same dates, other prices, the first bars missing
  qxArray late = {};  // the closes, valid from element 7 on
  qxArray advances = {}, declines = {}, upVolume = {}, downVolume = {};
  qxCandles candles = {};
};

// Reads and derives them; false when the file cannot be read.
bool loadPrices(const char* path, Prices* prices);
void freePrices(Prices* prices);

void computeStudies(const Prices& prices);
void computeCases(const Prices& prices);
void computeTrading(const Prices& prices);

}  // namespace same_bits

#endif  // QUORVEX_TESTS_SAME_BITS_RECORDER_H
