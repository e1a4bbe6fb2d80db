// SVG pictures: well-formed, escaped, the same as the looked-at references, and the statuses.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/charting/reference_graphs.h"

namespace {

using qxtest::PanesGraph;
using qxtest::StylesGraph;

// The first fault of an XML text without comments and sections, or an empty text.
std::string xmlFault(const std::string& xml) {
  if (xml.rfind("<?xml", 0) != 0) return "no declaration";
  std::vector<std::string> open;
  for (size_t at = xml.find("?>") + 2; (at = xml.find_first_of("<>&", at)) != std::string::npos;) {
    const size_t end = xml.find(xml[at] == '&' ? ';' : '>', at);
    const std::string piece = xml.substr(at + 1, end - at - 1);
    const bool entity = xml[at] == '&' && piece.size() < 8;
    const bool tag = xml[at] == '<' && piece.find('<') == std::string::npos &&
                     std::count(piece.begin(), piece.end(), '"') % 2 == 0;
    if (end == std::string::npos || !(entity || tag)) return "stray " + xml.substr(at, 40);
    if (tag && piece[0] == '/') {
      if (open.empty() || "/" + open.back() != piece) return "<" + piece + "> closes nothing";
      open.pop_back();
    } else if (tag && piece.back() != '/') {
      open.push_back(piece.substr(0, piece.find(' ')));
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
  expectReference(panes, "panes");
  StylesGraph styles;
  expectReference(styles, "styles");
}

TEST(Svg, TextsAreEscaped) {
  PanesGraph panes;
  const char hostile[] = "<&>\"'\x01\x7F\xE9\x80\x81";
  std::memcpy(panes->headertext, hostile, sizeof hostile);
  std::snprintf(panes->headerface, sizeof panes->headerface, "%s", "A'\"\\<&");
  std::memset(panes->axisface, 'x', sizeof panes->axisface);  // no terminator
  const std::string picture = paint(panes);
  EXPECT_EQ(xmlFault(picture), "");
  EXPECT_NE(picture.find(">&lt;&amp;&gt;&quot;&#39;  &#233;&#8364;&#65533;</text>"),
            std::string::npos);
  EXPECT_NE(picture.find("font-family=\"'A&quot;&lt;&amp;',Arial"), std::string::npos);
}

TEST(Svg, BadInputsWriteNoFile) {
  PanesGraph panes;
  qxtest::TemporaryFolder folder;
  const std::string file = folder.file("picture.svg");
  EXPECT_EQ(qxGraphPaintSVG(nullptr, file.c_str()), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphPaintSVG(panes, nullptr), QX_ERR_INVALID_PARM);
  constexpr int32_t kMost = INT32_MAX;
  for (const qxRect area : {qxRect{0, 0, 0, 0}, qxRect{10, 0, 10, 5}, qxRect{0, 9, 10, 5},
                            qxRect{-kMost, -kMost, kMost, kMost}}) {
    panes->area = area;
    EXPECT_EQ(qxGraphPaintSVG(panes, file.c_str()), QX_ERR_INVALID_PARM);
  }
  qxtest::Graph fresh;
  EXPECT_EQ(qxGraphPaintSVG(fresh, file.c_str()), QX_ERR_INVALID_PARM);
  EXPECT_EQ(fresh->initialised, 1);
  EXPECT_FALSE(std::filesystem::exists(file));

  // A graph of nothing is a picture of its strips.
  for (const qxRect area : {qxRect{-5, -5, 60, 40}, qxRect{0, 0, 1, 1}}) {
    fresh->area = area;
    EXPECT_EQ(xmlFault(paint(fresh)), "");
  }
}

TEST(Svg, TheViewIsTheArea) {
  PanesGraph panes;
  paint(panes);
  const qxRect bars = panes->bararea;
  panes->area = {-1000, 500, -700, 740};
  EXPECT_NE(paint(panes).find("viewBox=\"-1000 500 300 240\""), std::string::npos);
  EXPECT_EQ(panes->bararea.left, bars.left - 1000);
  EXPECT_EQ(panes->bararea.bottom, bars.bottom + 500);
}

TEST(Svg, PaintingTwiceIsTheSame) {
  // Scales are stored back; what was found once must not drift.
  PanesGraph panes;
  const std::string first = paint(panes);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(paint(panes), first);
}

#ifndef _WIN32
TEST(Svg, WithoutDevicesNothingElsePaints) {
  PanesGraph panes;
  int device = 0;
  EXPECT_EQ(qxGraphPaint(panes, &device), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphRefreshHeadFoot(panes, &device), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxGraphPaintPicture(panes), nullptr);
}
#endif

}  // namespace
