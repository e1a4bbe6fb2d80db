// Point-and-figure columns from closing prices and from highs and lows.
#include <algorithm>
#include <cmath>

#include "core/bars.h"
#include "core/indicator_frame.h"
#include "core/series.h"
#include "quorvex.h"

namespace {

constexpr double kRising = 1.0;
constexpr double kFalling = -1.0;

// The outputs of a conversion while its columns grow.
struct Conversion {
  const qxBars* bars;
  qxBars* columns;
  double* map;
  double box;
  double reversal;
  int32_t count;  // input bars
  int32_t seed;   // the first bar used
  int32_t k;      // current column
};

// Checks the arguments and allocates the outputs, both or none.
int32_t begin(Conversion* c, const qxBars* bars, qxBars* columns, qxArray* map, double box,
              double reversal, int32_t start, int32_t count) {
  if (!(box > 0.0) || !(reversal > 0.0)) return QX_ERR_INVALID_PARM;
  if (count < 1 || start >= count - 1) return QX_ERR_INVALID_PARM;
  // The outputs are allocated anew: one that is also read would lose its block.
  const auto series = qx::seriesOf(*bars);
  if (columns == bars || std::count(series.begin(), series.end(), map) != 0) {
    return QX_ERR_INVALID_PARM;
  }
  count = std::min(count, qx::kMaxElements);
  int32_t status = qxAllocBars(columns, count);
  if (status != QX_SUCCESS) return status;
  status = qxAllocArray(map, count);
  if (status != QX_SUCCESS) {
    qxFreeBars(columns);
    return status;
  }
  *c = {bars, columns, map->data, box, reversal, count, std::max(start + 1, 0), 0};
  columns->date.data[0] = bars->date.data[c->seed];
  return QX_SUCCESS;
}

bool isRising(const Conversion& c) {
  return c.columns->openint.data[c.k] == kRising;
}

// Where the current column ends: at its high or at its low.
double columnEnd(const Conversion& c) {
  return isRising(c) ? c.columns->high.data[c.k] : c.columns->low.data[c.k];
}

// Closes the current column and opens one in the other direction, one box beyond its extreme.
// `price` is the other end of the new column.
void reverse(Conversion* c, int32_t bar, double price) {
  const qxBars& columns = *c->columns;
  const bool wasRising = isRising(*c);
  const double end = columnEnd(*c);
  const int32_t k = c->k++;
  columns.close.data[k] = end;
  columns.volume.data[k] =
      std::floor((columns.high.data[k] - columns.low.data[k] + c->box) / c->box);
  const double opening = wasRising ? end - c->box : end + c->box;
  columns.openint.data[c->k] = wasRising ? kFalling : kRising;
  columns.date.data[c->k] = c->bars->date.data[bar];
  columns.high.data[c->k] = wasRising ? opening : price;
  columns.low.data[c->k] = wasRising ? price : opening;
  columns.open.data[c->k] = opening;
}

int32_t finish(Conversion* c) {
  c->columns->close.data[c->k] = columnEnd(*c);
  return qxReAllocBars(c->columns, c->k + 1);
}

// Walks until a close is a box away from the start close, which decides the first direction. That
// bar is left to the main walk. Returns it, or the bar count.
int32_t findCloseDirection(Conversion* c, double startClose) {
  const double* close = c->bars->close.data;
  double* high = c->columns->high.data;
  double* low = c->columns->low.data;
  high[0] = low[0] = close[c->seed];
  int32_t bar = c->seed + 1;
  for (; bar < c->count && std::fabs(startClose - close[bar]) < c->box; ++bar) {
    if (close[bar] < low[0]) low[0] = close[bar];
    if (close[bar] > high[0]) high[0] = close[bar];
    c->map[bar] = 0.0;
  }
  if (bar < c->count) {
    c->columns->openint.data[0] = startClose > close[bar] ? kFalling : kRising;
  }
  return bar;
}

void walkCloses(Conversion* c, int32_t bar) {
  double* high = c->columns->high.data;
  double* low = c->columns->low.data;
  for (; bar < c->count; ++bar) {
    const double close = c->bars->close.data[bar];
    const int32_t k = c->k;
    // Kept: closes compare differences, highs and lows shifted bounds; the last bit can differ.
    if (isRising(*c)) {
      if (close > high[k]) high[k] = close;
      if (high[k] - close >= c->box * c->reversal) reverse(c, bar, close);
    } else {
      if (close < low[k]) low[k] = close;
      if (close - low[k] >= c->box * c->reversal) reverse(c, bar, close);
    }
    c->map[bar] = c->k;
  }
}

// Walks until a bar extends the first one by a box to one side only. That bar is used up. Returns
// the bar after it; the direction stays 0 when there is none.
int32_t findHighLowDirection(Conversion* c) {
  double* high = c->columns->high.data;
  double* low = c->columns->low.data;
  double* direction = c->columns->openint.data;
  high[0] = c->bars->high.data[c->seed];
  low[0] = c->bars->low.data[c->seed];
  int32_t bar = c->seed + 1;
  for (; bar < c->count && direction[0] == 0.0; ++bar) {
    const double barHigh = c->bars->high.data[bar];
    const double barLow = c->bars->low.data[bar];
    if (barHigh >= high[0] + c->box) {
      high[0] = barHigh;
      if (barLow > low[0]) direction[0] = kRising;
    }
    if (low[0] - c->box >= barLow) {
      low[0] = barLow;
      if (high[0] > barHigh) direction[0] = kFalling;
    }
    c->map[bar] = 0.0;
  }
  return bar;
}

void walkHighsAndLows(Conversion* c, int32_t bar) {
  double* high = c->columns->high.data;
  double* low = c->columns->low.data;
  for (; bar < c->count; ++bar) {
    const double barHigh = c->bars->high.data[bar];
    const double barLow = c->bars->low.data[bar];
    const int32_t k = c->k;
    if (isRising(*c)) {
      if (barHigh > high[k]) high[k] = barHigh;
      if (high[k] - c->box * c->reversal >= barLow) reverse(c, bar, barLow);
    } else {
      if (barLow < low[k]) low[k] = barLow;
      if (barHigh >= low[k] + c->box * c->reversal) reverse(c, bar, barHigh);
    }
    c->map[bar] = c->k;
  }
}

}  // namespace

