// A simulation with orders of every type, its statistics and its reports, and the variables of an
// optimisation.
#include <cstdio>
#include <cstring>
#include <iterator>

#include "tests/same_bits/recorder.h"

namespace same_bits {
namespace {

constexpr char kReportFile[] = "same_bits_report.txt";

std::string readReport() {
  std::string text;
  std::FILE* file = std::fopen(kReportFile, "r");
  if (file == nullptr) return text;
  for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file)) text += static_cast<char>(c);
  std::fclose(file);
  std::remove(kReportFile);
  return text;
}

// Calls the functions, which write the report, and prints it behind what they returned.
void computeReports(const std::vector<std::string>& names, const Samples& samples,
                    const Arguments& given) {
  for (const std::string& name : names) {
    const Function& function = every_function::functionNamed(name);
    const double status = callWithSamples(function, samples, given).numbers[0];
    printText(name.c_str(), label(status) + "\n" + readReport());
  }
}

// Enters on crossings of the average and leaves by stop, target or at a close.
void placeOrders(qxOrderSystem* system, const qxArray& average, double percent) {
  const int32_t bar = system->bar;
  if (bar < average.firstvalid + 1) return;
  const double close = system->bars.close.data[bar], level = average.data[bar];
  const double step = level * percent / 100;
  const auto volume = static_cast<uint32_t>(5 + bar % 4);
  if (close > level) {
    qxBuyToOpen(system, "Stop in", volume, close + step, QX_ORDER_STOP, QX_FORCE_BAR);
    qxBuyToOpen(system, "Dip in", volume, level, QX_ORDER_LIMIT, QX_FORCE_GTC);
  } else if (bar % 3 == 0) {
    qxSellToOpen(system, "Market in", volume, 0.0, QX_ORDER_MARKET, QX_FORCE_BAR);
  } else {
    qxSellToOpen(system, "Close in", volume, 0.0, QX_ORDER_CLOSE, QX_FORCE_BAR);
  }
  if (system->longvol > 0) {
    qxSellToClose(system, "Long stop", "", volume, system->avgprice - step, QX_ORDER_STOP,
                  QX_FORCE_BAR);
    qxSellToClose(system, "Long aim", "Dip in", volume, system->avgprice + 2 * step, QX_ORDER_LIMIT,
                  QX_FORCE_BAR);
  }
  if (system->shortvol > 0 && system->shortbars > 20) {
    qxBuyToClose(system, "Short out", "", volume, 0.0, QX_ORDER_CLOSE, QX_FORCE_BAR);
  }
  if (bar % 97 == 0) qxCancelOrder(system, "Dip in");
}

// Every field, four bytes at a time.
void appendStatistics(const qxTradeStats& statistics, std::vector<double>* numbers) {
  uint32_t words[sizeof statistics / sizeof(uint32_t)];
  std::memcpy(words, &statistics, sizeof words);
  numbers->insert(numbers->end(), std::begin(words), std::end(words));
}

void simulate(const Prices& prices, bool pyramid, double tick, double percent) {
  qxArray average = {};
  qxSimpleMA(&prices.bars.close, &average, 25, 0);
  qxOrderSystem system = {};
  qxOrderSystemInit(&system, "Same bits", &prices.bars);
  system.tick = system.tickvalue = tick;
  system.unitcost = 0.03, system.sidecost = 2.5, system.deduction = 0.1;
  system.pyramid = system.gapfill = pyramid;

  std::vector<double> numbers;
  while (qxProcessOrders(&system) != 0) {
    placeOrders(&system, average, percent);
    for (const qxTradeStats* stats : {&system.longstats, &system.shortstats, &system.netstats}) {
      appendStatistics(*stats, &numbers);
    }
    numbers.insert(numbers.end(),
                   {system.avgprice, system.lastentry, 1.0 * system.marketpos, 1.0 * system.longvol,
                    1.0 * system.shortvol, 1.0 * system.ordercount, 1.0 * system.positioncount,
                    1.0 * system.tradecount});
  }
  print("qxProcessOrders", pyramid ? " pyramid" : "", numbers);
  computeAll({"qxCreateTradeGraph"}, {{&system}});
  computeReports({"qxProfitRpt", "qxPrintTrades", "qxPrintOrders"}, {}, {&system, kReportFile, 0});
  for (const char* delimiter : {";", " ", ","}) {
    computeReports({"qxProfitRpt1", "qxTradeRpt1", "qxOpenPosRpt1", "qxOrderRpt1"}, {},
                   {&system, kReportFile, 0, delimiter, 1});
  }
  qxOrderSystemClose(&system);
  qxFreeArray(&average);
}

void computeVariables() {
  qxOptVar variables[] = {{5, 20, 5, 0, 0}, {0.1, 0.5, 0.1, 0, 0}, {-3.25, -3.25, 0, 0, 0}};
  const uint32_t count = qxOptVarCount(variables, 3);
  print("qxOptVarCount", "", {1.0 * count});
  for (uint32_t k = 1; k <= count; ++k) {
    char text[200];
    std::vector<double> numbers = {1.0 * qxOptVarValue(variables, 3, k)};
    for (const qxOptVar& variable : variables) numbers.push_back(variable.value);
    print("qxOptVarValue", label(k), numbers);
    print("qxOptVarStringLen", "", {1.0 * qxOptVarStringLen(variables, 3, ", ")});
    qxOptVarString(variables, 3, ", ", text);
    printText("qxOptVarString", text);
  }
}

}  // namespace

void computeTrading(const Prices& prices) {
  simulate(prices, false, 0.001, 1.5);
  simulate(prices, true, 0.25, 3.0);
  computeVariables();
  qxBars columns = {};
  qxArray map = {};
  qxBars2PNF(&prices.bars, &columns, &map, 25.0, 3.0, 0);
  computeReports({"qxPNFchart"}, {"columns", {&columns, &columns}, {}, nullptr},
                 {25.0, kReportFile, 0});
  qxFreeBars(&columns);
  qxFreeArray(&map);
  const qxBars& bars = prices.bars;
  computeReports({"qxArrayPrintf"},
                 {"columns",
                  {&bars, &bars},
                  {&bars.date, &bars.close, &prices.upVolume, &bars.volume},
                  nullptr},
                 {kReportFile, 0, 0, 20, "Date Close\n", "%CYMDi %10.4f %8.3e %i\n"});
}

}  // namespace same_bits
