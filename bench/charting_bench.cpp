// What lies under a point, in a graph of three panes and eight charts with 200 bars in view.
#include "bench/bench_support.h"

namespace {

constexpr int32_t kShown = 200;
constexpr int32_t kBarWidth = 6;
constexpr qxRect kBarArea = {10, 20, 10 + kShown* kBarWidth, 800};
constexpr int32_t kPaneHeight = 260;

// Bars with as many charts as a busy screen shows; the layout is what painting would store.
struct Screen {
  qxGraph graph = {};

  explicit Screen(int32_t loaded) {
    qxGraphInit(&graph);
    qxBars shown = qxbench::bars();
    shown.barsize = loaded;
    qxArray series = shown.close;
    series.size = loaded;
    graph.firstshown = loaded - kShown;
    graph.lastshown = loaded - 1;
    graph.barwidth = kBarWidth;
    graph.area = {0, 0, kBarArea.right + 80, kBarArea.bottom + 40};
    graph.bararea = kBarArea;
    const int32_t styles[3][3] = {{QX_CHART_CANDLE, QX_CHART_LINE, QX_CHART_LINE},
                                  {QX_CHART_HISTOGRAM, QX_CHART_AREA, QX_CHART_STEP},
                                  {QX_CHART_OHLC, QX_CHART_MARKER, -1}};
    double low = 0.0, high = 0.0;
    qxBarStats(&shown, &low, &high, graph.firstshown, graph.lastshown);
    for (int32_t pane = 0; pane < 3; ++pane) {
      for (int32_t style : styles[pane]) {
        if (style < 0) continue;
        qxGraphChartAdd(&graph, pane, -1, 0, QX_SCALE_SHOWN, QX_SCALE_SHOWN, low, high, 0, &series,
                        &shown, style, 0, 0, 0, 1, 0, 0);
      }
      qxGraphSubwin record;
      qxGraphGetSubwin(&graph, &record, pane);
      record.pane = {kBarArea.left, kBarArea.top + pane * kPaneHeight, kBarArea.right,
                     kBarArea.top + (pane + 1) * kPaneHeight};
      qxGraphSetSubwin(&graph, &record, pane);
    }
  }
  ~Screen() { qxGraphFree(&graph); }
};

void hitTest(benchmark::State& state) {
  const Screen screen(static_cast<int32_t>(state.range(0)));
  int32_t x = kBarArea.left, y = kBarArea.top;
  for (auto _ : state) {
    qxGraphInfo info;
    qxGraphGetXYinfo(&screen.graph, nullptr, x, y, &info);
    benchmark::DoNotOptimize(info);
    // Steps that meet every column and row without a pattern.
    x = kBarArea.left + (x + 37) % (kBarArea.right - kBarArea.left);
    y = kBarArea.top + (y + 53) % (kBarArea.bottom - kBarArea.top);
  }
}

BENCHMARK(hitTest)->Name("qxGraphGetXYinfo")->Arg(1000)->Arg(qxbench::kElements);

}  // namespace
