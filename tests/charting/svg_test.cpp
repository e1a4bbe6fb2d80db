// SVG pictures: well-formed, escaped, the same as the looked-at references, and the statuses.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "tests/charting/reference_graphs.h"

namespace {

using qxtest::PanesGraph;
using qxtest::StylesGraph;

// The first fault of an XML text without comments and sections, or an empty text.
std::string xmlFault(const std::string& xml) {
  std::vector<std::string> open;
  size_t at = xml.rfind("<?xml", 0) == 0 ? xml.find("?>") + 2 : std::string::npos;
  if (at == std::string::npos) return "no declaration";
  while ((at = xml.find_first_of("<>&", at)) != std::string::npos) {
    if (xml[at] == '>') return "stray '>' at " + std::to_string(at);
    if (xml[at] == '&') {
      const size_t end = xml.find(';', at);
      if (end == std::string::npos || end - at > 8) return "stray '&' at " + std::to_string(at);
      at = end + 1;
      continue;
    }
    const size_t end = xml.find('>', at);
    if (end == std::string::npos) return "an unclosed tag";
    const std::string tag = xml.substr(at + 1, end - at - 1);
    if (tag.find('<') != std::string::npos) return "'<' within <" + tag;
    size_t quotes = 0;
    for (const char c : tag) quotes += c == '"';
    if (quotes % 2 != 0) return "an unclosed attribute in <" + tag;
    const std::string name = tag.substr(0, tag.find_first_of(" /", 1));
    if (tag[0] == '/') {
      if (open.empty() || "/" + open.back() != tag) return "<" + tag + "> closes nothing";
      open.pop_back();
    } else if (tag.back() != '/') {
      open.push_back(name);
    }
    at = end + 1;
  }
  return open.empty() ? "" : "<" + open.back() + "> stays open";
}

std::string paint(qxGraph* graph) {
  qxtest::TemporaryFolder folder;
  const std::string file = folder.file("picture.svg");
  EXPECT_EQ(qxGraphPaintSVG(graph, file.c_str()), QX_SUCCESS);
  return qxtest::readFile(file);
}

void expectReference(qxGraph* graph, const char* name) {
  const std::string picture = paint(graph);
  EXPECT_EQ(xmlFault(picture), "");
  const std::string file = std::string(QX_REFERENCES_DIR) + "/" + name + ".svg";
  if (picture != qxtest::readFile(file)) {
    const std::string actual = std::string(name) + ".actual.svg";
    EXPECT_EQ(qxGraphPaintSVG(graph, actual.c_str()), QX_SUCCESS);
    ADD_FAILURE() << "the picture differs from " << file << "; it is kept as " << actual;
  }
}

TEST(Svg, PicturesLookAsTheirReferences) {
  PanesGraph panes;
  expectReference(&panes.graph, "panes");
  StylesGraph styles;
  expectReference(&styles.graph, "styles");
}

TEST(Svg, TextsAreEscaped) {
  PanesGraph panes;
  const char hostile[] = "<&>\"'\x01\x7F\xE9\x80\x81";
  std::memcpy(panes.graph.headertext, hostile, sizeof hostile);
  std::snprintf(panes.graph.headerface, sizeof panes.graph.headerface, "%s", "A'\"\\<&");
  std::memset(panes.graph.axisface, 'x', sizeof panes.graph.axisface);  // no terminator
  const std::string picture = paint(&panes.graph);
  EXPECT_EQ(xmlFault(picture), "");
  EXPECT_NE(picture.find(">&lt;&amp;&gt;&quot;&#39;  &#233;&#8364;&#65533;</text>"),
            std::string::npos);
  EXPECT_NE(picture.find("font-family=\"'A&quot;&lt;&amp;',Arial"), std::string::npos);
}

TEST(Svg, StatusesAndFiles) {
  PanesGraph panes;
  qxtest::TemporaryFolder folder;
  const std::string file = folder.file("picture.svg");
  EXPECT_EQ(qxGraphPaintSVG(nullptr, file.c_str()), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphPaintSVG(&panes.graph, nullptr), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphPaintSVG(&panes.graph, (folder.path + "/none/picture.svg").c_str()),
            QX_ERR_FILE_OPEN);
  const int32_t most = std::numeric_limits<int32_t>::max();
  for (const qxRect area : {qxRect{0, 0, 0, 0}, qxRect{10, 0, 10, 5}, qxRect{0, 9, 10, 5},
                            qxRect{-most, -most, most, most}}) {
    panes.graph.area = area;
    EXPECT_EQ(qxGraphPaintSVG(&panes.graph, file.c_str()), QX_ERR_INVALID_PARM);
  }
  qxGraph fresh = {};
  EXPECT_EQ(qxGraphPaintSVG(&fresh, file.c_str()), QX_ERR_INVALID_PARM);
  EXPECT_EQ(fresh.initialised, 1);
  EXPECT_FALSE(std::filesystem::exists(file));

  // A graph of nothing is a picture of its strips.
  fresh.area = {-5, -5, 60, 40};
  EXPECT_EQ(xmlFault(paint(&fresh)), "");
  fresh.area = {0, 0, 1, 1};
  EXPECT_EQ(xmlFault(paint(&fresh)), "");
  if (std::filesystem::exists("/dev/full")) {
    EXPECT_EQ(qxGraphPaintSVG(&fresh, "/dev/full"), QX_ERR_FILE_WRITE);
  }
  qxGraphFree(&fresh);
}

TEST(Svg, AnAreaAnywherePaintsTheSamePicture) {
  PanesGraph panes;
  paint(&panes.graph);
  const qxRect bars = panes.graph.bararea;
  panes.graph.area = {-1000, 500, -700, 740};
  EXPECT_EQ(xmlFault(paint(&panes.graph)), "");
  EXPECT_EQ(panes.graph.bararea.left, bars.left - 1000);
  EXPECT_EQ(panes.graph.bararea.bottom, bars.bottom + 500);
}

TEST(Svg, PaintingTwiceIsTheSame) {
  // Scales are stored back; what was found once must not drift.
  PanesGraph panes;
  const std::string first = paint(&panes.graph);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(paint(&panes.graph), first);
}

TEST(Svg, PaintedChartsAreHitWhereTheyAre) {
  PanesGraph panes;
  paint(&panes.graph);
  int32_t x, y;
  ASSERT_EQ(qxGraphGetXYpos(&panes.graph, 0, 0, 20, panes.bars->high.data[20], &x, &y), 0);
  qxGraphInfo info;
  EXPECT_EQ(qxGraphGetXYinfo(&panes.graph, nullptr, x, y, &info), 0);
  EXPECT_EQ(info.kind, QX_HIT_CHART);
  EXPECT_EQ(info.subwin, 0);
  EXPECT_EQ(static_cast<int32_t>(info.bar), 20);
  EXPECT_EQ(info.x, x);
}

#ifndef _WIN32
TEST(Svg, WithoutDevicesNothingElsePaints) {
  PanesGraph panes;
  int device = 0;
  EXPECT_EQ(qxGraphPaint(&panes.graph, &device), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphRefreshHeadFoot(&panes.graph, &device), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphPaintPicture(&panes.graph), nullptr);
}
#endif

}  // namespace
