// The graphs whose pictures are compared with looked-at references. Colours are fixed, so that the
// pictures are the same on every machine.
#ifndef QUORVEX_TESTS_CHARTING_REFERENCE_GRAPHS_H
#define QUORVEX_TESTS_CHARTING_REFERENCE_GRAPHS_H

#include <cstdio>
#include <string>
#include <vector>

#include "tests/charting/graph.h"

namespace qxtest {

// Bars that rise and fall in a fixed pattern, `step` days apart.
inline std::vector<Bar> wavyBars(double first, double step, int32_t count) {
  static const double kMoves[] = {1.5, -0.75, 2.25, 0.5, -1.75, -1.25, 0.0, 1.0, -2.5, 1.75, 0.25};
  std::vector<Bar> bars;
  double close = 50.0;
  for (int32_t i = 0; i < count; ++i) {
    const double open = close + kMoves[i * 3 % 11] / 4;
    close += kMoves[i % 11] + kMoves[i * i % 11] / 2;
    const double high = (open > close ? open : close) + 0.25 * (i % 4);
    const double low = (open < close ? open : close) - 0.25 * (i % 3);
    bars.push_back({first + step * i, open, high, low, close, 1000.0 + 300 * (i * 7 % 11), 0});
  }
  return bars;
}

// Panes over one set of bars and what is computed from it.
struct ReferenceGraph : Graph {
  BarSet bars;
  Series average, volume, oscillator, trades;

  explicit ReferenceGraph(const std::vector<Bar>& source) : bars(source) {
    qxGraphInit(&graph);
    graph.area = {0, 0, 300, 240};
    graph.barwidth = 6;
    graph.background = 0xF4F4F4;
    graph.headerback = graph.footerback = 0xD8D8D8;
    graph.axiscolour = graph.titlecolour = graph.headercolour = graph.footercolour = 0x303030;
    graph.gridcolour = 0xC8C8C8;
    qxGraphSubwinAdd(&graph, 0);
    pane(0).background = 0xFFFFFF;
    pane(0).gridcolour = pane(0).gridcolour2 = 0xC8C8C8;
    const auto count = static_cast<int32_t>(source.size());
    for (qxArray* series : {&average.record, &volume.record, &oscillator.record, &trades.record}) {
      qxAllocArray(series, count);
    }
    for (int32_t i = 0; i < count; ++i) {
      double sum = 0.0;
      for (int32_t k = 0; k < 5 && i >= 4; ++k) sum += bars->close.data[i - k];
      average.record.data[i] = sum / 5;
      volume.record.data[i] = bars->volume.data[i];
      oscillator.record.data[i] = i < 4 ? 0.0 : bars->close.data[i] - sum / 5;
      trades.record.data[i] = i % 9 == 4 ? 1 : i % 9 == 8 ? 8 : i % 17 == 11 ? 2 : 0;
    }
    average.record.firstvalid = oscillator.record.firstvalid = 4;
  }

  // A chart on the scale of its pane's first, found over the bars in view.
  qxGraphChart& addChart(int32_t subwin, int32_t style, const qxArray* series, uint32_t colour,
                         uint32_t colour2, int32_t width = 1, int32_t penStyle = 0) {
    qxGraphChart& chart = add(subwin, style, series, bars, 0, 0);
    chart.minmode = chart.maxmode = QX_SCALE_SHOWN;
    chart.scalechart = 0;
    chart.colour = colour;
    chart.colour2 = colour2;
    chart.colour3 = 0x604020;
    chart.penwidth = width;
    chart.penstyle = penStyle;
    return chart;
  }
  void title(int32_t subwin, int32_t share, const char* text) {
    pane(subwin).height = share;
    pane(subwin).titleshown = 1;
    std::snprintf(pane(subwin).title, sizeof pane(subwin).title, "%s", text);
  }
};

// Daily candles with an average and trades, volume and an oscillator.
struct PanesGraph : ReferenceGraph {
  PanesGraph() : ReferenceGraph(wavyBars(45292, 1, 42)) {
    std::snprintf(graph.headertext, sizeof graph.headertext, "Panes <daily> & \"more\"");
    addChart(0, QX_CHART_CANDLE, nullptr, 0x303030, 0xFFFFFF);
    addChart(0, QX_CHART_LINE, average, 0xC05020, 0, 2);
    addChart(0, QX_CHART_TRADES, trades, 0x208020, 0x2020C0);
    addChart(1, QX_CHART_HISTOGRAM, volume, 0, 0xC8A080).minmode = QX_SCALE_KEEP;
    addChart(2, QX_CHART_LINE, oscillator, 0x902090, 0);
    title(1, 40, "Volume");
    title(2, 50, "Distance from the average");
    addLine(2, 0, 0.0, 0x808080, QX_PEN_DASH);
  }
};

// The other styles, patterns, scales, shapes and marks, on five-minute bars.
struct StylesGraph : ReferenceGraph {
  StylesGraph() : ReferenceGraph(wavyBars(45294 + 540.5 / 1440, 5 / 1440.0, 42)) {
    bars->frequency = QX_FREQ_INTRADAY;
    graph.headershown = 0;
    addChart(0, QX_CHART_OHLC, nullptr, 0x303030, 0);
    addChart(0, QX_CHART_MARKER, average, 0x2020C0, 0);
    chart(0, 0).scaleflags = chart(0, 1).scaleflags = QX_SCALE_LOG;
    chart(0, 0).selected = 1;
    addChart(1, QX_CHART_AREA, oscillator, 0x80C080, 0xE0FFE0, 1, 0x8421);
    addChart(2, QX_CHART_HLC, nullptr, 0x303030, 0).scaleflags = QX_SCALE_INVERTED;
    addChart(2, QX_CHART_STEP, volume, 0xC05020, 0, 1, QX_PEN_DOT).scalechart = 1;
    pane(2).axischart2 = 1;
    pane(1).height = pane(2).height = 70;
    addShape(0, QX_SHAPE_SEGMENT, 4, 50, 30, 53, 0x2020C0, 1, 0, 1);
    addShape(0, QX_SHAPE_RECTANGLE, 8, 49, 14, 54, 0xC02020, 1, QX_PEN_DOT);
    addShape(0, QX_SHAPE_ELLIPSE, 18, 50, 28, 55, 0x208020, 2);
  }
};

}  // namespace qxtest

#endif  // QUORVEX_TESTS_CHARTING_REFERENCE_GRAPHS_H
