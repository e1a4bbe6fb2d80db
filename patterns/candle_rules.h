// The vocabulary of the candlestick tests: the candles that end at a bar, their colours, bodies and
// shadows, and how two of them lie to each other.
#ifndef QUORVEX_PATTERNS_CANDLE_RULES_H
#define QUORVEX_PATTERNS_CANDLE_RULES_H

#include <cstdint>

#include "quorvex.h"

namespace qx {

enum CandleColour : uint8_t { kColourless = 0, kBlack = 1, kWhite = 2 };
enum BodyCode : uint8_t { kDojiBody = 0, kSmallBody = 1, kLongBody = 3 };
enum ShadowCode : uint8_t { kShortShadow = 1, kNormalShadow = 2, kLongShadow = 3 };

// One bar with its codes, in the order in which a code block holds them.
struct Candle {
  double open, high, low, close;
  uint8_t colour, body, upperShadow, lowerShadow;
};

inline constexpr int kCodesPerBar = 4;

// Bars that can be tested: those whose prices the bar set and whose codes the record really hold.
// 0 for null records and for a record without codes.
int32_t testableBars(const qxBars* bars, const qxCandles* candles);

// Reads the N candles that end at bar i, newest first: c[k] is the candle of bar i - k. False when
// one of them is not there.
template <int N>
bool readCandles(const qxBars* bars, const qxCandles* candles, int32_t i, Candle (&c)[N]) {
  if (i < N - 1 || i >= testableBars(bars, candles)) return false;
  for (int k = 0; k < N; ++k) {
    const int32_t bar = i - k;
    const uint8_t* codes = candles->codes + static_cast<int64_t>(bar) * kCodesPerBar;
    c[k] = {bars->open.data[bar],
            bars->high.data[bar],
            bars->low.data[bar],
            bars->close.data[bar],
            codes[0],
            codes[1],
            codes[2],
            codes[3]};
  }
  return true;
}

inline bool isBlack(const Candle& c) {
  return c.colour == kBlack;
}
inline bool isWhite(const Candle& c) {
  return c.colour == kWhite;
}
inline bool isDoji(const Candle& c) {
  return c.body == kDojiBody;
}
inline bool isSmall(const Candle& c) {
  return c.body == kSmallBody;
}
inline bool isLong(const Candle& c) {
  return c.body == kLongBody;
}
inline bool hasShortUpperShadow(const Candle& c) {
  return c.upperShadow == kShortShadow;
}
inline bool hasLongUpperShadow(const Candle& c) {
  return c.upperShadow == kLongShadow;
}
inline bool hasShortLowerShadow(const Candle& c) {
  return c.lowerShadow == kShortShadow;
}
inline bool hasLongLowerShadow(const Candle& c) {
  return c.lowerShadow == kLongShadow;
}

inline double larger(double a, double b) {
  return a > b ? a : b;
}
inline double smaller(double a, double b) {
  return b > a ? a : b;
}
inline double upperEnd(const Candle& c) {
  return larger(c.open, c.close);
}
inline double lowerEnd(const Candle& c) {
  return smaller(c.open, c.close);
}
inline double midpoint(const Candle& c) {
  return (c.open + c.close) / 2;
}

// Open and close at the two ends of the range: no shadows.
inline bool isShaven(const Candle& c) {
  return (c.open == c.high && c.close == c.low) || (c.open == c.low && c.close == c.high);
}

inline bool isInside(const Candle& c, const Candle& before) {
  return before.high > c.high && c.low > before.low;
}
inline bool isOutside(const Candle& c, const Candle& before) {
  return c.high > before.high && before.low > c.low;
}
inline bool bodyGapUp(const Candle& c, const Candle& before) {
  return lowerEnd(c) > upperEnd(before);
}
inline bool bodyGapDown(const Candle& c, const Candle& before) {
  return lowerEnd(before) > upperEnd(c);
}
inline bool westernGapUp(const Candle& c, const Candle& before) {
  return c.low > before.high;
}
inline bool westernGapDown(const Candle& c, const Candle& before) {
  return before.low > c.high;
}

// Prices that the record's tolerance calls equal. The first one scales the tolerance.
inline bool approx(double a, double b, const qxCandles* candles) {
  return qxApproxEqual(a, b, candles->equality) != 0;
}

}  // namespace qx

#endif  // QUORVEX_PATTERNS_CANDLE_RULES_H
