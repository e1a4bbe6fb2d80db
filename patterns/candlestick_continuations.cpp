// Candlestick patterns of three to five bars that continue or exhaust a move. c[0] is the bar
// tested, c[k] the one k bars before it.
#include "patterns/candle_rules.h"

namespace {

using namespace qx;  // the words of candle_rules.h

bool isSideBySideWhite(const Candle (&c)[3]) {
  return isWhite(c[0]) && !isDoji(c[0]) && isWhite(c[1]) && !isDoji(c[1]) && c[0].body == c[1].body;
}

bool isSoldier(const Candle& c, const qxCandles* candles) {
  return isWhite(c) && hasShortUpperShadow(c) && approx(c.high, c.close, candles);
}

double rise(const Candle& c) {
  return c.close - c.open;
}

}  // namespace

int32_t qxAdvanceBlock(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  if (!isWhite(c[2]) || !isWhite(c[1]) || !isWhite(c[0])) return 0;
  if (!(c[0].close > c[1].close && c[1].close > c[2].close)) return 0;
  if (rise(c[2]) > rise(c[1]) && rise(c[1]) > rise(c[0])) return 1;
  // Bodies that do not shrink still tell of a tiring advance when shadows grow above them.
  return !hasLongUpperShadow(c[2]) && hasLongUpperShadow(c[1]) && hasLongUpperShadow(c[0]);
}

int32_t qxDeliberationBull(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[2]) && isLong(c[2]) && hasShortUpperShadow(c[2]) && isWhite(c[1]) &&
         isLong(c[1]) && hasShortUpperShadow(c[1]) && isWhite(c[0]) && isSmall(c[0]) &&
         bodyGapUp(c[0], c[1]);
}

int32_t qxDeliberationBear(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[2]) && isLong(c[2]) && hasShortLowerShadow(c[2]) && isBlack(c[1]) &&
         isLong(c[1]) && hasShortLowerShadow(c[1]) && isBlack(c[0]) && isSmall(c[0]) &&
         bodyGapDown(c[0], c[1]);
}

int32_t qxOnNeck(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[2]) && isBlack(c[1]) && isLong(c[1]) && isWhite(c[0]) && c[1].low > c[0].open &&
         approx(c[0].close, c[1].low, candles);
}

int32_t qxSideBySideWhiteGapDn(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isSideBySideWhite(c) && bodyGapDown(c[1], c[2]) && approx(c[0].close, c[1].close, candles);
}

int32_t qxSideBySideWhiteGapUp(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isSideBySideWhite(c) && bodyGapUp(c[1], c[2]) && approx(c[0].open, c[1].open, candles);
}

int32_t qxTasukiDownsideGap(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && isBlack(c[1]) && isBlack(c[2]) && c[0].body == c[1].body &&
         c[0].open > c[1].close && c[0].close > c[1].open && c[2].close > c[0].close &&
         c[2].close > c[1].open;
}

int32_t qxTasukiUpsideGap(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[0]) && isWhite(c[1]) && isWhite(c[2]) && c[0].body == c[1].body &&
         c[1].close > c[0].open && c[1].open > c[0].close && c[0].close > c[2].close &&
         c[1].open > c[2].close;
}

int32_t qxThreeGapsUp(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[4];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return bodyGapUp(c[0], c[1]) && bodyGapUp(c[1], c[2]) && bodyGapUp(c[2], c[3]);
}

int32_t qxThreeGapsDown(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[4];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return bodyGapDown(c[0], c[1]) && bodyGapDown(c[1], c[2]) && bodyGapDown(c[2], c[3]);
}

int32_t qxThreeWhiteSoldiers(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isSoldier(c[0], candles) && isSoldier(c[1], candles) && isSoldier(c[2], candles) &&
         c[0].high > c[1].high && c[1].high > c[2].high;
}

int32_t qxThreeLineStrikeBear(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[4];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[3]) && isLong(c[3]) && isBlack(c[2]) && isLong(c[2]) && isBlack(c[1]) &&
         isLong(c[1]) && c[3].close > c[2].close && c[2].close > c[1].close && isWhite(c[0]) &&
         c[1].close > c[0].open && c[0].close > c[3].open;
}

int32_t qxThreeLineStrikeBull(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[4];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[3]) && isLong(c[3]) && isWhite(c[2]) && isLong(c[2]) && isWhite(c[1]) &&
         isLong(c[1]) && c[2].close > c[3].close && c[1].close > c[2].close && isBlack(c[0]) &&
         c[0].open > c[1].close && c[3].open > c[0].close;
}

int32_t qxFalling3Method(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[5];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[0]) && isLong(c[0]) && isWhite(c[1]) && isSmall(c[1]) && isWhite(c[2]) &&
         isSmall(c[2]) && isWhite(c[3]) && isSmall(c[3]) && isBlack(c[4]) && isLong(c[4]) &&
         c[4].close > c[0].close && c[3].open > c[4].close && c[2].close > c[3].close &&
         c[1].close > c[2].close && larger(c[0].open, c[4].open) >= c[1].close;
}

int32_t qxRising3Method(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[5];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && isLong(c[0]) && isBlack(c[1]) && isSmall(c[1]) && isBlack(c[2]) &&
         isSmall(c[2]) && isBlack(c[3]) && isSmall(c[3]) && isWhite(c[4]) && isLong(c[4]) &&
         c[0].close > c[4].close && c[4].close > c[3].open && c[3].close > c[2].close &&
         c[2].close > c[1].close && c[1].close >= smaller(c[0].open, c[4].open);
}

int32_t qxMatHoldPattern(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[5];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && !isDoji(c[0]) && isBlack(c[1]) && isSmall(c[1]) && isBlack(c[2]) &&
         isSmall(c[2]) && isBlack(c[3]) && isSmall(c[3]) && isWhite(c[4]) && isLong(c[4]) &&
         bodyGapUp(c[3], c[4]) && bodyGapUp(c[0], c[1]) && c[3].open > c[2].open &&
         c[2].open > c[1].open;
}
