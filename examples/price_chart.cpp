#include "price_chart.h"

#include <cstdio>
#include <initializer_list>

namespace {

const int32_t kStrengthPeriod = 14;
const double kMillion = 1e6;

// Colours are 0x00BBGGRR.
const uint32_t kInk = 0x303030;
const uint32_t kWhite = 0xFFFFFF;
const uint32_t kGrid = 0xD8D8D8;
const uint32_t kStrip = 0xEFEBE7;
const uint32_t kFastColour = 0xC86420;
const uint32_t kSlowColour = 0x2060E0;
const uint32_t kBuyColour = 0x308020;
const uint32_t kSellColour = 0x2020C0;
const uint32_t kVolumeFill = 0xD8C0A0;
const uint32_t kVolumeEdge = 0xA08060;
const uint32_t kStrengthColour = 0x903080;

enum Pane { kPrices, kVolumes, kStrengths, kPanes };

// One chart to add. A chart shares the scale of the first chart of its pane.
struct Plot {
  Pane pane;
  int32_t style;
  const qxArray* series;
  uint32_t colour, colour2, colour3;
  int32_t penWidth;
};

int32_t addPlot(qxGraph* graph, const Plot& plot, const qxBars& bars) {
  return qxGraphChartAdd(graph, plot.pane, -1, 0, QX_SCALE_SHOWN, QX_SCALE_SHOWN, 0.0, 0.0, 0,
                         plot.series, &bars, plot.style, plot.colour, plot.colour2, plot.colour3,
                         plot.penWidth, QX_PEN_SOLID, 0);
}

int32_t computeSeries(PriceChart* chart, const qxBars& bars, const qxOrderSystem& system) {
  int32_t status = qxCreateTradeGraph(&system, &chart->trades);
  if (status < 0) return status;
  status = qxMultAddArray(&bars.volume, &chart->volume, 1.0 / kMillion, 0.0, 0);
  if (status < 0) return status;
  return qxRSI(&bars.close, &chart->strength, kStrengthPeriod, 0);
}

void decorateGraph(qxGraph* graph) {
  graph->barwidth = 6;
  graph->background = kStrip;
  graph->headerback = graph->footerback = kStrip;
  graph->axiscolour = graph->titlecolour = kInk;
  graph->headercolour = graph->footercolour = kInk;
  graph->headersize = 10.0F;
  graph->gridcolour = kGrid;
}

// The look of a pane; panes that are created after it take the same colours and pens.
int32_t decoratePane(qxGraph* graph, Pane index, int32_t height, const char* title) {
  qxGraphSubwin pane;
  const int32_t status = qxGraphGetSubwin(graph, &pane, index);
  if (status != QX_SUCCESS) return status;
  pane.height = height;
  pane.background = kWhite;
  pane.gridcolour = pane.gridcolour2 = kGrid;
  pane.titleshown = title[0] != '\0';
  std::snprintf(pane.title, sizeof pane.title, "%s", title);
  return qxGraphSetSubwin(graph, &pane, index);
}

// Keeps one end of a chart's scale, or both.
int32_t keepScale(qxGraph* graph, Pane pane, double minimum, const double* maximum) {
  qxGraphChart record;
  const int32_t status = qxGraphGetChart(graph, &record, pane, 0);
  if (status != QX_SUCCESS) return status;
  record.minmode = QX_SCALE_KEEP;
  record.minimum = minimum;
  if (maximum != nullptr) {
    record.maxmode = QX_SCALE_KEEP;
    record.maximum = *maximum;
  }
  return qxGraphSetChart(graph, &record, pane, 0);
}

int32_t fillGraph(PriceChart* chart, const qxBars& bars, const Averages& averages,
                  const CrossingParameters& parameters) {
  const qxArray none = {};
  const Plot plots[] = {
      {kPrices, QX_CHART_CANDLE, &none, kInk, kWhite, 0, 1},
      {kPrices, QX_CHART_LINE, &averages.fast, kFastColour, 0, 0, 1},
      {kPrices, QX_CHART_LINE, &averages.slow, kSlowColour, 0, 0, 2},
      {kPrices, QX_CHART_TRADES, &chart->trades, kBuyColour, kSellColour, 0, 1},
      {kVolumes, QX_CHART_HISTOGRAM, &chart->volume, 0, kVolumeFill, kVolumeEdge, 1},
      {kStrengths, QX_CHART_LINE, &chart->strength, kStrengthColour, 0, 0, 1},
  };
  qxGraph* graph = &chart->graph;
  for (const Plot& plot : plots) {
    const int32_t status = addPlot(graph, plot, bars);
    if (status != QX_SUCCESS) return status;
  }
  char title[64];
  std::snprintf(title, sizeof title, "Relative strength index (%d)",
                static_cast<int>(kStrengthPeriod));
  const double hundred = 100.0;
  int32_t status = decoratePane(graph, kPrices, 100, "");
  if (status == QX_SUCCESS) status = decoratePane(graph, kVolumes, 28, "Volume (millions)");
  if (status == QX_SUCCESS) status = decoratePane(graph, kStrengths, 34, title);
  if (status == QX_SUCCESS) status = keepScale(graph, kVolumes, 0.0, nullptr);
  if (status == QX_SUCCESS) status = keepScale(graph, kStrengths, 0.0, &hundred);
  for (const double level : {30.0, 70.0}) {
    if (status != QX_SUCCESS) return status;
    status = qxGraphLineAdd(graph, kStrengths, -1, 0, level, 0x808080, 1, QX_PEN_DASH, 0);
  }
  std::snprintf(graph->headertext, sizeof graph->headertext,
                "%s   averages of %d and %d bars, trades of their crossings", bars.symbol,
                static_cast<int>(parameters.fastPeriod), static_cast<int>(parameters.slowPeriod));
  return status;
}

}  // namespace

int32_t buildPriceChart(PriceChart* chart, const qxBars& bars, const Averages& averages,
                        const CrossingParameters& parameters, const qxOrderSystem& system) {
  qxGraphInit(&chart->graph);
  decorateGraph(&chart->graph);
  int32_t status = computeSeries(chart, bars, system);
  if (status >= 0) status = fillGraph(chart, bars, averages, parameters);
  if (status < 0) {
    freePriceChart(chart);
    return status;
  }
  placeChart(chart, 900, 600);
  showBars(chart, bars.barsize - 1);
  return QX_SUCCESS;
}

void freePriceChart(PriceChart* chart) {
  qxGraphFree(&chart->graph);
  qxFreeArray(&chart->trades);
  qxFreeArray(&chart->volume);
  qxFreeArray(&chart->strength);
}

void placeChart(PriceChart* chart, int32_t width, int32_t height) {
  chart->graph.area = {0, 0, width, height};
}

int32_t barsThatFit(const PriceChart& chart) {
  const qxGraph& graph = chart.graph;
  const int32_t axisGuess = 60;
  int32_t width = graph.bararea.right - graph.bararea.left;
  if (width <= 0) width = graph.area.right - graph.area.left - axisGuess;
  const int32_t bars = width / graph.barwidth;
  return bars > 1 ? bars : 1;
}

void showBars(PriceChart* chart, int32_t last) {
  const int32_t first = last - barsThatFit(*chart) + 1;
  chart->graph.firstshown = first > 0 ? first : 0;
  chart->graph.lastshown = last;
}
