// Comparisons of a market with another or with its own past, detrending and Fibonacci levels.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

#include "core/indicator_frame.h"
#include "quorvex.h"

namespace {

// The dates and closes of a market, and the bars that both series hold.
struct Market {
  const double* date;
  const double* close;
  int32_t length;
};

Market marketOf(const qxBars& bars, int32_t length) {
  return {bars.date.data, bars.close.data, qx::heldLength(length, {&bars.date, &bars.close})};
}

int32_t firstNotBefore(const Market& market, double date) {
  int32_t i = 0;
  while (i < market.length && market.date[i] < date) ++i;
  return i;
}

// The first bars that two markets have in common at or after a date.
struct CommonBar {
  int32_t a;
  int32_t b;
  bool found;
};

CommonBar firstCommonBar(const Market& a, const Market& b, double startDate) {
  if (b.length == 0) return {0, 0, false};
  if (b.date[0] > startDate) startDate = b.date[0];
  const int32_t i = firstNotBefore(a, startDate);
  if (i == a.length) return {0, 0, false};
  const int32_t j = firstNotBefore(b, a.date[i]);
  return {i, j, j < b.length && a.date[i] == b.date[j]};
}

// Visits the bars of `a` after the common one: matched(k, j) where bar j of `b` has bar k's date,
// unmatched(k) otherwise. The walk ends when `b` runs out.
template <typename Matched, typename Unmatched>
void walkByDate(const Market& a, const Market& b, const CommonBar& from, Matched matched,
                Unmatched unmatched) {
  int32_t j = from.b;
  for (int32_t k = from.a + 1; k < a.length; ++k) {
    while (j < b.length && a.date[k] > b.date[j]) ++j;
    if (j == b.length) return;
    if (a.date[k] == b.date[j]) {
      matched(k, j);
    } else {
      unmatched(k);
    }
  }
}

// True when the second market may be read and is not overwritten: the output shares none of its
// price and volume blocks.
bool isUsable(const qxBars* b, const qxArray* out) {
  if (b == nullptr || out == nullptr || b->date.data == nullptr) return false;
  const qxArray* const series[] = {&b->open, &b->high, &b->low, &b->close, &b->volume, &b->openint};
  return out->data == nullptr ||
         std::none_of(std::begin(series), std::end(series),
                      [out](const qxArray* s) { return s->data == out->data; });
}

// The frame of the indicators that hold formula(closeA, closeB) where the dates match, and repeat
// the value before where they do not.
template <typename Formula>
int32_t compareByDate(const qxBars* a, const qxBars* b, qxArray* out, double startDate,
                      Formula formula) {
  if (!isUsable(b, out)) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({a}, {}, {out});
  if (length < 1) return length;
  const Market first = marketOf(*a, length);
  const Market second = marketOf(*b, std::min(b->barsize, b->datasize));
  const CommonBar common = firstCommonBar(first, second, startDate);
  if (!common.found) return QX_ERR_RECORD_NOT_FOUND;

  double* values = out->data;
  values[common.a] = formula(first.close[common.a], second.close[common.b]);
  walkByDate(
      first, second, common,
      [=](int32_t k, int32_t j) { values[k] = formula(first.close[k], second.close[j]); },
      [=](int32_t k) { values[k] = values[k - 1]; });
  return qx::markFirstValid(common.a, {out});
}

}  // namespace

int32_t qxCompPerformance(const qxBars* a, const qxBars* b, qxArray* out, double startDate) {
  if (!isUsable(b, out)) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({a}, {}, {out});
  if (length < 1) return length;
  const Market first = marketOf(*a, length);
  const Market second = marketOf(*b, std::min(b->barsize, b->datasize));
  const CommonBar common = firstCommonBar(first, second, startDate);
  if (!common.found) return QX_ERR_RECORD_NOT_FOUND;

  double* values = out->data;
  const double base = first.close[common.a] / second.close[common.b];
  values[common.a] = 1.0;
  walkByDate(
      first, second, common,
      [=](int32_t k, int32_t j) {
        values[k] = 1.0 + (first.close[k] / second.close[j] - base) / base;
      },
      // Kept: -1.0 marks a date that the second market does not have.
      [=](int32_t k) { values[k] -= 1.0; });
  return qx::markFirstValid(common.a, {out});
}

