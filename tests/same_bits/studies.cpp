// Every function that takes samples, over the sample prices.
#include "tests/same_bits/recorder.h"

namespace same_bits {
namespace {

// What to pass to a function of so many whole numbers: periods with a start, methods of averages,
// ranges, flags. The methods stand for the first or third of them.
std::vector<Arguments> wholeNumbers(size_t count) {
  switch (count) {
    case 0:
      return {{}};
    case 1:
      return {{0}, {1}, {2}, {3}, {4}, {5}, {6}, {250}};
    case 2:
      return {{1, 0},    {2, 0},     {5, 0},    {14, 0},    {50, 0},     {233, 0},
              {14, 250}, {100, 119}, {0, 5104}, {4000, 12}, {2500, 1000}};
    case 3:
      return {{0, 21, 0},    {1, 21, 0},      {2, 21, 0},     {3, 21, 0},    {4, 21, 0},
              {5, 21, 0},    {6, 21, 0},      {7, 21, 0},     {14, 20, 0},   {10, 3, 250},
              {19, 39, 1},   {0, 100, 119},   {1, 100, 119},  {0, 0, 5104},  {1, 0, 5104},
              {0, 5104, 0},  {0, 5104, 1},    {100, 119, 0},  {100, 119, 1}, {14, 0, 5104},
              {100, 1, 500}, {4000, 4000, 1}, {2500, 1000, 0}};
    case 4:
      return {{12, 26, 0, 0}, {12, 26, 1, 0},   {12, 26, 2, 0},  {12, 26, 3, 0},
              {12, 26, 4, 0}, {12, 26, 5, 0},   {12, 26, 6, 0},  {12, 26, 7, 0},
              {12, 26, 9, 0}, {9, 26, 52, 250}, {34, 55, 13, 0}, {7, 14, 28, 1}};
    default:
      return {{0, 14, 3, 5, 0},  {1, 14, 3, 5, 0},   {2, 14, 3, 5, 0}, {3, 14, 3, 5, 0},
              {4, 14, 3, 5, 0},  {5, 14, 3, 5, 0},   {6, 14, 3, 5, 0}, {7, 14, 3, 5, 0},
              {13, 25, 2, 9, 0}, {13, 25, 2, 9, 250}};
  }
}

// Factors, percentages, periods, dates; of two: steps, boxes, ranges of dates.
std::vector<Arguments> realNumbers(size_t count) {
  switch (count) {
    case 0:
      return {{}};
    case 1:
      return {{0.0}, {0.02}, {1.0}, {2.5}, {26.0}, {38000.0}};
    case 2:
      return {{5.0, 0.7}, {8.5, 0.0}, {0.02, 0.2}, {100.0, 0.1}, {12.5, 3.0}, {37000.5, 0.0}};
    case 3:
      return {{250.0, 15000.0, 25.0}};
    default:
      return {{0.0, 0.0, 3.3, 100.0}, {500.0, 2000.0, -0.1, 100.0}};
  }
}

// Functions that call the C library, where nothing cancels: the last bit of an exp or a sine is
// many last bits of a difference near 0.
std::vector<Arguments> wholeNumbersFor(const Function& function, size_t count) {
  if (function.name == "qxDemandIdx") return {{1, 9, 0}, {5, 9, 0}, {14, 9, 0}, {10, 3, 250}};
  if (function.name == "qxMESAsinewave") return {{1, 0}, {15, 0}, {25, 0}, {60, 0}};
  return wholeNumbers(count);
}

size_t countOf(const Function& function, Kind kind, bool constantOnly = false) {
  size_t count = 0;
  for (const auto& parameter : function.parameters) {
    count += parameter.kind == kind && (parameter.constant || !constantOnly) ? 1 : 0;
  }
  return count;
}

// A function of one index beside samples is called for every bar.
void computeEveryBar(const Function& function, const Samples& samples) {
  std::vector<double> numbers;
  for (int32_t i = 0; i < samples.bars[0]->barsize; ++i) {
    numbers.push_back(callWithSamples(function, samples, {i}).numbers[0]);
  }
  print(function.name, label(samples.name), numbers);
}

void computeStudy(const Function& function, const Samples& samples) {
  const size_t whole = countOf(function, Kind::kInteger), real = countOf(function, Kind::kReal);
  const bool cells = countOf(function, Kind::kIntegerCell) + countOf(function, Kind::kRealCell) > 0;
  if (whole == 1 && real == 0 && !cells && !fillsRecords(function)) {
    computeEveryBar(function, samples);
    return;
  }
  for (const Arguments& integers : wholeNumbersFor(function, whole)) {
    for (const Arguments& reals : realNumbers(real)) {
      Arguments given = integers;
      given.insert(given.end(), reals.begin(), reals.end());
      compute(function, samples, given);
    }
  }
}

// The patterns once more, by their names.
void fillPatterns(const Prices& prices, const Samples& samples) {
  const int32_t last = prices.bars.barsize - 1;
  computeAll({"qxFormationFill"},
             {{"qxCPR", "qxGap", "qxGapDown", "qxGapUp", "qxIslandReversal", "qxInsideBar",
               "qxKeyReversal", "qxOutsideBar"},
              {1},
              {last}},
             samples);
  for (const Function& function : every_function::functionTable()) {
    if (countOf(function, Kind::kCandles) == 1 && countOf(function, Kind::kBars) == 1 &&
        countOf(function, Kind::kInteger) == 1) {
      computeAll({"qxCandleFill"}, {{function.name.c_str()}, {0}, {last}}, samples);
    }
  }
}

}  // namespace

void computeStudies(const Prices& prices) {
  const qxBars& bars = prices.bars;
  const Samples all[] = {
      {"prices",
       {&bars, &prices.other},
       {&bars.close, &bars.open, &bars.volume, &bars.openint},
       &prices.candles},
      {"late",
       {&bars, &prices.other},
       {&prices.late, &bars.volume, &bars.open, &bars.high},
       &prices.candles},
      {"breadth",
       {&bars, &prices.other},
       {&prices.advances, &prices.declines, &prices.upVolume, &prices.downVolume},
       &prices.candles}};
  for (const Function& function : every_function::functionTable()) {
    if (!takesSamples(function)) continue;
    const bool takesSeries = countOf(function, Kind::kSeries, true) > 0;
    for (const Samples& samples : all) {
      if (takesSeries || &samples == all) computeStudy(function, samples);
    }
  }
  fillPatterns(prices, all[0]);
}

}  // namespace same_bits
