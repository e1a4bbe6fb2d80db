// Graphs, panes and their elements against a model that names charts by identity, not by index.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>

#include "tests/charting/graph.h"

namespace {

using qxtest::BarSet;
using qxtest::Graph;
using qxtest::Series;
using qxtest::workedBars;
using Numbers = std::vector<int32_t>;

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
  qxGraph g;
  std::memset(&g, 0x5A, sizeof g);
  qxGraphInit(&g);
  EXPECT_TRUE(isZero(&g.firstshown, 112 - 8));
  EXPECT_EQ(
      (Numbers{g.initialised, g.barwidth, g.axisshown, g.axisshown2, g.hgap, g.vgap, g.ticklength,
               g.datesshown, g.gridwidth, g.gridstyle, g.headershown, g.titleheight}),
      (Numbers{1, 4, 1, 1, 2, 2, 6, 1, 1, QX_PEN_DOT, 1, 0}));
  for (const char* face : {g.axisface, g.titleface, g.headerface, g.footerface}) {
    EXPECT_STREQ(face, "Arial");
  }
  EXPECT_EQ((std::vector<float>{g.axissize, g.titlesize, g.headersize, g.footersize}),
            std::vector<float>(4, 8.0f));
  EXPECT_STREQ(g.headertext, "Quorvex");
  EXPECT_TRUE(isZero(g.headertext + 7, sizeof g.headertext - 7));
  EXPECT_TRUE(isZero(&g.subwins, 16));
#ifndef _WIN32
  EXPECT_EQ((std::vector<uint32_t>{g.background, g.fill, g.axiscolour, g.gridcolour, g.titlecolour,
                                   g.headerback, g.headercolour, g.footerback, g.footercolour}),
            (std::vector<uint32_t>{0xFFFFFF, 0, 0, 0x7F7F7F, 0, 0xC0C0C0, 0, 0x7F7F7F, 0xC0C0C0}));
#endif
  qxGraphFree(&g);
  EXPECT_TRUE(isZero(&g, sizeof g));
  qxGraphFree(&g);
  qxGraphFree(nullptr);
  qxGraphInit(nullptr);
}

TEST(GraphModel, PanesCopyFromTheOneBefore) {
  const auto looks = [](const qxGraphSubwin& p) {
    return Numbers{p.height,    int32_t(p.background),  int32_t(p.gridcolour), p.gridwidth,
                   p.gridstyle, int32_t(p.gridcolour2), p.gridwidth2,          p.gridstyle2};
  };
  Graph graph;
  qxGraphInit(graph);
  graph->background = 0x123456;
  const auto grey = static_cast<int32_t>(graph->gridcolour);
  ASSERT_EQ(qxGraphSubwinAdd(graph, -1), QX_SUCCESS);
  qxGraphSubwin pane = graph.pane(0);
  EXPECT_EQ(looks(pane), (Numbers{100, 0x123456, grey, 1, QX_PEN_DOT, grey, 1, QX_PEN_DOT}));
  EXPECT_TRUE(isZero(pane.title, sizeof pane.title));
  std::strcpy(pane.title, "first");
  int32_t value = 40;
  for (int32_t* field : {&pane.height, &pane.gridwidth, &pane.gridstyle, &pane.gridwidth2,
                         &pane.gridstyle2, &pane.titleshown, &pane.axischart, &pane.axischart2}) {
    *field = value++;
  }
  pane.background += 1;
  pane.gridcolour += 2;
  pane.gridcolour2 += 3;
  ASSERT_EQ(qxGraphSetSubwin(graph, &pane, -1), QX_SUCCESS);
  ASSERT_EQ(qxGraphSubwinAdd(graph, 2), QX_SUCCESS);
  ASSERT_EQ(qxGraphSubwinAdd(graph, 1), QX_SUCCESS);
  EXPECT_EQ(graph->subwincount, 3);
  ASSERT_EQ(qxGraphGetSubwin(graph, &pane, 2), QX_SUCCESS);
  EXPECT_EQ(looks(pane), (Numbers{40, 0x123457, grey + 2, 41, 42, grey + 3, 43, 44}));
  EXPECT_TRUE(isZero(pane.title, sizeof pane.title));
  EXPECT_EQ(pane.titleshown + pane.axischart + pane.axischart2, 0);
}

