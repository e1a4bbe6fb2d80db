// The simulator's clock: each call moves to the next bar, fills the orders it allows and values
// what stays open.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "core/numeric.h"
#include "trading/simulator.h"

namespace qx {
namespace {

constexpr int32_t kPositionGrowth = 4;
constexpr int32_t kSecondsPerDay = 86400;

// What orders are filled against.
struct Market {
  double date, open, high, low;
  double previousClose;
  double tick;
  bool gapFill;
};

// The nearest multiple of the tick; the multiple at or below. Remainders of doubles decide.
double nearestTick(double price, double tick) {
  const double raised = price + tick / 2;
  return raised - std::fmod(raised, tick);
}
double lowerTick(double price, double tick) {
  return price - std::fmod(price, tick);
}

bool isExit(const qxOrder& order) {
  return order.kind == QX_KIND_EXIT;
}

// True when `a` is to be filled before `b`. This is no consistent order: of two market entries each
// comes before the other.
bool fillsBefore(const qxOrder& a, const qxOrder& b) {
  // Kept: the test is on the kind, which is never 4, so it never decides.
  if ((a.kind == QX_ORDER_CLOSE) != (b.kind == QX_ORDER_CLOSE)) return a.kind == QX_ORDER_CLOSE;
  if (a.ordertype == QX_ORDER_MARKET && !isExit(b)) return true;
  if (isExit(a) != isExit(b)) return isExit(a);
  if (a.direction != b.direction) return a.direction == QX_BUY;
  return a.direction == QX_BUY ? a.price < b.price : a.price > b.price;
}

// Insertion: each order in turn moves down while it fills before its left neighbour. The sequence
// is defined by these steps, whatever the comparison says, and resting orders cost one comparison.
void sortOrders(qxOrder* orders, int32_t count) {
  for (int32_t i = 1; i < count; ++i) {
    if (!fillsBefore(orders[i], orders[i - 1])) continue;
    const qxOrder order = orders[i];
    int32_t at = i;
    do {
      orders[at] = orders[at - 1];
      --at;
    } while (at > 0 && fillsBefore(order, orders[at - 1]));
    orders[at] = order;
  }
}

// The price at which the bar fills an order, before it is stored on the tick grid. False when the
// bar does not reach it. `allowance` is the move of entries: a tick better for limits, a tick worse
// for stops.
bool fillPrice(const Market& market, const qxOrder& order, double allowance, double* price) {
  const double wanted = order.price;
  const bool buy = order.direction == QX_BUY;
  switch (order.ordertype) {
    case QX_ORDER_MARKET:
      *price = market.open;
      return true;
    case QX_ORDER_CLOSE:
      *price = market.previousClose;
      return true;
    case QX_ORDER_STOP:
    case QX_ORDER_LIMIT:
      break;
    default:
      return false;
  }
  const bool fromBelow = (order.ordertype == QX_ORDER_STOP) == buy;
  if (fromBelow) {
    if (!(wanted <= market.high)) return false;
    if (market.gapFill && market.open >= wanted) {
      *price = market.open;
    } else {
      *price = market.low < wanted ? nearestTick(wanted, market.tick) + allowance : market.low;
    }
  } else {
    if (!(market.low <= wanted)) return false;
    if (market.gapFill && market.open <= wanted) {
      *price = market.open;
    } else {
      *price = wanted < market.high ? lowerTick(wanted, market.tick) - allowance : market.high;
    }
  }
  return true;
}

// The name field of positions and exits: blanks, with the name and its terminator over the start.
void setName(qxPosition* position, const char* name) {
  std::memset(position->name, ' ', sizeof position->name);
  copyText(position->name, name);
}

bool sameName(const qxPosition& position, const char (&name)[20]) {
  return std::strncmp(position.name, name, sizeof name) == 0;
}

// Which entries filled on this bar.
struct EntryFlags {
  bool buy, sell;
};

// Removes the orders that are finished; the rest keeps its order.
void removeFinishedOrders(qxOrderSystem* system, const EntryFlags& filled) {
  int32_t kept = 0;
  for (int32_t i = 0; i < system->ordercount; ++i) {
    const qxOrder& order = system->orders[i];
    const bool withdrawn =
        order.kind == QX_KIND_ENTRY && (order.direction == QX_BUY ? filled.buy : filled.sell);
    if (order.timeinforce == QX_FORCE_BAR || order.cancelled != 0 || withdrawn) continue;
    if (kept != i) system->orders[kept] = order;
    ++kept;
  }
  system->ordercount = kept;
}

void removeClosedPositions(qxOrderSystem* system) {
  qxPosition* end = std::remove_if(system->positions, system->positions + system->positioncount,
                                   [](const qxPosition& p) { return p.remaining == 0; });
  system->positioncount = static_cast<int32_t>(end - system->positions);
}

void processOrder(qxOrderSystem* system, const Market& market, qxOrder* order, EntryFlags* filled) {
  double price;
  if (isExit(*order)) {
    if (fillPrice(market, *order, 0.0, &price)) {
      qxClosePositions(system, order, order->direction, price);
    }
    return;
  }
  if (order->kind != QX_KIND_ENTRY) return;
  const bool buy = order->direction == QX_BUY;
  bool& entered = buy ? filled->buy : filled->sell;
  if (entered) return;
  // The market position is that of the last bar's end.
  if (system->pyramid == 0 && system->marketpos == (buy ? QX_MARKET_LONG : QX_MARKET_SHORT)) return;
  if (fillPrice(market, *order, market.tick, &price)) {
    // An entry that finds no memory is lost; the simulation goes on.
    qxOpenPosition(system, order, order->direction, price);
    entered = true;
  }
}

}  // namespace

double openProfit(const qxOrderSystem& system, const qxPosition& position, double price) {
  const double move =
      position.direction == QX_LONG ? price - position.price : position.price - price;
  return position.remaining * system.tickvalue * move / system.tick;
}

}  // namespace qx

