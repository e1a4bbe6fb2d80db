#include <cmath>
#include <limits>

#include "tests/trading/simulation.h"

namespace {

using qxtest::flatBars;
using qxtest::priceBar;
using qxtest::Simulation;
using Names = std::vector<std::string>;

constexpr double kNoFill = -1.0;

int32_t place(qxOrderSystem* system, bool entry, int32_t direction, double price, int32_t type) {
  if (entry && direction == QX_BUY) return qxBuyToOpen(system, "o", 1, price, type, QX_FORCE_GTC);
  if (entry) return qxSellToOpen(system, "o", 1, price, type, QX_FORCE_GTC);
  if (direction == QX_BUY) return qxBuyToClose(system, "o", "", 1, price, type, QX_FORCE_GTC);
  return qxSellToClose(system, "o", "", 1, price, type, QX_FORCE_GTC);
}

// The stored price of one order on a bar that opens at 10.5 between 10 and 11, after a close of 9.
double fillOf(bool entry, int32_t direction, double price, int32_t type, bool gapFill) {
  Simulation run({priceBar(40000, 9, 9, 9, 9), priceBar(40001, 9, 9, 9, 9),
                  priceBar(40002, 10.5, 11, 10, 10.75)});
  run->gapfill = gapFill ? 1 : 0;
  run.advance(0);
  if (!entry) place(run, true, direction == QX_BUY ? QX_SELL : QX_BUY, 0, QX_ORDER_MARKET);
  run.advance(1);
  place(run, entry, direction, price, type);
  run.advance(2);
  if (entry) return run->positioncount == 0 ? kNoFill : run->positions[0].price;
  return run->tradecount == 0 ? kNoFill : run->trades[0].exit.price;
}

TEST(Fills, FollowTheTable) {
  struct Row {
    double price;
    double exit, entry;        // without gap fills
    double gapExit, gapEntry;  // with them
  };
  // Buy stops and sell limits, reached from below.
  const Row rising[] = {{11.25, kNoFill, kNoFill, kNoFill, kNoFill},
                        {11.0, 11.0, 11.25, 11.0, 11.25},
                        {10.625, 10.75, 11.0, 10.75, 11.0},
                        {10.6, 10.5, 10.75, 10.5, 10.75},
                        {10.5, 10.5, 10.75, 10.5, 10.5},
                        {10.25, 10.25, 10.5, 10.5, 10.5},
                        {10.0, 10.0, 10.0, 10.5, 10.5},
                        {9.0, 10.0, 10.0, 10.5, 10.5}};
  // Sell stops and buy limits, reached from above.
  const Row falling[] = {{9.75, kNoFill, kNoFill, kNoFill, kNoFill},
                         {10.0, 10.0, 9.75, 10.0, 9.75},
                         {10.4, 10.25, 10.0, 10.25, 10.0},
                         {10.5, 10.5, 10.25, 10.5, 10.5},
                         {10.75, 10.75, 10.5, 10.5, 10.5},
                         {11.0, 11.0, 11.0, 10.5, 10.5},
                         {12.0, 11.0, 11.0, 10.5, 10.5}};
  const auto expectRow = [](const Row& row, int32_t direction, int32_t type) {
    SCOPED_TRACE(testing::Message()
                 << "type " << type << ", direction " << direction << ", price " << row.price);
    EXPECT_EQ(fillOf(false, direction, row.price, type, false), row.exit);
    EXPECT_EQ(fillOf(true, direction, row.price, type, false), row.entry);
    EXPECT_EQ(fillOf(false, direction, row.price, type, true), row.gapExit);
    EXPECT_EQ(fillOf(true, direction, row.price, type, true), row.gapEntry);
  };
  for (const Row& row : rising) {
    expectRow(row, QX_BUY, QX_ORDER_STOP);
    expectRow(row, QX_SELL, QX_ORDER_LIMIT);
  }
  for (const Row& row : falling) {
    expectRow(row, QX_SELL, QX_ORDER_STOP);
    expectRow(row, QX_BUY, QX_ORDER_LIMIT);
  }
  for (const int32_t direction : {QX_BUY, QX_SELL}) {
    expectRow({123.0, 10.5, 10.5, 10.5, 10.5}, direction, QX_ORDER_MARKET);
    expectRow({123.0, 9.0, 9.0, 9.0, 9.0}, direction, QX_ORDER_CLOSE);
    expectRow({10.5, kNoFill, kNoFill, kNoFill, kNoFill}, direction, 5);
    for (const int32_t type : {QX_ORDER_STOP, QX_ORDER_LIMIT}) {
      expectRow({std::nan(""), kNoFill, kNoFill, kNoFill, kNoFill}, direction, type);
    }
  }
}

TEST(Fills, AreBroughtOntoTheTickByRemainder) {
  Simulation run({priceBar(1, 10, 10, 10, 10), priceBar(2, 10.2, 10.3, 10.1, 10.2)}, 0.001);
  run.advance(0);
  qxBuyToOpen(run, "a", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  run.advance(1);
  // 10.2 lies a hair below 10200 ticks of the double 0.001, so the remainder is almost a tick.
  EXPECT_TRUE(qxtest::near(run->positions[0].price, 10.199));
  EXPECT_LT(run->positions[0].price, 10.1995);
}

TEST(Processing, TheFirstCallFillsNothing) {
  Simulation run(flatBars(2, 10));
  qxBuyToOpen(run, "a", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  EXPECT_EQ(qxProcessOrders(run), 1);
  EXPECT_EQ(run->positioncount, 0);
  EXPECT_EQ(run->ordercount, 1);
  EXPECT_EQ(qxProcessOrders(run), 1);
  EXPECT_EQ(run->positioncount, 1);
  EXPECT_EQ(run->lastentry, 40001.0);
  EXPECT_EQ(qxProcessOrders(run), 0);
  EXPECT_EQ(run->bar, 2);
}

TEST(Processing, OrdersAreSortedByInsertion) {
  Simulation run(flatBars(6, 10));
  run->delay = 100 * 86400;  // nothing is active, so the sequence can be read off the table
  run.advance(0);
  const auto entry = [&](const char* name, int32_t direction, double price, int32_t type) {
    if (direction == QX_BUY) qxBuyToOpen(run, name, 1, price, type, QX_FORCE_GTC);
    if (direction == QX_SELL) qxSellToOpen(run, name, 1, price, type, QX_FORCE_GTC);
  };
  entry("buy10", QX_BUY, 10, QX_ORDER_STOP);
  entry("buy9", QX_BUY, 9, QX_ORDER_LIMIT);
  entry("sell5", QX_SELL, 5, QX_ORDER_STOP);
  entry("sell7", QX_SELL, 7, QX_ORDER_STOP);
  entry("sell7b", QX_SELL, 7, QX_ORDER_LIMIT);
  qxSellToClose(run, "xsell8", "", 1, 8, QX_ORDER_STOP, QX_FORCE_GTC);
  qxBuyToClose(run, "xbuy3", "", 1, 3, QX_ORDER_STOP, QX_FORCE_GTC);
  qxSellToClose(run, "xsell", "", 1, 0, QX_ORDER_MARKET, QX_FORCE_GTC);
  entry("m1", QX_BUY, 0, QX_ORDER_MARKET);
  entry("m2", QX_BUY, 0, QX_ORDER_MARKET);
  run.advance(1);
  const Names tail = {"buy9", "buy10", "sell7", "sell7b", "sell5"};
  Names sorted = {"xbuy3", "xsell", "xsell8", "m2", "m1"};
  sorted.insert(sorted.end(), tail.begin(), tail.end());
  EXPECT_EQ(run.orderNames(), sorted);
  // Each of two market entries comes before the other: they change places on every bar.
  std::swap(sorted[3], sorted[4]);
  run.advance(2);
  EXPECT_EQ(run.orderNames(), sorted);

  // So do a market sell entry and a buy entry: it is a market order, the other is a buy.
  Simulation pair(flatBars(4, 10));
  pair->delay = run->delay;
  pair.advance(0);
  qxSellToOpen(pair, "market", 1, 0, QX_ORDER_MARKET, QX_FORCE_GTC);
  qxBuyToOpen(pair, "stop", 1, 11, QX_ORDER_STOP, QX_FORCE_GTC);
  pair.advance(1);
  EXPECT_EQ(pair.orderNames(), (Names{"stop", "market"}));
  pair.advance(2);
  EXPECT_EQ(pair.orderNames(), (Names{"market", "stop"}));
}

TEST(Processing, OneEntryADirectionAndItsRivalsAreWithdrawn) {
  for (const int32_t pyramid : {0, 1}) {
    Simulation run(flatBars(4, 10));
    run->pyramid = pyramid;
    run.advance(0);
    qxBuyToOpen(run, "high", 1, 10, QX_ORDER_STOP, QX_FORCE_GTC);
    qxBuyToOpen(run, "low", 2, 9, QX_ORDER_STOP, QX_FORCE_GTC);
    qxBuyToOpen(run, "far", 4, 99, QX_ORDER_STOP, QX_FORCE_GTC);
    qxSellToOpen(run, "short", 8, 5, QX_ORDER_STOP, QX_FORCE_GTC);
    run.advance(1);
    ASSERT_EQ(run->positioncount, 1);
    EXPECT_STREQ(run->positions[0].name, "low");
    EXPECT_EQ(run.orderNames(), Names{"short"});
    // While long, a further buy fills only when pyramiding; a waiting one stays.
    qxBuyToOpen(run, "more", 1, 0, QX_ORDER_MARKET, QX_FORCE_GTC);
    run.advance(2);
    EXPECT_EQ(run->positioncount, pyramid == 0 ? 1 : 2);
    EXPECT_EQ(run->longvol, pyramid == 0 ? 2 : 3);
    EXPECT_EQ(run->ordercount, pyramid == 0 ? 2 : 1);
  }
}

TEST(Processing, EntriesLookAtThePositionOfTheLastBarsEnd) {
  Simulation run(flatBars(4, 10));
  run.advance(0);
  qxBuyToOpen(run, "a", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  run.advance(1);
  qxSellToClose(run, "out", "", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  qxBuyToOpen(run, "b", 1, 0, QX_ORDER_MARKET, QX_FORCE_GTC);
  run.advance(2);
  EXPECT_EQ(run->tradecount, 1);
  EXPECT_EQ(run->positioncount, 0) << "the system was long until this bar";
  EXPECT_EQ(run->marketpos, QX_MARKET_FLAT);
  run.advance(3);
  EXPECT_STREQ(run->positions[0].name, "b");
}

TEST(Processing, ReversalClosesEarlierPositionsAndDropsThoseOfTheBar) {
  Simulation run({priceBar(40000, 10, 10, 10, 10), priceBar(40001, 10, 10, 10, 10),
                  priceBar(40002, 12, 14, 11, 13)});
  run.advance(0);
  qxBuyToOpen(run, "long", 3, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  run.advance(1);
  qxSellToOpen(run, "short", 1, 13, QX_ORDER_LIMIT, QX_FORCE_BAR);
  run.advance(2);
  ASSERT_EQ(run->tradecount, 1);
  const qxTrade& trade = run->trades[0];
  EXPECT_EQ(trade.entry.remaining, 3) << "as it stood before the closing";
  EXPECT_STREQ(trade.exit.name, "short");
  EXPECT_EQ(trade.exit.direction, QX_SELL);
  EXPECT_EQ(trade.exit.price, 13.25) << "the entry's own fill";
  EXPECT_EQ(trade.exit.volume, 3);
  EXPECT_EQ(trade.exit.bar, 2);
  EXPECT_EQ(trade.exit.remaining, 0);
  EXPECT_EQ(run->marketpos, QX_MARKET_SHORT);
  EXPECT_EQ(run->positioncount, 1);

  // Both directions on one bar: the buy fills first and vanishes without a trade.
  Simulation both(flatBars(3, 10));
  both.advance(0);
  qxSellToOpen(both, "s", 2, 10, QX_ORDER_STOP, QX_FORCE_BAR);
  qxBuyToOpen(both, "b", 5, 10, QX_ORDER_STOP, QX_FORCE_BAR);
  both.advance(1);
  EXPECT_EQ(both->tradecount, 0);
  EXPECT_EQ(both->netstats.trades, 0);
  ASSERT_EQ(both->positioncount, 1);
  EXPECT_STREQ(both->positions[0].name, "s");
  EXPECT_EQ(both->longstats.maxcontracts, 0.0);

  // Without reversal both stay, and equal volumes are flat.
  for (const uint32_t volume : {1u, 2u, 3u}) {
    Simulation hedged(flatBars(3, 10));
    hedged->reverse = 0;
    hedged.advance(0);
    qxSellToOpen(hedged, "s", 2, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
    qxBuyToOpen(hedged, "b", volume, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
    hedged.advance(2);
    EXPECT_EQ(hedged->positioncount, 2);
    const int32_t side = volume == 2   ? QX_MARKET_FLAT
                         : volume == 3 ? QX_MARKET_LONG
                                       : QX_MARKET_SHORT;
    EXPECT_EQ(hedged->marketpos, side);
    EXPECT_EQ(hedged->netvol, volume == 2 ? 0 : 1);
    EXPECT_EQ(hedged->avgprice, volume == 2 ? 0.0 : 10.0);
    EXPECT_EQ(hedged->posbars, volume == 2 ? 0 : 2);
    EXPECT_EQ(hedged->longbars, 2);
  }
}

TEST(Processing, ExitsCloseOldestFirstAndByName) {
  Simulation run(flatBars(12, 10));
  run->pyramid = 1;
  run.advance(0);
  for (const char* name : {"A", "B", "A"}) {
    qxBuyToOpen(run, name, 2, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
    run.advance(run->bar + 1);
  }
  qxSellToClose(run, "none", "a", 1, 0, QX_ORDER_MARKET, QX_FORCE_GTC);
  qxBuyToClose(run, "wrong side", "", 1, 0, QX_ORDER_MARKET, QX_FORCE_GTC);
  run.advance(4);
  EXPECT_EQ(run->tradecount, 0);
  EXPECT_EQ(run->ordercount, 0) << "exits that find nothing are used up";
  qxSellToClose(run, "some", "A", 3, 0, QX_ORDER_MARKET, QX_FORCE_GTC);
  run.advance(5);
  ASSERT_EQ(run->tradecount, 2);
  EXPECT_EQ(run->trades[0].entry.bar, 1);
  EXPECT_EQ(run->trades[0].exit.volume, 2);
  EXPECT_EQ(run->trades[1].entry.bar, 3);
  EXPECT_EQ(run->trades[1].exit.volume, 1);
  ASSERT_EQ(run->positioncount, 2);
  EXPECT_STREQ(run->positions[0].name, "B");
  EXPECT_EQ(run->positions[1].remaining, 1);
  EXPECT_EQ(run->positions[1].volume, 2);
  EXPECT_EQ(run->longbars, 4) << "bars since the oldest entry still open";
  qxSellToClose(run, "rest", "", 50, 0, QX_ORDER_MARKET, QX_FORCE_GTC);
  run.advance(6);
  EXPECT_EQ(run->tradecount, 4);
  EXPECT_EQ(run->positioncount, 0);
  EXPECT_EQ(run->marketpos, QX_MARKET_FLAT);
  EXPECT_EQ(run->longstats.openprofit, 0.0);
  // The name field is blanks under the name and its terminator.
  EXPECT_EQ(std::string(run->trades[0].exit.name, 20), std::string("some\0               ", 20));
}

TEST(Processing, DelayAndTimeInForce) {
  struct Row {
    int32_t delay, force, fillBar;  // 0: never
  };
  for (const Row& row :
       {Row{0, QX_FORCE_BAR, 2}, Row{86399, QX_FORCE_BAR, 2}, Row{86400, QX_FORCE_BAR, 2},
        Row{172800, QX_FORCE_BAR, 0}, Row{172800, QX_FORCE_GTC, 3}, Row{3 * 86400, 0, 4},
        Row{INT32_MIN, QX_FORCE_GTC, 2}}) {
    SCOPED_TRACE(row.delay);
    Simulation run(flatBars(8, 10));
    run->delay = row.delay;
    run.advance(1);
    qxBuyToOpen(run, "a", 1, 0, QX_ORDER_MARKET, row.force);
    run.advance(7);
    EXPECT_EQ(run->positioncount, row.fillBar == 0 ? 0 : 1);
    EXPECT_EQ(run->ordercount, 0);
    if (run->positioncount == 1) {
      EXPECT_EQ(run->positions[0].bar, row.fillBar);
    }
  }
}

TEST(Processing, AWaitingCloseOrderFillsAtTheCloseOfTheBarBefore) {
  Simulation run(qxtest::workedBars());
  run.advance(0);
  qxBuyToOpen(run, "in", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  run.advance(2);
  run->delay = 3 * 86400;
  qxSellToClose(run, "out", "", 1, 0, QX_ORDER_CLOSE, QX_FORCE_GTC);
  EXPECT_EQ(run->orders[0].price, 52.0);
  run.advance(5);
  ASSERT_EQ(run->tradecount, 1);
  EXPECT_EQ(run->trades[0].exit.price, 49.0) << "the close of bar 4";
  EXPECT_EQ(run->trades[0].exit.date, 40004.0);
  EXPECT_EQ(run->trades[0].exit.bar, 5);
}

TEST(Processing, WorkedRun) {
  qxtest::WorkedRun run;
  struct Row {
    const char* entry;
    int32_t direction, entryBar;
    double entryPrice;
    int32_t volume, remaining;
    const char* exit;
    int32_t exitBar;
    double exitDate, exitPrice;
    int32_t closed;
  };
  const Row rows[] = {{"L1", QX_LONG, 1, 53.25, 2, 2, "limit", 2, 40002, 54.0, 1},
                      {"L1", QX_LONG, 1, 53.25, 2, 1, "stop", 3, 40003, 51.5, 1},
                      {"S1", QX_SHORT, 4, 51.0, 3, 3, "cover", 5, 40004, 49.0, 1},
                      {"S1", QX_SHORT, 4, 51.0, 3, 2, "L2", 6, 40006, 50.0, 2},
                      {"L2", QX_LONG, 6, 50.0, 4, 4, "take", 8, 40008, 54.0, 1}};
  ASSERT_EQ(run->tradecount, 5);
  for (int i = 0; i < 5; ++i) {
    SCOPED_TRACE(i);
    const Row& row = rows[i];
    const qxTrade& trade = run->trades[i];
    EXPECT_STREQ(trade.entry.name, row.entry);
    EXPECT_EQ(trade.entry.direction, row.direction);
    EXPECT_EQ(trade.entry.bar, row.entryBar);
    EXPECT_EQ(trade.entry.date, 40000.0 + row.entryBar);
    EXPECT_EQ(trade.entry.price, row.entryPrice);
    EXPECT_EQ(trade.entry.volume, row.volume);
    EXPECT_EQ(trade.entry.remaining, row.remaining);
    EXPECT_STREQ(trade.exit.name, row.exit);
    EXPECT_EQ(trade.exit.direction, row.direction == QX_LONG ? QX_SELL : QX_BUY);
    EXPECT_EQ(trade.exit.bar, row.exitBar);
    EXPECT_EQ(trade.exit.date, row.exitDate);
    EXPECT_EQ(trade.exit.price, row.exitPrice);
    EXPECT_EQ(trade.exit.volume, row.closed);
  }
  EXPECT_EQ(run->marketpos, QX_MARKET_LONG);
  EXPECT_EQ(run->longvol, 3);
  EXPECT_EQ(run->netvol, 3);
  EXPECT_EQ(run->avgprice, 50.0);
  EXPECT_EQ(run->posbars, 6);
  EXPECT_EQ(run->lastentry, 40006.0);
  EXPECT_EQ(run.orderNames(), (Names{"guard", "S2"}));
}

}  // namespace
