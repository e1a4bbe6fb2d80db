#include <cmath>
#include <cstring>
#include <limits>

#include "tests/support/test_support.h"

namespace {

using qxtest::near;

constexpr double kUntouched = -77.0;

qxOptionLeg leg(double premium, double strike, int32_t type) {
  return {premium, strike, type, 0};
}

// A strategy whose results and moves can be told from stored ones.
qxOptionStrategy strategy(double price) {
  qxOptionStrategy s = {};
  s.price = price;
  s.maxprofit = s.riskreward = s.maxloss = s.upper = s.lower = kUntouched;
  s.uppermove = s.lowermove = kUntouched;
  return s;
}

TEST(Options, CumulativeNormalFollowsTheCurve) {
  EXPECT_TRUE(near(qxApprxCumProbDist(0), 0.49999987955414952, 1e-15));
  EXPECT_TRUE(near(qxApprxCumProbDist(1), 0.8413447656704833, 1e-15));
  EXPECT_TRUE(near(qxApprxCumProbDist(-1.5), 0.06680722030584957, 1e-15));
  for (double x = -8; x <= 8; x += 0.125) {
    EXPECT_TRUE(near(qxApprxCumProbDist(x), 0.5 * std::erfc(-x / std::sqrt(2.0)), 2e-7)) << x;
    if (x != 0) {
      EXPECT_TRUE(near(qxApprxCumProbDist(x) + qxApprxCumProbDist(-x), 1, 1e-15)) << x;
    }
  }
  EXPECT_EQ(qxApprxCumProbDist(std::numeric_limits<double>::infinity()), 1.0);
}

TEST(Options, BlackScholesValues) {
  struct Row {
    int32_t type;
    double price, strike, rate, variance;
    int32_t days;
    double value;
  };
  const Row rows[] = {{1, 100, 95, 5, 0.04, 180, 9.872748217084506},
                      {2, 100, 95, 5, 0.04, 180, 2.527189859776101},
                      {0, 42, 40, 10, 0.04, 90, 3.529347887542624},
                      {2, 80, 100, 3, 0.09, 720, 22.7683997589816}};
  for (const Row& row : rows) {
    // Only whole days count, whatever the times of day.
    const qxOptionLeg option = {kUntouched, row.strike, row.type, 40000.0 + row.days + 0.1};
    const double value = qxBlackScholes(&option, row.price, row.rate, row.variance, 40000.9);
    EXPECT_TRUE(near(value, row.value, 1e-12)) << row.days;
    EXPECT_EQ(option.premium, kUntouched);
  }
}

TEST(Options, BlackScholesDegenerateInput) {
  const qxOptionLeg call = {0, 100, QX_OPTION_CALL, 40000};
  EXPECT_TRUE(std::isnan(qxBlackScholes(&call, 100, 5, 0.04, 40100))) << "expired";
  EXPECT_TRUE(std::isnan(qxBlackScholes(&call, -1, 5, 0.04, 39900)));
  EXPECT_EQ(qxBlackScholes(&call, 110, 5, 0.04, 40000), 10.0) << "expires today, d1 is infinite";
  EXPECT_EQ(qxBlackScholes(nullptr, 110, 5, 0.04, 40000), 0.0);
}

struct Spread {
  int32_t (*evaluate)(qxOptionStrategy*);
  qxOptionLeg bought, sold;
  double maxLoss, maxProfit, breakEven;
};

TEST(Options, SpreadsFillEveryResult) {
  const Spread rows[] = {
      {qxBullCall, leg(5, 100, 1), leg(2, 110, 1), 3, 7, 103},
      {qxBearPut, leg(6, 110, 2), leg(2, 100, 2), 4, 6, 106},
      {qxBearCall, leg(2, 110, 1), leg(5, 100, 1), 7, 3, 103},
      {qxBearCall, leg(2, 100, 1), leg(5, 110, 1), 7, 3, 113},  // strikes in either order
      {qxBullPut, leg(2, 100, 2), leg(6, 110, 2), 6, 4, 106},
      {qxBullPut, leg(2, 110, 2), leg(6, 100, 2), -14, 4, 96}};
  for (const Spread& row : rows) {
    qxOptionStrategy s = strategy(100);
    s.long1 = row.bought;
    s.short1 = row.sold;
    s.long2 = s.short2 = leg(99, 99, 1);  // takes no part
    EXPECT_EQ(row.evaluate(&s), QX_SUCCESS);
    EXPECT_EQ(s.maxloss, row.maxLoss);
    EXPECT_EQ(s.maxprofit, row.maxProfit);
    EXPECT_EQ(s.riskreward, row.maxLoss / row.maxProfit);
    EXPECT_EQ(s.upper, row.breakEven);
    EXPECT_EQ(s.lower, row.breakEven);
    EXPECT_EQ(s.uppermove, (row.breakEven - 100) / 100);
    EXPECT_EQ(s.lowermove, (row.breakEven - 100) / 100);
  }
}

TEST(Options, StraddlesAndStranglesFillEveryResult) {
  struct Row {
    int32_t (*evaluate)(qxOptionStrategy*);
    bool bought;
    qxOptionLeg first, second;
    double limited, upper, lower;
  };
  const Row rows[] = {{qxLongStraddle, true, leg(3, 50, 1), leg(2, 51, 2), 5, 55, 45},
                      {qxShortStraddle, false, leg(3, 50, 2), leg(2, 51, 2), 5, 55, 45},
                      {qxLongStrangle, true, leg(3, 55, 1), leg(1, 45, 2), 4, 59, 41},
                      {qxShortStrangle, false, leg(3, 55, 1), leg(1, 45, 2), 4, 59, 41}};
  for (const Row& row : rows) {
    qxOptionStrategy s = strategy(50);
    (row.bought ? s.long1 : s.short1) = row.first;
    (row.bought ? s.long2 : s.short2) = row.second;
    EXPECT_EQ(row.evaluate(&s), QX_SUCCESS);
    EXPECT_EQ(s.maxloss, row.bought ? row.limited : 0.0);
    EXPECT_EQ(s.maxprofit, row.bought ? 0.0 : row.limited);
    EXPECT_EQ(s.riskreward, 0.0);
    EXPECT_EQ(s.upper, row.upper);
    EXPECT_EQ(s.lower, row.lower);
    EXPECT_EQ(s.uppermove, (row.upper - 50) / 50);
    EXPECT_EQ(s.lowermove, (row.lower - 50) / 50);
  }
}

TEST(Options, WithoutAPriceTheMovesStayAsTheyWere) {
  int32_t (*const all[])(qxOptionStrategy*) = {qxBullCall,      qxBullPut,      qxBearCall,
                                               qxBearPut,       qxLongStraddle, qxLongStrangle,
                                               qxShortStraddle, qxShortStrangle};
  for (auto* evaluate : all) {
    for (double price : {0.0, -5.0, std::numeric_limits<double>::quiet_NaN()}) {
      qxOptionStrategy s = strategy(price);
      s.long1 = s.short1 = leg(3, 55, 1);
      s.long2 = s.short2 = leg(1, 45, 2);
      EXPECT_EQ(evaluate(&s), QX_ERR_INVALID_PARM);
      EXPECT_NE(s.maxloss, kUntouched);
      EXPECT_NE(s.upper, kUntouched);
      EXPECT_NE(s.lower, kUntouched);
      EXPECT_EQ(s.uppermove, kUntouched);
      EXPECT_EQ(s.lowermove, kUntouched);
    }
    EXPECT_EQ(evaluate(nullptr), QX_ERR_INVALID_PARM);
  }
}

TEST(Options, StranglesOfOtherTypesStoreNothing) {
  for (auto* evaluate : {qxLongStrangle, qxShortStrangle}) {
    for (const auto& types : {std::pair{2, 2}, {1, 1}, {2, 1}, {0, 0}}) {
      qxOptionStrategy s = strategy(50);
      s.long1 = s.short1 = leg(3, 55, types.first);
      s.long2 = s.short2 = leg(1, 45, types.second);
      const qxOptionStrategy before = s;
      EXPECT_EQ(evaluate(&s), QX_ERR_INVALID_PARM);
      EXPECT_EQ(std::memcmp(&s, &before, sizeof s), 0);
    }
  }
}

TEST(Options, InitClearsTheRecord) {
  qxOptionStrategy s = strategy(50);
  s.short2 = leg(1, 2, 2);
  EXPECT_EQ(qxOptionInit(&s), QX_SUCCESS);
  const qxOptionStrategy cleared = {};
  EXPECT_EQ(std::memcmp(&s, &cleared, sizeof s), 0);
  EXPECT_EQ(qxBullCall(&s), QX_ERR_INVALID_PARM);
  EXPECT_TRUE(std::isnan(s.riskreward));
  EXPECT_EQ(qxOptionInit(nullptr), QX_ERR_INVALID_PARM);
}

}  // namespace
