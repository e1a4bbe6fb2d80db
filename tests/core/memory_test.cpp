#include <cstring>
#include <functional>

#include "core/indicator_frame.h"
#include "tests/support/failing_memory.h"
#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

TEST(Memory, EveryFailureIsReportedAndLeavesNothingBehind) {
  BarSet bars(workedBars());
  struct Outputs {
    qxArray first, second, third;
    qxBars bars;
    qxCandles candles;
  } const cleared = {};
  Outputs out = cleared;
  const struct {
    const char* name;
    int64_t allocations;
    std::function<int32_t()> run;
  } calls[] = {{"qxAllocArray", 1, [&] { return qxAllocArray(&out.first, 4); }},
               {"qxCopyArray", 1, [&] { return qxCopyArray(&bars->close, &out.first); }},
               {"qxAllocArrays", 3,
                [&] {
                  return qxAllocArrays(4, {&out.first, &out.second, &out.third});
                }},
               {"qxAllocBars", 7, [&] { return qxAllocBars(&out.bars, 4); }},
               {"qxCopyBars", 7, [&] { return qxCopyBars(bars, &out.bars); }},
               {"qxGroupBarsPeriods", 7, [&] { return qxGroupBarsPeriods(bars, &out.bars, 3, 0); }},
               {"qxGroupBarsDate", 7, [&] { return qxGroupBarsDate(bars, &out.bars, 3, 0, 0); }},
               {"qxGroupBarsTime", 7, [&] { return qxGroupBarsTime(bars, &out.bars, 60, 0, 0); }},
               {"qxCandleConstruct", 1, [&] { return qxCandleConstruct(bars, &out.candles); }}};
  const int64_t before = liveBlocks();
  for (const auto& call : calls) {
    for (int64_t n = 1; n <= call.allocations; ++n) {
      SCOPED_TRACE(call.name + std::to_string(n));
      failAllocation(n);
      EXPECT_EQ(call.run(), QX_ERR_MALLOC);
      EXPECT_FALSE(failureIsPending());
      EXPECT_EQ(liveBlocks(), before);
      EXPECT_EQ(std::memcmp(&out, &cleared, sizeof out), 0);
    }
    failAllocation(call.allocations + 1);
    EXPECT_EQ(call.run(), QX_SUCCESS) << call.name;
    EXPECT_TRUE(failureIsPending()) << call.name << " allocates more than expected";
    failAllocation(0);
    for (qxArray* array : {&out.first, &out.second, &out.third}) qxFreeArray(array);
    qxFreeBars(&out.bars);
    qxCandleFree(&out.candles);
    EXPECT_EQ(liveBlocks(), before) << call.name;
  }
}

TEST(Memory, AnOutputPreparedBeforeAFailureStaysPrepared) {
  Series in{1, 2, 3}, first({7, 7, 7, 7}, 2), second;
  failAllocation(1);
  EXPECT_EQ(qxCheckArgs({}, {in}, {first, second}), QX_ERR_MALLOC);
  EXPECT_EQ(first.values(), (std::vector<double>{0, 0, 0}));
  EXPECT_EQ(first[3], 0.0);
  EXPECT_EQ(second.record.data, nullptr);
}

TEST(Memory, ASeriesThatCannotGrowStaysAsItWas) {
  Series series({1, 2}, 1);
  const qxArray before = series.record;
  failAllocation(1);
  EXPECT_EQ(qxReAllocArray(series, 9), QX_ERR_MALLOC);
  EXPECT_EQ(std::memcmp(&series.record, &before, sizeof before), 0);
  EXPECT_EQ(series.values(), (std::vector<double>{1, 2}));
}

TEST(Memory, BarsThatCannotGrowKeepWhatHasGrown) {
  BarSet bars({{1, 2, 3, 4, 5, 6, 7}});
  bars->reccnt = 12;
  const auto expectSizes = [&](int32_t ofThree, int32_t ofFour) {
    for (size_t k = 0; k < 7; ++k) {
      const qxArray& series = *seriesOf(bars.record)[k];
      EXPECT_EQ(series.size, k < 3 ? ofThree : ofFour) << k;
      EXPECT_EQ(series.datasize, series.size) << k;
      EXPECT_EQ(series.data[0], static_cast<double>(k + 1)) << k;
    }
  };
  failAllocation(4);
  EXPECT_EQ(qxReAllocBars(bars, 10), QX_ERR_MALLOC);
  expectSizes(10, 1);
  EXPECT_EQ(bars->barsize, 1);
  EXPECT_EQ(bars->datasize, 1);
  EXPECT_EQ(bars->reccnt, 12);
  EXPECT_EQ(qxReAllocBars(bars, 5), QX_SUCCESS);
  expectSizes(5, 5);
  EXPECT_EQ(bars->datasize, 5);
}

}  // namespace
