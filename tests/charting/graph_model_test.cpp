// Graphs, panes and their elements against a model that names charts by identity, not by index.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <random>
#include <vector>

#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;
using qxtest::Series;
using qxtest::workedBars;

struct Graph {
  qxGraph record = {};
  ~Graph() { qxGraphFree(&record); }
  operator qxGraph*() { return &record; }
  qxGraph* operator->() { return &record; }
};

int32_t addChart(qxGraph* graph, int32_t subwin, int32_t chart, const qxArray* series,
                 const qxBars* bars, int32_t style, int32_t scaleChart = 0, double minimum = 0.0,
                 int32_t tag = 0) {
  return qxGraphChartAdd(graph, subwin, chart, 0, 1, 1, minimum, 1.0, scaleChart, series, bars,
                         style, 1, 2, 3, tag, 0, 0);
}

bool isZero(const void* block, size_t size) {
  const auto* bytes = static_cast<const unsigned char*>(block);
  return std::all_of(bytes, bytes + size, [](unsigned char b) { return b == 0; });
}

TEST(GraphModel, InitSetsTheDefaultsAndNothingElse) {
  qxGraph graph;
  std::memset(&graph, 0x5A, sizeof graph);
  qxGraphInit(&graph);
  EXPECT_EQ(graph.initialised, 1);
  EXPECT_EQ(graph.barwidth, 4);
  EXPECT_TRUE(isZero(&graph.firstshown, 112 - 8));
  EXPECT_EQ(graph.axisshown + graph.axisshown2 * 10 + graph.hgap * 100 + graph.vgap * 1000, 2211);
  for (const char* face : {graph.axisface, graph.titleface, graph.headerface, graph.footerface}) {
    EXPECT_STREQ(face, "Arial");
  }
  for (float size : {graph.axissize, graph.titlesize, graph.headersize, graph.footersize}) {
    EXPECT_EQ(size, 8.0f);
  }
  EXPECT_EQ(graph.ticklength, 6);
  EXPECT_EQ(graph.datesshown, 1);
  EXPECT_EQ(graph.gridwidth, 1);
  EXPECT_EQ(graph.gridstyle, QX_PEN_DOT);
  EXPECT_STREQ(graph.headertext, "Quorvex");
  EXPECT_TRUE(isZero(graph.headertext + 7, sizeof graph.headertext - 7));
  EXPECT_EQ(graph.headershown, 1);
  EXPECT_EQ(graph.titleheight, 0);
  EXPECT_TRUE(isZero(&graph.subwins, 16));
#ifndef _WIN32
  const std::vector<uint32_t> colours = {graph.background,   graph.fill,        graph.axiscolour,
                                         graph.gridcolour,   graph.titlecolour, graph.headerback,
                                         graph.headercolour, graph.footerback,  graph.footercolour};
  EXPECT_EQ(colours,
            (std::vector<uint32_t>{0xFFFFFF, 0, 0, 0x7F7F7F, 0, 0xC0C0C0, 0, 0x7F7F7F, 0xC0C0C0}));
#endif
  qxGraphFree(&graph);
  EXPECT_TRUE(isZero(&graph, sizeof graph));
  qxGraphFree(&graph);
  qxGraphFree(nullptr);
  qxGraphInit(nullptr);
}

