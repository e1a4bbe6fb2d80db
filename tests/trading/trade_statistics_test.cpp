// The statistics that trades leave, beside those of the worked run that the profit report prints.
#include <cmath>

#include "tests/trading/simulation.h"

namespace {

using qxtest::flatBars;
using qxtest::near;
using qxtest::Simulation;

TEST(TradeStatistics, WorkedRun) {
  qxtest::WorkedRun run;
  const double root = std::sqrt(2.0);
  const qxTradeStats &sideLong = run->longstats, &sideShort = run->shortstats;
  EXPECT_EQ(sideLong.winnerbarsum, 5);
  EXPECT_EQ(sideLong.loserbarsum, 3);
  EXPECT_EQ(sideLong.winstreak, 1);
  EXPECT_EQ(sideLong.losestreak, 0);
  EXPECT_TRUE(near(sideLong.pctprofitable, 200.0 / 3));
  EXPECT_TRUE(near(sideLong.winlossratio, 116.25 / 90));
  EXPECT_TRUE(near(sideLong.prr, (2 - root) / 3 * 232.5 / 2 / 60));
  EXPECT_TRUE(near(sideShort.prr, (2 - root) / 2 * 194.5 / 2)) << "no loss: the gain itself";
  EXPECT_TRUE(near(run->netstats.prr, 42.7 / 36));
  EXPECT_TRUE(near(run->netstats.profitfactor, 232.5 / 90)) << "the sum of the sides' factors";
  EXPECT_EQ(run->netstats.winnerbarsum + run->netstats.winstreak, 0);
}

// A long of 2 units from 10 on bar 1, on bars that close at 10, 10, 8 and 12.
struct Closings : Simulation {
  explicit Closings(double margin, double thirdClose = 8) : Simulation(flatBars({10, 10, 10, 12})) {
    bars->close.data[2] = thirdClose;
    record.margin = margin;
    advance(0).buy("in", 2).advance(1);
  }
  void closeOne() { sellOut("out", "", 1).advance(record.bar + 1); }
};

TEST(TradeStatistics, AProfitOfZeroOnlyCountsAsATrade) {
  Closings run(100);
  run.closeOne();
  const qxTradeStats& stats = run->longstats;
  EXPECT_EQ(stats.trades, 1);
  EXPECT_EQ(stats.winners + stats.losers + stats.winstreak + stats.losestreak, 0);
  EXPECT_EQ(stats.pctprofitable, 0.0);
  run.closeOne();
  EXPECT_EQ(stats.trades, 2);
  EXPECT_EQ(stats.winners, 1);
  EXPECT_EQ(stats.pctprofitable, 50.0);
  EXPECT_EQ(stats.averagetrade, 1.0);
  EXPECT_EQ(stats.profitfactor, 0.0) << "no loss, no factor";
  EXPECT_EQ(stats.prr, 0.0) << "one winner less its root leaves no gain";
}

TEST(TradeStatistics, AccountSizeFollowsTheMargin) {
  const struct {
    double margin, account, onAccount;
  } rows[] = {{100, 4, 50}, {50, 8, 25}, {-200, 2, 100}, {0, 0, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.margin);
    Closings run(row.margin);
    run.closeOne();
    run.closeOne();
    EXPECT_EQ(run->longstats.maxdrawdown, -4.0);
    for (const qxTradeStats* stats : {&run->longstats, &run->netstats}) {
      EXPECT_EQ(stats->accountsize, row.account);
      EXPECT_EQ(stats->returnonaccount, row.onAccount);
    }
  }
  // With the margin taken away the old account size keeps rating the profit.
  Closings run(100);
  run.closeOne();
  run->margin = 0;
  run.closeOne();
  EXPECT_EQ(run->longstats.accountsize, 2.0);
  EXPECT_EQ(run->longstats.returnonaccount, 100.0);
}

TEST(TradeStatistics, ZeroClosesCountInTheDrawdown) {
  Closings run(100, 0);
  run.advance(2);
  run.closeOne();
  EXPECT_EQ(run->longstats.maxdrawdown, -12.0);
}

}  // namespace
