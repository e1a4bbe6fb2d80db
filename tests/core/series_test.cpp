#include <cstddef>
#include <cstring>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

// Size, capacity and first valid index.
using Shape = std::array<int32_t, 3>;

Shape shapeOf(const qxArray& array) {
  return {array.size, array.datasize, array.firstvalid};
}

TEST(Array, LifecycleKeepsItsInvariants) {
  qxArray array = {};
  EXPECT_EQ(qxAllocArray(&array, 3), QX_SUCCESS);
  EXPECT_EQ(shapeOf(array), (Shape{3, 3, 0}));
  for (int32_t i = 0; i < 3; ++i) EXPECT_EQ(array.data[i], 0.0);
  array.data[0] = 7.0;
  array.firstvalid = 1;

  EXPECT_EQ(qxReSizeArray(&array, 4), QX_ERR_MALLOC);
  EXPECT_EQ(shapeOf(array), (Shape{3, 3, 1}));
  EXPECT_EQ(qxReAllocArray(&array, 10), QX_SUCCESS);
  EXPECT_EQ(shapeOf(array), (Shape{10, 10, 1}));
  EXPECT_EQ(array.data[0], 7.0);
  const double* block = array.data;
  EXPECT_EQ(qxReAllocArray(&array, 2), QX_SUCCESS);
  EXPECT_EQ(array.data, block);
  EXPECT_EQ(shapeOf(array), (Shape{2, 10, 1}));
  EXPECT_EQ(qxReAllocArray(&array, 10), QX_SUCCESS);
  EXPECT_EQ(array.data, block);
  EXPECT_EQ(qxReSizeArray(&array, -1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxReAllocArray(&array, -1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(array.size, 10);

  qxFreeArray(&array);
  EXPECT_EQ(array.data, nullptr);
  EXPECT_EQ(shapeOf(array), Shape{});
  qxFreeArray(nullptr);
  EXPECT_EQ(qxAllocArray(&array, 0), QX_SUCCESS);
  EXPECT_NE(array.data, nullptr);
  qxFreeArray(&array);
  EXPECT_EQ(qxAllocArray(&array, -5), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxAllocArray(nullptr, 5), QX_ERR_INVALID_PARM);
}

TEST(Array, CopyAllocatesOrTruncatesButNeverGrows) {
  Series source({1, 2, 3, 4}, 2), fresh, small{9, 9};
  qxReSizeArray(source, 3);  // one element of capacity beyond the size
  EXPECT_EQ(qxCopyArray(source, fresh), QX_SUCCESS);
  EXPECT_EQ(shapeOf(fresh.record), (Shape{3, 4, 2}));
  EXPECT_EQ(fresh[3], 4.0) << "the whole extent is copied";
  EXPECT_EQ(qxCopyArray(source, small), QX_SUCCESS);
  EXPECT_EQ(small.values(), (std::vector<double>{1, 2}));
  EXPECT_EQ(small.record.firstvalid, 2);
}

TEST(Array, ItemsOutsideTheSeriesAreZeroAndIgnored) {
  Series series{5, 6, 7};
  qxReSizeArray(series, 2);
  qxSetArrayItem(series, 1, 8.0);
  for (int32_t outside : {-1, 2, INT32_MIN, INT32_MAX}) {
    qxSetArrayItem(series, outside, 99.0);
    EXPECT_EQ(qxGetArrayItem(series, outside), 0.0);
  }
  EXPECT_EQ(qxGetArrayItem(series, 1), 8.0);
  EXPECT_EQ(series[2], 7.0);
  EXPECT_EQ(qxGetArrayItem(nullptr, 0), 0.0);
}

TEST(Array, MaxFirstValidRises) {
  Series series{1};
  EXPECT_EQ(qxSetMaxFirstValid(10), 10);
  EXPECT_EQ(qxSetFirstValid(series, 5), 10);
  EXPECT_EQ(series.record.firstvalid, 5);
  EXPECT_EQ(qxSetFirstValid(series, 12), 12);
  EXPECT_EQ(qxGetMaxFirstValid(), 12);
  EXPECT_EQ(qxSetMaxFirstValid(0), 0);
  EXPECT_EQ(qxGetMaxFirstValid(), 0);
}

TEST(Bars, LifecycleMovesAllSevenSeries) {
  qxBars bars = {};
  std::strcpy(bars.symbol, "ABC");
  EXPECT_EQ(qxAllocBars(&bars, 2), QX_SUCCESS);
  EXPECT_STREQ(bars.symbol, "ABC") << "descriptive fields stay";
  EXPECT_EQ(qxReSizeBars(&bars, 3), QX_ERR_MALLOC);
  EXPECT_EQ(qxReAllocBars(&bars, 5), QX_SUCCESS);
  EXPECT_EQ(bars.barsize, 5);
  EXPECT_EQ(bars.datasize, 5);
  EXPECT_EQ(qxReAllocBars(&bars, 1), QX_SUCCESS);
  for (const qxArray* series : seriesOf(bars)) EXPECT_EQ(shapeOf(*series), (Shape{1, 5, 0}));
  EXPECT_EQ(bars.barsize, 1);
  EXPECT_EQ(qxReSizeBars(&bars, -1), QX_ERR_INVALID_PARM);
  qxFreeBars(&bars);
  const qxBars cleared = {};
  EXPECT_EQ(std::memcmp(&bars, &cleared, sizeof bars), 0);
  qxFreeBars(nullptr);
}

TEST(Bars, CopyTakesInfoAndSeries) {
  BarSet source(workedBars()), copy, small({{1, 1, 1, 1, 1, 1, 1}});
  std::strcpy(source->symbol, "SYM");
  source->close.firstvalid = 3;
  EXPECT_EQ(qxCopyBars(source, copy), QX_SUCCESS);
  EXPECT_EQ(barsOf(copy), workedBars());
  EXPECT_EQ(copy->datasize, 12);
  EXPECT_STREQ(copy->symbol, "SYM");
  EXPECT_EQ(shapeOf(copy->close), (Shape{12, 12, 3}));
  EXPECT_EQ(qxCopyBars(source, small), QX_SUCCESS);
  EXPECT_EQ(barsOf(small), std::vector{workedBars()[0]});
  EXPECT_EQ(small->date.size, 1);
}

TEST(Bars, InfoIsCopiedWholeWithoutSeriesAndSizes) {
  qxBars source, target = {}, expected;
  std::memset(&source, 'C', sizeof source);
  std::memset(&expected, 'C', sizeof expected);
  std::memset(&expected, 0, offsetof(qxBars, reccnt));  // the seven series and the sizes
  qxCopyBarInfo(nullptr, &target);
  qxCopyBarInfo(&source, &target);
  qxCopyBarInfo(&source, nullptr);
  EXPECT_EQ(std::memcmp(&target, &expected, sizeof target), 0);
}

TEST(Bars, FindDateGivesTheFirstAtOrAfter) {
  BarSet bars(workedBars()), empty;
  EXPECT_EQ(qxFindDate(bars, 0.0), 0);
  EXPECT_EQ(qxFindDate(bars, 40003.0), 3);
  EXPECT_EQ(qxFindDate(bars, 40003.5), 4);
  EXPECT_EQ(qxFindDate(bars, 50000.0), 12);
  EXPECT_EQ(qxFindDate(empty, 1.0), 0);
}

TEST(Decimals, AreCutNotRounded) {
  const std::tuple<double, int32_t, int32_t> cases[] = {
      {12.345, 2, 34},     {-7.25, 2, 25},     {0.29, 2, 28},   {3.0, 2, 0},
      {-7.5, 0, 0},        {0.5, 8, 50000000}, {2.2e-16, 9, 0}, {0.5, INT32_MAX, INT32_MAX},
      {0.5, INT32_MIN, 0}, {kInfinity, 2, 0},  {kNaN, 2, 0}};
  for (const auto& [value, digits, decimals] : cases) {
    EXPECT_EQ(qxDecimals(value, digits), decimals) << value << ", " << digits;
  }
}

}  // namespace
