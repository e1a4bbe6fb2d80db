// Every function that takes samples, over the sample prices.
#include "tests/same_bits/recorder.h"

namespace same_bits {
namespace {

// A list of choices for each argument: every combination is tried.
using Choices = std::vector<Arguments>;

// What to pass to a function of so many whole numbers: periods with a start, methods of averages,
// ranges, flags.
std::vector<Choices> wholeNumbers(size_t count) {
  const Arguments methods = {0, 1, 2, 3, 4, 5, 6, 7};
  switch (count) {
    case 0:
      return {{}};
    case 1:
      return {{{0, 1, 2, 3, 4, 5, 6, 250}}};
    case 2:
      return {{{1, 2, 5, 14, 50, 233}, {0}},
              {{14, 100}, {119, 250}},
              {{0, 2500}, {1000, 5104}},
              {{4000}, {12}}};
    case 3:
      return {{methods, {21}, {0}},
              {{14, 19}, {20, 39}, {1}},
              {{10}, {3}, {250}},
              {{0, 1, 14}, {0, 100}, {119, 5104}},
              {{0, 100}, {119, 5104}, {0, 1}},
              {{4000}, {4000}, {1}},
              {{2500}, {1000}, {0}}};
    case 4:
      return {{{12}, {26}, methods, {0}}, {{9, 34}, {26, 55}, {9, 52}, {0, 250}}};
    default:
      return {{methods, {14}, {3}, {5}, {0}}, {{13}, {25}, {2}, {9}, {0, 250}}};
  }
}

// Factors, percentages, periods, dates; of two: steps, boxes, ranges of dates.
Choices realNumbers(size_t count) {
  switch (count) {
    case 0:
      return {};
    case 1:
      return {{0.0, 0.02, 1.0, 2.5, 26.0, 38000.0}};
    case 2:
      return {{0.02, 5.0, 12.5, 37000.5}, {0.0, 0.2, 0.7, 3.0}};
    case 3:
      return {{250.0}, {15000.0}, {25.0}};
    default:
      return {{0.0, 500.0}, {0.0, 2000.0}, {-0.1, 3.3}, {100.0}};
  }
}

// Functions that call the C library, where nothing cancels: the last bit of an exp or a sine is
// many last bits of a difference near 0.
std::vector<Choices> wholeNumbersFor(const Function& function, size_t count) {
  if (function.name == "qxDemandIdx") return {{{1, 5, 14}, {9}, {0}}, {{10}, {3}, {250}}};
  if (function.name == "qxMESAsinewave") return {{{1, 15, 25, 60}, {0}}};
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
  for (Choices choices : wholeNumbersFor(function, whole)) {
    for (const Arguments& choice : realNumbers(real)) choices.push_back(choice);
    computeAll({function.name}, choices, samples);
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
