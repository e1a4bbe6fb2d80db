// The simulator's bars per second: with resting orders that never fill, and with a fill on every
// few bars.
#include "bench/bench_support.h"

namespace {

using qxbench::bars;

// Five good-till-cancelled orders far from the market wait on every bar.
void restingOrders(benchmark::State& state) {
  qxOrderSystem system = {};
  qxOrderSystemInit(&system, "bench", &bars());
  for (auto _ : state) {
    qxOrderSystemReset(&system);
    qxProcessOrders(&system);
    qxBuyToOpen(&system, "a", 1, 1e9, QX_ORDER_STOP, QX_FORCE_GTC);
    qxBuyToOpen(&system, "b", 1, -1e9, QX_ORDER_LIMIT, QX_FORCE_GTC);
    qxSellToOpen(&system, "c", 1, -1e9, QX_ORDER_STOP, QX_FORCE_GTC);
    qxSellToClose(&system, "d", "", 1, 1e9, QX_ORDER_LIMIT, QX_FORCE_GTC);
    qxBuyToClose(&system, "e", "", 1, 1e9, QX_ORDER_STOP, QX_FORCE_GTC);
    while (qxProcessOrders(&system) == 1) {
    }
  }
  state.SetItemsProcessed(state.iterations() * bars().barsize);
  qxOrderSystemClose(&system);
}
BENCHMARK(restingOrders)->Name("ProcessOrders/resting")->Unit(benchmark::kMillisecond);

// On every tenth bar the position turns around; a stop and a target guard it in between.
void turningPosition(benchmark::State& state) {
  qxOrderSystem system = {};
  qxOrderSystemInit(&system, "bench", &bars());
  for (auto _ : state) {
    qxOrderSystemReset(&system);
    while (qxProcessOrders(&system) == 1) {
      if (system.bar % 20 == 0) qxBuyToOpen(&system, "up", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
      if (system.bar % 20 == 10) qxSellToOpen(&system, "down", 1, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
      if (system.marketpos == QX_MARKET_LONG) {
        qxSellToClose(&system, "stop", "", 1, system.avgprice * 0.9, QX_ORDER_STOP, QX_FORCE_BAR);
        qxSellToClose(&system, "take", "", 1, system.avgprice * 1.1, QX_ORDER_LIMIT, QX_FORCE_BAR);
      }
    }
  }
  state.SetItemsProcessed(state.iterations() * bars().barsize);
  qxOrderSystemClose(&system);
}
BENCHMARK(turningPosition)->Name("ProcessOrders/trading")->Unit(benchmark::kMillisecond);

}  // namespace
