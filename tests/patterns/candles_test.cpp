#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;
using qxtest::barsFrom;

struct Codes {
  int32_t colour, body, top, bottom;
  bool operator==(const Codes&) const = default;
};

Codes codesOf(const qxCandles& candles, int32_t i) {
  return {qxCandleColor(&candles, i), qxCandleShape(&candles, i), qxCandleTopShadow(&candles, i),
          qxCandleBotShadow(&candles, i)};
}

TEST(Candles, ConstructClassifiesEveryBar) {
  // The five bodies average to 2 exactly; the bar without one is left out.
  BarSet bars(
      barsFrom("100 112 99 104 / 100 101 99.5 100 / 100 101 99.8 100.5 / "
               "100 100.6 99 100.5009765625 / 100 103.5 100 102 / 103 105.5 95 100.0009765625"));
  const Codes expected[] = {{2, 3, 2, 1},  // a shadow of twice the body is not long
                            {0, 0, 2, 2},  // measured by 0.5, the tolerance
                            {2, 0, 2, 1},  // a doji may have a colour
                            {2, 1, 1, 2},  // the tolerance is one of the lower end
                            {2, 1, 2, 1},  // nor is a body of the average long, 3/4 short
                            {1, 3, 2, 2}};
  qxCandles candles = {};
  EXPECT_EQ(qxCandleConstruct(bars, &candles), QX_SUCCESS);
  EXPECT_EQ(candles.shadowlong, 2.0);
  EXPECT_EQ(candles.shadowshort, 0.75);
  EXPECT_EQ(candles.equality, 0.005);
  for (int32_t i = 0; i < 6; ++i) EXPECT_EQ(codesOf(candles, i), expected[i]) << i;
  qxCandleFree(&candles);
  EXPECT_EQ(candles.codes, nullptr);
  EXPECT_EQ(candles.equality, 0.005) << "the factors stay";

  candles = {nullptr, 3.0, 0.25, 0.001};
  EXPECT_EQ(qxCandleConstruct(bars, &candles), QX_SUCCESS);
  EXPECT_EQ(candles.shadowlong, 3.0);
  EXPECT_EQ(candles.shadowshort, 0.25);
  EXPECT_EQ(codesOf(candles, 1), (Codes{0, 0, 3, 3})) << "measured by 0.1";
  EXPECT_EQ(codesOf(candles, 2), (Codes{2, 1, 2, 2}));
  qxCandleFree(&candles);
  qxCandleFree(&candles);
  qxCandleFree(nullptr);
}

TEST(Candles, WithoutAnyBodyNoBodyIsLong) {
  BarSet bars(barsFrom("100 102 98 100 / 50 50 50 50"));
  qxCandles candles = {};
  EXPECT_EQ(qxCandleConstruct(bars, &candles), QX_SUCCESS);
  EXPECT_EQ(codesOf(candles, 0), (Codes{0, 0, 3, 3}));
  EXPECT_EQ(codesOf(candles, 1), (Codes{0, 0, 1, 1}));
  qxCandleFree(&candles);
}

TEST(Candles, CodesOutsideTheConstructedBarsAreZero) {
  BarSet bars(barsFrom("100 105 99 104"));
  qxCandles candles = {};
  EXPECT_EQ(codesOf(candles, 0), Codes{});
  EXPECT_EQ(qxCandleConstruct(bars, &candles), QX_SUCCESS);
  for (int32_t outside : {-1, 1, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(codesOf(candles, outside), Codes{});
  }
  EXPECT_EQ(qxCandleColor(nullptr, 0), 0);
  qxCandleFree(&candles);

  BarSet none;
  EXPECT_EQ(qxCandleConstruct(none, &candles), QX_SUCCESS);
  EXPECT_NE(candles.codes, nullptr);
  EXPECT_EQ(codesOf(candles, 0), Codes{});
  qxCandleFree(&candles);
  EXPECT_EQ(qxCandleConstruct(nullptr, &candles), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCandleConstruct(bars, nullptr), QX_ERR_INVALID_PARM);
}

TEST(Candles, CodesOfTheCallersOwnMakingAreTaken) {
  BarSet bars(barsFrom("100 105 100 104"));
  // The codes stand inside a larger block, as a caller's codes of several sets may.
  uint8_t own[32] = {};
  own[16] = 2;
  own[17] = 3;
  qxCandles candles = {own + 16, 2.0, 0.75, 0.005};
  EXPECT_EQ(codesOf(candles, 0), (Codes{2, 3, 0, 0}));
  EXPECT_EQ(qxBeltHoldLineBull(bars, &candles, 0), 1);
  EXPECT_EQ(qxBeltHoldLineBull(bars, &candles, 1), 0) << "still bounded by the bars";
}

TEST(Candles, GeometryOfNeighbours) {
  BarSet bars(barsFrom("100 104 99 103 / 104 106 104.1 105 / 103 104 101 102"));
  EXPECT_EQ(qxBodyMidpoint(bars, 0), 101.5);
  EXPECT_EQ(qxBodyGapUp(bars, 1), 1);
  EXPECT_EQ(qxBodyGapDn(bars, 1), 0);
  EXPECT_EQ(qxWesternGapUp(bars, 1), 1);
  EXPECT_EQ(qxBodyGapDn(bars, 2), 1);
  EXPECT_EQ(qxWesternGapDn(bars, 2), 1);
  bars->high.data[2] = 104.1;  // ranges that touch do not gap, nor do bodies
  bars->open.data[2] = 104.0;
  EXPECT_EQ(qxWesternGapDn(bars, 2), 0);
  EXPECT_EQ(qxBodyGapDn(bars, 2), 0);
  for (int32_t index : {INT32_MIN, -1, 0, 3, INT32_MAX}) {
    EXPECT_EQ(qxBodyGapUp(bars, index) + qxBodyGapDn(bars, index), 0);
    EXPECT_EQ(qxWesternGapUp(bars, index) + qxWesternGapDn(bars, index), 0);
  }
  EXPECT_EQ(qxBodyMidpoint(bars, 3), 0.0);
  EXPECT_EQ(qxBodyMidpoint(nullptr, 0), 0.0);
  EXPECT_EQ(qxBodyGapUp(nullptr, 1), 0);
}

TEST(Candles, ApproximateEqualityIsRelativeToTheFirstPrice) {
  EXPECT_EQ(qxApproxEqual(100, 99.75, 0.0025), 0) << "strict";
  EXPECT_EQ(qxApproxEqual(100, 101, 0.00995), 0);
  EXPECT_EQ(qxApproxEqual(101, 100, 0.00995), 1);
  EXPECT_EQ(qxApproxEqual(-100, -100, 0.01), 0) << "negative prices are never near";
  EXPECT_EQ(qxApproxEqual(qxtest::kNaN, 1, 0.01), 0);
}

}  // namespace
