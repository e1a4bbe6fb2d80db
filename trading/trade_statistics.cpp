// Profit of closed trades, and the running statistics of the long, the short and all trades.
#include <algorithm>
#include <cmath>

#include "core/numeric.h"
#include "trading/simulator.h"

namespace qx {
namespace {

// A count or sum of bars that stays within its field.
int32_t added(int32_t sum, int64_t more) {
  return saturateToInt32(int64_t{sum} + more);
}

// The counts, streaks, sums and extremes of one direction.
void countTrade(qxTradeStats* stats, double profit, int64_t barsHeld) {
  stats->trades = added(stats->trades, 1);
  if (profit > 0) {
    stats->winners = added(stats->winners, 1);
    stats->winstreak = added(stats->winstreak, 1);
    stats->losestreak = 0;
    stats->grossprofit += profit;
    if (profit > stats->largestwin) stats->largestwin = profit;
    if (stats->winstreak > stats->maxwinners) stats->maxwinners = stats->winstreak;
    stats->winnerbarsum = added(stats->winnerbarsum, barsHeld);
  } else if (profit < 0) {
    stats->losers = added(stats->losers, 1);
    stats->losestreak = added(stats->losestreak, 1);
    stats->winstreak = 0;
    stats->grossloss += profit;
    if (profit < stats->largestloss) stats->largestloss = profit;
    if (stats->losestreak > stats->maxlosers) stats->maxlosers = stats->losestreak;
    stats->loserbarsum = added(stats->loserbarsum, barsHeld);
  }
  stats->netprofit = stats->grossprofit + stats->grossloss;
  if (stats->grossloss != 0) stats->profitfactor = std::fabs(stats->grossprofit / stats->grossloss);
}

// Averages and ratios from the sums. Where a divisor is 0 the earlier value stays.
void average(qxTradeStats* stats, int64_t winnerBars, int64_t loserBars) {
  if (stats->winners > 0) {
    stats->averagewin = stats->grossprofit / stats->winners;
    const int64_t wholeBars = winnerBars / stats->winners;
    stats->winnerbars = static_cast<double>(wholeBars);
  }
  if (stats->losers > 0) {
    stats->averageloss = stats->grossloss / stats->losers;
    const int64_t wholeBars = loserBars / stats->losers;
    stats->loserbars = static_cast<double>(wholeBars);
  }
  if (stats->trades > 0) {
    stats->pctprofitable = static_cast<double>(stats->winners) / stats->trades * 100;
    stats->averagetrade = stats->netprofit / stats->trades;
  }
  if (stats->averageloss != 0) {
    stats->winlossratio = std::fabs(stats->averagewin / stats->averageloss);
  }
}

void rateAccount(qxTradeStats* stats) {
  if (stats->accountsize != 0) {
    stats->returnonaccount = stats->netprofit * 100 / stats->accountsize;
  }
}

// The pessimistic return ratio: the profit of √W fewer winners over the loss of √L more losers.
void ratePessimistically(qxTradeStats* stats) {
  const double winners = stats->winners, losers = stats->losers, trades = stats->trades;
  const double gain =
      winners > 0 ? (winners - std::sqrt(winners)) / trades * stats->grossprofit / winners : 0.0;
  const double loss =
      losers > 0 ? (losers + std::sqrt(losers)) / trades * -stats->grossloss / losers : 0.0;
  stats->prr = loss != 0 ? gain / loss : gain;
}

void combine(qxOrderSystem* system) {
  const qxTradeStats& a = system->longstats;
  const qxTradeStats& b = system->shortstats;
  qxTradeStats* net = &system->netstats;
  net->netprofit = a.netprofit + b.netprofit;
  net->grossprofit = a.grossprofit + b.grossprofit;
  net->grossloss = a.grossloss + b.grossloss;
  net->trades = added(a.trades, b.trades);
  net->winners = added(a.winners, b.winners);
  net->losers = added(a.losers, b.losers);
  net->largestwin = std::max<double>(a.largestwin, b.largestwin);
  net->largestloss = std::min<double>(a.largestloss, b.largestloss);
  average(net, int64_t{a.winnerbarsum} + b.winnerbarsum, int64_t{a.loserbarsum} + b.loserbarsum);
  // Kept: the better of the two directions' streaks, not a streak over all trades.
  net->maxwinners = std::max<int32_t>(a.maxwinners, b.maxwinners);
  net->maxlosers = std::max<int32_t>(a.maxlosers, b.maxlosers);
  net->maxdrawdown = std::min<double>(a.maxdrawdown, b.maxdrawdown);
  net->maxcontracts = std::max<double>(a.maxcontracts, b.maxcontracts);
  // Kept: the sum of the two factors, not the factor of the summed profits.
  net->profitfactor = a.profitfactor + b.profitfactor;
  if (system->margin != 0) {
    net->accountsize = std::fabs(net->maxdrawdown / (system->margin / 100));
  }
  rateAccount(net);
}

}  // namespace

double tradeProfit(const qxOrderSystem& system, const qxPosition& entry, const qxPosition& exit) {
  const double move =
      entry.direction == QX_LONG ? exit.price - entry.price : entry.price - exit.price;
  const double perUnit = system.tickvalue * move / system.tick - system.unitcost;
  return (exit.volume * perUnit - 2 * system.sidecost) * (1 - system.deduction);
}

void recordTrade(qxOrderSystem* system, const qxPosition& position, const qxPosition& exit) {
  qxTradeStats* stats = position.direction == QX_LONG ? &system->longstats : &system->shortstats;
  countTrade(stats, tradeProfit(*system, position, exit), int64_t{exit.bar} - position.bar + 1);

  double lowest = 0.0, highest = 0.0;
  qxArrayStats(&system->bars.close, &lowest, &highest, nullptr, nullptr, position.bar, exit.bar, 0);
  const double drawdown = exit.volume * system->tickvalue * (lowest - highest) / system->tick;
  if (drawdown < stats->maxdrawdown) stats->maxdrawdown = drawdown;
  if (system->margin != 0) {
    stats->accountsize = system->margin == 100
                             ? std::fabs(stats->maxdrawdown)
                             : std::fabs(stats->maxdrawdown / (system->margin / 100));
  }
  rateAccount(stats);

  for (qxTradeStats* side : {&system->longstats, &system->shortstats}) {
    average(side, side->winnerbarsum, side->loserbarsum);
  }
  combine(system);
  for (qxTradeStats* block : {&system->longstats, &system->shortstats, &system->netstats}) {
    ratePessimistically(block);
  }
}

}  // namespace qx
