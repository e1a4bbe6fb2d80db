// Every function that fills records from samples, with every allocation failing in turn.
#include <algorithm>
#include <cstring>

#include "tests/every_function/samples.h"
#include "tests/support/failing_memory.h"
#include "tests/support/test_support.h"

namespace {

using every_function::Arguments;
using every_function::Function;
using every_function::Samples;
using qxtest::BarSet;

// Prices that rise and fall, so that every study has something to compute.
std::vector<qxtest::Bar> sampleBars() {
  std::vector<qxtest::Bar> bars;
  for (int32_t i = 0; i < 90; ++i) {
    const double close = 100.0 + (i * 37 % 23) - (i * 11 % 17) + i / 8.0;
    const double open = close + (i * 7 % 9 - 4) / 4.0;
    bars.push_back({36526.0 + i, open, std::max(open, close) + 1.0 + i % 3,
                    std::min(open, close) - 0.5 - i % 2, close, 1000.0 + i * 71 % 300,
                    500.0 + i % 40});
  }
  return bars;
}

// The allocations of inner steps whose status a function ignores by contract.
struct Ignored {
  const char* name;
  int64_t first, last;
};
constexpr Ignored kIgnored[] = {
    {"qxADX", 2, 6}, {"qxADXR", 3, 7}, {"qxCSIndex", 5, 9}, {"qxStochasticOscillator", 6, 6}};

bool isIgnored(const std::string& name, int64_t n) {
  return std::any_of(std::begin(kIgnored), std::end(kIgnored), [&](const Ignored& ignored) {
    return name == ignored.name && n >= ignored.first && n <= ignored.last;
  });
}

bool sameBits(const std::vector<double>& a, const std::vector<double>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof a[0]) == 0;
}

// False when the function refuses the arguments.
bool failEachAllocation(const Function& function, const Samples& samples, const Arguments& given) {
  const auto call = [&] { return callWithSamples(function, samples, given).numbers; };
  const int64_t before = qxtest::liveBlocks();
  const std::vector<double> usual = call();
  if (static_cast<int32_t>(usual[0]) != QX_SUCCESS) return false;
  bool all = false;
  for (int64_t n = 1; !all && n < 1000; ++n) {
    SCOPED_TRACE(function.name + ", first argument " + std::to_string(std::get<int32_t>(given[0])) +
                 ", allocation " + std::to_string(n));
    qxtest::failAllocation(n);
    const auto status = static_cast<int32_t>(call()[0]);
    all = qxtest::failureIsPending();
    qxtest::failAllocation(0);
    EXPECT_EQ(status, all || isIgnored(function.name, n) ? QX_SUCCESS : QX_ERR_MALLOC);
    EXPECT_EQ(qxtest::liveBlocks(), before);
    EXPECT_TRUE(sameBits(call(), usual)) << "the next call";
  }
  EXPECT_TRUE(all) << function.name << " does not come to an end";
  return true;
}

TEST(FunctionMemory, EveryFailureIsReportedAndLeavesNothingBehind) {
  BarSet bars(sampleBars()), other(sampleBars());
  qxCandles candles = {};
  ASSERT_EQ(qxCandleConstruct(bars, &candles), QX_SUCCESS);
  const Samples samples = {
      "bars", {bars, other}, {&bars->close, &bars->open, &bars->volume, &bars->openint}, &candles};
  std::vector<double> before, after;
  every_function::appendBars(*bars, &before);
  for (const Function& function : every_function::functionTable()) {
    if (!takesSamples(function) || !fillsRecords(function)) continue;
    int32_t accepted = 0;
    for (int32_t first = 0; first < 8; ++first) {  // a period, a method, a start, ...
      accepted += failEachAllocation(function, samples, {first, 5, 60, 4, 2, 2.0}) ? 1 : 0;
    }
    EXPECT_GT(accepted, 0) << function.name;
  }
  every_function::appendBars(*bars, &after);
  EXPECT_TRUE(sameBits(after, before)) << "inputs stay as they are";
  qxCandleFree(&candles);
}

}  // namespace