int32_t qxBars2PNF(const qxBars* bars, qxBars* columns, qxArray* map, double box, double reversal,
                   int32_t start) {
  if (bars == nullptr || columns == nullptr || map == nullptr) return QX_ERR_INVALID_PARM;
  const int32_t count = qx::heldLength(bars->barsize, {&bars->date, &bars->close});
  Conversion c;
  const int32_t status = begin(&c, bars, columns, map, box, reversal, start, count);
  if (status != QX_SUCCESS) return status;
  const int32_t bar = findCloseDirection(&c, bars->close.data[std::max(start, 0)]);
  if (bar >= c.count) return QX_ERR_INVALID_PARM;
  walkCloses(&c, bar);
  return finish(&c);
}

int32_t qxBars2PNFhilo(const qxBars* bars, qxBars* columns, qxArray* map, double box,
                       double reversal, int32_t start) {
  if (bars == nullptr || columns == nullptr || map == nullptr) return QX_ERR_INVALID_PARM;
  const int32_t count = qx::heldLength(bars->barsize, {&bars->date, &bars->high, &bars->low});
  Conversion c;
  const int32_t status = begin(&c, bars, columns, map, box, reversal, start, count);
  if (status != QX_SUCCESS) return status;
  const int32_t bar = findHighLowDirection(&c);
  if (columns->openint.data[0] == 0.0) return QX_ERR_INVALID_PARM;
  walkHighsAndLows(&c, bar);
  return finish(&c);
}
