// The order system's lifecycle, its tables, and orders placed and cancelled.
#include <cstring>

#include "tests/trading/simulation.h"

namespace {

using qxtest::BarSet;
using qxtest::flatBars;
using qxtest::Names;
using qxtest::Simulation;

TEST(OrderSystem, InitialValues) {
  BarSet bars(qxtest::workedBars());
  qxOrderSystem s;
  std::memset(&s, 0x5A, sizeof s);
  const std::string name(100, 'n');
  ASSERT_EQ(qxOrderSystemInit(&s, name.c_str(), bars), QX_SUCCESS);
  EXPECT_EQ(std::string(s.name), name.substr(0, 79));
  const std::vector<double> amounts = {s.tick,      s.tickvalue, s.unitcost, s.sidecost,
                                       s.deduction, s.margin,    s.avgprice, s.netstats.netprofit};
  EXPECT_EQ(amounts, (std::vector<double>{0.001, 0.001, 0, 0, 0, 100, 0, 0}));
  const std::vector<int32_t> settings = {s.delay,     s.gapfill,    s.reverse, s.pyramid,
                                         s.allowlong, s.allowshort, s.bar};
  EXPECT_EQ(settings, (std::vector<int32_t>{0, 0, 1, 0, 1, 1, -1}));
  EXPECT_EQ(s.ordercap, 16);
  EXPECT_EQ(s.positioncap, 16);
  EXPECT_EQ(s.tradecap, 3);
  EXPECT_EQ(s.bars.close.data, bars->close.data);
  qxOrderSystemClose(&s);
}

TEST(OrderSystem, CloseMayBeRepeatedAndUsedAfter) {
  Simulation run(flatBars(3, 10));
  run.advance(0).buy("a", 1, 5, QX_ORDER_LIMIT, QX_FORCE_GTC);
  for (int i = 0; i < 2; ++i) {
    qxOrderSystemClose(run);
    EXPECT_TRUE(run->orders == nullptr && run->positions == nullptr && run->trades == nullptr);
    EXPECT_EQ(run->ordercap + run->ordercount + run->positioncap + run->tradecap, 0);
  }
  EXPECT_EQ(qxCancelOrder(run, ""), 0);
  // Tables are found again, for the next Close to release.
  run.buy("a", 1).advance(1);
  EXPECT_EQ(run->positioncount, 1);
  qxOrderSystemClose(nullptr);
}

TEST(OrderSystem, ResetKeepsSettingsAndTables) {
  Simulation run(qxtest::workedBars());
  run->gapfill = 1;
  const qxOrderSystem fresh = run.record;
  run.advance(0)
      .buy("in", 3)
      .advance(1)
      .sellOut("out", "", 1)
      .advance(3)
      .sell("short", 1)
      .advance(5);
  EXPECT_EQ(run->tradecount, 2);
  run->counter = run->longbars = 5;
  EXPECT_EQ(qxOrderSystemReset(run), QX_SUCCESS);
  EXPECT_EQ(std::memcmp(&run.record, &fresh, sizeof fresh), 0);
}

TEST(OrderSystem, PlacedOrdersCarryTheirFields) {
  Simulation run(qxtest::workedBars());
  run.advance(2).buy("1234567890123456789xyz", 7, 9.5, QX_ORDER_STOP, 5).sell("b", UINT32_MAX, 9.5);
  run.sellOut("c", "1234567890123456789xyz", 7, 9.5, QX_ORDER_CLOSE).sellOut("d", "f", 7, 9.5);
  run.cover("e", "", 7, 9.5).buy("g", 7, 9.5);
  Names orders;
  for (int32_t i = 0; i < run->ordercount; ++i) {
    const qxOrder& o = run->orders[i];
    char text[150];
    std::snprintf(text, sizeof text, "%s %s %s %u '%s' at %.9g, type %d, force %d",
                  o.kind == QX_KIND_EXIT ? "exit" : "entry", o.direction == QX_BUY ? "buy" : "sell",
                  o.name, o.volume, o.fromname, o.price, o.ordertype, o.timeinforce);
    orders.push_back(text);
    EXPECT_EQ(o.date, 40002.0);
    EXPECT_EQ(o.cancelled, 0);
  }
  EXPECT_EQ(orders, (Names{"entry buy 1234567890123456789 7 '' at 9.5, type 2, force 5",
                           "entry sell b 4294967295 '' at 3.40282347e+38, type 1, force 1",
                           "exit sell c 7 '1234567890123456789' at 52, type 4, force 1",
                           "exit sell d 7 'f' at 3.40282347e+38, type 1, force 1",
                           "exit buy e 7 '' at 0, type 1, force 1",
                           "entry buy g 7 '' at 0, type 1, force 1"}));
}

TEST(OrderSystem, EntriesOfAForbiddenDirectionAreIgnored) {
  Simulation run(flatBars(2, 10));
  run->allowlong = 0;
  run.buy("long", 1).sell("short", UINT32_MAX).cover("cover", "", 1).sellOut("out", "", 1);
  run->allowlong = 1, run->allowshort = 0;
  run.sell("short", 1).buy("late", 1, 99, QX_ORDER_STOP);
  EXPECT_EQ(run.orders(), (Names{"short", "cover", "out", "late"}));
  run.advance(1);
  EXPECT_EQ(run->shortvol, INT32_MAX) << "what a position can hold";
}

TEST(OrderSystem, OrdersOutsideTheBarsHaveNoDateAndNoClose) {
  Simulation run(flatBars(2, 10));
  run.buy("early", 1, 7, QX_ORDER_CLOSE, QX_FORCE_GTC).finish();
  run.sell("late", 1, 7, QX_ORDER_CLOSE, QX_FORCE_GTC);
  EXPECT_EQ(run.positions(), Names{"long early 1 at 10 on 1, 1 left"}) << "bar 0 fills nothing";
  ASSERT_EQ(run->ordercount, 1);
  EXPECT_EQ(run->orders[0].price, 0.0);
  EXPECT_EQ(run->orders[0].date, 0.0);
  EXPECT_EQ(qxProcessOrders(run), 0);
  EXPECT_EQ(run->bar, 3);
  run->bar = INT32_MAX;
  EXPECT_EQ(qxProcessOrders(run), 0);
  EXPECT_EQ(run->bar, INT32_MAX);
}

TEST(OrderSystem, CancellingVisitsTheSlotAfterTheLastOrder) {
  Simulation run(flatBars(4, 10));
  EXPECT_EQ(qxCancelOrder(run, ""), 1);
  EXPECT_EQ(qxCancelOrder(run, "a"), 0);
  run.advance(0);
  for (const char* name : {"a", "b", "a", "ab"}) {
    run.buy(name, 1, 5, QX_ORDER_LIMIT, QX_FORCE_GTC);
  }
  EXPECT_EQ(qxCancelOrder(run, "A"), 0) << "case counts";
  EXPECT_EQ(qxCancelOrder(run, "a"), 2);
  EXPECT_EQ(run->ordercount, 4);
  run.advance(1);
  EXPECT_EQ(run.orders(), (Names{"b", "ab"}));
  EXPECT_EQ(qxCancelOrder(run, ""), 3);
  EXPECT_EQ(run->orders[0].cancelled + run->orders[1].cancelled, 2);
  // A full table still has the slot.
  run.advance(2);
  for (int i = 0; i < 16; ++i) run.buy("c", 1, 5, QX_ORDER_LIMIT);
  EXPECT_EQ(run->ordercap, 16);
  EXPECT_EQ(qxCancelOrder(run, ""), 17);
  run.buy(run->orders[15].name, 1, 5, QX_ORDER_LIMIT);  // a name in the table that moves
  EXPECT_EQ(run->ordercap, 20);
  EXPECT_STREQ(run->orders[16].name, "c");
  EXPECT_EQ(run->orders[16].cancelled, 0);
}

TEST(OrderSystem, TablesGrowByTheirSteps) {
  Simulation run(flatBars(20, 10));
  run->pyramid = 1;
  EXPECT_EQ(run->tradecap, 5);
  run.advance(0);
  for (int32_t bar = 1; bar < 19; ++bar) {
    run.buy(("p" + std::to_string(bar)).c_str(), 1).advance(bar);
    EXPECT_EQ(run->positioncount, bar);
    EXPECT_EQ(run->positioncap, bar <= 16 ? 16 : 20);
  }
  EXPECT_EQ(run->longvol, 18);
  EXPECT_EQ(run->longbars, 18);
  run.sellOut("all", "", 100).advance(19);
  EXPECT_EQ(run->positioncount, 0);
  ASSERT_EQ(run->tradecount, 18);
  EXPECT_EQ(run->tradecap, 22) << "5, 7, 10, 15, 22";
  for (int32_t i = 0; i < 18; ++i) {
    EXPECT_EQ(std::string(run->trades[i].entry.name), "p" + std::to_string(i + 1));
  }
  // From a table without slots: 0, 1, 2, 3, 4.
  Simulation small(flatBars(3, 10));
  EXPECT_EQ(small->tradecap, 0);
  small.advance(0).buy("a", 4).advance(1);
  for (int i = 0; i < 4; ++i) small.sellOut("x", "a", 1);
  small.advance(2);
  EXPECT_EQ(small->tradecount, 4);
  EXPECT_EQ(small->tradecap, 4);
}

TEST(OrderSystem, WithoutRoomOrdersAreRefusedAndTradesOnlyCounted) {
  Simulation run(flatBars(4, 10));
  run.advance(0).buy("a", 1).advance(1);
  // Tables at the end of their index range cannot grow.
  run->ordercap = run->ordercount = INT32_MAX;
  EXPECT_EQ(qxBuyToOpen(run, "b", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR), QX_ERR_MALLOC);
  EXPECT_EQ(run->ordercount, INT32_MAX);
  run->ordercap = 16;
  run->ordercount = 0;
  run.sellOut("c", "", 1);
  run->tradecap = run->tradecount = INT32_MAX;
  run.advance(2);
  EXPECT_EQ(run->tradecount, INT32_MAX);
  EXPECT_EQ(run->netstats.trades, 1);
  EXPECT_EQ(run->positioncount, 0);
}

TEST(OrderSystem, NullsAreRefused) {
  using qxtest::expectNullsRefused;
  constexpr int32_t kRefusal = QX_ERR_INVALID_PARM;
  Simulation run(flatBars(2, 10));
  expectNullsRefused("Init", qxOrderSystemInit, kRefusal, run, "a", run.bars);
  expectNullsRefused("Reset", qxOrderSystemReset, kRefusal, run);
  expectNullsRefused("Cancel", qxCancelOrder, kRefusal, run, "a");
  for (const auto open : {qxBuyToOpen, qxSellToOpen}) {
    expectNullsRefused("ToOpen", open, kRefusal, run, "a", 1u, 1.0, 1, 1);
  }
  for (const auto close : {qxSellToClose, qxBuyToClose}) {
    expectNullsRefused("ToClose", close, kRefusal, run, "a", "", 1u, 1.0, 1, 1);
  }
  EXPECT_EQ(qxProcessOrders(nullptr), 0);
  EXPECT_EQ(run->ordercount, 0);
}

TEST(OrderSystem, BarsEndWithTheirShortestSeries) {
  for (qxArray qxBars::*const series :
       {&qxBars::date, &qxBars::open, &qxBars::high, &qxBars::low, &qxBars::close}) {
    Simulation run(qxtest::workedBars());
    (run->bars.*series).size = 9;
    run.advance(8);
    EXPECT_EQ(qxProcessOrders(run), 0);
  }
}

}  // namespace
