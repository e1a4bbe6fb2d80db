#include "crossing_strategy.h"

#include <cstdio>

namespace {

const uint32_t kVolume = 10;       // units of every entry
const int32_t kBreakoutBars = 20;  // bars whose extreme a breakout must pass
const int32_t kMostBarsHeld = 120;

// The highest high and the lowest low of the last bars.
void channel(const qxBars& bars, int32_t bar, double* highest, double* lowest) {
  const int32_t from = bar - kBreakoutBars + 1;
  qxArrayStats(&bars.high, nullptr, highest, nullptr, nullptr, from, bar, 0);
  qxArrayStats(&bars.low, lowest, nullptr, nullptr, nullptr, from, bar, 0);
}

// Every order is good for one bar only: what still makes sense is placed again on the next one.
void placeEntries(qxOrderSystem* system, const Averages& averages) {
  const int32_t bar = system->bar;
  const double fast = averages.fast.data[bar], slow = averages.slow.data[bar];
  const bool wasAbove = averages.fast.data[bar - 1] > averages.slow.data[bar - 1];
  double highest, lowest;
  channel(system->bars, bar, &highest, &lowest);

  if (fast > slow && !wasAbove) {
    // The entry also closes a short position, because the system's `reverse` is set.
    qxBuyToOpen(system, "Cross up", kVolume, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  } else if (fast < slow && wasAbove) {
    qxSellToOpen(system, "Cross down", kVolume, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  } else if (system->marketpos == QX_MARKET_FLAT && fast > slow) {
    // The first of the two that fills withdraws the other.
    qxBuyToOpen(system, "Break up", kVolume, highest, QX_ORDER_STOP, QX_FORCE_BAR);
    qxBuyToOpen(system, "Dip", kVolume, slow, QX_ORDER_LIMIT, QX_FORCE_BAR);
  } else if (system->marketpos == QX_MARKET_FLAT && fast < slow) {
    qxSellToOpen(system, "Break down", kVolume, lowest, QX_ORDER_STOP, QX_FORCE_BAR);
    qxSellToOpen(system, "Rally", kVolume, slow, QX_ORDER_LIMIT, QX_FORCE_BAR);
  }
}

void placeExits(qxOrderSystem* system, const CrossingParameters& parameters) {
  const bool tooLong = system->posbars >= kMostBarsHeld;
  const auto volume = static_cast<uint32_t>(system->netvol);
  const double stop = system->avgprice * parameters.stopPercent / 100;
  const double target = system->avgprice * parameters.targetPercent / 100;
  if (system->marketpos == QX_MARKET_LONG) {
    qxSellToClose(system, "Stop", "", volume, system->avgprice - stop, QX_ORDER_STOP, QX_FORCE_BAR);
    qxSellToClose(system, "Target", "", volume, system->avgprice + target, QX_ORDER_LIMIT,
                  QX_FORCE_BAR);
    if (tooLong) qxSellToClose(system, "Time", "", volume, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  } else if (system->marketpos == QX_MARKET_SHORT) {
    qxBuyToClose(system, "Stop", "", volume, system->avgprice + stop, QX_ORDER_STOP, QX_FORCE_BAR);
    qxBuyToClose(system, "Target", "", volume, system->avgprice - target, QX_ORDER_LIMIT,
                 QX_FORCE_BAR);
    if (tooLong) qxBuyToClose(system, "Time", "", volume, 0, QX_ORDER_MARKET, QX_FORCE_BAR);
  }
}

int32_t fail(const char* file, int32_t status) {
  char text[32];
  qxErrDesc(status, text);
  std::fprintf(stderr, "Cannot read %s: %s\n", file, text);
  return status;
}

}  // namespace

int32_t openSystem(qxOrderSystem* system, const char* name, const qxBars* bars) {
  const int32_t status = qxOrderSystemInit(system, name, bars);
  if (status != QX_SUCCESS) return status;
  system->tick = 0.01;
  system->tickvalue = 0.01;
  system->sidecost = 2.0;
  system->gapfill = 1;  // a stop that the open has jumped over fills at the open
  return QX_SUCCESS;
}

int32_t computeAverages(const qxBars* bars, const CrossingParameters& parameters,
                        Averages* averages) {
  const int32_t status = qxSimpleMA(&bars->close, &averages->fast, parameters.fastPeriod, 0);
  if (status < 0) return status;
  return qxSimpleMA(&bars->close, &averages->slow, parameters.slowPeriod, 0);
}

void freeAverages(Averages* averages) {
  qxFreeArray(&averages->fast);
  qxFreeArray(&averages->slow);
}

void runStrategy(qxOrderSystem* system, const Averages& averages,
                 const CrossingParameters& parameters) {
  // The first bar with both averages, their values on the bar before, and a full channel.
  int32_t first = averages.fast.firstvalid > averages.slow.firstvalid ? averages.fast.firstvalid
                                                                      : averages.slow.firstvalid;
  first = first + 1 > kBreakoutBars ? first + 1 : kBreakoutBars;
  qxOrderSystemReset(system);
  while (qxProcessOrders(system) != 0) {
    if (system->bar < first) continue;
    placeExits(system, parameters);
    placeEntries(system, averages);
  }
}

int32_t readPrices(const char* folder, const char* file, qxBars* bars) {
  const char* const description = "txtinfo.txt";
  qxTXTinfo layout;
  int32_t status = qxTXTreadinfo(folder, description, &layout);
  if (status != QX_SUCCESS) return fail(description, status);
  status = qxTXTread(bars, folder, file, &layout, 0, -1);
  if (status != QX_SUCCESS) return fail(file, status);
  if (bars->barsize > 0) return QX_SUCCESS;
  qxFreeBars(bars);
  return fail(file, QX_ERR_RECORD_NOT_FOUND);
}