TEST(GraphModel, PanesCopyFromTheOneBefore) {
  Graph graph;
  qxGraphInit(graph);
  graph->background = 0x123456;
  ASSERT_EQ(qxGraphSubwinAdd(graph, -1), QX_SUCCESS);
  qxGraphSubwin pane;
  ASSERT_EQ(qxGraphGetSubwin(graph, &pane, 0), QX_SUCCESS);
  EXPECT_EQ(pane.height, 100);
  EXPECT_EQ(pane.background, 0x123456u);
  EXPECT_EQ(pane.gridcolour, graph->gridcolour);
  EXPECT_EQ(pane.gridwidth * 1000 + pane.gridstyle * 100 + pane.gridwidth2 * 10 + pane.gridstyle2,
            1212);
  EXPECT_TRUE(isZero(pane.title, 288 - 24));
  pane.height = 40;
  pane.gridcolour2 = 9;
  pane.gridstyle = 0;
  pane.axischart = 3;
  std::strcpy(pane.title, "first");
  ASSERT_EQ(qxGraphSetSubwin(graph, &pane, -1), QX_SUCCESS);
  ASSERT_EQ(qxGraphSubwinAdd(graph, 2), QX_SUCCESS);
  ASSERT_EQ(qxGraphSubwinAdd(graph, 1), QX_SUCCESS);
  EXPECT_EQ(graph->subwincount, 3);
  EXPECT_EQ(graph->subwincap, 4);
  ASSERT_EQ(qxGraphGetSubwin(graph, &pane, 2), QX_SUCCESS);
  EXPECT_EQ(pane.height, 40);
  EXPECT_EQ(pane.gridcolour2, 9u);
  EXPECT_EQ(pane.gridstyle, 0);
  EXPECT_EQ(pane.axischart, 0);
  EXPECT_TRUE(isZero(pane.title, sizeof pane.title));
}

TEST(GraphModel, ArraysGrowByTheirStep) {
  Graph graph;
  Series series = {1, 2, 3};
  BarSet bars;
  // Capacity after each element: charts and shapes grow by 4, lines by 2.
  for (int32_t i = 0; i < 9; ++i) {
    ASSERT_EQ(addChart(graph, 0, -1, series, bars, 5), QX_SUCCESS);
    ASSERT_EQ(qxGraphLineAdd(graph, 0, -1, 0, i, 0, 1, 0, 0), QX_SUCCESS);
    ASSERT_EQ(qxGraphShapeAdd(graph, 0, -1, 0, 1, i, 0, i + 1, 1, 0, 1, 0, 0), QX_SUCCESS);
    const qxGraphSubwin& pane = graph->subwins[0];
    EXPECT_EQ(pane.chartcap, (i / 4 + 1) * 4);
    EXPECT_EQ(pane.linecap, (i / 2 + 1) * 2);
    EXPECT_EQ(pane.shapecap, (i / 4 + 1) * 4);
    EXPECT_EQ(pane.chartcount, i + 1);
  }
  // A jump grows once for each pane that it creates.
  ASSERT_EQ(qxGraphSubwinAdd(graph, 21), QX_SUCCESS);
  EXPECT_EQ(graph->subwincap, 24);
  EXPECT_EQ(graph->subwincount, 22);
  EXPECT_EQ(qxGraphSubwinAdd(graph, 5899680), QX_ERR_MALLOC);
  EXPECT_EQ(qxGraphSubwinAdd(graph, INT32_MAX), QX_ERR_MALLOC);
  EXPECT_EQ(graph->subwincount, 22);
}

