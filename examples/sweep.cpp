// Runs the crossing strategy with many combinations of its parameters and prints the best.
//
//   quorvex_sweep FOLDER FILE [--from J] [--to K]
//
// Combinations are counted from 1. With --from and --to (both included) only a part of them runs,
// so that a job runner can spread a sweep over many processes or machines.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "crossing_strategy.h"

namespace {

const size_t kBest = 10;  // lines of the table

// The parameters and their ranges: from, to, step; count and value are the library's.
enum { kFast, kSlow, kStop, kTarget, kVariables };
qxOptVar variables[kVariables] = {
    {5, 40, 5, 0, 0},     // bars of the faster average
    {50, 200, 25, 0, 0},  // bars of the slower average
    {2, 6, 1, 0, 0},      // protective stop, percent
    {4, 12, 4, 0, 0},     // target, percent
};
const char* const kSeparator = " / ";
const char* const kHeading = "Fast / Slow / Stop % / Target %";

struct Arguments {
  const char *folder, *file;
  uint32_t from, to;
};

struct Result {
  uint32_t combination;
  std::string values;
  qxTradeStats stats;
};

bool usage(const char* problem, const char* what = "") {
  std::fprintf(stderr, "%s%s\nUsage: quorvex_sweep FOLDER FILE [--from J] [--to K]\n", problem,
               what);
  return false;
}

// A whole number from 1 up to `most`; anything else is refused.
bool readNumber(const char* option, const char* text, uint32_t most, uint32_t* number) {
  if (text == nullptr) return usage("A number must follow ", option);
  const char* const end = text + std::strlen(text);
  const auto parsed = std::from_chars(text, end, *number);
  if (parsed.ec == std::errc() && parsed.ptr == end && *number >= 1 && *number <= most) return true;
  std::fprintf(stderr, "%s must be a whole number from 1 to %lu, not \"%s\"\n", option,
               static_cast<unsigned long>(most), text);
  return false;
}

bool readArguments(int argc, char** argv, uint32_t combinations, Arguments* arguments) {
  *arguments = {nullptr, nullptr, 1, combinations};
  for (int i = 1; i < argc; ++i) {
    const bool from = std::strcmp(argv[i], "--from") == 0;
    if (from || std::strcmp(argv[i], "--to") == 0) {
      uint32_t* number = from ? &arguments->from : &arguments->to;
      // argv ends in a null pointer.
      if (!readNumber(argv[i], argv[i + 1], combinations, number)) return false;
      ++i;
    } else if (argv[i][0] == '-') {
      return usage("Unknown option ", argv[i]);
    } else if (arguments->folder == nullptr) {
      arguments->folder = argv[i];
    } else if (arguments->file == nullptr) {
      arguments->file = argv[i];
    } else {
      return usage("One file at a time, not also ", argv[i]);
    }
  }
  if (arguments->file == nullptr) return usage("A folder and a file are needed.");
  if (arguments->from > arguments->to) return usage("--from must not be above --to.");
  return true;
}

// One line on standard error, overwritten as the sweep goes on.
void showProgress(uint32_t done, uint32_t all) {
  const uint64_t percent = uint64_t{100} * done / all;
  if (done > 1 && done < all && percent == uint64_t{100} * (done - 1) / all) return;
  std::fprintf(stderr, "\r%lu of %lu combinations (%lu %%)%s", static_cast<unsigned long>(done),
               static_cast<unsigned long>(all), static_cast<unsigned long>(percent),
               done == all ? "\n" : "");
  std::fflush(stderr);
}

std::string valuesText() {
  std::string text(static_cast<size_t>(qxOptVarStringLen(variables, kVariables, kSeparator)), '\0');
  qxOptVarString(variables, kVariables, kSeparator, text.data());
  text.resize(std::strlen(text.c_str()));
  return text;
}

// Runs one combination; a status below 0 means that memory is out.
int32_t runCombination(uint32_t combination, qxOrderSystem* system, Averages* averages,
                       std::vector<Result>* results) {
  qxOptVarValue(variables, kVariables, combination);
  const CrossingParameters parameters = {static_cast<int32_t>(variables[kFast].value),
                                         static_cast<int32_t>(variables[kSlow].value),
                                         variables[kStop].value, variables[kTarget].value};
  const int32_t status = computeAverages(&system->bars, parameters, averages);
  if (status < 0) return status;
  runStrategy(system, *averages, parameters);
  results->push_back({combination, valuesText(), system->netstats});
  return QX_SUCCESS;
}

void printBest(std::vector<Result>* results) {
  const size_t count = std::min(kBest, results->size());
  std::partial_sort(results->begin(), results->begin() + static_cast<std::ptrdiff_t>(count),
                    results->end(), [](const Result& a, const Result& b) {
                      if (a.stats.netprofit != b.stats.netprofit) {
                        return a.stats.netprofit > b.stats.netprofit;
                      }
                      return a.combination < b.combination;
                    });
  std::printf("Combination  %s   Net profit  Trades  Won %%     Drawdown    PRR\n", kHeading);
  const int width = static_cast<int>(std::strlen(kHeading));
  for (size_t i = 0; i < count; ++i) {
    const Result& result = (*results)[i];
    std::printf("%11lu  %*s  %11.2f  %6d  %5.1f  %11.2f  %5.2f\n",
                static_cast<unsigned long>(result.combination), width, result.values.c_str(),
                result.stats.netprofit, static_cast<int>(result.stats.trades),
                result.stats.pctprofitable, result.stats.maxdrawdown, result.stats.prr);
  }
}

}  // namespace

int main(int argc, char** argv) {
  Arguments arguments;
  if (!readArguments(argc, argv, qxOptVarCount(variables, kVariables), &arguments)) return 2;
  qxBars bars = {};
  if (readPrices(arguments.folder, arguments.file, &bars) != QX_SUCCESS) return 1;

  qxOrderSystem system = {};
  Averages averages = {};
  std::vector<Result> results;
  int32_t status = openSystem(&system, "Sweep", &bars);
  const uint32_t all = arguments.to - arguments.from + 1;
  for (uint32_t done = 0; done < all && status == QX_SUCCESS; ++done) {
    status = runCombination(arguments.from + done, &system, &averages, &results);
    showProgress(done + 1, all);
  }
  qxOrderSystemClose(&system);
  freeAverages(&averages);
  qxFreeBars(&bars);
  if (status != QX_SUCCESS) {
    std::fprintf(stderr, "Not enough memory\n");
    return 1;
  }
  printBest(&results);
  return 0;
}
