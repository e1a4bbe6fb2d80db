// Reads daily prices, trades the crossing of two moving averages bar by bar and prints what came of
// it.
//
// The chart of it all goes to chart.svg, on Windows also to chart.bmp.
//
//   quorvex_demo FOLDER FILE
#include <cstdio>

#include "chart_bitmap.h"
#include "crossing_strategy.h"
#include "price_chart.h"

namespace {

const char* const kScreen = "STDOUT";  // every report can go to a file as well

void heading(const char* text) {
  std::printf("\n=== %s ===\n\n", text);
}

void printPrices(const qxBars& bars) {
  char first[64], last[64];
  qxFormatDate(bars.date.data[0], "yyyy-mm-dd", first);
  qxFormatDate(bars.date.data[bars.barsize - 1], "yyyy-mm-dd", last);
  std::printf("%s: %d bars from %s to %s, closing at %.2f and %.2f\n", bars.symbol,
              static_cast<int>(bars.barsize), first, last, bars.close.data[0],
              bars.close.data[bars.barsize - 1]);
}

void printAverages(const qxBars& bars, const Averages& averages,
                   const CrossingParameters& parameters) {
  const int32_t last = bars.barsize - 1;
  std::printf("%d bars: %.2f, %d bars: %.2f at the last close\n",
              static_cast<int>(parameters.fastPeriod), averages.fast.data[last],
              static_cast<int>(parameters.slowPeriod), averages.slow.data[last]);
}

// Draws the last bars with averages, trades, volume and relative strength. False when it cannot be
// written.
bool drawChart(const qxBars& bars, const Averages& averages, const CrossingParameters& parameters,
               const qxOrderSystem& system) {
  const char* const picture = "chart.svg";
  PriceChart chart = {};
  int32_t status = buildPriceChart(&chart, bars, averages, parameters, system);
  if (status == QX_SUCCESS) status = qxGraphPaintSVG(&chart.graph, picture);
  if (status == QX_SUCCESS) {
    std::printf("The chart is in %s\n", picture);
    writeChartBitmap(&chart.graph, "chart.bmp");
  } else {
    char text[32];
    qxErrDesc(status, text);
    std::fprintf(stderr, "Cannot draw %s: %s\n", picture, text);
  }
  freePriceChart(&chart);
  return status == QX_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "Usage: %s FOLDER FILE\n", argv[0]);
    return 2;
  }
  const CrossingParameters parameters = {20, 50, 4.0, 10.0};

  // Records are the caller's. They start zero-filled, and what the library allocates inside them
  // is released by the matching free operation.
  qxBars bars = {};
  if (readPrices(argv[1], argv[2], &bars) != QX_SUCCESS) return 1;
  heading("Prices");
  printPrices(bars);

  Averages averages = {};
  qxOrderSystem system = {};
  if (computeAverages(&bars, parameters, &averages) < 0 ||
      openSystem(&system, "Crossing averages", &bars) != QX_SUCCESS) {
    std::fprintf(stderr, "Not enough memory\n");
    return 1;
  }
  heading("Moving averages");
  printAverages(bars, averages, parameters);

  runStrategy(&system, averages, parameters);

  heading("Trades");
  qxPrintTrades(&system, kScreen, 0);
  heading("Profit");
  qxProfitRpt(&system, kScreen, 0);
  heading("Open positions");
  qxOpenPosRpt1(&system, kScreen, 0, " ", 1);
  heading("Orders for the next bar");
  qxPrintOrders(&system, kScreen, 0);

  heading("Chart");
  const bool drawn = drawChart(bars, averages, parameters, system);

  qxOrderSystemClose(&system);
  freeAverages(&averages);
  qxFreeBars(&bars);
  return drawn ? 0 : 1;
}
