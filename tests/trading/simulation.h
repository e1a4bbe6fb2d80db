// An order system over its own bars, for the trading tests.
#ifndef QUORVEX_TESTS_TRADING_SIMULATION_H
#define QUORVEX_TESTS_TRADING_SIMULATION_H

#include <cstring>
#include <string>
#include <vector>

#include "tests/support/test_support.h"

namespace qxtest {

struct Simulation {
  BarSet bars;
  qxOrderSystem record = {};

  explicit Simulation(const std::vector<Bar>& values, double tick = 0.25) : bars(values) {
    EXPECT_EQ(qxOrderSystemInit(&record, "Test", bars), QX_SUCCESS);
    record.tick = tick;
    record.tickvalue = tick;  // a point is worth 1
  }
  ~Simulation() { qxOrderSystemClose(&record); }
  Simulation(const Simulation&) = delete;
  Simulation& operator=(const Simulation&) = delete;

  operator qxOrderSystem*() { return &record; }
  qxOrderSystem* operator->() { return &record; }

  // Processes bars until `bar` is the current one.
  void advance(int32_t bar) {
    while (record.bar < bar) ASSERT_EQ(qxProcessOrders(&record), 1);
  }
  std::vector<std::string> orderNames() const {
    std::vector<std::string> names;
    for (int32_t i = 0; i < record.ordercount; ++i) names.push_back(record.orders[i].name);
    return names;
  }
};

// A daily bar on which only the prices matter.
inline Bar priceBar(double date, double open, double high, double low, double close) {
  return {date, open, high, low, close, 0, 0};
}

// `count` daily bars of one price.
inline std::vector<Bar> flatBars(int32_t count, double price) {
  std::vector<Bar> bars;
  for (int32_t i = 0; i < count; ++i)
    bars.push_back(priceBar(40000 + i, price, price, price, price));
  return bars;
}

// The twelve worked bars traded once with every type of order, at a point worth 50 with costs.
// Fills, by hand (tick 0.25):
//   bar 1  L1 buys 2 at 53.25 (stop 53, a tick worse)
//   bar 2  limit sells 1 at 54.00 (54.1, rounded)          1 * (37.5 - 0.5) - 2   =   35
//   bar 3  stop sells 1 at 51.50 (51.6, cut)               1 * (-87.5 - 0.5) - 2  =  -90
//   bar 4  S1 sells 3 at 51 (market)
//   bar 5  cover buys 1 at 49 (close of bar 4)             1 * (100 - 0.5) - 2    =   97.5
//   bar 6  L2 buys 4 at 50 (market) and turns S1's 2       2 * (50 - 0.5) - 2     =   97
//   bar 8  take sells 1 at 54 (the bar lies above 50)      1 * (200 - 0.5) - 2    =  197.5
// and 3 of L2 stay open: 3 * 50 * (57 - 50) = 1050 at the last close.
struct WorkedRun : Simulation {
  WorkedRun() : Simulation(workedBars()) {
    record.tickvalue = 12.5;
    record.unitcost = 0.5;
    record.sidecost = 1.0;
    std::memcpy(record.bars.symbol, "SYM", 4);
    qxOrderSystem* s = &record;
    advance(0);
    qxBuyToOpen(s, "L1", 2, 53, QX_ORDER_STOP, QX_FORCE_GTC);
    advance(1);
    qxSellToClose(s, "stop", "L1", 2, 51.6, QX_ORDER_STOP, QX_FORCE_GTC);
    qxSellToClose(s, "limit", "", 1, 54.1, QX_ORDER_LIMIT, QX_FORCE_GTC);
    advance(3);
    qxSellToOpen(s, "S1", 3, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
    advance(4);
    qxBuyToClose(s, "cover", "S1", 1, 0, QX_ORDER_CLOSE, QX_FORCE_BAR);
    advance(5);
    qxBuyToOpen(s, "L2", 4, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
    advance(7);
    qxSellToClose(s, "take", "", 1, 50, QX_ORDER_LIMIT, QX_FORCE_GTC);
    advance(10);
    qxSellToOpen(s, "S2", 5, 40.25, QX_ORDER_STOP, QX_FORCE_GTC);
    qxSellToClose(s, "guard", "L2", 9, 44.5, QX_ORDER_STOP, 0);
    while (qxProcessOrders(s) == 1) {
    }
  }
};

}  // namespace qxtest

#endif  // QUORVEX_TESTS_TRADING_SIMULATION_H
