// A graph with fixed colours, planned over a device whose letters are all 6 pixels wide and whose
// lines are 10 pixels high, and the plan written down as text, one operation a line.
#ifndef QUORVEX_TESTS_CHARTING_PLANNED_GRAPH_H
#define QUORVEX_TESTS_CHARTING_PLANNED_GRAPH_H

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "charting/plan.h"
#include "tests/charting/graph.h"

namespace qxtest {

using Lines = std::vector<std::string>;

inline qx::Device fixedDevice() {
  const auto width = [](void*, const qx::Font&, const char*, int32_t length) { return 6 * length; };
  const auto height = [](void*, const qx::Font&) { return 10; };
  return {nullptr, width, height, nullptr, 96, 96};
}

inline std::string format(const char* pattern, auto... values) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, pattern, values...);
  return buffer;
}

inline std::string text(const qxRect& r) {
  return format("%d,%d,%d,%d", r.left, r.top, r.right, r.bottom);
}

// Style, width and colour, or the colour alone of a solid pen one pixel wide.
inline std::string text(const qx::Pen& pen) {
  if (pen.style == QX_PEN_NULL) return "no pen";
  if (pen.style == QX_PEN_SOLID && pen.width == 1) return format("pen %X", pen.colour);
  return format("pen %d/%d/%X", pen.style, pen.width, pen.colour);
}

inline std::string text(const qx::Brush& brush) {
  if (brush.kind == qx::BrushKind::kNone) return "hollow";
  if (brush.kind != qx::BrushKind::kPattern) return format("fill %X", brush.colour);
  return format("pattern %04X %X/%X", brush.pattern, brush.colour, brush.second);
}

inline std::string text(const qx::DrawList& list, const qx::DrawOp& op) {
  static const struct {
    const char *name, *parts;  // rect, points (o), letters, brush, pen
  } kForms[] = {{"fill", "rb"},     {"line", "op"},    {"rectangle", "rpb"}, {"ellipse", "rpb"},
                {"polygon", "obp"}, {"text", "ol"},    {"frame", "r"},       {"clip", "r"},
                {"unclip", ""},     {"invert on", ""}, {"invert off", ""}};
  const auto& form = kForms[static_cast<int>(op.kind)];
  std::string line = form.name;
  for (const char* part = form.parts; *part != '\0'; ++part) {
    if (*part == 'r') line += " " + text(op.rect);
    if (*part == 'p') line += " " + text(op.pen);
    if (*part == 'b') line += " " + text(op.brush);
    if (*part == 'l') {
      line +=
          " '" + std::string(list.chars + op.firstChar, static_cast<size_t>(op.charCount)) + "'";
    }
    for (int32_t i = 0; *part == 'o' && i < op.pointCount; ++i) {
      const qx::Point& point = list.points[op.firstPoint + i];
      line += format(" %d,%d", point.x, point.y);
    }
  }
  return line;
}

struct PlannedGraph : Graph {
  qx::DrawList list;

  // A graph without header, axes and grids; tests switch on what they look at.
  PlannedGraph() {
    qxGraphInit(&graph);
    graph.area = {0, 0, 120, 100};
    graph.background = 0xFFFFFF;
    graph.headershown = graph.datesshown = graph.axisshown = graph.axisshown2 = 0;
    graph.gridwidth = 0;
    graph.gridcolour = 0xE0;
    graph.axiscolour = 0xA0;
    graph.titlecolour = 0xB0;
    graph.headerback = 0xC0C0C0;
    EXPECT_EQ(qxGraphSubwinAdd(&graph, 0), QX_SUCCESS);
    pane(0).background = 0xEEEEEE;
    pane(0).gridwidth = pane(0).gridwidth2 = 0;
    pane(0).gridcolour = pane(0).gridcolour2 = 0xD0;
  }

  Lines plan() {
    list.opCount = list.pointCount = list.charCount = 0;
    EXPECT_EQ(qx::planGraph(&graph, fixedDevice(), &list), QX_SUCCESS);
    Lines lines;
    for (int64_t i = 0; i < list.opCount; ++i) lines.push_back(text(list, list.ops[i]));
    return lines;
  }

  // The operations between the pane's clip and the end of it.
  Lines planPane() {
    const Lines lines = plan();
    const auto clip = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
      return line.starts_with("clip");
    });
    return Lines(clip + 1, std::find(clip, lines.end(), "unclip"));
  }

  // The texts of the graph, in the order in which they are drawn.
  Lines texts() {
    Lines texts;
    for (const std::string& line : plan()) {
      const size_t quote = line.find('\'');
      if (quote != std::string::npos)
        texts.push_back(line.substr(quote + 1, line.size() - quote - 2));
    }
    return texts;
  }
};

}  // namespace qxtest

#endif  // QUORVEX_TESTS_CHARTING_PLANNED_GRAPH_H