TEST(GraphModel, ChartAddChecksBeforeItCreates) {
  Graph graph;
  Series series = {1, 2, 3};
  BarSet bars(workedBars());
  qxArray noSeries = {};
  qxBars noBars = {};
  qxBars noCloses = bars.record;
  noCloses.close = {};
  struct Case {
    const char* what;
    int32_t subwin, chart;
    const qxArray* series;
    const qxBars* bars;
    int32_t style, status;
  };
  const Case cases[] = {
      {"null series", 0, 0, nullptr, bars, 3, QX_ERR_INVALID_PARM},
      {"null bars", 0, 0, series, nullptr, 5, QX_ERR_INVALID_PARM},
      {"both empty", 0, 0, &noSeries, &noBars, 5, QX_ERR_INVALID_PARM},
      {"closes without storage", 0, 0, &noSeries, &noCloses, 5, QX_ERR_INVALID_PARM},
      {"markers without series", 0, 0, &noSeries, bars, 4, QX_ERR_INVALID_PARM},
      {"style 1 without bars", 0, 0, series, &noBars, 1, QX_ERR_INVALID_PARM},
      {"style 4 without bars", 0, 0, series, &noBars, 4, QX_ERR_INVALID_PARM},
      {"pane below -1", -2, 0, series, bars, 5, QX_ERR_INVALID_PARM},
      {"chart below -1", 0, -2, series, bars, 5, QX_ERR_INVALID_PARM},
      {"chart above the count", 3, 1, series, bars, 5, QX_ERR_INVALID_PARM},
      {"too many panes", 5899680, 0, series, bars, 5, QX_ERR_MALLOC},
      {"style 0 without bars", 0, 0, series, &noBars, 0, QX_SUCCESS},
      {"unknown style", 0, -1, &noSeries, bars, 99, QX_SUCCESS},
      {"pane after the last", -1, 0, &noSeries, bars, 3, QX_SUCCESS},
  };
  for (const Case& c : cases) {
    const int32_t before = graph->subwincount;
    EXPECT_EQ(addChart(graph, c.subwin, c.chart, c.series, c.bars, c.style), c.status) << c.what;
    if (c.status != QX_SUCCESS) {
      EXPECT_EQ(graph->subwincount, before) << c.what;
    }
  }
  EXPECT_EQ(graph->subwincount, 2);
  EXPECT_EQ(addChart(nullptr, 0, 0, series, bars, 5), QX_ERR_INVALID_PARM);
}

TEST(GraphModel, ChartHoldsClampedCopiesAndShowsAllBars) {
  Graph graph;
  BarSet bars(workedBars());
  qxArray series = bars->high;
  series.size = 50;  // claims more than it holds
  series.firstvalid = 30;
  ASSERT_EQ(
      qxGraphChartAdd(graph, 2, -1, 3, 1, 2, -7.5, 8.5, 4, &series, bars, 6, 10, 11, 12, 13, 14, 1),
      QX_SUCCESS);
  EXPECT_EQ(graph->subwincount, 3);
  EXPECT_EQ(graph->lastshown, 11);
  qxGraphChart chart;
  ASSERT_EQ(qxGraphGetChart(graph, &chart, -1, -1), QX_SUCCESS);
  EXPECT_EQ(chart.series.data, bars->high.data);
  EXPECT_EQ(chart.series.size, 12);
  EXPECT_EQ(chart.series.firstvalid, 12);
  EXPECT_EQ(std::memcmp(&chart.bars, &bars.record, sizeof(qxBars)), 0);
  EXPECT_EQ(chart.minimum, -7.5);
  EXPECT_EQ(chart.maximum, 8.5);
  const std::vector<int32_t> fields = {
      chart.style,           chart.scaleflags,       chart.minmode,         chart.maxmode,
      chart.scalechart,      chart.penwidth,         chart.penstyle,        chart.selected,
      int32_t(chart.colour), int32_t(chart.colour2), int32_t(chart.colour3)};
  EXPECT_EQ(fields, (std::vector<int32_t>{6, 3, 1, 2, 4, 13, 14, 1, 10, 11, 12}));

  // An empty series draws the closes; the range in view is kept once it is open.
  qxArray none = {};
  graph->lastshown = 5;
  ASSERT_EQ(addChart(graph, 0, 0, &none, bars, 3), QX_SUCCESS);
  ASSERT_EQ(qxGraphGetChart(graph, &chart, 0, 0), QX_SUCCESS);
  EXPECT_EQ(chart.series.data, bars->close.data);
  EXPECT_EQ(graph->lastshown, 5);
  graph->firstshown = 5;
  ASSERT_EQ(addChart(graph, 0, 0, &none, bars, 3), QX_SUCCESS);
  EXPECT_EQ(graph->lastshown, 11);
  EXPECT_EQ(graph->subwins[0].chartcount, 1);
}

