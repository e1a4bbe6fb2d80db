#include "core/indicator_frame.h"

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

TEST(CheckArgs, RefusesWhatCannotBeComputed) {
  Series in{1, 2, 3}, out, none, empty{1}, room{5, 5, 5}, noCapacity;
  qxReSizeArray(empty, 0);
  qxAllocArray(noCapacity, 0);
  EXPECT_EQ(qxCheckArgs({}, {}, {out}), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCheckArgs({}, {none}, {out}), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCheckArgs({}, {in, nullptr}, {out}), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCheckArgs({}, {in}, {nullptr}), QX_ERR_INVALID_PARM);
  EXPECT_EQ(out.record.data, nullptr) << "checks precede writes";
  EXPECT_EQ(qxCheckArgs({}, {in, empty}, {out}), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCheckArgs({}, {in}, {room, in}), QX_ERR_INVALID_PARM);
  EXPECT_EQ(room[0], 5.0);
  EXPECT_EQ(qxCheckArgs({}, {in}, {noCapacity}), QX_ERR_INVALID_PARM);
}

TEST(CheckArgs, RefusesEveryBlockOfABarSetButTheDates) {
  BarSet bars(workedBars());
  for (qxArray* block : seriesOf(bars.record)) {
    qxArray alias = *block;
    EXPECT_EQ(qxCheckArgs({bars}, {}, {&alias}), block == &bars->date ? 12 : QX_ERR_INVALID_PARM);
  }
}

TEST(CheckArgs, SizesFallFromOutputToOutput) {
  BarSet bars(workedBars());
  Series in{1, 2, 3, 4, 5};
  Series first, second{9, 9, 9}, third;
  qxReSizeArray(second, 1);
  first.record.firstvalid = 4;
  EXPECT_EQ(qxCheckArgs({bars}, {in}, {first, second, third}), 3);
  EXPECT_EQ(first.record.datasize, 5) << "the smallest input capacity";
  EXPECT_EQ(first.record.size, 5) << "prepared before the smaller one was met";
  EXPECT_EQ(first.record.firstvalid, 0) << "a fresh allocation";
  EXPECT_EQ(second.values(), (std::vector<double>{0, 0, 0}));
  EXPECT_EQ(third.record.datasize, 5);
  EXPECT_EQ(third.record.size, 3);
}

TEST(CheckArgs, ClearsTheWholeCapacityAndKeepsFirstValid) {
  Series in{1, 2};
  Series out({7, 7, 7, 7}, 3);
  EXPECT_EQ(qxCheckArgs({}, {in}, {out}), 2);
  EXPECT_EQ(out.record.size, 2);
  for (int32_t i = 0; i < 4; ++i) EXPECT_EQ(out[i], 0.0);
  EXPECT_EQ(out.record.firstvalid, 3);
}

TEST(StartIndex, RaisesToInputsAndNeverBelowZero) {
  Series a({1, 2}, 3), b({1}, 5);
  EXPECT_EQ(qxMaxFirstValid(4, {a, b}), 5);
  EXPECT_EQ(qxMaxFirstValid(9, {a, b}), 9);
  EXPECT_EQ(qxMaxFirstValid(-2, {}), -2);
  EXPECT_EQ(qx::startIndex(INT32_MIN), 0);
  Series out;
  qxSetMaxFirstValid(0);
  qx::markFirstValid(int64_t{1} << 40, {out});
  EXPECT_EQ(out.record.firstvalid, INT32_MAX);
  qxSetMaxFirstValid(0);
}

}  // namespace