TEST(GraphModel, ArraysGrowByTheirStep) {
  Graph graph;
  Series series = {1, 2, 3};
  // Capacity after each element: charts and shapes grow by 4, lines by 2.
  for (int32_t i = 0; i < 9; ++i) {
    graph.add(0, QX_CHART_LINE, series, nullptr, 0, 1);
    graph.addLine(0, 0, i);
    graph.addShape(0, QX_SHAPE_SEGMENT, i, 0, i + 1, 1);
    const qxGraphSubwin& pane = graph.pane(0);
    EXPECT_EQ((Numbers{pane.chartcount, pane.chartcap, pane.linecap, pane.shapecap}),
              (Numbers{i + 1, (i / 4 + 1) * 4, (i / 2 + 1) * 2, (i / 4 + 1) * 4}));
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
  qxBars noBars = {}, noCloses = bars.record;
  noCloses.close = {};
  const auto add = [&](int32_t subwin, int32_t chart, const qxArray* s, const qxBars* b,
                       int32_t style) { return addChart(graph, subwin, chart, s, b, style); };
  const int32_t refusals[] = {add(0, 0, nullptr, bars, 3),      add(0, 0, series, nullptr, 5),
                              add(0, 0, &noSeries, &noBars, 5), add(0, 0, &noSeries, &noCloses, 5),
                              add(0, 0, &noSeries, bars, 4),    add(0, 0, series, &noBars, 1),
                              add(0, 0, series, &noBars, 4),    add(-2, 0, series, bars, 5),
                              add(0, -2, series, bars, 5),      add(3, 1, series, bars, 5)};
  for (size_t i = 0; i < std::size(refusals); ++i) {
    EXPECT_EQ(refusals[i], QX_ERR_INVALID_PARM) << "call " << i;
  }
  EXPECT_EQ(addChart(nullptr, 0, 0, series, bars, 5), QX_ERR_INVALID_PARM);
  EXPECT_EQ(add(5899680, 0, series, bars, 5), QX_ERR_MALLOC);
  EXPECT_EQ(graph->subwincount, 0);
  EXPECT_EQ(add(0, 0, series, &noBars, 0), QX_SUCCESS);
  EXPECT_EQ(add(0, -1, &noSeries, bars, 99), QX_SUCCESS) << "an unknown style";
  EXPECT_EQ(add(-1, -1, &noSeries, bars, 3), QX_SUCCESS) << "a pane after the last";
  EXPECT_EQ(graph->subwincount, 2);
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
  qxGraphChart c;
  ASSERT_EQ(qxGraphGetChart(graph, &c, -1, -1), QX_SUCCESS);
  EXPECT_EQ(c.series.data, bars->high.data);
  EXPECT_EQ(c.series.size, 12);
  EXPECT_EQ(c.series.firstvalid, 12);
  EXPECT_EQ(std::memcmp(&c.bars, &bars.record, sizeof(qxBars)), 0);
  EXPECT_EQ(c.minimum, -7.5);
  EXPECT_EQ(c.maximum, 8.5);
  EXPECT_EQ((Numbers{c.style, c.scaleflags, c.minmode, c.maxmode, c.scalechart, int32_t(c.colour),
                     int32_t(c.colour2), int32_t(c.colour3), c.penwidth, c.penstyle, c.selected}),
            (Numbers{6, 3, 1, 2, 4, 10, 11, 12, 13, 14, 1}));

  // An empty series draws the closes; the range in view is kept once it is open.
  graph->lastshown = 5;
  EXPECT_EQ(graph.add(0, QX_CHART_CANDLE, nullptr, bars, 0, 1).series.data, bars->close.data);
  EXPECT_EQ(graph->lastshown, 5);
  graph->firstshown = 5;
  ASSERT_EQ(addChart(graph, 0, 0, &series, bars, 3), QX_SUCCESS);
  EXPECT_EQ(graph->lastshown, 11);
  EXPECT_EQ(graph.pane(0).chartcount, 1);
}

TEST(GraphModel, ShapePointsAreOrderedByX) {
  Graph graph;
  const double cases[][2] = {{1, 2}, {2, 1}, {1, 1}, {NAN, 1}, {1, NAN}};
  for (const auto& x : cases) {
    ASSERT_EQ(qxGraphShapeAdd(graph, 0, -1, 7, 2, x[0], 10, x[1], 20, 1, 2, 3, 4), QX_SUCCESS);
    qxGraphShape s;
    ASSERT_EQ(qxGraphGetShape(graph, &s, 0, -1), QX_SUCCESS);
    const int kept = x[1] > x[0] ? 0 : 1;
    EXPECT_TRUE(qxtest::near(s.x1, x[kept]));
    EXPECT_TRUE(qxtest::near(s.x2, x[1 - kept]));
    EXPECT_EQ(s.y1, kept == 0 ? 10 : 20);
    EXPECT_EQ(s.y2, kept == 0 ? 20 : 10);
    EXPECT_EQ((Numbers{s.chart, s.kind, s.colour, s.penwidth, s.penstyle, s.selected}),
              (Numbers{7, 2, 1, 2, 3, 4}));
  }
}

constexpr int32_t kBadIndexes[] = {-2, 2, INT32_MIN, INT32_MAX};  // of two elements

TEST(GraphModel, BadIndexesChangeNothing) {
  Graph graph;
  EXPECT_EQ(qxGraphSubwinRemove(graph, -1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphChartRemove(graph, -1, -1), QX_ERR_INVALID_PARM);
  EXPECT_EQ(graph->initialised, 0);
  for (const int32_t pane : {0, 1}) {
    ASSERT_EQ(qxGraphLineAdd(graph, -1, -1, 0, 5.5, 1, 2, 3, 4), QX_SUCCESS);
    graph.addLine(pane, 0, 7);
  }
  EXPECT_EQ(qxGraphLineAdd(graph, 7, 1, 0, 5.5, 1, 2, 3, 4), QX_ERR_INVALID_PARM);
  for (const int32_t bad : kBadIndexes) {
    const int32_t statuses[] = {
        qxGraphLineRemove(graph, 0, bad),  qxGraphLineRemove(graph, bad, 0),
        qxGraphShapeRemove(graph, 0, bad), qxGraphSubwinRemove(graph, bad),
        qxGraphSubwinOrder(graph, 0, bad), qxGraphSubwinOrder(graph, bad, 0)};
    for (const int32_t status : statuses) EXPECT_EQ(status, QX_ERR_INVALID_PARM) << bad;
    EXPECT_EQ(qxGraphSubwinOrder(graph, bad, bad), QX_SUCCESS);
  }
  EXPECT_EQ(qxGraphSubwinOrder(nullptr, 0, 0), QX_SUCCESS);
  EXPECT_EQ(graph->subwincount, 2);
  const qxGraphLine& line = graph.pane(1).lines[0];
  EXPECT_EQ(line.price, 5.5);
  EXPECT_EQ((Numbers{line.colour, line.penwidth, line.penstyle, line.selected}),
            (Numbers{1, 2, 3, 4}));
}

// Reads the first of two elements, changes it and stores it over the last.
template <typename Owner, typename Element, typename Field>
void replaceLast(auto get, auto set, Owner* owner, Field Element::*field, int32_t value,
                 auto... pane) {
  Element element;
  ASSERT_EQ(get(owner, &element, pane..., 0), QX_SUCCESS);
  element.*field = static_cast<Field>(value);
  EXPECT_EQ(set(owner, &element, pane..., -1), QX_SUCCESS);
  EXPECT_EQ(set(nullptr, &element, pane..., 0), QX_ERR_INVALID_PARM);
  for (const int32_t bad : kBadIndexes) {
    EXPECT_EQ(set(owner, &element, pane..., bad), QX_ERR_INVALID_PARM);
    EXPECT_EQ(get(owner, &element, pane..., bad), QX_ERR_INVALID_PARM);
    EXPECT_TRUE(isZero(&element, sizeof element));
    EXPECT_EQ(get(owner, &element, pane..., -1), QX_SUCCESS);
    EXPECT_EQ(element.*field, value);
  }
}

TEST(GraphModel, ElementsAreReplacedInGraphsAndInPaneRecords) {
  BarSet bars(workedBars());
  Graph graph;
  for (int32_t i = 0; i < 2; ++i) {
    graph.add(0, QX_CHART_CANDLE, nullptr, bars, 0, 1);
    graph.addLine(0, 0, 1);
    graph.addShape(0, QX_SHAPE_SEGMENT, 1, 10, 2, 20);
  }
  replaceLast(qxGraphGetChart, qxGraphSetChart, &graph.graph, &qxGraphChart::penstyle, 77, -1);
  replaceLast(qxGraphGetLine, qxGraphSetLine, &graph.graph, &qxGraphLine::price, 77, -1);
  replaceLast(qxGraphGetShape, qxGraphSetShape, &graph.graph, &qxGraphShape::y1, 77, -1);
  for (const int32_t bad : kBadIndexes) {
    qxGraphLine line;
    EXPECT_EQ(qxGraphGetLine(graph, &line, bad, 0), QX_ERR_INVALID_PARM);
  }
  qxGraphSubwin pane = graph.pane(0);
  replaceLast(qxGraphSubwinGetChart, qxGraphSubwinSetChart, &pane, &qxGraphChart::penstyle, 78);
  replaceLast(qxGraphSubwinGetLine, qxGraphSubwinSetLine, &pane, &qxGraphLine::price, 78);
  replaceLast(qxGraphSubwinGetShape, qxGraphSubwinSetShape, &pane, &qxGraphShape::y1, 78);
  EXPECT_EQ((Numbers{pane.charts[0].penstyle, pane.charts[1].penstyle}), (Numbers{0, 78}));
  EXPECT_EQ(pane.lines[0].price + pane.shapes[0].y1, 1 + 10);
  EXPECT_EQ(pane.lines[1].price + pane.shapes[1].y1, 78 + 78);
}

// The margins pad the scale that painting stores, by pixels of the unpadded scale.
TEST(GraphModel, MarginsPadTheScalesOfTheProcess) {
  qxtest::TemporaryFolder folder;
  BarSet bars(workedBars());
  const auto padding = [&](const qxArray* series, int32_t style, double highest) {
    Graph graph;
    EXPECT_EQ(addChart(graph, 0, 0, series, bars, style), QX_SUCCESS);
    graph->area = {0, 0, 400, 300};
    EXPECT_EQ(qxGraphPaintSVG(graph, folder.file("chart.svg").c_str()), QX_SUCCESS);
    const qxGraphChart& chart = graph.chart(0, 0);
    const qxRect& pane = graph.pane(0).pane;
    return (chart.maximum - highest) * (pane.bottom - pane.top) / (chart.maximum - chart.minimum);
  };
  EXPECT_EQ(qxGraphSetSubwinMargins(0, 0), 0);
  EXPECT_EQ(padding(&bars->close, QX_CHART_CANDLE, 58), 0.0);
  EXPECT_EQ(padding(&bars->close, QX_CHART_LINE, 57), 0.0);
  EXPECT_EQ(qxGraphSetSubwinMargins(2, 1), 1);
  EXPECT_NEAR(padding(&bars->close, QX_CHART_CANDLE, 58), 2.0, 0.1);
  EXPECT_NEAR(padding(&bars->close, QX_CHART_LINE, 57), 1.0, 0.05);
}

// An element by identity: its own tag and that of the chart it refers to, 0 standing for "the chart
// at index 0, whichever it is". Charts refer to the chart whose scale they share.
struct Item {
  int32_t tag, chart;
  double minimum = 0;
};

template <typename Element>
void eraseAt(std::vector<Element>& elements, size_t index) {
  elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(index));
}

struct ModelPane {
  std::vector<Item> charts, lines, shapes;
  int32_t axis = 0;

  void removeChart(size_t index) {
    const Item gone = charts[index];
    eraseAt(charts, index);
    const auto refers = [&](const Item& i) { return i.chart == gone.tag; };
    auto heir = std::find_if(charts.begin(), charts.end(), refers);
    if (heir == charts.end()) {
      heir = std::find_if(charts.begin(), charts.end(),
                          [&](const Item& i) { return i.minimum == gone.minimum; });
    }
    const int32_t tag = heir == charts.end() ? 0 : heir->tag;
    for (auto* items : {&charts, &lines, &shapes}) {
      if (tag == 0 && items != &charts) std::erase_if(*items, refers);
      for (Item& item : *items) {
        if (refers(item)) item.chart = tag;
      }
    }
    if (axis == gone.tag) axis = tag != 0 || charts.empty() ? tag : charts[0].tag;
  }
};

// A pane as numbers: its axis chart, then the tag and chart index of each chart, line and shape.
using Summary = std::vector<Numbers>;

Summary summary(const ModelPane& pane) {
  const auto indexOf = [&](int32_t tag) {
    size_t index = pane.charts.size();
    while (index > 0 && pane.charts[index - 1].tag != tag) --index;
    return index == 0 ? 0 : static_cast<int32_t>(index) - 1;
  };
  Summary rows = {{indexOf(pane.axis)}};
  for (const auto* items : {&pane.charts, &pane.lines, &pane.shapes}) {
    Numbers& row = rows.emplace_back();
    for (const Item& item : *items) row.insert(row.end(), {item.tag, indexOf(item.chart)});
  }
  return rows;
}

Summary summary(const qxGraphSubwin& pane) {
  Numbers charts, lines, shapes;
  for (int32_t i = 0; i < pane.chartcount; ++i) {
    charts.insert(charts.end(), {pane.charts[i].penwidth, pane.charts[i].scalechart});
  }
  for (int32_t i = 0; i < pane.linecount; ++i) {
    lines.insert(lines.end(), {pane.lines[i].penwidth, pane.lines[i].chart});
  }
  for (int32_t i = 0; i < pane.shapecount; ++i) {
    shapes.insert(shapes.end(), {pane.shapes[i].penwidth, pane.shapes[i].chart});
  }
  return {{pane.axischart}, charts, lines, shapes};
}

// True when the slots of an array after its elements are cleared.
bool isVacant(const auto* elements, int32_t count, int32_t capacity) {
  return isZero(elements + count, sizeof *elements * static_cast<size_t>(capacity - count));
}

TEST(GraphModel, RandomEditsFollowAModelByIdentity) {
  std::mt19937 random(20240607);
  const auto below = [&random](size_t n) { return static_cast<size_t>(random() % n); };
  const auto number = [](size_t index) { return static_cast<int32_t>(index); };
  Series series = {1, 2, 3};
  BarSet bars;
  for (int32_t round = 0; round < 40; ++round) {
    Graph graph;
    std::vector<ModelPane> model;
    int32_t nextId = 1;
    for (int32_t step = 0; step < 300; ++step) {
      const size_t p = below(std::min<size_t>(model.size() + 1, 4));
      const int32_t subwin = number(p);
      if (p == model.size()) model.emplace_back();
      ModelPane& pane = model[p];
      const size_t action = below(12);
      if (action < 5 || pane.charts.empty()) {
        // Few distinct minimums, so that charts find heirs by their scale.
        const double minimum = static_cast<double>(below(4));
        const int32_t place = number(pane.charts.size());
        const size_t scale = below(pane.charts.size() + 1);
        ASSERT_EQ(addChart(graph, subwin, below(2) == 0 ? -1 : place, series, bars, 5,
                           number(scale), minimum, nextId),
                  QX_SUCCESS);
        pane.charts.push_back({nextId, nextId, minimum});
        pane.charts.back().chart = pane.charts[scale].tag;
        if (pane.charts.size() == 1) pane.axis = nextId;
        ++nextId;
      } else if (action < 8) {
        const size_t chart = below(pane.charts.size());
        const int32_t c = number(chart);
        ASSERT_EQ(qxGraphLineAdd(graph, subwin, -1, c, 0, 0, step, 0, 0), QX_SUCCESS);
        ASSERT_EQ(qxGraphShapeAdd(graph, subwin, -1, c, 1, 0, 0, 1, 0, 0, step, 0, 0), QX_SUCCESS);
        graph.pane(subwin).axischart = c;
        pane.axis = pane.charts[chart].tag;
        pane.lines.push_back({step, pane.axis});
        pane.shapes.push_back({step, pane.axis});
      } else if (action < 10) {
        const size_t index = below(pane.charts.size());
        ASSERT_EQ(qxGraphChartRemove(graph, subwin, number(index)), QX_SUCCESS);
        pane.removeChart(index);
      } else if (action == 10 && !pane.lines.empty()) {
        const size_t index = below(pane.lines.size());
        ASSERT_EQ(qxGraphLineRemove(graph, subwin, number(index)), QX_SUCCESS);
        eraseAt(pane.lines, index);
        ASSERT_EQ(qxGraphShapeRemove(graph, subwin, -1), pane.shapes.empty() ? -1 : 0);
        if (!pane.shapes.empty()) pane.shapes.pop_back();
      } else {
        const size_t to = below(model.size());
        ASSERT_EQ(qxGraphSubwinOrder(graph, subwin, number(to)), QX_SUCCESS);
        const ModelPane moved = pane;
        eraseAt(model, p);
        model.insert(model.begin() + number(to), moved);
        if (below(8) == 0) {
          ASSERT_EQ(qxGraphSubwinRemove(graph, -1), QX_SUCCESS);
          model.pop_back();
        }
      }
      ASSERT_EQ(graph->subwincount, number(model.size())) << round << " " << step;
      for (int32_t i = 0; i < graph->subwincount; ++i) {
        const qxGraphSubwin& held = graph.pane(i);
        ASSERT_EQ(summary(held), summary(model[static_cast<size_t>(i)])) << round << " " << step;
        ASSERT_TRUE(isVacant(held.charts, held.chartcount, held.chartcap));
        ASSERT_TRUE(isVacant(held.lines, held.linecount, held.linecap));
      }
    }
  }
}

}  // namespace