int32_t qxCompStrength(const qxBars* a, const qxBars* b, qxArray* out, double startDate) {
  return compareByDate(a, b, out, startDate,
                       [](double closeA, double closeB) { return closeA / closeB; });
}

int32_t qxSpread(const qxBars* a, const qxBars* b, qxArray* out, double startDate) {
  return compareByDate(a, b, out, startDate,
                       [](double closeA, double closeB) { return closeA - closeB; });
}

int32_t qxRSIC(const qxBars* a, const qxBars* b, qxArray* out, int32_t period, double startDate) {
  constexpr double kScale = 1.0;
  if (!isUsable(b, out) || period < 0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({a}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> strength(length);
  if (strength.status != QX_SUCCESS) return strength.status;
  const int32_t status = qxCompStrength(a, b, &strength[0], startDate);
  if (status != QX_SUCCESS) return status;
  return qxRateOfChange(&strength[0], out, kScale, period, 0);
}

int32_t qxPerformancePct(const qxArray* in, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  for (int64_t i = s; i < length; ++i) {
    out->data[i] = 100.0 * (in->data[i] - in->data[s]) / in->data[s];
  }
  return qx::markFirstValid(s, {out});
}

int32_t qxDeTrend(const qxArray* in, qxArray* out, int32_t start, int32_t end) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  const int32_t last = std::min(end, length - 1);
  if (s <= last) {
    double slope = 0.0, intercept = 0.0;
    qxRegressionLine(in, &slope, &intercept, static_cast<int32_t>(s), last);
    // Kept: the fit placed element s + k at x = k + 1, so the line taken off lags it by one.
    for (int64_t k = 0; k <= last - s; ++k) {
      out->data[s + k] = in->data[s + k] - (slope * static_cast<double>(k) + intercept);
    }
  }
  return qx::markFirstValid(s, {out});
}

int32_t qxCSIndex(const qxBars* bars, qxArray* out, int32_t period, double moveValue, double margin,
                  double commission, int32_t start) {
  if (period < 1 || !(margin > 0.0) || 150.0 + commission == 0.0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  const int64_t first = qx::startIndex(start) + 3 * int64_t{period} - 1;
  qx::ScratchArrays<2> scratch(length);
  if (scratch.status != QX_SUCCESS) return scratch.status;
  qxArray& rating = scratch[0];
  qxArray& range = scratch[1];
  // With arguments that have passed, these fail for want of memory only.
  int32_t status = qxADXR(bars, &rating, period, period, period, start);
  if (status == QX_SUCCESS) status = qxATR(bars, &range, period, start);
  if (status != QX_SUCCESS) return status;
  const double k = 100.0 * moveValue / std::sqrt(margin) / (150.0 + commission);
  for (int64_t i = first; i < length; ++i) out->data[i] = k * rating.data[i] * range.data[i];
  return qx::markFirstValid(first, {out});
}

int32_t qxFibonacciProject(double a, double b, double* p1, double* p2, double* p3) {
  if (p1 == nullptr || p2 == nullptr || p3 == nullptr) return QX_ERR_INVALID_PARM;
  if (a == b) {
    *p1 = *p2 = *p3 = a;
    return QX_SUCCESS;
  }
  const double d = a - b;
  *p1 = b + 1.618 * d;
  *p2 = b + 2.618 * d;
  *p3 = b + 4.236 * d;
  return QX_SUCCESS;
}

int32_t qxFibonacciRetrace(double a, double b, double* r1, double* r2, double* r3) {
  if (r1 == nullptr || r2 == nullptr || r3 == nullptr) return QX_ERR_INVALID_PARM;
  if (a == b) {
    *r1 = *r2 = *r3 = a;
    return QX_SUCCESS;
  }
  const double d = b - a;
  *r1 = b - 0.382 * d;
  *r2 = b - 0.5 * d;
  *r3 = b - 0.618 * d;
  return QX_SUCCESS;
}
