#include <cmath>
#include <cstring>
#include <limits>

#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;
using qxtest::Series;

TEST(Array, LifecycleKeepsItsInvariants) {
  qxArray array = {};
  EXPECT_EQ(qxAllocArray(&array, 3), QX_SUCCESS);
  EXPECT_EQ(array.size, 3);
  EXPECT_EQ(array.datasize, 3);
  EXPECT_EQ(array.firstvalid, 0);
  for (int32_t i = 0; i < 3; ++i) EXPECT_EQ(array.data[i], 0.0);
  array.data[0] = 7.0;
  array.firstvalid = 1;

  EXPECT_EQ(qxReSizeArray(&array, 4), QX_ERR_MALLOC);
  EXPECT_EQ(array.size, 3);
  EXPECT_EQ(qxReAllocArray(&array, 10), QX_SUCCESS);
  EXPECT_EQ(array.size, 10);
  EXPECT_EQ(array.datasize, 10);
  EXPECT_EQ(array.firstvalid, 1);
  EXPECT_EQ(array.data[0], 7.0);
  const double* block = array.data;
  EXPECT_EQ(qxReAllocArray(&array, 2), QX_SUCCESS);
  EXPECT_EQ(array.data, block);
  EXPECT_EQ(array.size, 2);
  EXPECT_EQ(array.datasize, 10);
  EXPECT_EQ(qxReSizeArray(&array, 10), QX_SUCCESS);
  EXPECT_EQ(qxReSizeArray(&array, -1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxReAllocArray(&array, -1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(array.size, 10);

  qxFreeArray(&array);
  EXPECT_EQ(array.data, nullptr);
  EXPECT_EQ(array.datasize, 0);
  qxFreeArray(nullptr);
  EXPECT_EQ(qxAllocArray(&array, 0), QX_SUCCESS);
  EXPECT_NE(array.data, nullptr);
  EXPECT_EQ(array.size, 0);
  qxFreeArray(&array);
  EXPECT_EQ(qxAllocArray(&array, -5), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxAllocArray(nullptr, 5), QX_ERR_INVALID_PARM);
}

TEST(Array, CopyAllocatesOrTruncatesButNeverGrows) {
  Series source({1, 2, 3, 4}, 2);
  qxReSizeArray(source, 3);  // one element of capacity beyond the size
  Series fresh;
  EXPECT_EQ(qxCopyArray(source, fresh), QX_SUCCESS);
  EXPECT_EQ(fresh.record.size, 3);
  EXPECT_EQ(fresh.record.datasize, 4);
  EXPECT_EQ(fresh.record.firstvalid, 2);
  EXPECT_EQ(fresh[3], 4.0) << "the whole extent is copied";

  Series small{9, 9};
  EXPECT_EQ(qxCopyArray(source, small), QX_SUCCESS);
  EXPECT_EQ(small.values(), (std::vector<double>{1, 2}));
  EXPECT_EQ(small.record.firstvalid, 2);
}

TEST(Array, ItemsOutsideTheSeriesAreZeroAndIgnored) {
  Series series{5, 6};
  qxSetArrayItem(series, 1, 8.0);
  for (int32_t outside : {-1, 2, INT32_MIN, INT32_MAX}) {
    qxSetArrayItem(series, outside, 99.0);
    EXPECT_EQ(qxGetArrayItem(series, outside), 0.0);
  }
  EXPECT_EQ(qxGetArrayItem(series, 1), 8.0);
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
  for (const qxArray* s :
       {&bars.date, &bars.open, &bars.high, &bars.low, &bars.close, &bars.volume, &bars.openint}) {
    EXPECT_EQ(s->size, 1);
    EXPECT_EQ(s->datasize, 5);
  }
  EXPECT_EQ(bars.barsize, 1);
  EXPECT_EQ(qxReSizeBars(&bars, -1), QX_ERR_INVALID_PARM);
  qxFreeBars(&bars);
  const qxBars cleared = {};
  EXPECT_EQ(std::memcmp(&bars, &cleared, sizeof bars), 0);
  qxFreeBars(nullptr);
}

TEST(Bars, CopyTakesInfoAndSeries) {
  BarSet source(qxtest::workedBars());
  std::strcpy(source->symbol, "SYM");
  source->strikeprice = 12.5;
  source->close.firstvalid = 3;
  BarSet copy;
  EXPECT_EQ(qxCopyBars(source, copy), QX_SUCCESS);
  EXPECT_EQ(copy->barsize, 12);
  EXPECT_EQ(copy->datasize, 12);
  EXPECT_STREQ(copy->symbol, "SYM");
  EXPECT_EQ(copy->strikeprice, 12.5);
  EXPECT_EQ(copy->close.firstvalid, 3);
  EXPECT_EQ(copy->openint.data[11], 5500.0);
  BarSet small({{1, 1, 1, 1, 1, 1, 1}});
  EXPECT_EQ(qxCopyBars(source, small), QX_SUCCESS);
  EXPECT_EQ(small->barsize, 1);
  EXPECT_EQ(small->date.size, 1);
  EXPECT_EQ(small->close.data[0], 51.0);
}

TEST(Bars, InfoIsCopiedWithoutSeriesAndSizes) {
  BarSet source(qxtest::workedBars());
  source->reccnt = 40;
  source->frequency = QX_FREQ_WEEKLY;
  source->deliverydate = 41000.0;
  std::memset(source->cusip, 'C', sizeof source->cusip);  // no terminator: fields are copied whole
  BarSet target({{1, 2, 3, 4, 5, 6, 7}});
  qxCopyBarInfo(source, target);
  EXPECT_EQ(target->reccnt, 40);
  EXPECT_EQ(target->frequency, QX_FREQ_WEEKLY);
  EXPECT_EQ(target->deliverydate, 41000.0);
  EXPECT_EQ(std::memcmp(target->cusip, source->cusip, sizeof source->cusip), 0);
  EXPECT_EQ(target->barsize, 1);
  EXPECT_EQ(target->datasize, 1);
  EXPECT_EQ(target->openint.data[0], 7.0);
  qxCopyBarInfo(nullptr, target);
  qxCopyBarInfo(source, nullptr);
  EXPECT_EQ(target->reccnt, 40);
}

TEST(Bars, FindDateGivesTheFirstAtOrAfter) {
  BarSet bars(qxtest::workedBars());
  EXPECT_EQ(qxFindDate(bars, 0.0), 0);
  EXPECT_EQ(qxFindDate(bars, 40003.0), 3);
  EXPECT_EQ(qxFindDate(bars, 40003.5), 4);
  EXPECT_EQ(qxFindDate(bars, 50000.0), 12);
  BarSet empty;
  EXPECT_EQ(qxFindDate(empty, 1.0), 0);
}

TEST(Decimals, AreCutNotRounded) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(qxDecimals(12.345, 2), 34);
  EXPECT_EQ(qxDecimals(-7.25, 2), 25);
  EXPECT_EQ(qxDecimals(0.29, 2), 28);
  EXPECT_EQ(qxDecimals(3.0, 2), 0);
  EXPECT_EQ(qxDecimals(-7.5, 0), 0);
  EXPECT_EQ(qxDecimals(0.5, 8), 50000000);
  EXPECT_EQ(qxDecimals(2.2e-16, 9), 0);
  EXPECT_EQ(qxDecimals(0.5, INT32_MAX), INT32_MAX);
  EXPECT_EQ(qxDecimals(0.5, INT32_MIN), 0);
  EXPECT_EQ(qxDecimals(infinity, 2), 0);
  EXPECT_EQ(qxDecimals(std::nan(""), 2), 0);
}

}  // namespace
