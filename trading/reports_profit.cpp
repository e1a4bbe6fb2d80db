// The profit reports: the statistics of all, the long and the short trades.
#include <cstdio>

#include "core/numeric.h"
#include "trading/report_text.h"
#include "trading/simulator.h"

namespace qx {
namespace {

// How the fixed report prints a statistic: the blanks around and the width of its numbers.
struct Style {
  bool decimals;    // whole part and two decimals, else the whole part alone
  int32_t width;    // of one number, the decimals included
  const char* gap;  // between two numbers
  const char* end;  // after the last one
};

constexpr Style kMoney = {true, 11, "  ", "\n"};
constexpr Style kCount = {false, 5, "        ", " \n"};
constexpr Style kPercent = {false, 3, "          ", "\n"};
constexpr Style kBars = {false, 5, "        ", "\n"};
constexpr Style kContracts = {false, 9, "    ", "\n"};
constexpr Style kReturn = {true, 11, "% ", "%\n"};

// One line of both reports; either `real` or `count` names its field.
struct Statistic {
  const char* code;
  const char* label;  // with the blanks before the first number
  const Style* style;
  double qxTradeStats::*real;
  int32_t qxTradeStats::*count;
};

using Stats = qxTradeStats;

constexpr Statistic kStatistics[] = {
    {"NP", "  Total net profit       ", &kMoney, &Stats::netprofit, nullptr},
    {"GP", "  Gross profit           ", &kMoney, &Stats::grossprofit, nullptr},
    {"GL", "  Gross loss             ", &kMoney, &Stats::grossloss, nullptr},
    {"NT", "  Total # of trades         ", &kCount, nullptr, &Stats::trades},
    {"PP", "  Percent Profitable          ", &kPercent, &Stats::pctprofitable, nullptr},
    {"NW", "  Number winning trades     ", &kCount, nullptr, &Stats::winners},
    {"NL", "  Number losing trades      ", &kCount, nullptr, &Stats::losers},
    {"LW", "  Largest winning trade  ", &kMoney, &Stats::largestwin, nullptr},
    {"LL", "  Largest losing trade   ", &kMoney, &Stats::largestloss, nullptr},
    {"AW", "  Average winning trade  ", &kMoney, &Stats::averagewin, nullptr},
    {"AL", "  Average losing trade   ", &kMoney, &Stats::averageloss, nullptr},
    {"WL", "  Ratio avg win/avg loss ", &kMoney, &Stats::winlossratio, nullptr},
    {"AT", "  Avg trade(win & loss)  ", &kMoney, &Stats::averagetrade, nullptr},
    {"MW", "  Max consec. winners       ", &kCount, nullptr, &Stats::maxwinners},
    {"ML", "  Max consec. losers        ", &kCount, nullptr, &Stats::maxlosers},
    {"WS", "  Avg # bars in winners     ", &kBars, &Stats::winnerbars, nullptr},
    {"LS", "  Avg # bars in losers      ", &kBars, &Stats::loserbars, nullptr},
    {"MD", "  Max intraday drawdown  ", &kMoney, &Stats::maxdrawdown, nullptr},
    {"PF", "  Profit factor          ", &kMoney, &Stats::profitfactor, nullptr},
    {"MC", "  Max # contracts held  ", &kContracts, &Stats::maxcontracts, nullptr},
    {"AS", "  Account size required  ", &kMoney, &Stats::accountsize, nullptr},
    {"RA", "  Return on account      ", &kReturn, &Stats::returnonaccount, nullptr},
    {"PR", "  PRR                    ", &kMoney, &Stats::prr, nullptr},
    {"OP", "  Open Position P/L      ", &kMoney, &Stats::openprofit, nullptr},
};

NumberText statisticText(const Statistic& statistic, const qxTradeStats& stats) {
  if (statistic.count != nullptr) return wholeText(stats.*statistic.count);
  return decimalText(stats.*statistic.real, statistic.style->decimals ? 2 : 0);
}

}  // namespace
}  // namespace qx

int32_t qxProfitRpt(const qxOrderSystem* system, const char* outfile, int32_t append) {
  if (system == nullptr || outfile == nullptr) return QX_ERR_INVALID_PARM;
  qx::Output output;
  const int32_t status = qx::openOutput(outfile, append, &output);
  if (status != QX_SUCCESS) return status;
  std::FILE* file = output.file;
  const int32_t last = qx::barCount(*system) - 1;
  std::fprintf(file, "--------------------------------------------------------------\n");
  std::fprintf(file, "%s  %s - ", system->name, qx::dateText(qx::barDate(*system, 0)).text);
  std::fprintf(file, "%s\n\n", qx::dateText(qx::barDate(*system, last)).text);
  std::fprintf(file, "                                 NET         LONG        SHORT\n");
  for (const qx::Statistic& line : qx::kStatistics) {
    const qx::Style& style = *line.style;
    std::fprintf(file, "%s%*s%s%*s%s%*s%s", line.label, style.width,
                 qx::statisticText(line, system->netstats).text, style.gap, style.width,
                 qx::statisticText(line, system->longstats).text, style.gap, style.width,
                 qx::statisticText(line, system->shortstats).text, style.end);
  }
  return qx::closeOutput(&output);
}

int32_t qxProfitRpt1(const qxOrderSystem* system, const char* outfile, int32_t append,
                     const char* delimiter) {
  if (system == nullptr || outfile == nullptr) return QX_ERR_INVALID_PARM;
  const char separator = delimiter == nullptr || *delimiter == '\0' ? '\t' : *delimiter;
  qx::Output output;
  const int32_t status = qx::openOutput(outfile, append, &output);
  if (status != QX_SUCCESS) return status;
  for (const qx::Statistic& line : qx::kStatistics) {
    std::fputs(line.code, output.file);
    const bool decimals = line.style->decimals;
    for (const qxTradeStats* stats : {&system->netstats, &system->longstats, &system->shortstats}) {
      std::fprintf(output.file, "%c%s%*s", separator, decimals ? " " : "    ", decimals ? 11 : 8,
                   qx::statisticText(line, *stats).text);
    }
    std::fputc('\n', output.file);
  }
  return qx::closeOutput(&output);
}
