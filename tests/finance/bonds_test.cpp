#include <cmath>
#include <tuple>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

constexpr double kToday = 40000.0;

TEST(TimeValue, CompoundInterest) {
  qxTimeValue tv = {100, 12, 1, 12};
  EXPECT_TRUE(near(qxFutureValue(&tv), 112.68250301319698, 1e-14));
  tv.amount = 55;
  EXPECT_TRUE(near(qxFutureValuePrinc(&tv, 112.68250301319698), 100, 1e-13));
  EXPECT_TRUE(near(tv.amount, 100, 1e-13)) << "stored";
  tv = {1000, 8, 5, 4};
  EXPECT_TRUE(near(qxPresentValue(&tv), 672.9713331080575, 1e-13));
  tv = {100, 55, 2, 0};
  EXPECT_TRUE(near(qxFutureValueInt(&tv, 121), 10, 1e-13));
  EXPECT_TRUE(near(tv.rate, 10, 1e-13)) << "stored, whatever the periods";
}

TEST(TimeValue, WithoutPeriodsMinusOne) {
  for (const int32_t periods : {0, -1, INT32_MIN}) {
    qxTimeValue tv = {100, 12, 1, periods};
    EXPECT_EQ(qxFutureValue(&tv), -1.0);
    EXPECT_EQ(qxPresentValue(&tv), -1.0);
    EXPECT_EQ(qxFutureValuePrinc(&tv, 200), -1.0);
    EXPECT_EQ(tv.amount, 100.0);
  }
}

TEST(TimeValue, Annuities) {
  qxTimeValue tv = {250, 6, 10, 0};
  EXPECT_TRUE(near(qxFutureValueAnnuity(&tv), 3295.1987355952274, 1e-13));
  EXPECT_TRUE(near(qxPresentValueAnnuity(&tv), 1840.0217628536757, 1e-13));
  for (double rate : {0.0, -1.0, kNaN}) {
    tv.rate = rate;
    EXPECT_EQ(qxPresentValueAnnuity(&tv), -1.0);
  }
  tv.rate = 0;
  EXPECT_TRUE(std::isnan(qxFutureValueAnnuity(&tv)));
}

TEST(Bonds, PricingOverTheRemainingPayments) {
  // 913 days round up to three years, 912 down to two. With thirds of a year the sixth time misses
  // 2, with twelfths the last misses 2 and 3: the face value is left out.
  const std::tuple<int32_t, int32_t, double> rows[] = {
      {1, 1000, 1027.2324802937046}, {1, 912, 1018.59410430839},   {2, 1000, 1029.2500048539578},
      {2, 913, 1029.2500048539578},  {2, 912, 1019.9716527987769}, {4, 1000, 1030.2649947678883},
      {3, 913, 1029.9262034649507},  {3, 912, 113.40387696092134}, {12, 1000, 162.7871748712036},
      {12, 912, 114.09879335906767}};
  const auto price = [](int32_t payments, int32_t days) {
    const qxBond bond = {1000, 990, 60, payments, kToday + days + 0.25};
    return qxBondPricing(&bond, 5, kToday + 0.75);
  };
  for (const auto& [payments, days, value] : rows) {
    EXPECT_TRUE(near(price(payments, days), value, 1e-13)) << payments << ", " << days;
  }
  for (const int32_t days : {182, -900}) EXPECT_EQ(price(2, days), 0.0) << days;
  for (const int32_t payments : {0, -2, INT32_MIN}) EXPECT_EQ(price(payments, 1000), 0.0);
  const qxBond year = {100, 0, 10, 1, kToday + 365};
  EXPECT_TRUE(near(qxBondPricing(&year, 10, kToday), 100, 1e-13));
}

TEST(Bonds, PricingEndsWhateverItIsGiven) {
  for (const double maturity : {1e18, kInfinity, -kInfinity, kNaN}) {
    const qxBond bond = {100, 100, 5, INT32_MAX, maturity};
    qxBondPricing(&bond, 5, -maturity);
    const qxBond yearly = {100, 100, 5, 1, maturity};
    EXPECT_GE(qxBondPricing(&yearly, 5, kToday), 0.0);
  }
}

TEST(Bonds, DurationOnAnnualCashFlows) {
  const qxBond bond = {1000, 1020, 60, 2, kToday + 1000};
  EXPECT_TRUE(near(qxBondDuration(&bond, 5, kToday), 1.9412209328175714, 1e-14));
  const qxBond due = {1000, 1020, 60, 2, kToday + 364};
  EXPECT_EQ(qxBondDuration(&due, 5, kToday), 0.0) << "no whole year is left";
  EXPECT_TRUE(near(qxBondDurationPriceChg(980, 6, 4.5, 6.5), -20.704225352112676, 1e-14));
  EXPECT_EQ(qxBondDurationPriceChg(980, 6, 4.5, 0.5), -1.0);
  EXPECT_NE(qxBondDurationPriceChg(980, 6, 4.5, 1.0), -1.0);
}

TEST(Bonds, InterestAndYields) {
  EXPECT_EQ(qxBondAccrInt(8, kToday + 90.2, kToday + 0.9, 360), 2.0);
  EXPECT_TRUE(near(qxBondAccrInt(10, kToday + 73, kToday, 365), 2.0, 1e-15));
  const qxBond bond = {1000, 950, 60, 2, kToday + 1000};
  EXPECT_TRUE(near(qxYieldtoMaturity(&bond, kToday), 0.08236842105263158, 1e-15));
  const qxBond bill = {10000, 9800, 0, 0, kToday + 91};
  EXPECT_TRUE(near(qxTBillDiscYield(&bill, kToday), 0.07912087912087912, 1e-15));
  EXPECT_TRUE(near(qxTBillBondEqYield(&bill, kToday), 0.08185691859161248, 1e-15));
  EXPECT_TRUE(std::isinf(qxTBillDiscYield(&bill, kToday + 91))) << "matures today";
}

TEST(Bonds, NullRecordsGiveZero) {
  for (auto* value : {qxFutureValue, qxPresentValue, qxFutureValueAnnuity, qxPresentValueAnnuity}) {
    EXPECT_EQ(value(nullptr), 0.0);
  }
  for (auto* value : {qxFutureValuePrinc, qxFutureValueInt}) EXPECT_EQ(value(nullptr, 1), 0.0);
  for (auto* value : {qxBondPricing, qxBondDuration}) EXPECT_EQ(value(nullptr, 1, 1), 0.0);
  for (auto* yield : {qxYieldtoMaturity, qxTBillDiscYield, qxTBillBondEqYield}) {
    EXPECT_EQ(yield(nullptr, 1), 0.0);
  }
}

}  // namespace
