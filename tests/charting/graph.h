// A graph that releases itself.
#ifndef QUORVEX_TESTS_CHARTING_GRAPH_H
#define QUORVEX_TESTS_CHARTING_GRAPH_H

#include "tests/support/test_support.h"

namespace qxtest {

struct Graph {
  qxGraph graph = {};

  Graph() = default;
  ~Graph() { qxGraphFree(&graph); }
  Graph(const Graph&) = delete;
  Graph& operator=(const Graph&) = delete;

  operator qxGraph*() { return &graph; }
  qxGraph* operator->() { return &graph; }
  qxGraphSubwin& pane(int32_t index) { return graph.subwins[index]; }
  qxGraphChart& chart(int32_t subwin, int32_t index) { return pane(subwin).charts[index]; }

  // Adds a chart in black, white and red with a scale of its own, which is kept. Null stands for an
  // empty series or bar set.
  qxGraphChart& add(int32_t subwin, int32_t style, const qxArray* series, const qxBars* bars,
                    double minimum, double maximum) {
    const qxArray noSeries = {};
    const qxBars noBars = {};
    EXPECT_EQ(
        qxGraphChartAdd(&graph, subwin, -1, 0, QX_SCALE_KEEP, QX_SCALE_KEEP, minimum, maximum, 0,
                        series == nullptr ? &noSeries : series, bars == nullptr ? &noBars : bars,
                        style, 0x000000, 0xFFFFFF, 0x0000FF, 1, 0, 0),
        QX_SUCCESS);
    const int32_t index = pane(subwin).chartcount - 1;
    chart(subwin, index).scalechart = index;
    return chart(subwin, index);
  }
  void addLine(int32_t subwin, int32_t chart, double price, int32_t colour = 0,
               int32_t style = QX_PEN_SOLID, int32_t selected = 0) {
    EXPECT_EQ(qxGraphLineAdd(&graph, subwin, -1, chart, price, colour, 1, style, selected), 0);
  }
  void addShape(int32_t subwin, int32_t kind, double x1, double y1, double x2, double y2,
                int32_t colour = 0, int32_t width = 1, int32_t style = QX_PEN_SOLID,
                int32_t selected = 0) {
    EXPECT_EQ(qxGraphShapeAdd(&graph, subwin, -1, 0, kind, x1, y1, x2, y2, colour, width, style,
                              selected),
              QX_SUCCESS);
  }
};

}  // namespace qxtest

#endif  // QUORVEX_TESTS_CHARTING_GRAPH_H
