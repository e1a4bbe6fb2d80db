// Compound interest and annuities.
#include "core/numeric.h"
#include "quorvex.h"

namespace {

constexpr double kRefused = -1.0;

// What one unit grows to: (1 + r / m)^n over n = m * years periods.
double growth(const qxTimeValue& tv, double sign) {
  const double periods = tv.periods;
  return qx::power(1 + tv.rate / 100 / periods, sign * (periods * tv.years));
}

}  // namespace

double qxFutureValue(const qxTimeValue* tv) {
  if (tv == nullptr) return 0.0;
  if (tv->periods <= 0) return kRefused;
  return tv->amount * growth(*tv, 1);
}

double qxPresentValue(const qxTimeValue* tv) {
  if (tv == nullptr) return 0.0;
  if (tv->periods <= 0) return kRefused;
  return tv->amount * growth(*tv, -1);
}

double qxFutureValuePrinc(qxTimeValue* tv, double futureValue) {
  if (tv == nullptr) return 0.0;
  if (tv->periods <= 0) return kRefused;
  tv->amount = futureValue / growth(*tv, 1);
  return tv->amount;
}

double qxFutureValueInt(qxTimeValue* tv, double futureValue) {
  if (tv == nullptr) return 0.0;
  tv->rate = 100 * (qx::power(futureValue / tv->amount, 1 / tv->years) - 1);
  return tv->rate;
}

double qxFutureValueAnnuity(const qxTimeValue* tv) {
  if (tv == nullptr) return 0.0;
  const double r = tv->rate / 100;
  return tv->amount * (qx::power(1 + r, tv->years) - 1) / r;
}

double qxPresentValueAnnuity(const qxTimeValue* tv) {
  if (tv == nullptr) return 0.0;
  if (!(tv->rate > 0)) return kRefused;
  const double r = tv->rate / 100;
  return tv->amount * (1 - 1 / qx::power(1 + r, tv->years)) / r;
}
