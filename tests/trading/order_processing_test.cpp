// Which orders a bar fills, at what price and in which sequence, and what that does to positions.
#include <array>
#include <cmath>

#include "tests/trading/simulation.h"

namespace {

using qxtest::flatBars;
using qxtest::Names;
using qxtest::priceBar;
using qxtest::Simulation;

// The stored price of one order on a bar that opens at 10.5 between 10 and 11, after a close of 9;
// -1 when it does not fill.
double fillOf(bool entry, bool gapFill, int32_t direction, int32_t type, double price) {
  Simulation run({priceBar(40000, 9, 9, 9, 9), priceBar(40001, 9, 9, 9, 9),
                  priceBar(40002, 10.5, 11, 10, 10.75)});
  const bool buy = direction == QX_BUY;
  run->gapfill = gapFill ? 1 : 0;
  run.advance(0);
  if (entry && buy) run.advance(1).buy("o", 1, price, type);
  if (entry && !buy) run.advance(1).sell("o", 1, price, type);
  if (!entry && buy) run.sell("in", 1).advance(1).cover("o", "", 1, price, type);
  if (!entry && !buy) run.buy("in", 1).advance(1).sellOut("o", "", 1, price, type);
  run.advance(2);
  if (entry) return run->positioncount == 0 ? -1 : run->positions[0].price;
  return run->tradecount == 0 ? -1 : run->trades[0].exit.price;
}

TEST(Fills, FollowTheTable) {
  struct Row {
    double price;
    double exit, entry;        // without gap fills
    double gapExit, gapEntry;  // with them
  };
  // Buy stops and sell limits, reached from below; sell stops and buy limits, from above.
  const Row rising[] = {{11.25, -1, -1, -1, -1},         {11, 11, 11.25, 11, 11.25},
                        {10.625, 10.75, 11, 10.75, 11},  {10.6, 10.5, 10.75, 10.5, 10.75},
                        {10.5, 10.5, 10.75, 10.5, 10.5}, {10.25, 10.25, 10.5, 10.5, 10.5},
                        {10, 10, 10, 10.5, 10.5},        {9, 10, 10, 10.5, 10.5}};
  const Row falling[] = {{9.75, -1, -1, -1, -1},           {10, 10, 9.75, 10, 9.75},
                         {10.4, 10.25, 10, 10.25, 10},     {10.5, 10.5, 10.25, 10.5, 10.5},
                         {10.75, 10.75, 10.5, 10.5, 10.5}, {11, 11, 11, 10.5, 10.5},
                         {12, 11, 11, 10.5, 10.5}};
  const auto expectFills = [](int32_t direction, int32_t type, const Row& row) {
    const auto fill = [&](bool entry, bool gapFill) {
      return fillOf(entry, gapFill, direction, type, row.price);
    };
    const std::array fills = {fill(false, false), fill(true, false), fill(false, true),
                              fill(true, true)};
    EXPECT_EQ(fills, (std::array{row.exit, row.entry, row.gapExit, row.gapEntry}))
        << "type " << type << ", direction " << direction << ", price " << row.price;
  };
  for (const Row& row : rising) {
    expectFills(QX_BUY, QX_ORDER_STOP, row);
    expectFills(QX_SELL, QX_ORDER_LIMIT, row);
  }
  for (const Row& row : falling) {
    expectFills(QX_SELL, QX_ORDER_STOP, row);
    expectFills(QX_BUY, QX_ORDER_LIMIT, row);
  }
  for (const int32_t direction : {QX_BUY, QX_SELL}) {
    expectFills(direction, QX_ORDER_MARKET, {123.0, 10.5, 10.5, 10.5, 10.5});
    expectFills(direction, QX_ORDER_CLOSE, {123.0, 9.0, 9.0, 9.0, 9.0});
    expectFills(direction, 5, {10.5, -1, -1, -1, -1});
    expectFills(direction, QX_ORDER_STOP, {std::nan(""), -1, -1, -1, -1});
    expectFills(direction, QX_ORDER_LIMIT, {std::nan(""), -1, -1, -1, -1});
  }
}

TEST(Fills, AreBroughtOntoTheTickByRemainder) {
  Simulation run(flatBars({10, 10.2}), 0.001);
  run.advance(0).buy("a", 1).advance(1);
  // 10.2 lies a hair below 10200 ticks of the double 0.001, so the remainder is almost a tick.
  EXPECT_TRUE(qxtest::near(run->positions[0].price, 10.199));
}

TEST(Processing, OrdersAreSortedByInsertion) {
  // Nothing is active, so the sequence can be read off the table.
  constexpr int32_t kNeverActive = 100 * 86400;
  constexpr int32_t kGtc = QX_FORCE_GTC;
  Simulation run(flatBars(6, 10));
  run->delay = kNeverActive;
  run.advance(0).buy("buy10", 1, 10, QX_ORDER_STOP, kGtc).buy("buy9", 1, 9, QX_ORDER_LIMIT, kGtc);
  run.sell("sell5", 1, 5, QX_ORDER_STOP, kGtc).sell("sell7", 1, 7, QX_ORDER_STOP, kGtc);
  run.sell("sell7b", 1, 7, QX_ORDER_LIMIT, kGtc);
  run.sellOut("xsell8", "", 1, 8, QX_ORDER_STOP, kGtc);
  run.cover("xbuy3", "", 1, 3, QX_ORDER_STOP, kGtc);
  run.sellOut("xsell", "", 1, 0, QX_ORDER_MARKET, kGtc);
  run.buy("m1", 1, 0, QX_ORDER_MARKET, kGtc).buy("m2", 1, 0, QX_ORDER_MARKET, kGtc).advance(1);
  EXPECT_EQ(run.orders(), (Names{"xbuy3", "xsell", "xsell8", "m2", "m1", "buy9", "buy10", "sell7",
                                 "sell7b", "sell5"}));
  // Each of two market entries comes before the other: they change places on every bar.
  run.advance(2);
  EXPECT_EQ(run.orders(), (Names{"xbuy3", "xsell", "xsell8", "m1", "m2", "buy9", "buy10", "sell7",
                                 "sell7b", "sell5"}));

  // So do a market sell entry and a buy entry: it is a market order, the other is a buy.
  Simulation pair(flatBars(4, 10));
  pair->delay = kNeverActive;
  pair.advance(0).sell("market", 1, 0, QX_ORDER_MARKET, kGtc);
  pair.buy("stop", 1, 11, QX_ORDER_STOP, kGtc).advance(1);
  EXPECT_EQ(pair.orders(), (Names{"stop", "market"}));
  pair.advance(2);
  EXPECT_EQ(pair.orders(), (Names{"market", "stop"}));
}

TEST(Processing, OneEntryADirectionAndItsRivalsAreWithdrawn) {
  for (const bool pyramid : {false, true}) {
    Simulation run(flatBars(4, 10));
    run->pyramid = pyramid ? 1 : 0;
    run.advance(0).buy("high", 1, 10, QX_ORDER_STOP, QX_FORCE_GTC);
    run.buy("low", 2, 9, QX_ORDER_STOP, QX_FORCE_GTC);
    run.buy("far", 4, 99, QX_ORDER_STOP, QX_FORCE_GTC);
    run.sell("short", 8, 5, QX_ORDER_STOP, QX_FORCE_GTC).advance(1);
    Names positions = {"long low 2 at 10 on 1, 2 left"};
    EXPECT_EQ(run.positions(), positions);
    EXPECT_EQ(run.orders(), Names{"short"});
    // While long, a further buy fills only when pyramiding; a waiting one stays.
    run.buy("more", 1, 0, QX_ORDER_MARKET, QX_FORCE_GTC).advance(2);
    if (pyramid) positions.push_back("long more 1 at 10 on 2, 1 left");
    EXPECT_EQ(run.positions(), positions);
    EXPECT_EQ(run->longvol, pyramid ? 3 : 2);
    EXPECT_EQ(run.orders(), pyramid ? Names{"short"} : (Names{"more", "short"}));
  }
}

TEST(Processing, EntriesLookAtThePositionOfTheLastBarsEnd) {
  Simulation run(flatBars(4, 10));
  run.advance(0).buy("a", 1).advance(1).sellOut("out", "", 1);
  run.buy("b", 1, 0, QX_ORDER_MARKET, QX_FORCE_GTC).advance(2);
  EXPECT_EQ(run->tradecount, 1);
  EXPECT_EQ(run.positions(), Names()) << "the system was long until this bar";
  EXPECT_EQ(run->marketpos, QX_MARKET_FLAT);
  run.advance(3);
  EXPECT_EQ(run.positions(), Names{"long b 1 at 10 on 3, 1 left"});
}

TEST(Processing, ReversalClosesEarlierPositionsAndDropsThoseOfTheBar) {
  Simulation run({priceBar(40000, 10, 10, 10, 10), priceBar(40001, 10, 10, 10, 10),
                  priceBar(40002, 12, 14, 11, 13)});
  run->counter = 7;  // cleared with the fields of the position
  run.advance(0).buy("long", 3).advance(1).sell("short", 1, 13, QX_ORDER_LIMIT).advance(2);
  // The entry as it stood before the closing, and the other entry's own fill.
  EXPECT_EQ(run.trades(), Names{"long long 3 at 10 on 1, 3 left; sell short 3 at 13.25 on 2"});
  EXPECT_EQ(run.positions(), Names{"short short 1 at 13.25 on 2, 1 left"});
  EXPECT_EQ(run->marketpos, QX_MARKET_SHORT);
  EXPECT_EQ(run->counter, 0);

  // Both directions on one bar: the buy fills first and vanishes without a trade.
  Simulation both(flatBars(3, 10));
  both.advance(0).sell("s", 2, 10, QX_ORDER_STOP).buy("b", 5, 10, QX_ORDER_STOP).advance(1);
  EXPECT_EQ(both->tradecount + both->netstats.trades, 0);
  EXPECT_EQ(both.positions(), Names{"short s 2 at 10 on 1, 2 left"});
  EXPECT_EQ(both->longstats.maxcontracts, 0.0);
}

TEST(Processing, ExitsCloseOldestFirstAndByName) {
  Simulation run(flatBars(12, 10));
  run->pyramid = 1;
  run.advance(0).buy("A", 2).advance(1).buy("B", 2).advance(2).buy("A", 2).advance(3);
  run.sellOut("none", "a", 1, 0, QX_ORDER_MARKET, QX_FORCE_GTC);
  run.cover("wrong side", "", 1, 0, QX_ORDER_MARKET, QX_FORCE_GTC).advance(4);
  EXPECT_EQ(run->tradecount, 0);
  EXPECT_EQ(run->ordercount, 0) << "exits that find nothing are used up";
  run.sellOut("some", "A", 3, 0, QX_ORDER_MARKET, QX_FORCE_GTC).advance(5);
  EXPECT_EQ(run.trades(), (Names{"long A 2 at 10 on 1, 2 left; sell some 2 at 10 on 5",
                                 "long A 2 at 10 on 3, 2 left; sell some 1 at 10 on 5"}));
  EXPECT_EQ(run.positions(), (Names{"long B 2 at 10 on 2, 2 left", "long A 2 at 10 on 3, 1 left"}));
  EXPECT_EQ(run->longbars, 4) << "bars since the oldest entry still open";
  run.sellOut("rest", "", 50).advance(6);
  EXPECT_EQ(run->tradecount, 4);
  EXPECT_EQ(run->positioncount, 0);
  EXPECT_EQ(run->marketpos, QX_MARKET_FLAT);
  // The name field is blanks under the name and its terminator.
  EXPECT_EQ(std::string(run->trades[0].exit.name, 20), std::string("some\0               ", 20));
}

TEST(Processing, DelayAndTimeInForce) {
  struct Row {
    int32_t delay, force, fillBar;  // 0: never
  };
  const Row rows[] = {{0, QX_FORCE_BAR, 2},        {86399, QX_FORCE_BAR, 2},
                      {86400, QX_FORCE_BAR, 2},    {172800, QX_FORCE_BAR, 0},
                      {172800, QX_FORCE_GTC, 3},   {3 * 86400, 0, 4},
                      {INT32_MIN, QX_FORCE_GTC, 2}};
  for (const Row& row : rows) {
    Simulation run(flatBars(8, 10));
    run->delay = row.delay;
    run.advance(1).buy("a", 1, 0, QX_ORDER_MARKET, row.force).advance(7);
    EXPECT_EQ(run->positioncount == 0 ? 0 : run->positions[0].bar, row.fillBar) << row.delay;
    EXPECT_EQ(run->ordercount, 0) << row.delay;
  }
}

TEST(Processing, AWaitingCloseOrderFillsAtTheCloseOfTheBarBefore) {
  Simulation run(qxtest::workedBars());
  run.advance(0).buy("in", 1).advance(2);
  run->delay = 3 * 86400;
  run.sellOut("out", "", 1, 0, QX_ORDER_CLOSE, QX_FORCE_GTC);
  EXPECT_EQ(run->orders[0].price, 52.0);
  run.advance(5);
  EXPECT_EQ(run.trades(), Names{"long in 1 at 51 on 1, 1 left; sell out 1 at 49 on 5 dated 40004"})
      << "the close of bar 4";
}

TEST(Processing, WorkedRun) {
  qxtest::WorkedRun run;
  EXPECT_EQ(run.trades(),
            (Names{"long L1 2 at 53.25 on 1, 2 left; sell limit 1 at 54 on 2",
                   "long L1 2 at 53.25 on 1, 1 left; sell stop 1 at 51.5 on 3",
                   "short S1 3 at 51 on 4, 3 left; buy cover 1 at 49 on 5 dated 40004",
                   "short S1 3 at 51 on 4, 2 left; buy L2 2 at 50 on 6",
                   "long L2 4 at 50 on 6, 4 left; sell take 1 at 54 on 8"}));
  EXPECT_EQ(run.positions(), Names{"long L2 4 at 50 on 6, 3 left"});
  EXPECT_EQ(run->marketpos, QX_MARKET_LONG);
  EXPECT_EQ(run->longvol, 3);
  EXPECT_EQ(run->netvol, 3);
  EXPECT_EQ(run->avgprice, 50.0);
  EXPECT_EQ(run->posbars, 6);
  EXPECT_EQ(run->lastentry, 40006.0);
  EXPECT_EQ(run.orders(), (Names{"guard", "S2"}));
}

}  // namespace
