#include <cmath>
#include <cstring>

#include "tests/support/test_support.h"

namespace {

using namespace qxtest;

constexpr double kUntouched = -77.0;

qxOptionLeg leg(double premium, double strike, int32_t type) {
  return {premium, strike, type, 0};
}

using Evaluate = int32_t (*)(qxOptionStrategy*);

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
  }
  EXPECT_EQ(qxApprxCumProbDist(kInfinity), 1.0);
}

TEST(Options, BlackScholesValues) {
  // Only whole days count, whatever the times of day.
  const auto value = [](int32_t type, double price, double strike, double rate, double variance,
                        int32_t days) {
    const qxOptionLeg option = {kUntouched, strike, type, 40000.0 + days + 0.1};
    const double result = qxBlackScholes(&option, price, rate, variance, 40000.9);
    EXPECT_EQ(option.premium, kUntouched);
    return result;
  };
  EXPECT_TRUE(near(value(1, 100, 95, 5, 0.04, 180), 9.872748217084506, 1e-12));
  EXPECT_TRUE(near(value(2, 100, 95, 5, 0.04, 180), 2.527189859776101, 1e-12));
  EXPECT_TRUE(near(value(0, 42, 40, 10, 0.04, 90), 3.529347887542624, 1e-12));
  EXPECT_TRUE(near(value(2, 80, 100, 3, 0.09, 720), 22.7683997589816, 1e-12));
}

TEST(Options, BlackScholesDegenerateInput) {
  const qxOptionLeg call = {0, 100, QX_OPTION_CALL, 40000};
  EXPECT_TRUE(std::isnan(qxBlackScholes(&call, 100, 5, 0.04, 40100))) << "expired";
  EXPECT_TRUE(std::isnan(qxBlackScholes(&call, -1, 5, 0.04, 39900)));
  EXPECT_EQ(qxBlackScholes(&call, 110, 5, 0.04, 40000), 10.0) << "expires today, d1 is infinite";
  EXPECT_EQ(qxBlackScholes(nullptr, 110, 5, 0.04, 40000), 0.0);
}

// Evaluates a strategy and compares every result.
void expectResults(Evaluate evaluate, qxOptionStrategy s, double maxLoss, double maxProfit,
                   double upper, double lower) {
  EXPECT_EQ(evaluate(&s), QX_SUCCESS);
  EXPECT_EQ(s.maxloss, maxLoss);
  EXPECT_EQ(s.maxprofit, maxProfit);
  EXPECT_EQ(s.riskreward, maxLoss == 0 || maxProfit == 0 ? 0.0 : maxLoss / maxProfit);
  EXPECT_EQ(s.upper, upper);
  EXPECT_EQ(s.lower, lower);
  EXPECT_EQ(s.uppermove, (upper - s.price) / s.price);
  EXPECT_EQ(s.lowermove, (lower - s.price) / s.price);
}

TEST(Options, SpreadsFillEveryResult) {
  const auto spread = [](Evaluate evaluate, qxOptionLeg bought, qxOptionLeg sold, double maxLoss,
                         double maxProfit, double breakEven) {
    qxOptionStrategy s = strategy(100);
    s.long1 = bought;
    s.short1 = sold;
    s.long2 = s.short2 = leg(99, 99, 1);  // takes no part
    expectResults(evaluate, s, maxLoss, maxProfit, breakEven, breakEven);
  };
  spread(qxBullCall, leg(5, 100, 1), leg(2, 110, 1), 3, 7, 103);
  spread(qxBearPut, leg(6, 110, 2), leg(2, 100, 2), 4, 6, 106);
  spread(qxBearCall, leg(2, 110, 1), leg(5, 100, 1), 7, 3, 103);
  spread(qxBearCall, leg(2, 100, 1), leg(5, 110, 1), 7, 3, 113);  // strikes in either order
  spread(qxBullPut, leg(2, 100, 2), leg(6, 110, 2), 6, 4, 106);
  spread(qxBullPut, leg(2, 110, 2), leg(6, 100, 2), -14, 4, 96);
}

TEST(Options, StraddlesAndStranglesFillEveryResult) {
  const auto expectBoth = [](Evaluate buy, Evaluate sell, qxOptionLeg first, qxOptionLeg second,
                             double limited, double upper, double lower) {
    qxOptionStrategy bought = strategy(50), sold = strategy(50);
    bought.long1 = sold.short1 = first;
    bought.long2 = sold.short2 = second;
    expectResults(buy, bought, limited, 0, upper, lower);
    expectResults(sell, sold, 0, limited, upper, lower);
  };
  expectBoth(qxLongStraddle, qxShortStraddle, leg(3, 50, 1), leg(2, 51, 2), 5, 55, 45);
  expectBoth(qxLongStraddle, qxShortStraddle, leg(3, 50, 2), leg(2, 51, 2), 5, 55, 45);
  expectBoth(qxLongStrangle, qxShortStrangle, leg(3, 55, 1), leg(1, 45, 2), 4, 59, 41);
}

TEST(Options, WithoutAPriceTheMovesStayAsTheyWere) {
  const Evaluate all[] = {qxBullCall,     qxBullPut,      qxBearCall,      qxBearPut,
                          qxLongStraddle, qxLongStrangle, qxShortStraddle, qxShortStrangle};
  for (const Evaluate evaluate : all) {
    for (double price : {0.0, -5.0, kNaN}) {
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
  for (const Evaluate evaluate : {qxLongStrangle, qxShortStrangle}) {
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