int32_t qxOpenPosition(qxOrderSystem* system, const qxOrder* order, int32_t direction,
                       double price) {
  if (system->positions == nullptr || system->positioncount >= system->positioncap) {
    const int64_t capacity = int64_t{system->positioncap} + qx::kPositionGrowth;
    qxPosition* grown = qx::grownTable(system->positions, system->positioncap, capacity);
    if (grown == nullptr) return QX_ERR_MALLOC;
    system->positions = grown;
    system->positioncap = static_cast<int32_t>(capacity);
  }
  qxPosition position = {};
  qx::setName(&position, order->name);
  position.direction = direction;
  position.bar = system->bar;
  position.date = qx::barDate(*system, system->bar);
  position.price = qx::lowerTick(price, system->tick);
  position.volume = qx::saturateToInt32(order->volume);
  position.remaining = position.volume;
  system->lastentry = position.date;
  system->positions[system->positioncount++] = position;
  qxCloseOpposite(system, order, direction, price);
  return QX_SUCCESS;
}

void qxCloseOpposite(qxOrderSystem* system, const qxOrder* order, int32_t direction, double price) {
  if (system->reverse == 0) return;
  for (int32_t i = 0; i < system->positioncount; ++i) {
    qxPosition* position = &system->positions[i];
    if (position->remaining == 0 || position->direction == direction) continue;
    if (position->bar < system->bar) {
      qxAddTrade(system, order, direction, price, position, position->remaining);
    } else {
      // Kept: an entry and an opposite entry on one bar leave no trade for the earlier one.
      position->remaining = 0;
    }
  }
}

void qxClosePositions(qxOrderSystem* system, qxOrder* order, int32_t direction, double price) {
  order->cancelled = 1;
  int64_t left = order->volume;
  for (int32_t i = 0; i < system->positioncount && left > 0; ++i) {
    qxPosition* position = &system->positions[i];
    if (position->remaining == 0 || position->direction == direction) continue;
    if (order->fromname[0] != '\0' && !qx::sameName(*position, order->fromname)) continue;
    const int64_t closed = std::min<int64_t>(left, position->remaining);
    left -= closed;
    qxAddTrade(system, order, direction, price, position, static_cast<int32_t>(closed));
  }
}

