#include "tests/same_bits/recorder.h"

#include <algorithm>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace same_bits {
namespace {

// The functions that call exp, log, pow, sin, cos or atan: C libraries round these differently.
const char* const kNear[] = {
    "qxDispersion",       "qxDispersionMv",   "qxDemandIdx",          "qxMESAsinewave",
    "qxApprxCumProbDist", "qxBlackScholes",   "qxFutureValue",        "qxPresentValue",
    "qxFutureValuePrinc", "qxFutureValueInt", "qxFutureValueAnnuity", "qxPresentValueAnnuity",
    "qxBondPricing",      "qxBondDuration",
};
constexpr size_t kShownNumbers = 200;

bool isNear(const char* name) {
  return std::any_of(std::begin(kNear), std::end(kNear),
                     [name](const char* near) { return std::strcmp(near, name) == 0; });
}

uint64_t bitsOf(double number) {
  uint64_t bits = 0;
  std::memcpy(&bits, &number, sizeof bits);
  return std::isnan(number) ? 0x7FF8000000000000u : bits;
}

// FNV-1a over the bytes of the numbers, the lowest first.
uint64_t digest(const std::vector<double>& numbers) {
  uint64_t hash = 0xCBF29CE484222325u;
  for (const double number : numbers) {
    for (uint64_t bits = bitsOf(number), i = 0; i < 8; ++i, bits >>= 8) {
      hash = (hash ^ (bits & 0xFF)) * 0x100000001B3u;
    }
  }
  return hash;
}

}  // namespace

std::string label(const char* text) {
  std::string parameter(1, ' ');
  return parameter.append(text);
}

std::string label(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.10g", number);
  return label(text);
}

int32_t pass(Call* call, int32_t argument) {
  call->parameters += label(argument);
  return argument;
}

double pass(Call* call, double argument) {
  call->parameters += label(argument);
  return argument;
}

const char* pass(Call* call, const char* argument) {
  call->parameters += label(argument);
  return argument;
}

qxArray* pass(Call* call, OutSeries) {
  return &call->series[call->seriesCount++];
}
double* pass(Call* call, OutValue) {
  return &call->values[call->valueCount++];
}
int32_t* pass(Call* call, OutWhole) {
  return &call->wholes[call->wholeCount++];
}

void print(const char* name, const std::string& parameters, const std::vector<double>& numbers) {
  if (!isNear(name)) {
    std::printf("exact %s%s %016" PRIx64 "\n", name, parameters.c_str(), digest(numbers));
    return;
  }
  std::printf("near %s%s :", name, parameters.c_str());
  const size_t from = numbers.size() < kShownNumbers ? 0 : numbers.size() - kShownNumbers;
  for (size_t i = from; i < numbers.size(); ++i) std::printf(" %016" PRIx64, bitsOf(numbers[i]));
  std::printf("\n");
}

void printText(const char* name, const std::string& text) {
  std::printf("text %s\n| ", name);
  for (const char c : text) std::printf(c == '\n' ? "\n| " : "%c", c);
  std::printf("\n");
}

void appendSeries(const qxArray& series, std::vector<double>* numbers) {
  numbers->push_back(series.size);
  numbers->push_back(series.firstvalid);
  numbers->insert(numbers->end(), series.data, series.data + series.datasize);
}

void appendBars(const qxBars& bars, std::vector<double>* numbers) {
  numbers->insert(numbers->end(), {static_cast<double>(bars.barsize), bars.begindate, bars.enddate,
                                   static_cast<double>(bars.frequency)});
  for (const qxArray* series :
       {&bars.date, &bars.open, &bars.high, &bars.low, &bars.close, &bars.volume, &bars.openint}) {
    appendSeries(*series, numbers);
  }
}

void finish(Call* call) {
  std::vector<double>& numbers = call->numbers;
  if (call->seriesCount > 0) numbers.push_back(qxGetMaxFirstValid());
  numbers.insert(numbers.end(), call->values, call->values + call->valueCount);
  numbers.insert(numbers.end(), call->wholes, call->wholes + call->wholeCount);
  for (int k = 0; k < call->seriesCount; ++k) {
    appendSeries(call->series[k], &numbers);
    qxFreeArray(&call->series[k]);
  }
  print(call->name, call->parameters, numbers);
}

}  // namespace same_bits
