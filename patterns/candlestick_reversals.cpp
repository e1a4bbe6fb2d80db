// Candlestick reversals of three and of five bars. c[0] is the bar tested, c[k] the one k bars
// before it.
#include "patterns/candle_rules.h"

namespace {

using namespace qx;  // the words of candle_rules.h

// The star patterns but for the body of the star itself, c[1].
bool isEveningStar(const Candle (&c)[3]) {
  return isBlack(c[0]) && isWhite(c[2]) && isLong(c[2]) && bodyGapUp(c[1], c[2]) &&
         midpoint(c[2]) > c[0].close;
}

bool isMorningStar(const Candle (&c)[3]) {
  return isWhite(c[0]) && !isDoji(c[0]) && isBlack(c[2]) && isLong(c[2]) &&
         bodyGapDown(c[1], c[2]) && c[0].open > c[1].open && c[0].close > midpoint(c[2]);
}

// The signed lengths of a black and of a white body.
double fall(const Candle& c) {
  return c.open - c.close;
}
double rise(const Candle& c) {
  return c.close - c.open;
}

}  // namespace

int32_t qxAbandonedBabyBottom(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[0]) && isBlack(c[2]) && isLong(c[2]) && isDoji(c[1]) &&
         westernGapDown(c[1], c[2]) && westernGapUp(c[0], c[1]) && c[0].close > midpoint(c[2]);
}

int32_t qxAbandonedBabyTop(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[0]) && isWhite(c[2]) && isLong(c[2]) && isDoji(c[1]) &&
         westernGapUp(c[1], c[2]) && westernGapDown(c[0], c[1]) && midpoint(c[2]) > c[0].close;
}

int32_t qxEveningDojiStar(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isDoji(c[1]) && isEveningStar(c);
}

int32_t qxEveningStar(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isSmall(c[1]) && isEveningStar(c);
}

int32_t qxMorningDojiStar(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isDoji(c[1]) && isMorningStar(c);
}

int32_t qxMorningStar(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isSmall(c[1]) && isMorningStar(c);
}

int32_t qxDragonflyDojiBull(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[2]) && isBlack(c[1]) && isDoji(c[0]) && hasShortUpperShadow(c[0]) &&
         hasLongLowerShadow(c[0]);
}

int32_t qxDragonflyDojiBear(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[2]) && isWhite(c[1]) && isDoji(c[0]) && hasShortUpperShadow(c[0]) &&
         hasLongLowerShadow(c[0]);
}

int32_t qxMeetingLinesBear(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[2]) && isWhite(c[1]) && isBlack(c[0]) && approx(c[0].close, c[1].close, candles);
}

int32_t qxMeetingLinesBull(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[2]) && isBlack(c[1]) && isWhite(c[0]) && approx(c[0].close, c[1].close, candles);
}

int32_t qxThreeOutsideDown(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[2]) && isSmall(c[2]) && hasShortUpperShadow(c[2]) && isBlack(c[1]) &&
         hasShortLowerShadow(c[1]) && isOutside(c[1], c[2]) && isBlack(c[0]) &&
         hasShortLowerShadow(c[0]) && c[1].low > c[0].close;
}

int32_t qxThreeOutsideUp(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[2]) && isSmall(c[2]) && hasShortUpperShadow(c[2]) && isWhite(c[1]) &&
         hasShortLowerShadow(c[1]) && isOutside(c[1], c[2]) && isWhite(c[0]) &&
         hasShortUpperShadow(c[0]) && c[0].close > c[1].high;
}

int32_t qxThreeStarsInTheSouth(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[2]) && isLong(c[2]) && hasShortUpperShadow(c[2]) && hasLongLowerShadow(c[2]) &&
         isBlack(c[1]) && c[1].open > c[2].close && isInside(c[1], c[2]) && isBlack(c[0]) &&
         isShaven(c[0]);
}

int32_t qxUpsideGap2Crows(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[3];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[0]) && isBlack(c[1]) && isWhite(c[2]) && isLong(c[2]) && bodyGapUp(c[1], c[2]) &&
         c[1].close > c[0].close && c[0].open > c[1].open;
}

int32_t qxBreakawayBear(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[5];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  // Kept: black bars that end in a white one, and the mirror for the bull.
  return isBlack(c[4]) && isLong(c[4]) && isBlack(c[3]) && isBlack(c[2]) && isBlack(c[1]) &&
         fall(c[4]) > fall(c[3]) && fall(c[4]) > fall(c[2]) && fall(c[4]) > fall(c[1]) &&
         isWhite(c[0]) && isLong(c[0]) && c[4].close > c[0].open && c[0].close > c[3].close;
}

int32_t qxBreakawayBull(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[5];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isWhite(c[4]) && isLong(c[4]) && isWhite(c[3]) && isWhite(c[2]) && isWhite(c[1]) &&
         rise(c[4]) > rise(c[3]) && rise(c[4]) > rise(c[2]) && rise(c[4]) > rise(c[1]) &&
         isBlack(c[0]) && isLong(c[0]) && c[0].open > c[4].close && c[3].close > c[0].close;
}

int32_t qxLadderBottom(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[5];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[4]) && isLong(c[4]) && isBlack(c[3]) && isLong(c[3]) && isBlack(c[2]) &&
         isLong(c[2]) && isBlack(c[1]) && hasLongUpperShadow(c[1]) && c[1].high > c[2].close &&
         isWhite(c[0]) && isLong(c[0]) && hasShortUpperShadow(c[0]) && bodyGapUp(c[0], c[1]);
}

int32_t qxTriStarBear(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[5];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  // Kept: the bear compares two closes more than the bull.
  return isWhite(c[4]) && isWhite(c[3]) && c[2].close > c[3].close && isDoji(c[2]) &&
         isDoji(c[1]) && isDoji(c[0]) && c[1].close > c[2].close && c[1].close > c[0].close;
}

int32_t qxTriStarBull(const qxBars* bars, const qxCandles* candles, int32_t index) {
  qx::Candle c[5];
  if (!qx::readCandles(bars, candles, index, c)) return 0;
  return isBlack(c[4]) && isBlack(c[3]) && c[3].close > c[2].close && isDoji(c[2]) &&
         isDoji(c[1]) && isDoji(c[0]);
}
