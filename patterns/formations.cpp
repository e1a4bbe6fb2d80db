// One- and two-bar formations of a bar set, crossovers of two series and turns of one, and the
// fills that run them over a range.
#include <algorithm>
#include <cstdint>

#include "core/ascii.h"
#include "core/indicator_frame.h"
#include "quorvex.h"

namespace {

// The prices that formations compare, and the bars that all three hold.
struct Prices {
  const double* high;
  const double* low;
  const double* close;
  int32_t count;
};

Prices pricesOf(const qxBars& bars, int32_t length) {
  return {bars.high.data, bars.low.data, bars.close.data,
          qx::heldLength(length, {&bars.high, &bars.low, &bars.close})};
}

// The tests of bar i against bar i - 1; i is at least 1.

bool gapUp(const Prices& p, int32_t i) {
  return p.low[i] > p.high[i - 1];
}

bool gapDown(const Prices& p, int32_t i) {
  return p.low[i - 1] > p.high[i];
}

bool outside(const Prices& p, int32_t i) {
  return p.high[i] > p.high[i - 1] && p.low[i - 1] > p.low[i];
}

int32_t gapUpTest(const Prices& p, int32_t i) {
  return gapUp(p, i) ? 1 : 0;
}

int32_t gapDownTest(const Prices& p, int32_t i) {
  return gapDown(p, i) ? 1 : 0;
}

int32_t gapTest(const Prices& p, int32_t i) {
  if (gapUp(p, i)) return 1;
  return gapDown(p, i) ? -1 : 0;
}

int32_t closingPriceReversal(const Prices& p, int32_t i) {
  if (!outside(p, i)) return 0;
  if (p.close[i] > p.high[i - 1]) return 1;
  return p.low[i - 1] > p.close[i] ? -1 : 0;
}

// The one bar is the island: beyond the gap it closes within the 30 % of its range nearest to the
// prices that it left.
int32_t islandReversal(const Prices& p, int32_t i) {
  constexpr double kFraction = 0.7;
  const double range = p.high[i] - p.low[i];
  if (gapDown(p, i) && p.close[i] > p.low[i] + kFraction * range) return 1;
  return gapUp(p, i) && p.high[i] - kFraction * range > p.close[i] ? -1 : 0;
}

int32_t insideBar(const Prices& p, int32_t i) {
  return p.high[i - 1] > p.high[i] && p.low[i] > p.low[i - 1] ? 1 : 0;
}

int32_t keyReversal(const Prices& p, int32_t i) {
  if (p.low[i - 1] > p.low[i] && p.close[i] > p.close[i - 1]) return 1;
  return p.high[i] > p.high[i - 1] && p.close[i - 1] > p.close[i] ? -1 : 0;
}

int32_t outsideBar(const Prices& p, int32_t i) {
  return outside(p, i) ? 1 : 0;
}

using FormationTest = int32_t (*)(const Prices&, int32_t);

struct Formation {
  const char* name;
  FormationTest test;
};

constexpr Formation kFormations[] = {
    {"qxCPR", closingPriceReversal},      {"qxGap", gapTest},
    {"qxGapDown", gapDownTest},           {"qxGapUp", gapUpTest},
    {"qxIslandReversal", islandReversal}, {"qxInsideBar", insideBar},
    {"qxKeyReversal", keyReversal},       {"qxOutsideBar", outsideBar},
};

FormationTest findFormation(const char* name) {
  for (const Formation& formation : kFormations) {
    if (qx::equalIgnoringCase(formation.name, name)) return formation.test;
  }
  return nullptr;
}

int32_t testBar(FormationTest test, const qxBars* bars, int32_t index) {
  if (bars == nullptr) return 0;
  const Prices prices = pricesOf(*bars, bars->barsize);
  return index >= 1 && index < prices.count ? test(prices, index) : 0;
}

int32_t crossOver(const double* a, const double* b, int64_t i) {
  if (a[i] >= b[i] && b[i - 1] > a[i - 1]) return 1;
  return b[i] >= a[i] && a[i - 1] > b[i - 1] ? -1 : 0;
}

int32_t turn(const double* x, int64_t i) {
  if (x[i] > x[i - 1] && x[i - 2] > x[i - 1]) return 1;
  return x[i - 1] > x[i] && x[i - 1] > x[i - 2] ? -1 : 0;
}

}  // namespace

int32_t qxCPR(const qxBars* bars, int32_t index) {
  return testBar(closingPriceReversal, bars, index);
}

int32_t qxGap(const qxBars* bars, int32_t index) {
  return testBar(gapTest, bars, index);
}

int32_t qxIslandReversal(const qxBars* bars, int32_t index) {
  return testBar(islandReversal, bars, index);
}

int32_t qxInsideBar(const qxBars* bars, int32_t index) {
  return testBar(insideBar, bars, index);
}

int32_t qxKeyReversal(const qxBars* bars, int32_t index) {
  return testBar(keyReversal, bars, index);
}

int32_t qxOutsideBar(const qxBars* bars, int32_t index) {
  return testBar(outsideBar, bars, index);
}

int32_t qxFormationFill(const qxBars* bars, qxArray* out, const char* name, int32_t first,
                        int32_t last) {
  if (name == nullptr) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  // Kept: the name is looked up after preparation, so an unknown one leaves the output cleared.
  const FormationTest test = findFormation(name);
  if (test == nullptr) return QX_ERR_INVALID_PARM;

  const Prices prices = pricesOf(*bars, length);
  const int64_t end = std::min<int64_t>(last, int64_t{prices.count} - 1);
  int32_t found = 0;
  // Bar 0 has no bar before it and keeps the 0.0 of preparation.
  for (int64_t i = std::max(first, 1); i <= end; ++i) {
    const int32_t result = test(prices, static_cast<int32_t>(i));
    out->data[i] = result;
    found += result != 0 ? 1 : 0;
  }
  qx::markFirstValid(first, {out});
  return found;
}

int32_t qxCrossOver(const qxArray* a, const qxArray* b, int32_t index) {
  if (a == nullptr || b == nullptr) return 0;
  const int32_t count = std::min(qx::heldSize(*a), qx::heldSize(*b));
  return index >= 1 && index < count ? crossOver(a->data, b->data, index) : 0;
}

int32_t qxCrossOverFill(const qxArray* a, const qxArray* b, qxArray* out, int32_t first,
                        int32_t last) {
  const int32_t length = qxCheckArgs({}, {a, b}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(first, {a, b});
  // Kept: the last index is excluded here and included in qxTurnFill.
  const int64_t end = std::min(last, length);
  // Element s keeps the 0.0 of preparation.
  for (int64_t i = s + 1; i < end; ++i) out->data[i] = crossOver(a->data, b->data, i);
  return qx::markFirstValid(s, {out});
}

int32_t qxTurn(const qxArray* array, int32_t index) {
  if (array == nullptr) return 0;
  return index >= 2 && index < qx::heldSize(*array) ? turn(array->data, index) : 0;
}

int32_t qxTurnFill(const qxArray* in, qxArray* out, int32_t first, int32_t last) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(first, {in});
  const int64_t end = std::min<int64_t>(last, int64_t{length} - 1);
  // Elements s and s + 1 keep the 0.0 of preparation.
  for (int64_t i = s + 2; i <= end; ++i) out->data[i] = turn(in->data, i);
  return qx::markFirstValid(s, {out});
}