TEST(GraphModel, ShapePointsAreOrderedByX) {
  Graph graph;
  const double nan = std::nan("");
  const double cases[][2] = {{1, 2}, {2, 1}, {1, 1}, {nan, 1}, {1, nan}};
  for (const auto& x : cases) {
    ASSERT_EQ(qxGraphShapeAdd(graph, 0, -1, 7, 2, x[0], 10, x[1], 20, 1, 2, 3, 4), QX_SUCCESS);
    qxGraphShape shape;
    ASSERT_EQ(qxGraphGetShape(graph, &shape, 0, -1), QX_SUCCESS);
    const bool kept = x[1] > x[0];
    EXPECT_TRUE(qxtest::near(shape.x1, kept ? x[0] : x[1]));
    EXPECT_TRUE(qxtest::near(shape.x2, kept ? x[1] : x[0]));
    EXPECT_EQ(shape.y1, kept ? 10 : 20);
    EXPECT_EQ(shape.y2, kept ? 20 : 10);
    EXPECT_EQ(shape.chart * 1000 + shape.kind * 100, 7200);
    EXPECT_EQ(shape.colour * 1000 + shape.penwidth * 100 + shape.penstyle * 10 + shape.selected,
              1234);
  }
}

TEST(GraphModel, BadIndexesChangeNothing) {
  Graph graph;
  qxGraphLine line;
  std::memset(&line, 1, sizeof line);
  EXPECT_EQ(qxGraphSubwinRemove(graph, -1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphChartRemove(graph, -1, -1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphGetLine(graph, &line, 0, 0), QX_ERR_INVALID_PARM);
  EXPECT_TRUE(isZero(&line, sizeof line));
  EXPECT_EQ(graph->initialised, 0);
  ASSERT_EQ(qxGraphLineAdd(graph, -1, -1, 0, 5.5, 1, 2, 3, 4), QX_SUCCESS);
  EXPECT_EQ(qxGraphLineAdd(graph, 7, 1, 0, 5.5, 1, 2, 3, 4), QX_ERR_INVALID_PARM);
  EXPECT_EQ(graph->subwincount, 1);
  for (int32_t bad : {-2, 1, INT32_MIN, INT32_MAX}) {
    std::memset(&line, 1, sizeof line);
    EXPECT_EQ(qxGraphSetLine(graph, &line, 0, bad), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxGraphSetLine(graph, &line, bad, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxGraphGetLine(graph, &line, bad, 0), QX_ERR_INVALID_PARM);
    EXPECT_TRUE(isZero(&line, sizeof line));
    EXPECT_EQ(qxGraphLineRemove(graph, 0, bad), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxGraphShapeRemove(graph, 0, bad), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxGraphSubwinRemove(graph, bad), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxGraphSubwinOrder(graph, 0, bad), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxGraphSubwinOrder(graph, bad, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxGraphSubwinOrder(graph, bad, bad), QX_SUCCESS);
  }
  EXPECT_EQ(qxGraphSubwinOrder(nullptr, 0, 0), QX_SUCCESS);
  ASSERT_EQ(qxGraphGetLine(graph, &line, -1, -1), QX_SUCCESS);
  EXPECT_EQ(line.price, 5.5);
  EXPECT_EQ(line.colour * 1000 + line.penwidth * 100 + line.penstyle * 10 + line.selected, 1234);
}

TEST(GraphModel, SetReplacesOneElement) {
  Graph graph;
  BarSet bars(workedBars());
  Series none;
  for (int32_t i = 0; i < 2; ++i) {
    ASSERT_EQ(addChart(graph, 0, i, none, bars, QX_CHART_CANDLE), QX_SUCCESS);
    ASSERT_EQ(qxGraphShapeAdd(graph, 0, i, 0, QX_SHAPE_SEGMENT, 1, 10, 2, 20, 0, 1, 0, 0),
              QX_SUCCESS);
  }
  qxGraphChart chart;
  qxGraphShape shape;
  ASSERT_EQ(qxGraphGetChart(graph, &chart, 0, 0), QX_SUCCESS);
  ASSERT_EQ(qxGraphGetShape(graph, &shape, 0, 0), QX_SUCCESS);
  chart.colour = 77;
  shape.y1 = 15;
  ASSERT_EQ(qxGraphSetChart(graph, &chart, -1, -1), QX_SUCCESS);
  ASSERT_EQ(qxGraphSetShape(graph, &shape, -1, -1), QX_SUCCESS);
  EXPECT_EQ(graph->subwins[0].charts[0].colour, 1u);
  EXPECT_EQ(graph->subwins[0].charts[1].colour, 77u);
  EXPECT_EQ(graph->subwins[0].shapes[0].y1, 10);
  EXPECT_EQ(graph->subwins[0].shapes[1].y1, 15);
  for (const int32_t bad : {2, -2, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(qxGraphSetChart(graph, &chart, 0, bad), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxGraphSetShape(graph, &shape, bad, 0), QX_ERR_INVALID_PARM);
  }
  EXPECT_EQ(graph->subwins[0].chartcount, 2);
  EXPECT_EQ(graph->subwins[0].shapecount, 2);
}

// The margins pad the scale that painting stores, by pixels of the unpadded scale.
TEST(GraphModel, MarginsPadTheScalesOfTheProcess) {
  qxtest::TemporaryFolder folder;
  BarSet bars(workedBars());
  Series none, closes{51, 53, 52, 51, 49, 50, 53, 55, 54, 52, 55, 57};
  const auto padding = [&](const qxArray* series, int32_t style, double highest) {
    Graph graph;
    EXPECT_EQ(addChart(graph, 0, 0, series, bars, style), QX_SUCCESS);
    graph->area = {0, 0, 400, 300};
    EXPECT_EQ(qxGraphPaintSVG(graph, folder.file("chart.svg").c_str()), QX_SUCCESS);
    const qxGraphSubwin& pane = graph->subwins[0];
    const double perPixel =
        (pane.charts[0].maximum - pane.charts[0].minimum) / (pane.pane.bottom - pane.pane.top);
    return (pane.charts[0].maximum - highest) / perPixel;
  };
  EXPECT_EQ(qxGraphSetSubwinMargins(0, 0), 0);
  EXPECT_EQ(padding(none, QX_CHART_CANDLE, 58), 0.0);
  EXPECT_EQ(padding(closes, QX_CHART_LINE, 57), 0.0);
  EXPECT_EQ(qxGraphSetSubwinMargins(2, 1), 1);
  const double barPadding = padding(none, QX_CHART_CANDLE, 58);
  const double seriesPadding = padding(closes, QX_CHART_LINE, 57);
  EXPECT_NEAR(barPadding, 2.0, 0.1);
  EXPECT_NEAR(seriesPadding, 1.0, 0.05);
}

TEST(GraphModel, PaneRecordsReachTheirElements) {
  Graph graph;
  ASSERT_EQ(qxGraphLineAdd(graph, 0, 0, 0, 1, 0, 0, 0, 0), QX_SUCCESS);
  ASSERT_EQ(qxGraphLineAdd(graph, 0, 1, 0, 2, 0, 0, 0, 0), QX_SUCCESS);
  qxGraphSubwin pane;
  ASSERT_EQ(qxGraphGetSubwin(graph, &pane, -1), QX_SUCCESS);
  qxGraphLine line;
  ASSERT_EQ(qxGraphSubwinGetLine(&pane, &line, -1), QX_SUCCESS);
  EXPECT_EQ(line.price, 2);
  line.price = 3;
  ASSERT_EQ(qxGraphSubwinSetLine(&pane, &line, 0), QX_SUCCESS);
  ASSERT_EQ(qxGraphGetLine(graph, &line, 0, 0), QX_SUCCESS);
  EXPECT_EQ(line.price, 3);
  qxGraphShape shape;
  EXPECT_EQ(qxGraphSubwinGetShape(&pane, &shape, -1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphSubwinSetShape(&pane, &shape, 0), QX_ERR_INVALID_PARM);
  qxGraphChart chart;
  EXPECT_EQ(qxGraphSubwinGetChart(&pane, &chart, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphSubwinSetChart(nullptr, &chart, 0), QX_ERR_INVALID_PARM);
}

// A pane as a list of identities. References name charts by identity, 0 standing for "the chart at
// index 0, whichever it is".
struct ModelChart {
  int32_t id, scaleOf;
  double minimum;
};
struct ModelItem {
  double tag;
  int32_t chart;
};
struct ModelPane {
  std::vector<ModelChart> charts;
  std::vector<ModelItem> lines, shapes;
  int32_t axis = 0;

  int32_t indexOf(int32_t id) const {
    for (size_t i = 0; i < charts.size(); ++i) {
      if (charts[i].id == id) return static_cast<int32_t>(i);
    }
    return 0;
  }

  void removeChart(size_t index) {
    const ModelChart gone = charts[index];
    charts.erase(charts.begin() + static_cast<std::ptrdiff_t>(index));
    auto heir = std::find_if(charts.begin(), charts.end(),
                             [&](const ModelChart& c) { return c.scaleOf == gone.id; });
    if (heir == charts.end()) {
      heir = std::find_if(charts.begin(), charts.end(),
                          [&](const ModelChart& c) { return c.minimum == gone.minimum; });
    }
    const int32_t id = heir == charts.end() ? 0 : heir->id;
    for (ModelChart& c : charts) {
      if (c.scaleOf == gone.id) c.scaleOf = id;
    }
    for (auto* items : {&lines, &shapes}) {
      if (id == 0) std::erase_if(*items, [&](const ModelItem& i) { return i.chart == gone.id; });
      for (ModelItem& i : *items) {
        if (i.chart == gone.id) i.chart = id;
      }
    }
    if (axis == gone.id) axis = id != 0 || charts.empty() ? id : charts[0].id;
  }
};

void expectEqual(const qxGraph& graph, const std::vector<ModelPane>& model) {
  ASSERT_EQ(graph.subwincount, static_cast<int32_t>(model.size()));
  for (size_t p = 0; p < model.size(); ++p) {
    const qxGraphSubwin& pane = graph.subwins[p];
    const ModelPane& expected = model[p];
    ASSERT_EQ(pane.chartcount, static_cast<int32_t>(expected.charts.size()));
    ASSERT_EQ(pane.linecount, static_cast<int32_t>(expected.lines.size()));
    ASSERT_EQ(pane.shapecount, static_cast<int32_t>(expected.shapes.size()));
    ASSERT_EQ(pane.axischart, expected.indexOf(expected.axis));
    for (size_t i = 0; i < expected.charts.size(); ++i) {
      ASSERT_EQ(pane.charts[i].penwidth, expected.charts[i].id);
      ASSERT_EQ(pane.charts[i].scalechart, expected.indexOf(expected.charts[i].scaleOf));
    }
    for (size_t i = 0; i < expected.lines.size(); ++i) {
      ASSERT_EQ(pane.lines[i].price, expected.lines[i].tag);
      ASSERT_EQ(pane.lines[i].chart, expected.indexOf(expected.lines[i].chart));
    }
    for (size_t i = 0; i < expected.shapes.size(); ++i) {
      ASSERT_EQ(pane.shapes[i].y1, expected.shapes[i].tag);
      ASSERT_EQ(pane.shapes[i].chart, expected.indexOf(expected.shapes[i].chart));
    }
    // Vacated slots are cleared.
    for (int32_t i = pane.chartcount; i < pane.chartcap; ++i) {
      ASSERT_TRUE(isZero(&pane.charts[i], sizeof(qxGraphChart)));
    }
    for (int32_t i = pane.linecount; i < pane.linecap; ++i) {
      ASSERT_TRUE(isZero(&pane.lines[i], sizeof(qxGraphLine)));
    }
  }
}

TEST(GraphModel, RandomEditsFollowAModelByIdentity) {
  std::mt19937 random(20240607);
  auto below = [&random](size_t n) { return static_cast<size_t>(random() % n); };
  Series series = {1, 2, 3};
  BarSet bars;
  for (int32_t round = 0; round < 40; ++round) {
    Graph graph;
    std::vector<ModelPane> model;
    int32_t nextId = 1;
    for (int32_t step = 0; step < 300; ++step) {
      const size_t p = below(std::min<size_t>(model.size() + 1, 4));
      const auto subwin = static_cast<int32_t>(p);
      if (p == model.size()) model.emplace_back();
      ModelPane& pane = model[p];
      const size_t action = below(12);
      if (action < 5 || pane.charts.empty()) {
        // Few distinct minimums, so that charts find heirs by their scale.
        const double minimum = static_cast<double>(below(4));
        const auto place = static_cast<int32_t>(pane.charts.size());
        const auto scaleIndex = static_cast<int32_t>(below(pane.charts.size() + 1));
        ASSERT_EQ(addChart(graph, subwin, below(2) == 0 ? -1 : place, series, bars, 5, scaleIndex,
                           minimum, nextId),
                  QX_SUCCESS);
        pane.charts.push_back({nextId, 0, minimum});
        pane.charts.back().scaleOf = pane.charts[static_cast<size_t>(scaleIndex)].id;
        if (pane.charts.size() == 1) pane.axis = nextId;
        ++nextId;
      } else if (action < 8) {
        const auto chart = static_cast<int32_t>(below(pane.charts.size()));
        const int32_t id = pane.charts[static_cast<size_t>(chart)].id;
        const double tag = step;
        ASSERT_EQ(qxGraphLineAdd(graph, subwin, -1, chart, tag, 0, 0, 0, 0), QX_SUCCESS);
        ASSERT_EQ(qxGraphShapeAdd(graph, subwin, -1, chart, 1, 0, tag, 1, 0, 0, 0, 0, 0),
                  QX_SUCCESS);
        pane.lines.push_back({tag, id});
        pane.shapes.push_back({tag, id});
        qxGraphSubwin record;
        ASSERT_EQ(qxGraphGetSubwin(graph, &record, subwin), QX_SUCCESS);
        record.axischart = chart;
        ASSERT_EQ(qxGraphSetSubwin(graph, &record, subwin), QX_SUCCESS);
        pane.axis = id;
      } else if (action < 10) {
        const size_t index = below(pane.charts.size());
        ASSERT_EQ(qxGraphChartRemove(graph, subwin, static_cast<int32_t>(index)), QX_SUCCESS);
        pane.removeChart(index);
      } else if (action == 10 && !pane.lines.empty()) {
        const size_t index = below(pane.lines.size());
        ASSERT_EQ(qxGraphLineRemove(graph, subwin, static_cast<int32_t>(index)), QX_SUCCESS);
        pane.lines.erase(pane.lines.begin() + static_cast<std::ptrdiff_t>(index));
        ASSERT_EQ(qxGraphShapeRemove(graph, subwin, -1), pane.shapes.empty() ? -1 : 0);
        if (!pane.shapes.empty()) pane.shapes.pop_back();
      } else {
        const size_t to = below(model.size());
        ASSERT_EQ(qxGraphSubwinOrder(graph, subwin, static_cast<int32_t>(to)), QX_SUCCESS);
        ModelPane moved = model[p];
        model.erase(model.begin() + static_cast<std::ptrdiff_t>(p));
        model.insert(model.begin() + static_cast<std::ptrdiff_t>(to), moved);
        if (below(8) == 0) {
          ASSERT_EQ(qxGraphSubwinRemove(graph, -1), QX_SUCCESS);
          model.pop_back();
        }
      }
      ASSERT_NO_FATAL_FAILURE(expectEqual(graph.record, model)) << round << " " << step;
    }
  }
}

}  // namespace
