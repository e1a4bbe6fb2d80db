// Planning and painting a graph of three panes and eight charts with 200 bars in view, into a file
// that is thrown away: the time must not grow with the bars that are loaded.
#include <cstdio>
#include <filesystem>
#include <string>

#include "bench/bench_support.h"

namespace {

constexpr int32_t kShown = 200;
constexpr int32_t kBarWidth = 6;

struct Screen {
  qxGraph graph = {};
  std::string file = (std::filesystem::temp_directory_path() / "quorvex_bench.svg").string();

  explicit Screen(int32_t loaded) {
    qxGraphInit(&graph);
    qxBars shown = qxbench::bars();
    shown.barsize = loaded;
    qxArray series = shown.close;
    series.size = loaded;
    graph.firstshown = loaded - kShown;
    graph.lastshown = loaded - 1;
    graph.barwidth = kBarWidth;
    graph.area = {0, 0, kShown * kBarWidth + 80, 840};
    const int32_t styles[3][3] = {{QX_CHART_CANDLE, QX_CHART_LINE, QX_CHART_LINE},
                                  {QX_CHART_HISTOGRAM, QX_CHART_AREA, QX_CHART_STEP},
                                  {QX_CHART_OHLC, QX_CHART_MARKER, -1}};
    for (int32_t pane = 0; pane < 3; ++pane) {
      for (const int32_t style : styles[pane]) {
        if (style < 0) continue;
        qxGraphChartAdd(&graph, pane, -1, 0, QX_SCALE_SHOWN, QX_SCALE_SHOWN, 0.0, 0.0, 0, &series,
                        &shown, style, 0, 0xFFFFFF, 0, 1, 0, 0);
      }
    }
  }
  ~Screen() {
    qxGraphFree(&graph);
    std::remove(file.c_str());
  }
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
};

void paintSvg(benchmark::State& state) {
  Screen screen(static_cast<int32_t>(state.range(0)));
  for (auto _ : state) qxGraphPaintSVG(&screen.graph, screen.file.c_str());
}

// A file that cannot be created: the picture is planned and no more.
void planOnly(benchmark::State& state) {
  Screen screen(static_cast<int32_t>(state.range(0)));
  const std::string nowhere = screen.file + "/none";
  for (auto _ : state) qxGraphPaintSVG(&screen.graph, nowhere.c_str());
}

BENCHMARK(planOnly)->Name("qxGraphPaintSVG/planning")->Arg(1000)->Arg(qxbench::kElements);
BENCHMARK(paintSvg)->Name("qxGraphPaintSVG")->Arg(1000)->Arg(qxbench::kElements);

}  // namespace
