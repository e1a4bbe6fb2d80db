// Every function that allocates, with every allocation failing in turn.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>

#include "tests/every_function/samples.h"
#include "tests/support/computrac_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/test_support.h"

namespace {

using every_function::Arguments;
using every_function::Function;
using every_function::functionNamed;
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

// What each call stored behind its status and the greatest first valid index.
bool storedNothing(const std::vector<double>& numbers) {
  return std::all_of(numbers.begin() + 2, numbers.end(), [](double number) { return number == 0; });
}

constexpr double kNoMemory = static_cast<double>(QX_ERR_MALLOC);

struct Job {
  const Function& function;
  Arguments given;
  std::function<bool(const std::vector<double>& numbers)> intact;  // must hold after a failure
  std::function<void()> undo;  // releases what a run, complete or not, has left to the caller
};

// Runs a job with its first, second, ... allocation failing until none does. False when the
// function refuses the arguments.
bool failEachAllocation(const Samples& samples, const Job& job) {
  const std::string& name = job.function.name;
  const auto run = [&] { return callWithSamples(job.function, samples, job.given).numbers; };
  const auto undo = [&] {
    if (job.undo) job.undo();
  };
  const int64_t before = qxtest::liveBlocks();
  const std::vector<double> usual = run();
  undo();
  if (usual[0] < 0) return false;
  bool all = false;
  for (int64_t n = 1; !all && n < 1000; ++n) {
    SCOPED_TRACE(name + ", allocation " + std::to_string(n));
    qxtest::failAllocation(n);
    const std::vector<double> numbers = run();
    all = qxtest::failureIsPending();
    qxtest::failAllocation(0);
    EXPECT_EQ(numbers[0], all || isIgnored(name, n) ? usual[0] : kNoMemory);
    EXPECT_TRUE(!job.intact || (all ? n > 1 : job.intact(numbers)));
    undo();
    EXPECT_EQ(qxtest::liveBlocks(), before);
    EXPECT_TRUE(sameBits(run(), usual)) << "the next call";
    undo();
  }
  EXPECT_TRUE(all) << name << " does not come to an end";
  return true;
}

// Samples for one test, which are to stay as they are.
struct Fixture {
  BarSet bars = BarSet(sampleBars()), other = BarSet(sampleBars());
  qxCandles candles = {};
  Samples samples = {
      "bars", {bars, other}, {&bars->close, &bars->open, &bars->volume, &bars->openint}, &candles};
  std::vector<double> before = numbers();

