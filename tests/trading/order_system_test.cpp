#include <cmath>
#include <cstring>
#include <limits>

#include "tests/trading/simulation.h"

namespace {

using qxtest::BarSet;
using qxtest::flatBars;
using qxtest::Simulation;

TEST(OrderSystem, InitialValues) {
  BarSet bars(qxtest::workedBars());
  qxOrderSystem system;
  std::memset(&system, 0x5A, sizeof system);
  const std::string name(100, 'n');
  ASSERT_EQ(qxOrderSystemInit(&system, name.c_str(), bars), QX_SUCCESS);
  EXPECT_EQ(std::string(system.name), name.substr(0, 79));
  EXPECT_EQ(system.tick, 0.001);
  EXPECT_EQ(system.tickvalue, 0.001);
  EXPECT_EQ(system.unitcost, 0.0);
  EXPECT_EQ(system.margin, 100.0);
  EXPECT_EQ(system.delay, 0);
  EXPECT_EQ(system.gapfill, 0);
  EXPECT_EQ(system.reverse, 1);
  EXPECT_EQ(system.pyramid, 0);
  EXPECT_EQ(system.allowlong, 1);
  EXPECT_EQ(system.allowshort, 1);
  EXPECT_EQ(system.bar, -1);
  EXPECT_EQ(system.netstats.netprofit, 0.0);
  EXPECT_EQ(system.ordercap, 16);
  EXPECT_EQ(system.positioncap, 16);
  EXPECT_EQ(system.tradecap, 3);
  EXPECT_EQ(system.bars.close.data, bars->close.data);
  qxOrderSystemClose(&system);
}

TEST(OrderSystem, CloseMayBeRepeatedAndUsedAfter) {
  Simulation run(flatBars(3, 10));
  EXPECT_EQ(run->tradecap, 0);
  run.advance(0);
  qxBuyToOpen(run, "a", 1, 5, QX_ORDER_LIMIT, QX_FORCE_GTC);
  for (int i = 0; i < 2; ++i) {
    qxOrderSystemClose(run);
    EXPECT_EQ(run->orders, nullptr);
    EXPECT_EQ(run->positions, nullptr);
    EXPECT_EQ(run->trades, nullptr);
    EXPECT_EQ(run->ordercap + run->ordercount + run->positioncap + run->tradecap, 0);
  }
  EXPECT_EQ(qxCancelOrder(run, ""), 0);
  EXPECT_EQ(qxBuyToOpen(run, "a", 1, 0, QX_ORDER_MARKET, QX_FORCE_GTC), QX_SUCCESS);
  EXPECT_EQ(qxProcessOrders(run), 1) << "tables are found again, for the next Close to release";
  EXPECT_EQ(run->positioncount, 1);
  qxOrderSystemClose(nullptr);
}

TEST(OrderSystem, ResetKeepsSettingsAndTables) {
  qxtest::WorkedRun run;
  run->gapfill = 1;
  const qxTrade* table = run->trades;
  EXPECT_EQ(qxOrderSystemReset(run), QX_SUCCESS);
  EXPECT_EQ(run->bar, -1);
  EXPECT_EQ(run->ordercount + run->positioncount + run->tradecount, 0);
  EXPECT_EQ(run->marketpos + run->longvol + run->netvol + run->longbars + run->posbars, 0);
  EXPECT_EQ(run->avgprice, 0.0);
  EXPECT_EQ(run->lastentry, 0.0);
  const qxTradeStats cleared = {};
  for (const auto* stats : {&run->longstats, &run->shortstats, &run->netstats}) {
    EXPECT_EQ(std::memcmp(stats, &cleared, sizeof cleared), 0);
  }
  EXPECT_EQ(run->gapfill, 1);
  EXPECT_EQ(run->tickvalue, 12.5);
  EXPECT_EQ(run->trades, table);
}

TEST(OrderSystem, PlacedOrdersCarryTheirFields) {
  Simulation run(qxtest::workedBars());
  run.advance(2);
  EXPECT_EQ(qxBuyToOpen(run, "1234567890123456789xyz", 7, 9.5, QX_ORDER_STOP, 5), QX_SUCCESS);
  EXPECT_EQ(qxSellToOpen(run, "b", UINT32_MAX, 9.5, QX_ORDER_MARKET, 1), QX_SUCCESS);
  EXPECT_EQ(qxSellToClose(run, "c", "1234567890123456789xyz", 7, 9.5, QX_ORDER_CLOSE, 1),
            QX_SUCCESS);
  EXPECT_EQ(qxSellToClose(run, "d", "f", 7, 9.5, QX_ORDER_MARKET, 1), QX_SUCCESS);
  EXPECT_EQ(qxBuyToClose(run, "e", "", 7, 9.5, QX_ORDER_MARKET, 1), QX_SUCCESS);
  EXPECT_EQ(qxBuyToOpen(run, "g", 7, 9.5, QX_ORDER_MARKET, 1), QX_SUCCESS);
  const struct {
    const char *name, *from;
    uint32_t volume;
    int32_t kind, direction;
    double price;
    int32_t type, force;
  } expected[] = {{"1234567890123456789", "", 7, QX_KIND_ENTRY, QX_BUY, 9.5, QX_ORDER_STOP, 5},
                  {"b", "", UINT32_MAX, QX_KIND_ENTRY, QX_SELL, 3.4028234663852886e38, 1, 1},
                  {"c", "1234567890123456789", 7, QX_KIND_EXIT, QX_SELL, 52, QX_ORDER_CLOSE, 1},
                  {"d", "f", 7, QX_KIND_EXIT, QX_SELL, 3.4028234663852886e38, 1, 1},
                  {"e", "", 7, QX_KIND_EXIT, QX_BUY, 0, 1, 1},
                  {"g", "", 7, QX_KIND_ENTRY, QX_BUY, 0, 1, 1}};
  ASSERT_EQ(run->ordercount, 6);
  for (int i = 0; i < 6; ++i) {
    const qxOrder& order = run->orders[i];
    EXPECT_STREQ(order.name, expected[i].name);
    EXPECT_STREQ(order.fromname, expected[i].from);
    EXPECT_EQ(order.volume, expected[i].volume);
    EXPECT_EQ(order.kind, expected[i].kind);
    EXPECT_EQ(order.direction, expected[i].direction);
    EXPECT_EQ(order.price, expected[i].price);
    EXPECT_EQ(order.ordertype, expected[i].type);
    EXPECT_EQ(order.timeinforce, expected[i].force);
    EXPECT_EQ(order.date, 40002.0);
    EXPECT_EQ(order.cancelled, 0);
  }
}

TEST(OrderSystem, EntriesOfAForbiddenDirectionAreIgnored) {
  Simulation run(flatBars(2, 10));
  run->allowlong = 0;
  run->allowshort = 0;
  EXPECT_EQ(qxBuyToOpen(run, "a", 1, 0, QX_ORDER_MARKET, 1), QX_SUCCESS);
  EXPECT_EQ(qxSellToOpen(run, "a", 1, 0, QX_ORDER_MARKET, 1), QX_SUCCESS);
  EXPECT_EQ(run->ordercount, 0);
  EXPECT_EQ(qxBuyToClose(run, "a", "", 1, 0, QX_ORDER_MARKET, 1), QX_SUCCESS);
  EXPECT_EQ(qxSellToClose(run, "a", "", 1, 0, QX_ORDER_MARKET, 1), QX_SUCCESS);
  EXPECT_EQ(run->ordercount, 2);
}

TEST(OrderSystem, OrdersOutsideTheBarsHaveNoDateAndNoClose) {
  Simulation run(flatBars(2, 10));
  qxBuyToOpen(run, "early", 1, 7, QX_ORDER_CLOSE, QX_FORCE_GTC);
  while (qxProcessOrders(run) == 1) {
  }
  qxSellToOpen(run, "late", 1, 7, QX_ORDER_CLOSE, QX_FORCE_GTC);
  EXPECT_EQ(run->positioncount, 1) << "the early order filled on bar 1, at the close of bar 0";
  EXPECT_EQ(run->positions[0].price, 10.0);
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
    qxBuyToOpen(run, name, 1, 5, QX_ORDER_LIMIT, QX_FORCE_GTC);
  }
  EXPECT_EQ(qxCancelOrder(run, "A"), 0) << "case counts";
  EXPECT_EQ(qxCancelOrder(run, "a"), 2);
  EXPECT_EQ(run.orderNames(), (std::vector<std::string>{"a", "b", "a", "ab"}));
  run.advance(1);
  EXPECT_EQ(run.orderNames(), (std::vector<std::string>{"b", "ab"}));
  EXPECT_EQ(qxCancelOrder(run, ""), 3);
  EXPECT_EQ(run->orders[0].cancelled + run->orders[1].cancelled, 2);
  // A full table still has the slot.
  run.advance(2);
  for (int i = 0; i < 16; ++i) qxBuyToOpen(run, "c", 1, 5, QX_ORDER_LIMIT, QX_FORCE_GTC);
  EXPECT_EQ(run->ordercap, 16);
  EXPECT_EQ(qxCancelOrder(run, ""), 17);
  qxBuyToOpen(run, run->orders[15].name, 1, 5, QX_ORDER_LIMIT, QX_FORCE_GTC);
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
    qxBuyToOpen(run, ("p" + std::to_string(bar)).c_str(), 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
    run.advance(bar);
    EXPECT_EQ(run->positioncount, bar);
    EXPECT_EQ(run->positioncap, bar <= 16 ? 16 : 20);
  }
  EXPECT_EQ(run->longvol, 18);
  EXPECT_EQ(run->longbars, 18);
  qxSellToClose(run, "all", "", 100, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  run.advance(19);
  EXPECT_EQ(run->positioncount, 0);
  ASSERT_EQ(run->tradecount, 18);
  EXPECT_EQ(run->tradecap, 22) << "5, 7, 10, 15, 22";
  for (int32_t i = 0; i < 18; ++i) {
    EXPECT_EQ(run->trades[i].entry.bar, i + 1);
    EXPECT_EQ(std::string(run->trades[i].entry.name), "p" + std::to_string(i + 1));
  }
  // From a table without slots: 0, 1, 2, 3, 4.
  Simulation small(flatBars(3, 10));
  small.advance(0);
  qxBuyToOpen(small, "a", 4, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  small.advance(1);
  for (int i = 0; i < 4; ++i) qxSellToClose(small, "x", "a", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  small.advance(2);
  EXPECT_EQ(small->tradecount, 4);
  EXPECT_EQ(small->tradecap, 4);
}

TEST(OrderSystem, WithoutRoomOrdersAreRefusedAndTradesOnlyCounted) {
  Simulation run(flatBars(4, 10));
  run.advance(0);
  qxBuyToOpen(run, "a", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  run.advance(1);
  // Tables at the end of their index range cannot grow.
  run->ordercap = run->ordercount = INT32_MAX;
  EXPECT_EQ(qxBuyToOpen(run, "b", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR), QX_ERR_MALLOC);
  EXPECT_EQ(run->ordercount, INT32_MAX);
  run->ordercap = 16;
  run->ordercount = 0;
  qxSellToClose(run, "c", "", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  run->tradecap = run->tradecount = INT32_MAX;
  run.advance(2);
  EXPECT_EQ(run->tradecount, INT32_MAX);
  EXPECT_EQ(run->netstats.trades, 1);
  EXPECT_EQ(run->positioncount, 0);
}

TEST(OrderSystem, NullsAreRefused) {
  Simulation run(flatBars(2, 10));
  qxOrderSystem* s = run;
  qxOrderSystem other;
  EXPECT_EQ(qxOrderSystemInit(nullptr, "a", run.bars), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxOrderSystemInit(&other, nullptr, run.bars), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxOrderSystemInit(&other, "a", nullptr), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxOrderSystemReset(nullptr), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxProcessOrders(nullptr), 0);
  EXPECT_EQ(qxCancelOrder(nullptr, "a"), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCancelOrder(s, nullptr), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxBuyToOpen(nullptr, "a", 1, 1, 1, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxBuyToOpen(s, nullptr, 1, 1, 1, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxSellToOpen(s, nullptr, 1, 1, 1, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxSellToClose(s, "a", nullptr, 1, 1, 1, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxBuyToClose(nullptr, "a", "", 1, 1, 1, 1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(run->ordercount, 0);
}

// A run under hostile settings, prices and orders must only stay inside its memory.
TEST(OrderSystem, SurvivesHostileValues) {
  const double inf = std::numeric_limits<double>::infinity();
  for (const double value : {std::nan(""), inf, -inf, 0.0, -1.0, 1e308, -1e308, 1e-320}) {
    for (const int32_t number : {INT32_MIN, -1, 0, 1, INT32_MAX}) {
      Simulation run(qxtest::workedBars());
      run->tick = value;
      run->margin = value;
      run->deduction = value;
      run->delay = number;
      run->pyramid = number;
      run->bar = number == INT32_MAX ? INT32_MIN : -1;
      run.bars->low.data[5] = value;
      run.bars->close.data[7] = value;
      run->bars.close.size = 9;  // one series shorter than the set says
      int32_t calls = 0;
      for (; calls < 20 && qxProcessOrders(run) == 1; ++calls) {
        for (int32_t type = -1; type <= 5; ++type) {
          qxBuyToOpen(run, "a", UINT32_MAX, value, type, number);
          qxSellToOpen(run, "", 3, value, type, number);
          qxSellToClose(run, "b", "", UINT32_MAX, value, type, number);
          qxBuyToClose(run, "b", "a", 0, value, type, number);
        }
      }
      if (run->bar >= 0) {
        EXPECT_EQ(calls, 9);
      }
      qxArray markers = {};
      qxCreateTradeGraph(run, &markers);
      qxFreeArray(&markers);
    }
  }
}

}  // namespace
