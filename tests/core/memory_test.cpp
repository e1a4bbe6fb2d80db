#include <cstring>
#include <functional>

#include "core/indicator_frame.h"
#include "tests/support/failing_memory.h"
#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

TEST(Memory, AllIsAllocatedOrNothing) {
  struct Outputs {
    qxArray first, second, third;
    qxBars bars;
  } out = {};
  const Outputs cleared = {};
  const std::pair<int64_t, std::function<int32_t()>> calls[] = {
      {1, [&] { return qxAllocArray(&out.first, 4); }},
      {3,
       [&] {
         return qxAllocArrays(4, {&out.first, &out.second, &out.third});
       }},
      {7, [&] { return qxAllocBars(&out.bars, 4); }}};
  const int64_t before = liveBlocks();
  for (const auto& [allocations, allocate] : calls) {
    for (int64_t n = 1; n <= allocations; ++n) {
      failAllocation(n);
      EXPECT_EQ(allocate(), QX_ERR_MALLOC) << n << " of " << allocations;
      EXPECT_EQ(liveBlocks(), before) << n << " of " << allocations;
      EXPECT_EQ(std::memcmp(&out, &cleared, sizeof out), 0) << n << " of " << allocations;
    }
    EXPECT_EQ(allocate(), QX_SUCCESS);
    EXPECT_EQ(liveBlocks(), before + allocations);
    for (qxArray* array : {&out.first, &out.second, &out.third}) qxFreeArray(array);
    qxFreeBars(&out.bars);
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
