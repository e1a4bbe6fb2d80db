// The order system: its lifecycle, and the orders that a caller places and withdraws.
#include <algorithm>
#include <cstring>
#include <limits>

#include "core/indicator_frame.h"
#include "trading/simulator.h"

namespace qx {
namespace {

constexpr int32_t kFirstOrders = 16;
constexpr int32_t kOrderGrowth = 4;
constexpr int32_t kFirstPositions = 16;
constexpr int32_t kBarsPerTrade = 4;       // a trade slot for every fourth bar
constexpr int32_t kMostTrades = 20648881;  // first capacity; the table stays below 2^31 bytes
constexpr double kDefaultTick = 0.001;
constexpr double kDefaultMargin = 100.0;  // percent

// Prices of market orders, which every bar reaches.
constexpr double kMarketBuyPrice = 0.0;
constexpr double kMarketSellPrice = std::numeric_limits<float>::max();

void clearPositionFields(qxOrderSystem* system) {
  system->marketpos = QX_MARKET_FLAT;
  system->longvol = 0;
  system->shortvol = 0;
  system->netvol = 0;
  system->avgprice = 0.0;
  system->lastentry = 0.0;
  system->counter = 0;
  system->longbars = 0;
  system->shortbars = 0;
  system->posbars = 0;
}

void releaseTables(qxOrderSystem* system) {
  release(system->orders);
  release(system->positions);
  release(system->trades);
  system->orders = nullptr;
  system->positions = nullptr;
  system->trades = nullptr;
}

// Appends an order. The volume, kind, direction, ordertype, timeinforce and price of `order` are
// the caller's; the rest is set here.
int32_t placeOrder(qxOrderSystem* system, const char* name, const char* fromName, qxOrder order) {
  // The names are copied first: they may stand in the table that grows.
  copyText(order.name, name);
  copyText(order.fromname, fromName);
  if (system->orders == nullptr || system->ordercount >= system->ordercap) {
    const int64_t capacity = int64_t{system->ordercap} + kOrderGrowth;
    qxOrder* grown = grownTable(system->orders, system->ordercap, capacity);
    if (grown == nullptr) return QX_ERR_MALLOC;
    system->orders = grown;
    system->ordercap = static_cast<int32_t>(capacity);
  }
  if (order.ordertype == QX_ORDER_MARKET) {
    order.price = order.direction == QX_BUY ? kMarketBuyPrice : kMarketSellPrice;
  } else if (order.ordertype == QX_ORDER_CLOSE) {
    order.price = barClose(*system, system->bar);
  }
  order.date = barDate(*system, system->bar);
  system->orders[system->ordercount++] = order;
  return QX_SUCCESS;
}

qxOrder orderOf(int32_t kind, int32_t direction, uint32_t volume, double price, int32_t orderType,
                int32_t timeInForce) {
  qxOrder order = {};
  order.kind = kind;
  order.direction = direction;
  order.volume = volume;
  order.price = price;
  order.ordertype = orderType;
  order.timeinforce = timeInForce;
  return order;
}

}  // namespace

int32_t barCount(const qxOrderSystem& system) {
  const qxBars& bars = system.bars;
  return heldLength(bars.barsize, {&bars.date, &bars.open, &bars.high, &bars.low, &bars.close});
}

double barDate(const qxOrderSystem& system, int64_t bar) {
  return bar >= 0 && bar < barCount(system) ? system.bars.date.data[bar] : 0.0;
}

double barClose(const qxOrderSystem& system, int64_t bar) {
  return bar >= 0 && bar < barCount(system) ? system.bars.close.data[bar] : 0.0;
}

}  // namespace qx

