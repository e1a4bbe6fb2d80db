// Candle construction: the four codes of every bar, and the geometry that the tests build on.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/indicator_frame.h"
#include "core/memory.h"
#include "patterns/candle_rules.h"

namespace {

// What stands in memory in front of the codes. The candle record has no field for the number of
// bars; here it lets every accessor and test know where the codes end. `codes` is the address of
// the codes themselves: a block of a caller's own making is told apart by it, and its length is
// taken on trust.
struct CodeBlock {
  const uint8_t* codes;
  int64_t bars;
};
static_assert(sizeof(CodeBlock) == 16);

uint8_t* allocateCodes(int32_t bars) {
  auto* block = static_cast<uint8_t*>(qx::allocateZeroed(
      sizeof(CodeBlock) + static_cast<uint64_t>(bars) * qx::kCodesPerBar, sizeof(uint8_t)));
  if (block == nullptr) return nullptr;
  uint8_t* codes = block + sizeof(CodeBlock);
  const CodeBlock header = {codes, bars};
  std::memcpy(block, &header, sizeof header);
  return codes;
}

CodeBlock headerOf(const uint8_t* codes) {
  CodeBlock header;
  std::memcpy(&header, codes - sizeof header, sizeof header);
  return header;
}

int32_t codedBars(const uint8_t* codes) {
  const CodeBlock header = headerOf(codes);
  return header.codes == codes ? static_cast<int32_t>(header.bars) : INT32_MAX;
}

void releaseCodes(uint8_t* codes) {
  if (headerOf(codes).codes != codes) {
    qx::release(codes);
    return;
  }
  uint8_t* block = codes - sizeof(CodeBlock);
  std::memset(block, 0, sizeof(CodeBlock));
  qx::release(block);
}

// The bar count of a set as far as its prices reach.
int32_t pricedBars(const qxBars& bars) {
  return std::max(0,
                  qx::heldLength(bars.barsize, {&bars.open, &bars.high, &bars.low, &bars.close}));
}

// The mean of |open - close| over the bars that have a body; not a number when none has.
double averageBody(const double* open, const double* close, int32_t count) {
  double sum = 0.0;
  int32_t bodies = 0;
  for (int32_t i = 0; i < count; ++i) {
    if (open[i] == close[i]) continue;
    sum += std::fabs(open[i] - close[i]);
    ++bodies;
  }
  return sum / bodies;
}

uint8_t shadowCode(double shadow, double reference, const qxCandles& factors) {
  if (shadow > reference * factors.shadowlong) return qx::kLongShadow;
  if (reference * factors.shadowshort > shadow) return qx::kShortShadow;
  return qx::kNormalShadow;
}

void classify(double open, double high, double low, double close, double average,
              const qxCandles& factors, uint8_t* codes) {
  const double top = qx::larger(open, close);
  const double bottom = qx::smaller(open, close);
  const double body = top - bottom;
  codes[0] = open > close ? qx::kBlack : close > open ? qx::kWhite : qx::kColourless;
  codes[1] = body > average                     ? qx::kLongBody
             : body > bottom * factors.equality ? qx::kSmallBody
                                                : qx::kDojiBody;
  // Shadows are measured in bodies, and where there is none by the tolerance of equal prices.
  const double reference = codes[0] == qx::kColourless ? top * factors.equality : body;
  codes[2] = shadowCode(high - top, reference, factors);
  codes[3] = shadowCode(bottom - low, reference, factors);
}

int32_t codeAt(const qxCandles* candles, int32_t index, int position) {
  if (candles == nullptr || candles->codes == nullptr) return 0;
  if (index < 0 || index >= codedBars(candles->codes)) return 0;
  return candles->codes[static_cast<int64_t>(index) * qx::kCodesPerBar + position];
}

// The candle of a bar without its codes; false outside the bar set.
bool readPrices(const qxBars* bars, int32_t index, qx::Candle& c) {
  if (bars == nullptr || index < 0 || index >= pricedBars(*bars)) return false;
  c = {};
  c.open = bars->open.data[index];
  c.high = bars->high.data[index];
  c.low = bars->low.data[index];
  c.close = bars->close.data[index];
  return true;
}

bool readPair(const qxBars* bars, int32_t index, qx::Candle& c, qx::Candle& before) {
  return index >= 1 && readPrices(bars, index, c) && readPrices(bars, index - 1, before);
}

}  // namespace

namespace qx {

int32_t testableBars(const qxBars* bars, const qxCandles* candles) {
  if (bars == nullptr || candles == nullptr || candles->codes == nullptr) return 0;
  return std::min(pricedBars(*bars), codedBars(candles->codes));
}

}  // namespace qx

int32_t qxCandleConstruct(const qxBars* bars, qxCandles* candles) {
  if (bars == nullptr || candles == nullptr) return QX_ERR_INVALID_PARM;
  uint8_t* codes = allocateCodes(std::max(0, bars->barsize));
  if (codes == nullptr) return QX_ERR_MALLOC;
  candles->codes = codes;
  if (candles->shadowlong == 0.0) candles->shadowlong = 2.0;
  if (candles->shadowshort == 0.0) candles->shadowshort = 0.75;
  if (candles->equality == 0.0) candles->equality = 0.005;

  const int32_t count = pricedBars(*bars);
  const double* open = bars->open.data;
  const double* close = bars->close.data;
  const double average = averageBody(open, close, count);
  for (int32_t i = 0; i < count; ++i, codes += qx::kCodesPerBar) {
    classify(open[i], bars->high.data[i], bars->low.data[i], close[i], average, *candles, codes);
  }
  return QX_SUCCESS;
}

void qxCandleFree(qxCandles* candles) {
  if (candles == nullptr || candles->codes == nullptr) return;
  releaseCodes(candles->codes);
  candles->codes = nullptr;
}

int32_t qxCandleColor(const qxCandles* candles, int32_t index) {
  return codeAt(candles, index, 0);
}

int32_t qxCandleShape(const qxCandles* candles, int32_t index) {
  return codeAt(candles, index, 1);
}

int32_t qxCandleTopShadow(const qxCandles* candles, int32_t index) {
  return codeAt(candles, index, 2);
}

int32_t qxCandleBotShadow(const qxCandles* candles, int32_t index) {
  return codeAt(candles, index, 3);
}

int32_t qxApproxEqual(double a, double b, double tolerance) {
  // Kept: the first price alone scales the tolerance, so the order of the two matters.
  return a * tolerance > std::fabs(a - b);
}

double qxBodyMidpoint(const qxBars* bars, int32_t index) {
  qx::Candle c;
  return readPrices(bars, index, c) ? qx::midpoint(c) : 0.0;
}

int32_t qxBodyGapUp(const qxBars* bars, int32_t index) {
  qx::Candle c, before;
  return readPair(bars, index, c, before) && qx::bodyGapUp(c, before);
}

int32_t qxBodyGapDn(const qxBars* bars, int32_t index) {
  qx::Candle c, before;
  return readPair(bars, index, c, before) && qx::bodyGapDown(c, before);
}

int32_t qxWesternGapUp(const qxBars* bars, int32_t index) {
  qx::Candle c, before;
  return readPair(bars, index, c, before) && qx::westernGapUp(c, before);
}

int32_t qxWesternGapDn(const qxBars* bars, int32_t index) {
  qx::Candle c, before;
  return readPair(bars, index, c, before) && qx::westernGapDown(c, before);
}
