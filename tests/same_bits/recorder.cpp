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
  return std::string(1, ' ').append(text);
}

std::string label(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.10g", number);
  return label(text);
}

void print(const std::string& name, const std::string& parameters,
           const std::vector<double>& numbers) {
  if (std::find(std::begin(kNear), std::end(kNear), name) == std::end(kNear)) {
    std::printf("exact %s%s %016" PRIx64 "\n", name.c_str(), parameters.c_str(), digest(numbers));
    return;
  }
  std::printf("near %s%s :", name.c_str(), parameters.c_str());
  const size_t from = numbers.size() < kShownNumbers ? 0 : numbers.size() - kShownNumbers;
  for (size_t i = from; i < numbers.size(); ++i) std::printf(" %016" PRIx64, bitsOf(numbers[i]));
  std::printf("\n");
}

void printText(const char* name, const std::string& text) {
  std::printf("text %s\n| ", name);
  for (const char c : text) std::printf(c == '\n' ? "\n| " : "%c", c);
  std::printf("\n");
}

void compute(const Function& function, const Samples& samples, const Arguments& given) {
  const every_function::SampleCall call = callWithSamples(function, samples, given);
  std::string parameters = samples.name == nullptr ? "" : label(samples.name);
  for (size_t i = 0; i < call.arguments.size(); ++i) {
    const auto& [kind, constant, size] = function.parameters[i];
    if (const int32_t* integer = std::get_if<int32_t>(&call.arguments[i])) {
      parameters += label(*integer);
    } else if (const double* real = std::get_if<double>(&call.arguments[i])) {
      parameters += label(*real);
    } else if (kind == Kind::kText && constant) {
      parameters += label(every_function::address<const char>(call.arguments[i]));
    }
  }
  print(function.name, parameters, call.numbers);
}

void computeAll(const std::vector<std::string>& names, const std::vector<Arguments>& choices,
                const Samples& samples) {
  for (const std::string& name : names) {
    const Function& function = every_function::functionNamed(name);
    size_t combinations = 1;
    for (const Arguments& choice : choices) combinations *= choice.size();
    for (size_t k = 0; k < combinations; ++k) {
      Arguments given;
      size_t rest = k;
      for (const Arguments& choice : choices) {
        given.push_back(choice[rest % choice.size()]);
        rest /= choice.size();
      }
      compute(function, samples, given);
    }
  }
}

}  // namespace same_bits