void qxAddTrade(qxOrderSystem* system, const qxOrder* order, int32_t direction, double price,
                qxPosition* position, int32_t volume) {
  const bool atClose = order->ordertype == QX_ORDER_CLOSE;
  qxPosition exit = {};
  qx::setName(&exit, order->name);
  exit.direction = direction;
  exit.bar = system->bar;
  exit.date = qx::barDate(*system, int64_t{system->bar} - (atClose ? 1 : 0));
  exit.price = qx::lowerTick(price, system->tick);
  exit.volume = volume;
  qx::recordTrade(system, *position, exit);

  if (system->trades == nullptr || system->tradecount >= system->tradecap) {
    const int64_t capacity = int64_t{system->tradecap} + std::max(1, system->tradecap / 2);
    qxTrade* grown = qx::grownTable(system->trades, system->tradecap, capacity);
    if (grown != nullptr) {
      system->trades = grown;
      system->tradecap = static_cast<int32_t>(capacity);
    }
  }
  // A trade that finds no room is dropped; the statistics have it.
  if (system->tradecount < system->tradecap) {
    system->trades[system->tradecount++] = {*position, exit};
  }
  position->remaining = std::max(0, position->remaining - volume);
}

void qxUpdateOpenPositions(qxOrderSystem* system) {
  system->longstats.openprofit = 0.0;
  system->shortstats.openprofit = 0.0;
  system->netstats.openprofit = 0.0;
  if (system->positioncount == 0) return;

  const double close = qx::barClose(*system, system->bar);
  int64_t longVolume = 0, shortVolume = 0;
  double longSum = 0.0, shortSum = 0.0;
  double longProfit = 0.0, shortProfit = 0.0;
  int32_t longBars = 0, shortBars = 0;
  for (int32_t i = 0; i < system->positioncount; ++i) {
    const qxPosition& position = system->positions[i];
    if (position.remaining == 0) continue;
    const bool isLong = position.direction == QX_LONG;
    (isLong ? longVolume : shortVolume) += position.remaining;
    (isLong ? longSum : shortSum) += position.remaining * position.price;
    (isLong ? longProfit : shortProfit) += qx::openProfit(*system, position, close);
    int32_t& bars = isLong ? longBars : shortBars;
    if (bars == 0) bars = system->bar - position.bar + 1;
  }
  system->longstats.openprofit = longProfit;
  system->shortstats.openprofit = shortProfit;
  system->netstats.openprofit = longProfit + shortProfit;

  system->longvol = qx::saturateToInt32(longVolume);
  system->shortvol = qx::saturateToInt32(shortVolume);
  system->netvol = qx::saturateToInt32(std::abs(longVolume - shortVolume));
  system->counter = 0;
  system->longbars = longBars;
  system->shortbars = shortBars;
  if (longVolume > shortVolume) {
    system->marketpos = QX_MARKET_LONG;
    system->avgprice = longSum / static_cast<double>(longVolume);
    system->posbars = longBars;
  } else if (longVolume == shortVolume) {
    system->marketpos = QX_MARKET_FLAT;
    system->avgprice = 0.0;
    system->posbars = 0;
  } else {
    system->marketpos = QX_MARKET_SHORT;
    system->avgprice = shortSum / static_cast<double>(shortVolume);
    system->posbars = shortBars;
  }
  qxTradeStats& longStats = system->longstats;
  qxTradeStats& shortStats = system->shortstats;
  longStats.maxcontracts = std::max<double>(longStats.maxcontracts, system->longvol);
  shortStats.maxcontracts = std::max<double>(shortStats.maxcontracts, system->shortvol);
}

int32_t qxProcessOrders(qxOrderSystem* system) {
  if (system == nullptr) return 0;
  if (system->bar < std::numeric_limits<int32_t>::max()) ++system->bar;
  if (system->bar <= 0) return 1;
  if (system->bar >= qx::barCount(*system)) return 0;

  const int32_t b = system->bar;
  const qxBars& bars = system->bars;
  const qx::Market market = {bars.date.data[b],   bars.open.data[b],      bars.high.data[b],
                             bars.low.data[b],    bars.close.data[b - 1], system->tick,
                             system->gapfill != 0};
  qx::sortOrders(system->orders, system->ordercount);
  qx::EntryFlags filled = {};
  const int32_t delayDays = system->delay / qx::kSecondsPerDay;
  for (int32_t i = 0; i < system->ordercount; ++i) {
    qxOrder* order = &system->orders[i];
    if (order->cancelled != 0 || order->date + delayDays > market.date) continue;
    qx::processOrder(system, market, order, &filled);
  }
  qxUpdateOpenPositions(system);
  qx::removeFinishedOrders(system, filled);
  qx::removeClosedPositions(system);
  return 1;
}
