// Profit, loss and break-evens of the two-leg option strategies.
#include <cmath>

#include "quorvex.h"

namespace {

// Stores the break-evens and the moves that lead to them. Without a price above 0 the moves stay as
// they were; everything else is stored by then.
int32_t storeBreakEvens(qxOptionStrategy* s, double upper, double lower) {
  s->upper = upper;
  s->lower = lower;
  if (!(s->price > 0)) return QX_ERR_INVALID_PARM;
  s->uppermove = (upper - s->price) / s->price;
  s->lowermove = (lower - s->price) / s->price;
  return QX_SUCCESS;
}

// A vertical spread has one break-even.
int32_t storeSpread(qxOptionStrategy* s, double maxLoss, double maxProfit, double breakEven) {
  s->maxloss = maxLoss;
  s->maxprofit = maxProfit;
  s->riskreward = maxLoss / maxProfit;
  return storeBreakEvens(s, breakEven, breakEven);
}

// What is bought may gain without limit, what is sold may lose without limit: the unlimited side
// and the ratio are stored as 0.
int32_t storeLong(qxOptionStrategy* s, double maxLoss, double upper, double lower) {
  s->maxloss = maxLoss;
  s->maxprofit = 0;
  s->riskreward = 0;
  return storeBreakEvens(s, upper, lower);
}

int32_t storeShort(qxOptionStrategy* s, double maxProfit, double upper, double lower) {
  s->maxloss = 0;
  s->maxprofit = maxProfit;
  s->riskreward = 0;
  return storeBreakEvens(s, upper, lower);
}

bool isCallAndPut(const qxOptionLeg& first, const qxOptionLeg& second) {
  return first.type == QX_OPTION_CALL && second.type == QX_OPTION_PUT;
}

}  // namespace

int32_t qxOptionInit(qxOptionStrategy* strategy) {
  if (strategy == nullptr) return QX_ERR_INVALID_PARM;
  *strategy = {};
  return QX_SUCCESS;
}

int32_t qxBullCall(qxOptionStrategy* strategy) {
  if (strategy == nullptr) return QX_ERR_INVALID_PARM;
  const qxOptionLeg bought = strategy->long1, sold = strategy->short1;
  const double maxLoss = bought.premium - sold.premium;
  const double maxProfit = sold.strike - bought.strike - maxLoss;
  return storeSpread(strategy, maxLoss, maxProfit, bought.strike + maxLoss);
}

int32_t qxBullPut(qxOptionStrategy* strategy) {
  if (strategy == nullptr) return QX_ERR_INVALID_PARM;
  const qxOptionLeg bought = strategy->long1, sold = strategy->short1;
  const double maxProfit = sold.premium - bought.premium;
  const double maxLoss = sold.strike - bought.strike - maxProfit;
  return storeSpread(strategy, maxLoss, maxProfit, sold.strike - maxProfit);
}

int32_t qxBearCall(qxOptionStrategy* strategy) {
  if (strategy == nullptr) return QX_ERR_INVALID_PARM;
  const qxOptionLeg bought = strategy->long1, sold = strategy->short1;
  const double maxProfit = sold.premium - bought.premium;
  // Kept: of the four spreads this one alone takes the strikes in either order.
  const double maxLoss = std::fabs(sold.strike - bought.strike) - maxProfit;
  return storeSpread(strategy, maxLoss, maxProfit, sold.strike + maxProfit);
}

int32_t qxBearPut(qxOptionStrategy* strategy) {
  if (strategy == nullptr) return QX_ERR_INVALID_PARM;
  const qxOptionLeg bought = strategy->long1, sold = strategy->short1;
  const double maxLoss = bought.premium - sold.premium;
  const double maxProfit = bought.strike - sold.strike - maxLoss;
  return storeSpread(strategy, maxLoss, maxProfit, bought.strike - maxLoss);
}

int32_t qxLongStraddle(qxOptionStrategy* strategy) {
  if (strategy == nullptr) return QX_ERR_INVALID_PARM;
  const qxOptionLeg first = strategy->long1, second = strategy->long2;
  const double maxLoss = first.premium + second.premium;
  return storeLong(strategy, maxLoss, first.strike + maxLoss, first.strike - maxLoss);
}

int32_t qxLongStrangle(qxOptionStrategy* strategy) {
  if (strategy == nullptr) return QX_ERR_INVALID_PARM;
  const qxOptionLeg call = strategy->long1, put = strategy->long2;
  if (!isCallAndPut(call, put)) return QX_ERR_INVALID_PARM;
  const double maxLoss = call.premium + put.premium;
  return storeLong(strategy, maxLoss, call.strike + maxLoss, put.strike - maxLoss);
}

int32_t qxShortStraddle(qxOptionStrategy* strategy) {
  if (strategy == nullptr) return QX_ERR_INVALID_PARM;
  const qxOptionLeg first = strategy->short1, second = strategy->short2;
  const double maxProfit = first.premium + second.premium;
  return storeShort(strategy, maxProfit, first.strike + maxProfit, first.strike - maxProfit);
}

int32_t qxShortStrangle(qxOptionStrategy* strategy) {
  if (strategy == nullptr) return QX_ERR_INVALID_PARM;
  const qxOptionLeg call = strategy->short1, put = strategy->short2;
  if (!isCallAndPut(call, put)) return QX_ERR_INVALID_PARM;
  const double maxProfit = call.premium + put.premium;
  return storeShort(strategy, maxProfit, call.strike + maxProfit, put.strike - maxProfit);
}