  Fixture() { EXPECT_EQ(qxCandleConstruct(bars, &candles), QX_SUCCESS); }
  ~Fixture() {
    EXPECT_TRUE(sameBits(numbers(), before)) << "inputs stay as they are";
    qxCandleFree(&candles);
  }
  std::vector<double> numbers() {
    std::vector<double> result;
    every_function::appendBars(*bars, &result);
    return result;
  }
};

TEST(FunctionMemory, EveryFailureIsReportedAndLeavesNothingBehind) {
  Fixture fixture;
  for (const Function& function : every_function::functionTable()) {
    if (!takesSamples(function) || !fillsRecords(function)) continue;
    int32_t accepted = 0;
    for (int32_t first = 0; first < 8; ++first) {  // a period, a method, a start, ...
      SCOPED_TRACE("first number " + std::to_string(first));
      const Job job = {function, {first, 5, 60, 4, 2, 2.0}, nullptr, nullptr};
      accepted += failEachAllocation(fixture.samples, job) ? 1 : 0;
    }
    EXPECT_GT(accepted, 0) << function.name;
  }
}

TEST(FunctionMemory, ReadersAndPatternsStoreAllOrNothing) {
  qxtest::TemporaryFolder files;
  const std::string csv = files.write(
      "prices.csv", "1999-03-15,1,2,3,4,5\n1999-03-16,1,2,3,4,5\n1999-03-17,1,2,3,4,5\n");
  files.write("newest-first.csv", "1999-03-16,1,2,3,4,5\n1999-03-15,1,2,3,4,5\n");
  files.write("txtinfo.txt", "delimit=,\ndt=1\nop=2\nhi=3\nlo=4\ncl=5\nvol=6\ndtformat=YMD\n");
  files.write("master", qxtest::master({{1, 7, "Name", "ABC", 'D'}}));
  files.write("F1.DAT", qxtest::dataFile(7, 4, 990104, 5));
  const char* const folder = files.path.c_str();
  qxTXTinfo info = {};
  ASSERT_EQ(qxTXTreadinfo(folder, "txtinfo.txt", &info), QX_SUCCESS);
  Fixture fixture;
  qxOrderSystem system = {};
  ASSERT_EQ(qxOrderSystemInit(&system, "s", fixture.bars), QX_SUCCESS);
  const std::pair<const char*, Arguments> cases[] = {
      {"qxTXTread", {folder, "prices.csv", &info, 0, -1}},
      {"qxTXTreadarray", {folder, "prices.csv", ",", 0, 5, 0, -1}},
      {"qxTXT2Array", {csv.c_str(), ",", 0, 2}},
      {"qxCTread", {folder, "ABC", 0, -1}},
      {"qxCTreadarray", {folder, "ABC", 5, 0, -1}},
      {"qxFILEread", {"TXT", folder, "newest-first.csv", 0, -1}},
      {"qxFormationFill", {"qxGap", 0, 11}},
      {"qxCandleFill", {"qxHammer", 0, 11}},
      {"qxBars2PNF", {0.5, 1.0, 0}},
      {"qxBars2PNFhilo", {0.5, 1.0, 0}},
      {"qxCandleConstruct", {}},
      {"qxCreateTradeGraph", {&system}}};
  for (const auto& [name, given] : cases) {
    EXPECT_TRUE(
        failEachAllocation(fixture.samples, {functionNamed(name), given, storedNothing, nullptr}))
        << name;
  }
  qxOrderSystemClose(&system);
}

TEST(FunctionMemory, ADateUnderALongSeparatorIsEmpty) {
  char text[4000] = "x";
  const std::string separator(500, '-');
  const auto run = [&] { return qxJulianToDateTxt(36234.0, 1, separator.c_str(), text); };
  const int32_t length = run();
  const std::string usual = text;
  EXPECT_GT(length, 1000);
  qxtest::failAllocation(1);
  EXPECT_EQ(run(), 0);
  EXPECT_FALSE(qxtest::failureIsPending());
  EXPECT_STREQ(text, "");
  EXPECT_EQ(run(), length);
  EXPECT_EQ(text, usual);
}

TEST(OrderMemory, ASystemHasItsTablesOrNone) {
  Fixture fixture;
  qxOrderSystem system = {};
  EXPECT_TRUE(failEachAllocation(
      fixture.samples,
      {functionNamed("qxOrderSystemInit"),
       {&system, "s"},
       [&](const auto&) { return system.orders == nullptr && system.trades == nullptr; },
       [&] { qxOrderSystemClose(&system); }}));
}

TEST(OrderMemory, AnOrderThatFindsNoRoomIsNotPlaced) {
  BarSet bars(sampleBars());
  for (const char* name : {"qxBuyToOpen", "qxSellToOpen", "qxSellToClose", "qxBuyToClose"}) {
    const int64_t before = qxtest::liveBlocks();
    qxOrderSystem system = {};
    ASSERT_EQ(qxOrderSystemInit(&system, "s", bars), QX_SUCCESS);
    const auto place = [&] {
      const Arguments given = {&system, "n", "", 1, 0.0, QX_ORDER_MARKET, QX_FORCE_BAR};
      return callWithSamples(functionNamed(name), {}, given).numbers[0];
    };
    int32_t placed = 0, refused = 0;
    for (int32_t i = 0; i < 40; ++i) {
      qxtest::failAllocation(1);
      const double status = place();
      const bool needed = !qxtest::failureIsPending();
      qxtest::failAllocation(0);
      ASSERT_EQ(status, needed ? kNoMemory : 0.0) << name;
      refused += needed ? 1 : 0;
      placed += needed ? 0 : 1;
      ASSERT_EQ(system.ordercount, placed);
      if (!needed) continue;
      ASSERT_EQ(place(), 0.0) << "the next call works";
      ++placed;
    }
    EXPECT_GT(refused, 2);
    qxOrderSystemClose(&system);
    EXPECT_EQ(qxtest::liveBlocks(), before);
  }
}

TEST(OrderMemory, ProcessingGoesOnWithoutMemory) {
  BarSet bars(sampleBars());
  for (int64_t n = 1;; ++n) {
    const int64_t before = qxtest::liveBlocks();
    qxOrderSystem system = {};
    ASSERT_EQ(qxOrderSystemInit(&system, "s", bars), QX_SUCCESS);
    system.pyramid = 100;
    for (int32_t bar = 0; bar < 60; ++bar) {  // more orders and trades than the tables begin with
      for (int32_t k = 0; k < 2; ++k) {
        qxBuyToOpen(&system, "in", 3, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
        qxSellToClose(&system, "out", "in", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
      }
      if (bar == 1) qxtest::failAllocation(n);
      ASSERT_EQ(qxProcessOrders(&system), 1) << "what finds no room is dropped";
      ASSERT_LE(system.positioncount, system.positioncap);
      ASSERT_LE(system.tradecount, system.tradecap);
    }
    const bool all = qxtest::failureIsPending();
    qxtest::failAllocation(0);
    qxOrderSystemClose(&system);
    ASSERT_EQ(qxtest::liveBlocks(), before);
    if (all) {
      EXPECT_GT(n, 3) << "the tables never grew";
      break;
    }
    ASSERT_LT(n, 500);
  }
}

TEST(GraphMemory, WhatFindsNoRoomIsNotAdded) {
  Fixture fixture;
  qxGraph graph = {};
  const auto empty = [&](const auto&) {
    int32_t elements = 0;
    for (int32_t i = 0; i < graph.subwincount; ++i) {
      const qxGraphSubwin& pane = graph.subwins[i];
      elements += pane.chartcount + pane.linecount + pane.shapecount;
    }
    return elements == 0;
  };
  const auto undo = [&] { qxGraphFree(&graph); };
  const Job jobs[] = {
      {functionNamed("qxGraphSubwinAdd"),
       {&graph, 9},
       [&](const auto&) { return graph.subwincount == 0; },
       undo},
      {functionNamed("qxGraphChartAdd"),
       {&graph, -1, -1, 0, 1, 1, 0.0, 0.0, 0, QX_CHART_LINE, 0, 0, 0, 1, 0, 0},
       empty,
       undo},
      {functionNamed("qxGraphLineAdd"), {&graph, -1, -1, 0, 1.0, 0, 1, 0, 0}, empty, undo},
      {functionNamed("qxGraphShapeAdd"),
       {&graph, -1, -1, 0, 1, 0.0, 0.0, 1.0, 1.0, 0, 1, 0, 0},
       empty,
       undo}};
  for (const Job& job : jobs) EXPECT_TRUE(failEachAllocation(fixture.samples, job));
}

TEST(GraphMemory, PaintingWithoutMemoryWritesNoPicture) {
  Fixture fixture;
  qxGraph graph = {};
  qxGraphInit(&graph);
  graph.area = {0, 0, 500, 300};
  qxGraphChartAdd(&graph, 0, 0, 0, 1, 1, 0, 0, 0, &fixture.bars->close, fixture.bars,
                  QX_CHART_CANDLE, 0, 0xFF, 0xFF00, 1, 0, 0);
  qxtest::TemporaryFolder folder;
  const std::string path = folder.file("chart.svg");
  EXPECT_TRUE(failEachAllocation(fixture.samples,
                                 {functionNamed("qxGraphPaintSVG"),
                                  {&graph, path.c_str()},
                                  [&](const auto&) { return qxtest::readFile(path).empty(); },
                                  [&] { std::remove(path.c_str()); }}));
  qxGraphFree(&graph);
}

}  // namespace
