// Candlestick patterns of one and of two bars. c[0] is the bar tested, c[1] the one before it.
#include "patterns/candle_rules.h"

namespace {

using namespace qx;  // the words of candle_rules.h

// The harami: a body within the long body before it.
bool isInBlackBody(const Candle& c, const Candle& before) {
  return isBlack(before) && isLong(before) && c.open > before.close && before.open > c.open &&
         c.close > before.close && before.open > c.close;
}

bool isInWhiteBody(const Candle& c, const Candle& before) {
  return isWhite(before) && isLong(before) && before.close > c.open && c.open > before.open &&
         before.close > c.close && c.close > before.open;
}

}  // namespace

int32_t qxBeltHoldLineBull(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[1];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && isLong(c[0]) && c[0].open == c[0].low;
}

int32_t qxBeltHoldLineBear(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[1];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[0]) && isLong(c[0]) && c[0].open == c[0].high;
}

int32_t qxGravestoneDoji(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[1];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isDoji(c[0]) && c[0].low == lowerEnd(c[0]);
}

int32_t qxLongLeggedDoji(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[1];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isDoji(c[0]) && hasLongUpperShadow(c[0]) && hasLongLowerShadow(c[0]);
}

int32_t qxHighWave(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[1];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  // Kept: one long shadow is enough.
  return isSmall(c[0]) && (hasLongUpperShadow(c[0]) || hasLongLowerShadow(c[0]));
}

int32_t qxHammer(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[1];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  // Kept: a hammer is black here, a hanging man white.
  return isBlack(c[0]) && !isLong(c[0]) && hasShortUpperShadow(c[0]) && hasLongLowerShadow(c[0]);
}

int32_t qxHangingman(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[1];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && !isLong(c[0]) && hasShortUpperShadow(c[0]) && hasLongLowerShadow(c[0]);
}

int32_t qxInvertedHammer(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[1];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && !isLong(c[0]) && hasLongUpperShadow(c[0]) && hasShortLowerShadow(c[0]);
}

int32_t qxShootingStar(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[1];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  // Kept: a shooting star is white here.
  return isWhite(c[0]) && isSmall(c[0]) && hasLongUpperShadow(c[0]) && hasShortLowerShadow(c[0]);
}

int32_t qxCounterAttackBear(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[0]) && !isDoji(c[0]) && isWhite(c[1]) && !isDoji(c[1]) &&
         approx(c[0].close, c[1].close, candles) &&
         c[0].open - c[1].close >= c[1].close - c[1].open;
}

int32_t qxCounterAttackBull(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && !isDoji(c[0]) && isBlack(c[1]) && !isDoji(c[1]) &&
         approx(c[0].close, c[1].close, candles) &&
         c[1].close - c[0].open >= c[1].open - c[1].close;
}

int32_t qxDarkCloudCover(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[0]) && isWhite(c[1]) && isLong(c[1]) && c[0].open > c[1].high &&
         midpoint(c[1]) > c[0].close;
}

int32_t qxPiercingLine(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && !isDoji(c[0]) && isBlack(c[1]) && isLong(c[1]) &&
         c[1].close > c[0].open && c[0].close > midpoint(c[1]);
}

int32_t qxEngulfingLineBear(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[0]) && isLong(c[0]) && isWhite(c[1]) && isSmall(c[1]) &&
         c[0].open > c[1].close && c[1].open > c[0].close;
}

int32_t qxEngulfingLineBull(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && isLong(c[0]) && isBlack(c[1]) && isSmall(c[1]) &&
         c[1].close > c[0].open && c[0].close > c[1].open;
}

int32_t qxHaramiBlack(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isSmall(c[0]) && isInBlackBody(c[0], c[1]);
}

int32_t qxHaramiCrossBlack(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isDoji(c[0]) && isInBlackBody(c[0], c[1]);
}

int32_t qxHaramiWhite(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isSmall(c[0]) && isInWhiteBody(c[0], c[1]);
}

int32_t qxHaramiCrossWhite(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isDoji(c[0]) && isInWhiteBody(c[0], c[1]);
}

int32_t qxInNeckLine(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && isSmall(c[0]) && isBlack(c[1]) && !isDoji(c[1]) &&
         approx(c[0].close, c[1].low, candles) && c[0].close > c[1].low;
}

int32_t qxThrustingLine(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && isBlack(c[1]) && c[0].close > c[1].close && midpoint(c[1]) > c[0].close;
}

int32_t qxSeperatingLineBear(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[0]) && !isDoji(c[0]) && isWhite(c[1]) && !isDoji(c[1]) && c[0].open == c[1].open;
}

int32_t qxSeperatingLineBull(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && !isDoji(c[0]) && isBlack(c[1]) && !isDoji(c[1]) && c[0].open == c[1].open;
}

int32_t qxStalledPattern(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && isSmall(c[0]) && isWhite(c[1]) && isLong(c[1]) &&
         approx(c[0].open, c[1].close, candles);
}

int32_t qxTweezerBottoms(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  // Kept: tweezers compare the close with the next open, not the lows.
  return isBlack(c[1]) && !isDoji(c[1]) && isWhite(c[0]) && !isDoji(c[0]) &&
         c[1].close == c[0].open;
}

int32_t qxTweezerTops(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[2];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  // Kept: tweezers compare the close with the next open, not the highs.
  return isWhite(c[1]) && !isDoji(c[1]) && isBlack(c[0]) && !isDoji(c[0]) &&
         c[1].close == c[0].open;
}
