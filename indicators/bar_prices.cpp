// Prices composed from one bar, their series, and the true range.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/indicator_frame.h"

namespace {

struct Prices {
  const double* open;
  const double* high;
  const double* low;
  const double* close;
};

Prices pricesOf(const qxBars& bars) {
  return {bars.open.data, bars.high.data, bars.low.data, bars.close.data};
}

// The bars up to `length` that hold every price a composite reads.
int32_t heldPrices(const qxBars& bars, int32_t length, bool withOpen) {
  length = qx::heldBars(bars, length);
  return withOpen ? qx::heldLength(length, {&bars.open}) : length;
}

double typicalPrice(const Prices& p, int64_t i) {
  return (p.high[i] + p.low[i] + p.close[i]) / 3.0;
}

double weightedClose(const Prices& p, int64_t i) {
  return (p.high[i] + p.low[i] + 2.0 * p.close[i]) / 4.0;
}

double medianPrice(const Prices& p, int64_t i) {
  return (p.high[i] + p.low[i]) / 2.0;
}

// An open of 0 is a missing one.
double averagePrice(const Prices& p, int64_t i) {
  if (p.open[i] == 0.0) return (p.high[i] + p.low[i] + p.close[i]) / 3.0;
  return (p.open[i] + p.high[i] + p.low[i] + p.close[i]) / 4.0;
}

double trueHigh(const Prices& p, int64_t i) {
  return i == 0 || p.high[i] > p.close[i - 1] ? p.high[i] : p.close[i - 1];
}

double trueLow(const Prices& p, int64_t i) {
  return i == 0 || p.low[i] < p.close[i - 1] ? p.low[i] : p.close[i - 1];
}

double trueRange(const Prices& p, int64_t i) {
  return trueHigh(p, i) - trueLow(p, i);
}

using Composite = double (*)(const Prices& prices, int64_t i);

template <Composite composite>
double priceAt(const qxBars* bars, int32_t index, bool withOpen = false) {
  if (bars == nullptr || index < 0) return 0.0;
  if (index >= heldPrices(*bars, bars->barsize, withOpen)) return 0.0;
  return composite(pricesOf(*bars), index);
}

template <Composite composite>
int32_t priceSeries(const qxBars* bars, qxArray* out, int32_t start, bool withOpen = false) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  const Prices prices = pricesOf(*bars);
  const int32_t end = heldPrices(*bars, length, withOpen);
  for (int64_t i = s; i < end; ++i) out->data[i] = composite(prices, i);
  return qx::markFirstValid(s, {out});
}

void trueRanges(const Prices& p, double* out, int64_t length, int64_t s) {
  if (s >= length) return;
  out[s] = std::fabs(p.high[s] - p.low[s]);
  for (int64_t i = s + 1; i < length; ++i) {
    const double previousClose = p.close[i - 1];
    out[i] =
        std::max(std::max(std::fabs(p.high[i] - p.low[i]), std::fabs(p.high[i] - previousClose)),
                 std::fabs(p.low[i] - previousClose));
  }
}

}  // namespace

double qxTypicalPrice(const qxBars* bars, int32_t index) {
  return priceAt<typicalPrice>(bars, index);
}

double qxWeightedClose(const qxBars* bars, int32_t index) {
  return priceAt<weightedClose>(bars, index);
}

double qxMedianPrice(const qxBars* bars, int32_t index) {
  return priceAt<medianPrice>(bars, index);
}

double qxAvgPrice(const qxBars* bars, int32_t index) {
  return priceAt<averagePrice>(bars, index, true);
}

double qxTrueHigh(const qxBars* bars, int32_t index) {
  return priceAt<trueHigh>(bars, index);
}

double qxTrueLow(const qxBars* bars, int32_t index) {
  return priceAt<trueLow>(bars, index);
}

double qxTrueRange(const qxBars* bars, int32_t index) {
  return priceAt<trueRange>(bars, index);
}

int32_t qxTypicalPrices(const qxBars* bars, qxArray* out, int32_t start) {
  return priceSeries<typicalPrice>(bars, out, start);
}

int32_t qxWeightedCloses(const qxBars* bars, qxArray* out, int32_t start) {
  return priceSeries<weightedClose>(bars, out, start);
}

int32_t qxMedianPrices(const qxBars* bars, qxArray* out, int32_t start) {
  return priceSeries<medianPrice>(bars, out, start);
}

int32_t qxAvgPrices(const qxBars* bars, qxArray* out, int32_t start) {
  return priceSeries<averagePrice>(bars, out, start, true);
}

int32_t qxTR(const qxBars* bars, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start);
  trueRanges(pricesOf(*bars), out->data, qx::heldBars(*bars, length), s);
  return qx::markFirstValid(s, {out});
}
