// A long run of orders by dice under changing settings, line by line as an independent simulation
// of the same dice wrote it down.
#include <algorithm>
#include <random>
#include <sstream>

#include "tests/trading/simulation.h"

namespace {

using qxtest::Simulation;

using Dice = std::minstd_rand;
int32_t roll(Dice* dice, uint32_t sides) {
  return static_cast<int32_t>((*dice)() % sides);
}

std::vector<qxtest::Bar> rollBars(Dice* dice, int32_t count) {
  std::vector<qxtest::Bar> bars;
  int32_t close = 1000;  // in tenths
  for (int32_t bar = 0; bar < count; ++bar) {
    const int32_t open = close + roll(dice, 21) - 10;
    close = open + roll(dice, 21) - 10;
    const double high = std::max(open, close) + roll(dice, 6);
    const double low = std::min(open, close) - roll(dice, 6);
    bars.push_back(qxtest::priceBar(40000 + bar, open / 10.0, high / 10, low / 10, close / 10.0));
  }
  return bars;
}

void rollOrder(Dice* dice, Simulation* run) {
  constexpr const char* kNames[] = {"A", "AB", "B", ""};
  const char* const name = kNames[roll(dice, 3)];
  const char* const from = kNames[roll(dice, 4)];
  const auto volume = static_cast<uint32_t>(roll(dice, 6));
  const double price = run->bars->close.data[run->record.bar] + (roll(dice, 41) - 20) / 16.0;
  const int32_t type = 1 + roll(dice, 4), force = roll(dice, 3), kind = roll(dice, 4);
  if (kind == 0) run->buy(name, volume, price, type, force);
  if (kind == 1) run->sell(name, volume, price, type, force);
  if (kind == 2) run->sellOut(name, from, volume, price, type, force);
  if (kind == 3) run->cover(name, from, volume, price, type, force);
}

TEST(Processing, LongRun) {
  Dice dice(245);
  Simulation run(rollBars(&dice, 120), 0.1);
  run->tickvalue = 0.7, run->unitcost = 0.03, run->sidecost = 0.9;
  run->deduction = 0.1, run->margin = 30;
  std::ostringstream lines;
  lines.precision(17);
  const auto add = [&](const char* word, const std::vector<double>& numbers) {
    lines << word;
    for (const double number : numbers) lines << ' ' << number;
  };
  for (int32_t bar = 0; bar < 120; ++bar) {
    const qxOrderSystem& s = run.advance(bar).record;
    lines << bar << ": position " << s.marketpos << ' ' << s.longvol << ' ' << s.shortvol << ' '
          << s.netvol << " bars " << s.longbars << ' ' << s.shortbars << ' ' << s.posbars;
    add(" price", {s.avgprice});
    add(" open", {s.longstats.openprofit, s.shortstats.openprofit, s.netstats.openprofit});
    for (const std::string& name : run.orders()) lines << ' ' << name;
    lines << '\n';
    run->gapfill = bar / 15 % 2 * 3, run->reverse = bar / 30 % 2 * 2,
    run->pyramid = -(bar / 20 % 2);
    run->delay = bar / 40 * 50000;  // a rest below a day does not count
    for (int32_t left = roll(&dice, 4); left > 0; --left) rollOrder(&dice, &run);
    if (roll(&dice, 8) == 0) qxCancelOrder(run, "AB");
  }
  for (const std::string& trade : run.trades()) lines << trade << '\n';
  for (const auto* s : {&run->longstats, &run->shortstats, &run->netstats}) {
    lines << s->trades << ' ' << s->winners << ' ' << s->losers << ' ' << s->maxwinners << ' '
          << s->maxlosers;
    add(" held", {s->winnerbars, s->loserbars, s->maxcontracts});
    add(" money", {s->netprofit, s->grossprofit, s->grossloss, s->largestwin, s->largestloss,
                   s->averagewin, s->averageloss, s->averagetrade, s->maxdrawdown});
    add(" ratios", {s->pctprofitable, s->winlossratio, s->profitfactor, s->accountsize,
                    s->returnonaccount, s->prr});
    lines << '\n';
  }
  EXPECT_EQ(lines.str(), qxtest::readFile(QX_REPORTS_DIR "/long-run.txt"));
}

}  // namespace
