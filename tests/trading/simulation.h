// An order system over its own bars, for the trading tests.
#ifndef QUORVEX_TESTS_TRADING_SIMULATION_H
#define QUORVEX_TESTS_TRADING_SIMULATION_H

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "tests/support/test_support.h"

namespace qxtest {

using Names = std::vector<std::string>;

// One side of a trade, e.g. "long L1 2 at 53.25 on 1", with its date where that is not the bar's.
inline std::string text(const char* direction, const qxPosition& side) {
  char buffer[120];
  std::snprintf(buffer, sizeof buffer, "%s %s %d at %g on %d", direction, side.name, side.volume,
                side.price, side.bar);
  const bool ownDate = side.date == 40000.0 + side.bar;
  return buffer + (ownDate ? "" : " dated " + std::to_string(static_cast<int32_t>(side.date)));
}

// A position, e.g. "long L1 2 at 53.25 on 1, 1 left".
inline std::string text(const qxPosition& position) {
  return text(position.direction == QX_LONG ? "long" : "short", position) + ", " +
         std::to_string(position.remaining) + " left";
}

// An order system whose bars are dated daily from 40000 on. The methods that place orders place
// market orders for the next bar unless told otherwise, and can be chained.
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

  // Processes bars until `bar` is the current one, or to the end of the bars.
  Simulation& advance(int32_t bar) {
    while (record.bar < bar && qxProcessOrders(&record) == 1) continue;
    EXPECT_EQ(record.bar, bar);
    return *this;
  }
  void finish() { advance(record.bars.barsize); }

  Simulation& buy(const char* name, uint32_t volume, double price = 0,
                  int32_t type = QX_ORDER_MARKET, int32_t force = QX_FORCE_BAR) {
    EXPECT_EQ(qxBuyToOpen(&record, name, volume, price, type, force), QX_SUCCESS);
    return *this;
  }
  Simulation& sell(const char* name, uint32_t volume, double price = 0,
                   int32_t type = QX_ORDER_MARKET, int32_t force = QX_FORCE_BAR) {
    EXPECT_EQ(qxSellToOpen(&record, name, volume, price, type, force), QX_SUCCESS);
    return *this;
  }
  Simulation& sellOut(const char* name, const char* from, uint32_t volume, double price = 0,
                      int32_t type = QX_ORDER_MARKET, int32_t force = QX_FORCE_BAR) {
    EXPECT_EQ(qxSellToClose(&record, name, from, volume, price, type, force), QX_SUCCESS);
    return *this;
  }
  Simulation& cover(const char* name, const char* from, uint32_t volume, double price = 0,
                    int32_t type = QX_ORDER_MARKET, int32_t force = QX_FORCE_BAR) {
    EXPECT_EQ(qxBuyToClose(&record, name, from, volume, price, type, force), QX_SUCCESS);
    return *this;
  }

  Names orders() const {
    Names names;
    for (int32_t i = 0; i < record.ordercount; ++i) names.push_back(record.orders[i].name);
    return names;
  }
  Names positions() const {
    Names texts;
    for (int32_t i = 0; i < record.positioncount; ++i) texts.push_back(text(record.positions[i]));
    return texts;
  }
  // The trades, e.g. "long L1 2 at 53.25 on 1, 2 left; sell limit 1 at 54 on 2".
  Names trades() const {
    Names texts;
    for (int32_t i = 0; i < record.tradecount; ++i) {
      const auto& [entry, exit] = record.trades[i];
      texts.push_back(text(entry) + "; " + text(exit.direction == QX_SELL ? "sell" : "buy", exit));
      EXPECT_EQ(exit.remaining, 0);
    }
    return texts;
  }
};

// A daily bar on which only the prices matter.
inline Bar priceBar(double date, double open, double high, double low, double close) {
  return {date, open, high, low, close, 0, 0};
}

// Daily bars of one price each.
inline std::vector<Bar> flatBars(const std::vector<double>& prices) {
  std::vector<Bar> bars;
  double date = 40000;
  for (const double price : prices) bars.push_back(priceBar(date++, price, price, price, price));
  return bars;
}
inline std::vector<Bar> flatBars(size_t count, double price) {
  return flatBars(std::vector<double>(count, price));
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
    advance(0).buy("L1", 2, 53, QX_ORDER_STOP, QX_FORCE_GTC);
    advance(1).sellOut("stop", "L1", 2, 51.6, QX_ORDER_STOP, QX_FORCE_GTC);
    sellOut("limit", "", 1, 54.1, QX_ORDER_LIMIT, QX_FORCE_GTC);
    advance(3).sell("S1", 3);
    advance(4).cover("cover", "S1", 1, 0, QX_ORDER_CLOSE);
    advance(5).buy("L2", 4);
    advance(7).sellOut("take", "", 1, 50, QX_ORDER_LIMIT, QX_FORCE_GTC);
    advance(10).sell("S2", 5, 40.25, QX_ORDER_STOP, QX_FORCE_GTC);
    sellOut("guard", "L2", 9, 44.5, QX_ORDER_STOP, 0);
    finish();
  }
};

}  // namespace qxtest

#endif  // QUORVEX_TESTS_TRADING_SIMULATION_H
