#include <cstring>

#include "core/indicator_frame.h"
#include "tests/support/failing_memory.h"
#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;
using qxtest::Series;

// What a call may fill; released after each attempt.
struct Outputs {
  qxArray arrays[3] = {};
  qxBars bars = {};
  qxCandles candles = {};

  void release() {
    for (qxArray& array : arrays) qxFreeArray(&array);
    qxFreeBars(&bars);
    qxCandleFree(&candles);
  }
};

struct Call {
  const char* name;
  int64_t allocations;
  int32_t (*run)(BarSet& bars, Outputs& out);
};

const Call kCalls[] = {
    {"qxAllocArray", 1, [](BarSet&, Outputs& out) { return qxAllocArray(&out.arrays[0], 4); }},
    {"qxCopyArray", 1,
     [](BarSet& bars, Outputs& out) { return qxCopyArray(&bars->close, &out.arrays[0]); }},
    {"qxAllocArrays", 3,
     [](BarSet&, Outputs& out) {
       return qxAllocArrays(4, {&out.arrays[0], &out.arrays[1], &out.arrays[2]});
     }},
    {"qxAllocBars", 7, [](BarSet&, Outputs& out) { return qxAllocBars(&out.bars, 4); }},
    {"qxCopyBars", 7, [](BarSet& bars, Outputs& out) { return qxCopyBars(bars, &out.bars); }},
    {"qxGroupArray", 1,
     [](BarSet& bars, Outputs& out) {
       return qxGroupArray(bars, &bars->volume, &out.arrays[0], QX_FREQ_WEEKLY);
     }},
    {"qxGroupBarsPeriods", 7,
     [](BarSet& bars, Outputs& out) { return qxGroupBarsPeriods(bars, &out.bars, 3, 0); }},
    {"qxGroupBarsDate", 7,
     [](BarSet& bars, Outputs& out) {
       return qxGroupBarsDate(bars, &out.bars, QX_FREQ_WEEKLY, 0, 0);
     }},
    {"qxGroupBarsTime", 7,
     [](BarSet& bars, Outputs& out) { return qxGroupBarsTime(bars, &out.bars, 60, 0, 0); }},
    {"qxCandleConstruct", 1,
     [](BarSet& bars, Outputs& out) { return qxCandleConstruct(bars, &out.candles); }},
};

TEST(Memory, EveryFailureIsReportedAndLeavesNothingBehind) {
  BarSet bars(qxtest::workedBars());
  const int64_t before = qxtest::liveBlocks();
  const Outputs cleared;
  for (const Call& call : kCalls) {
    for (int64_t n = 1; n <= call.allocations; ++n) {
      Outputs out;
      qxtest::failAllocation(n);
      EXPECT_EQ(call.run(bars, out), QX_ERR_MALLOC) << call.name << " " << n;
      EXPECT_FALSE(qxtest::failureIsPending()) << call.name << " " << n;
      EXPECT_EQ(qxtest::liveBlocks(), before) << call.name << " " << n;
      EXPECT_EQ(std::memcmp(&out, &cleared, sizeof out), 0) << call.name << " " << n;
    }
    Outputs out;
    qxtest::failAllocation(call.allocations + 1);
    EXPECT_EQ(call.run(bars, out), QX_SUCCESS) << call.name;
    EXPECT_TRUE(qxtest::failureIsPending()) << call.name << " allocates more than expected";
    qxtest::failAllocation(0);
    EXPECT_EQ(qxtest::liveBlocks(), before + call.allocations) << call.name;
    out.release();
    EXPECT_EQ(qxtest::liveBlocks(), before) << call.name;
  }
}

TEST(Memory, AnOutputPreparedBeforeAFailureStaysPrepared) {
  Series in{1, 2, 3}, first({7, 7, 7, 7}, 2), second;
  qxtest::failAllocation(1);
  EXPECT_EQ(qxCheckArgs({}, {in}, {first, second}), QX_ERR_MALLOC);
  EXPECT_EQ(first.values(), (std::vector<double>{0, 0, 0}));
  EXPECT_EQ(first[3], 0.0);
  EXPECT_EQ(second.record.data, nullptr);
}

TEST(Memory, ASeriesThatCannotGrowStaysAsItWas) {
  Series series({1, 2}, 1);
  qxtest::failAllocation(1);
  EXPECT_EQ(qxReAllocArray(series, 9), QX_ERR_MALLOC);
  EXPECT_EQ(series.values(), (std::vector<double>{1, 2}));
  EXPECT_EQ(series.record.datasize, 2);
  EXPECT_EQ(series.record.firstvalid, 1);
}

TEST(Memory, BarsThatCannotGrowKeepWhatHasGrown) {
  BarSet bars({{1, 2, 3, 4, 5, 6, 7}});
  bars->reccnt = 12;
  const qxArray* const series[] = {&bars->date,  &bars->open,   &bars->high,   &bars->low,
                                   &bars->close, &bars->volume, &bars->openint};
  qxtest::failAllocation(4);
  EXPECT_EQ(qxReAllocBars(bars, 10), QX_ERR_MALLOC);
  for (int k = 0; k < 7; ++k) {
    EXPECT_EQ(series[k]->size, k < 3 ? 10 : 1) << k;
    EXPECT_EQ(series[k]->datasize, k < 3 ? 10 : 1) << k;
    EXPECT_EQ(series[k]->data[0], k + 1.0) << k;
  }
  EXPECT_EQ(bars->barsize, 1);
  EXPECT_EQ(bars->datasize, 1);
  EXPECT_EQ(bars->reccnt, 12);

  EXPECT_EQ(qxReAllocBars(bars, 5), QX_SUCCESS);
  for (int k = 0; k < 7; ++k) {
    EXPECT_EQ(series[k]->size, 5) << k;
    EXPECT_EQ(series[k]->datasize, 5) << k << ": the seven series are equal again";
    EXPECT_EQ(series[k]->data[0], k + 1.0) << k;
  }
  EXPECT_EQ(bars->datasize, 5);
}

}  // namespace