int32_t qxOrderSystemInit(qxOrderSystem* system, const char* name, const qxBars* bars) {
  if (system == nullptr || name == nullptr || bars == nullptr) return QX_ERR_INVALID_PARM;
  qxOrderSystem fresh = {};
  fresh.ordercap = qx::kFirstOrders;
  fresh.positioncap = qx::kFirstPositions;
  fresh.tradecap = std::clamp(bars->barsize / qx::kBarsPerTrade, 0, qx::kMostTrades);
  fresh.orders = qx::grownTable<qxOrder>(nullptr, 0, fresh.ordercap);
  fresh.positions = qx::grownTable<qxPosition>(nullptr, 0, fresh.positioncap);
  fresh.trades = qx::grownTable<qxTrade>(nullptr, 0, fresh.tradecap);
  if (fresh.orders == nullptr || fresh.positions == nullptr || fresh.trades == nullptr) {
    qx::releaseTables(&fresh);
    *system = {};
    return QX_ERR_MALLOC;
  }
  qx::copyText(fresh.name, name);
  fresh.tick = qx::kDefaultTick;
  fresh.tickvalue = qx::kDefaultTick;
  fresh.margin = qx::kDefaultMargin;
  fresh.reverse = 1;
  fresh.allowlong = 1;
  fresh.allowshort = 1;
  fresh.bar = -1;
  fresh.bars = *bars;
  *system = fresh;
  return QX_SUCCESS;
}

int32_t qxOrderSystemReset(qxOrderSystem* system) {
  if (system == nullptr) return QX_ERR_INVALID_PARM;
  system->ordercount = 0;
  system->positioncount = 0;
  system->tradecount = 0;
  system->longstats = {};
  system->shortstats = {};
  system->netstats = {};
  qx::clearPositionFields(system);
  system->bar = -1;
  return QX_SUCCESS;
}

void qxOrderSystemClose(qxOrderSystem* system) {
  if (system == nullptr) return;
  qx::releaseTables(system);
  system->ordercap = 0;
  system->ordercount = 0;
  system->positioncap = 0;
  system->positioncount = 0;
  system->tradecap = 0;
  system->tradecount = 0;
}

int32_t qxBuyToOpen(qxOrderSystem* system, const char* name, uint32_t volume, double price,
                    int32_t ordertype, int32_t timeinforce) {
  if (system == nullptr || name == nullptr) return QX_ERR_INVALID_PARM;
  if (system->allowlong == 0) return QX_SUCCESS;
  return qx::placeOrder(system, name, "",
                        qx::orderOf(QX_KIND_ENTRY, QX_BUY, volume, price, ordertype, timeinforce));
}

int32_t qxSellToOpen(qxOrderSystem* system, const char* name, uint32_t volume, double price,
                     int32_t ordertype, int32_t timeinforce) {
  if (system == nullptr || name == nullptr) return QX_ERR_INVALID_PARM;
  if (system->allowshort == 0) return QX_SUCCESS;
  return qx::placeOrder(system, name, "",
                        qx::orderOf(QX_KIND_ENTRY, QX_SELL, volume, price, ordertype, timeinforce));
}

int32_t qxSellToClose(qxOrderSystem* system, const char* name, const char* fromname,
                      uint32_t volume, double price, int32_t ordertype, int32_t timeinforce) {
  if (system == nullptr || name == nullptr || fromname == nullptr) return QX_ERR_INVALID_PARM;
  return qx::placeOrder(system, name, fromname,
                        qx::orderOf(QX_KIND_EXIT, QX_SELL, volume, price, ordertype, timeinforce));
}

int32_t qxBuyToClose(qxOrderSystem* system, const char* name, const char* fromname, uint32_t volume,
                     double price, int32_t ordertype, int32_t timeinforce) {
  if (system == nullptr || name == nullptr || fromname == nullptr) return QX_ERR_INVALID_PARM;
  return qx::placeOrder(system, name, fromname,
                        qx::orderOf(QX_KIND_EXIT, QX_BUY, volume, price, ordertype, timeinforce));
}

int32_t qxCancelOrder(qxOrderSystem* system, const char* name) {
  if (system == nullptr || name == nullptr) return QX_ERR_INVALID_PARM;
  if (system->orders == nullptr) return 0;
  int32_t marked = 0;
  // Kept: the slot after the last order is visited too, so cancelling all counts one more than
  // there are.
  for (int32_t i = 0; i <= system->ordercount; ++i) {
    qxOrder* order = &system->orders[i];
    if (*name == '\0' || std::strncmp(order->name, name, sizeof order->name) == 0) {
      order->cancelled = 1;
      ++marked;
    }
  }
  return marked;
}
