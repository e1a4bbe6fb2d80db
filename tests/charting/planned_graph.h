// A graph with fixed colours, planned over a device whose letters are all 6 pixels wide and whose
// lines are 10 pixels high, and the plan written down as text, one operation a line.
#ifndef QUORVEX_TESTS_CHARTING_PLANNED_GRAPH_H
#define QUORVEX_TESTS_CHARTING_PLANNED_GRAPH_H

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "charting/plan.h"
#include "tests/support/test_support.h"

namespace qxtest {

inline qx::Device fixedDevice() {
  const auto width = [](void*, const qx::Font&, const char*, int32_t length) { return 6 * length; };
  const auto height = [](void*, const qx::Font&) { return 10; };
  return {nullptr, width, height, nullptr, 96, 96};
}

inline std::string text(const qxRect& r) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%d,%d,%d,%d", r.left, r.top, r.right, r.bottom);
  return buffer;
}

inline std::string text(const qx::Pen& pen) {
  if (pen.style == QX_PEN_NULL) return "no pen";
  char buffer[48];
  std::snprintf(buffer, sizeof buffer, "pen %d/%d/%06X", pen.style, pen.width, pen.colour);
  return buffer;
}

inline std::string text(const qx::Brush& brush) {
  if (brush.kind == qx::BrushKind::kNone) return "hollow";
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "fill %06X", brush.colour);
  if (brush.kind == qx::BrushKind::kPattern) {
    std::snprintf(buffer, sizeof buffer, "pattern %04X %06X/%06X", brush.pattern, brush.colour,
                  brush.second);
  }
  return buffer;
}

inline std::string text(const qx::DrawList& list, const qx::DrawOp& op) {
  static const char* const kNames[] = {"fill",    "line",      "rectangle", "ellipse",
                                       "polygon", "text",      "frame",     "clip",
                                       "unclip",  "invert on", "invert off"};
  std::string line = kNames[static_cast<int>(op.kind)];
  switch (op.kind) {
    case qx::DrawKind::kFill:
      return line + " " + text(op.rect) + " " + text(op.brush);
    case qx::DrawKind::kRectangle:
    case qx::DrawKind::kEllipse:
      return line + " " + text(op.rect) + " " + text(op.pen) + " " + text(op.brush);
    case qx::DrawKind::kFrame:
    case qx::DrawKind::kClip:
      return line + " " + text(op.rect);
    case qx::DrawKind::kUnclip:
    case qx::DrawKind::kInvertOn:
    case qx::DrawKind::kInvertOff:
      return line;
    default:
      break;
  }
  for (int32_t i = 0; i < op.pointCount; ++i) {
    const qx::Point& point = list.points[op.firstPoint + i];
    line += " " + std::to_string(point.x) + "," + std::to_string(point.y);
  }
  if (op.kind == qx::DrawKind::kText) {
    return line + " '" + std::string(list.chars + op.firstChar, static_cast<size_t>(op.charCount)) +
           "'";
  }
  if (op.kind == qx::DrawKind::kPolygon) line += " " + text(op.brush);
  return line + " " + text(op.pen);
}

struct PlannedGraph {
  qxGraph graph = {};
  qx::DrawList list;

  // A graph without header, axes and grids; tests switch on what they look at.
  PlannedGraph() {
    qxGraphInit(&graph);
    graph.area = {0, 0, 120, 100};
    graph.background = 0xFFFFFF;
    graph.headershown = graph.datesshown = graph.axisshown = graph.axisshown2 = 0;
    graph.gridwidth = 0;
    graph.axiscolour = 0xA0;
    graph.titlecolour = 0xB0;
    graph.headerback = 0xC0C0C0;
    EXPECT_EQ(qxGraphSubwinAdd(&graph, 0), QX_SUCCESS);
    pane(0).background = 0xEEEEEE;
    pane(0).gridwidth = pane(0).gridwidth2 = 0;
    pane(0).gridcolour = pane(0).gridcolour2 = 0xD0;
  }
  ~PlannedGraph() { qxGraphFree(&graph); }
  PlannedGraph(const PlannedGraph&) = delete;
  PlannedGraph& operator=(const PlannedGraph&) = delete;

  qxGraphSubwin& pane(int32_t index) { return graph.subwins[index]; }
  qxGraphChart& chart(int32_t subwin, int32_t index) { return pane(subwin).charts[index]; }

  // Adds a chart in black, white and red whose scale is kept, and returns its record.
  qxGraphChart& add(int32_t subwin, int32_t style, const qxArray* series, const qxBars* bars,
                    double minimum = 0.0, double maximum = 93.0) {
    const qxArray noSeries = {};
    const qxBars noBars = {};
    EXPECT_EQ(
        qxGraphChartAdd(&graph, subwin, -1, 0, 0, 0, minimum, maximum, 0,
                        series == nullptr ? &noSeries : series, bars == nullptr ? &noBars : bars,
                        style, 0x000000, 0xFFFFFF, 0x0000FF, 1, 0, 0),
        QX_SUCCESS);
    qxGraphChart& record = chart(subwin, pane(subwin).chartcount - 1);
    record.scalechart = pane(subwin).chartcount - 1;
    return record;
  }

  std::vector<std::string> plan() {
    list.opCount = list.pointCount = list.charCount = 0;
    EXPECT_EQ(qx::planGraph(&graph, fixedDevice(), &list), QX_SUCCESS);
    std::vector<std::string> lines;
    for (int64_t i = 0; i < list.opCount; ++i) lines.push_back(text(list, list.ops[i]));
    return lines;
  }

  // The operations between the pane's clip and the end of it.
  std::vector<std::string> planPane() {
    std::vector<std::string> inside;
    bool clipped = false;
    for (const std::string& line : plan()) {
      if (line == "unclip") clipped = false;
      if (clipped) inside.push_back(line);
      if (line.rfind("clip", 0) == 0) clipped = true;
    }
    return inside;
  }

  // The texts whose anchor lies in a rectangle, in the order in which they are drawn.
  std::vector<std::string> textsIn(const qxRect& area) {
    plan();
    std::vector<std::string> texts;
    for (int64_t i = 0; i < list.opCount; ++i) {
      const qx::DrawOp& op = list.ops[i];
      if (op.kind != qx::DrawKind::kText) continue;
      const qx::Point at = list.points[op.firstPoint];
      if (!qx::contains(area, at.x, at.y)) continue;
      texts.emplace_back(list.chars + op.firstChar, static_cast<size_t>(op.charCount));
    }
    return texts;
  }
};

}  // namespace qxtest

#endif  // QUORVEX_TESTS_CHARTING_PLANNED_GRAPH_H
