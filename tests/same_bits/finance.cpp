// Options, bonds and time value.
#include "tests/same_bits/recorder.h"

namespace same_bits {
namespace {

const Named<decltype(qxBullCall)> kStrategies[] = {
    {"qxBullCall", qxBullCall},           {"qxBullPut", qxBullPut},
    {"qxBearCall", qxBearCall},           {"qxBearPut", qxBearPut},
    {"qxLongStraddle", qxLongStraddle},   {"qxLongStrangle", qxLongStrangle},
    {"qxShortStraddle", qxShortStraddle}, {"qxShortStrangle", qxShortStrangle},
};
const Named<decltype(qxFutureValue)> kTimeValues[] = {
    {"qxFutureValue", qxFutureValue},
    {"qxPresentValue", qxPresentValue},
    {"qxFutureValueAnnuity", qxFutureValueAnnuity},
    {"qxPresentValueAnnuity", qxPresentValueAnnuity},
};
const Named<decltype(qxTBillDiscYield)> kYields[] = {
    {"qxYieldtoMaturity", qxYieldtoMaturity},
    {"qxTBillDiscYield", qxTBillDiscYield},
    {"qxTBillBondEqYield", qxTBillBondEqYield},
};
constexpr double kToday = 43000.0;

void computeOptions() {
  for (int k = -40; k <= 40; ++k) {
    compute("qxApprxCumProbDist", qxApprxCumProbDist, 0.1 * k);
  }
  for (const int32_t type : {QX_OPTION_CALL, QX_OPTION_PUT}) {
    for (const double strike : {80.0, 99.5, 130.0}) {
      for (const double days : {1.0, 30.0, 400.0}) {
        const qxOptionLeg leg = {0.0, strike, type, kToday + days};
        for (const double variance : {0.01, 0.09}) {
          compute("qxBlackScholes", qxBlackScholes, &leg, 101.25, 3.1, variance, kToday);
        }
      }
    }
  }
  for (const auto& strategy : kStrategies) {
    for (const double price : {0.0, 50.125, 101.3}) {
      qxOptionStrategy record = {};
      qxOptionInit(&record);
      record.price = price;
      record.long1 = {4.3, 50.0, QX_OPTION_CALL, kToday};
      record.long2 = {2.1, 45.0, QX_OPTION_PUT, kToday};
      record.short1 = {1.7, 55.0, QX_OPTION_CALL, kToday};
      record.short2 = {1.1, 40.0, QX_OPTION_PUT, kToday};
      const double status = strategy.function(&record);
      print(strategy.name, label(price),
            {status, record.maxprofit, record.riskreward, record.maxloss, record.upper,
             record.lower, record.uppermove, record.lowermove});
    }
  }
}

void computeTimeValues() {
  for (const double rate : {0.0, 3.75, 12.0}) {
    for (const double years : {0.5, 10.0, 30.0}) {
      for (const int32_t periods : {1, 12}) {
        qxTimeValue record = {1000.0, rate, years, periods};
        for (const auto& entry : kTimeValues) compute(entry, &record);
        compute("qxFutureValueInt", qxFutureValueInt, &record, 2500.0);
        compute("qxFutureValuePrinc", qxFutureValuePrinc, &record, 5000.0);
      }
    }
  }
}

void computeBonds() {
  for (const double coupon : {0.0, 55.0}) {
    for (const int32_t payments : {1, 2, 12}) {
      const qxBond bond = {1000.0, 965.5, coupon, payments, kToday + 3653.0};
      for (const auto& entry : kYields) compute(entry, &bond, kToday);
      for (const double yield : {1.0, 6.2}) {
        compute("qxBondPricing", qxBondPricing, &bond, yield, kToday);
        compute("qxBondDuration", qxBondDuration, &bond, yield, kToday);
        compute("qxBondDurationPriceChg", qxBondDurationPriceChg, 965.5, yield, 7.9, yield + 0.5);
      }
    }
    compute("qxBondAccrInt", qxBondAccrInt, coupon, kToday, kToday - 77.0, 365.0);
  }
}

}  // namespace

void computeFinance() {
  computeOptions();
  computeTimeValues();
  computeBonds();
}

}  // namespace same_bits
