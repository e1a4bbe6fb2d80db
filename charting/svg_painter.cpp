// Replays a list of drawing operations into an SVG file. Pixel (x, y) of a device is the unit
// square at (x, y), so strokes run through the middle of their pixels, half a unit in.
#include <algorithm>
#include <cinttypes>
#include <cstdio>

#include "charting/device.h"
#include "charting/plan.h"
#include "platform/platform.h"

namespace qx {
namespace {

constexpr uint32_t kFrameDark = 0x808080;
constexpr uint32_t kFrameLight = 0xFFFFFF;

struct SvgWriter {
  std::FILE* file;
  const DrawList* list;
  qxRect area;
  qxRect clip;        // the clip in force; the whole area when none was set
  bool grouped;       // a clip group is open
  bool inverting;     // rectangles invert what they cover
  int32_t clipCount;  // clip paths defined so far
  int32_t patternCount;
};

void writeColour(std::FILE* file, uint32_t colour) {
  std::fprintf(file, "#%02x%02x%02x", colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
}

// Half units, printed without the C locale's decimal point.
void writeHalves(std::FILE* file, int64_t halves) {
  const int64_t magnitude = halves < 0 ? -halves : halves;
  std::fprintf(file, "%s%" PRId64 "%s", halves < 0 ? "-" : "", magnitude / 2,
               magnitude % 2 != 0 ? ".5" : "");
}

void writeAttribute(std::FILE* file, const char* name, int64_t halves) {
  std::fprintf(file, " %s=\"", name);
  writeHalves(file, halves);
  std::fputc('"', file);
}

// x, y, width and height of a rectangle whose sides are shifted by the given halves inwards.
void writeBox(std::FILE* file, const qxRect& rect, int64_t inset) {
  writeAttribute(file, "x", int64_t{2} * rect.left + inset);
  writeAttribute(file, "y", int64_t{2} * rect.top + inset);
  writeAttribute(file, "width", 2 * (int64_t{rect.right} - rect.left - inset));
  writeAttribute(file, "height", 2 * (int64_t{rect.bottom} - rect.top - inset));
}

int32_t penWidth(const Pen& pen) {
  return std::max(pen.width, 1);
}

void writeStroke(std::FILE* file, const Pen& pen) {
  // Dash lengths of the device's own one-pixel pens; wider pens are solid there.
  static constexpr const char* kDashes[] = {"", "18 6", "3 3", "9 6 3 6", "9 3 3 3 3 3"};
  std::fputs(" stroke=\"", file);
  writeColour(file, pen.colour);
  std::fputc('"', file);
  if (penWidth(pen) > 1) std::fprintf(file, " stroke-width=\"%d\"", penWidth(pen));
  if (pen.style >= QX_PEN_DASH && pen.style <= QX_PEN_DASH_DOT_DOT && penWidth(pen) == 1) {
    std::fprintf(file, " stroke-dasharray=\"%s\"", kDashes[pen.style]);
  } else {
    std::fputs(" stroke-linecap=\"square\" stroke-linejoin=\"round\"", file);
  }
}

// Defines the pattern of a brush ahead of its use and returns its number.
int32_t definePattern(SvgWriter* svg, const Brush& brush) {
  const int32_t number = ++svg->patternCount;
  std::fprintf(svg->file,
               "<defs><pattern id=\"p%d\" width=\"4\" height=\"4\" patternUnits=\"userSpaceOnUse\">"
               "<path fill=\"",
               number);
  writeColour(svg->file, brush.second);
  std::fputs("\" d=\"M0 0h4v4h-4z\"/><path fill=\"", svg->file);
  writeColour(svg->file, brush.colour);
  std::fputs("\" d=\"", svg->file);
  for (int32_t bit = 0; bit < 16; ++bit) {
    if ((brush.pattern & (0x8000 >> bit)) == 0) continue;
    std::fprintf(svg->file, "M%d %dh1v1h-1z", bit % 4, bit / 4);
  }
  std::fputs("\"/></pattern></defs>\n", svg->file);
  return number;
}

void writeFillAttribute(SvgWriter* svg, const Brush& brush, int32_t pattern) {
  switch (brush.kind) {
    case BrushKind::kNone:
      std::fputs(" fill=\"none\"", svg->file);
      break;
    case BrushKind::kSolid:
      std::fputs(" fill=\"", svg->file);
      writeColour(svg->file, brush.colour);
      std::fputc('"', svg->file);
      break;
    case BrushKind::kPattern:
      std::fprintf(svg->file, " fill=\"url(#p%d)\"", pattern);
      break;
  }
}

int32_t patternOf(SvgWriter* svg, const Brush& brush) {
  return brush.kind == BrushKind::kPattern ? definePattern(svg, brush) : 0;
}

void closeClip(SvgWriter* svg) {
  if (svg->grouped) std::fputs("</g>\n", svg->file);
  svg->grouped = false;
}

// Opens a group limited to a rectangle.
void openGroup(SvgWriter* svg, const qxRect& rect) {
  const int32_t number = ++svg->clipCount;
  std::fprintf(svg->file, "<clipPath id=\"c%d\"><rect", number);
  const qxRect held = isEmpty(rect) ? qxRect{rect.left, rect.top, rect.left, rect.top} : rect;
  writeBox(svg->file, held, 0);
  std::fprintf(svg->file, "/></clipPath>\n<g clip-path=\"url(#c%d)\">\n", number);
}

void openClip(SvgWriter* svg, const qxRect& rect) {
  openGroup(svg, rect);
  svg->grouped = true;
}

void paintFill(SvgWriter* svg, const DrawOp& op) {
  const int32_t pattern = patternOf(svg, op.brush);
  std::fputs("<rect", svg->file);
  writeBox(svg->file, op.rect, 0);
  writeFillAttribute(svg, op.brush, pattern);
  std::fputs("/>\n", svg->file);
}

// A rectangle that inverts what lies under it. Blending does not reach out of a clip group, so the
// group is closed and the clip applied to the rectangle itself.
void paintInverted(SvgWriter* svg, const DrawOp& op) {
  const qxRect seen = intersection(op.rect, svg->clip);
  if (isEmpty(seen)) return;
  std::fputs("<rect", svg->file);
  writeBox(svg->file, seen, 0);
  std::fputs(" fill=\"#ffffff\" style=\"mix-blend-mode:difference\"/>\n", svg->file);
}

void paintRectangle(SvgWriter* svg, const DrawOp& op) {
  if (svg->inverting) return paintInverted(svg, op);
  const bool outlined = op.pen.style != QX_PEN_NULL;
  const qxRect& rect = op.rect;
  const int32_t width = penWidth(op.pen);
  // Too thin for an inside: nothing but the outline's colour.
  if (outlined && (int64_t{rect.right} - rect.left <= int64_t{2} * width ||
                   int64_t{rect.bottom} - rect.top <= int64_t{2} * width)) {
    DrawOp solid = op;
    solid.brush = solidBrush(op.pen.colour);
    return paintFill(svg, solid);
  }
  if (!outlined) return paintFill(svg, op);
  const int32_t pattern = patternOf(svg, op.brush);
  std::fputs("<rect", svg->file);
  writeBox(svg->file, rect, width);
  writeFillAttribute(svg, op.brush, pattern);
  Pen pen = op.pen;
  if (pen.style == QX_PEN_INSIDE_FRAME) pen.style = QX_PEN_SOLID;
  writeStroke(svg->file, pen);
  std::fputs("/>\n", svg->file);
}

void paintEllipse(SvgWriter* svg, const DrawOp& op) {
  const int32_t pattern = patternOf(svg, op.brush);
  const qxRect& rect = op.rect;
  std::fputs("<ellipse shape-rendering=\"auto\"", svg->file);
  writeAttribute(svg->file, "cx", int64_t{rect.left} + rect.right);
  writeAttribute(svg->file, "cy", int64_t{rect.top} + rect.bottom);
  writeAttribute(svg->file, "rx", std::max<int64_t>(int64_t{rect.right} - rect.left - 1, 1));
  writeAttribute(svg->file, "ry", std::max<int64_t>(int64_t{rect.bottom} - rect.top - 1, 1));
  writeFillAttribute(svg, op.brush, pattern);
  if (op.pen.style != QX_PEN_NULL) writeStroke(svg->file, op.pen);
  std::fputs("/>\n", svg->file);
}

bool samePen(const Pen& a, const Pen& b) {
  return a.style == b.style && a.width == b.width && a.colour == b.colour;
}

// True when every step runs along a row or a column of pixels.
bool isUpright(const DrawList& list, const DrawOp& op) {
  const Point* points = list.points + op.firstPoint;
  for (int32_t i = 1; i < op.pointCount; ++i) {
    if (points[i].x != points[i - 1].x && points[i].y != points[i - 1].y) return false;
  }
  return true;
}

void writePath(SvgWriter* svg, const DrawOp& op, bool corners) {
  std::FILE* file = svg->file;
  const Point* points = svg->list->points + op.firstPoint;
  const int64_t half = corners ? 0 : 1;
  for (int32_t i = 0; i < op.pointCount; ++i) {
    const Point& point = points[i];
    const bool sameRow = i > 0 && point.y == points[i - 1].y;
    const bool sameColumn = i > 0 && point.x == points[i - 1].x;
    if (sameColumn && !sameRow) {
      std::fputc('V', file);
      writeHalves(file, int64_t{2} * point.y + half);
    } else {
      std::fputc(i == 0 ? 'M' : sameRow ? 'H' : 'L', file);
      writeHalves(file, int64_t{2} * point.x + half);
      if (sameRow) continue;
      std::fputc(' ', file);
      writeHalves(file, int64_t{2} * point.y + half);
    }
  }
  // A single pixel: a stroke of no length, which a square cap makes visible.
  if (op.pointCount == 1) std::fputs("h0", file);
}

// Polylines of one pen that follow one another become one path. Returns the last operation used.
int64_t paintPolylines(SvgWriter* svg, int64_t at) {
  const DrawOp& first = svg->list->ops[at];
  const bool upright = isUpright(*svg->list, first);
  std::fputs("<path fill=\"none\"", svg->file);
  if (!upright) std::fputs(" shape-rendering=\"auto\"", svg->file);
  writeStroke(svg->file, first.pen);
  std::fputs(" d=\"", svg->file);
  for (;; ++at) {
    writePath(svg, svg->list->ops[at], false);
    if (at + 1 >= svg->list->opCount) break;
    const DrawOp& next = svg->list->ops[at + 1];
    if (next.kind != DrawKind::kPolyline || !samePen(next.pen, first.pen)) break;
    if (isUpright(*svg->list, next) != upright) break;
  }
  std::fputs("\"/>\n", svg->file);
  return at;
}

void paintPolygon(SvgWriter* svg, const DrawOp& op) {
  const int32_t pattern = patternOf(svg, op.brush);
  std::fputs("<path", svg->file);
  writeFillAttribute(svg, op.brush, pattern);
  const bool outlined = op.pen.style != QX_PEN_NULL;
  if (outlined) writeStroke(svg->file, op.pen);
  std::fputs(" d=\"", svg->file);
  writePath(svg, op, !outlined);
  std::fputs("z\"/>\n", svg->file);
}

// The Unicode code points of the characters 0x80 to 0x9F of code page 1252; 0xFFFD where unused.
constexpr uint16_t kUnicode[] = {0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD,
                                 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

void writeCharacter(std::FILE* file, unsigned char character) {
  switch (character) {
    case '&':
      std::fputs("&amp;", file);
      return;
    case '<':
      std::fputs("&lt;", file);
      return;
    case '>':
      std::fputs("&gt;", file);
      return;
    case '"':
      std::fputs("&quot;", file);
      return;
    case '\'':
      std::fputs("&#39;", file);
      return;
    default:
      break;
  }
  if (character < 0x20 || character == 0x7F) {
    std::fputc(' ', file);  // control characters are not allowed in XML
  } else if (character < 0x80) {
    std::fputc(character, file);
  } else {
    std::fprintf(file, "&#%d;", character < 0xA0 ? kUnicode[character - 0x80] : character);
  }
}

void writeText(std::FILE* file, const char* text, int32_t length) {
  for (int32_t i = 0; i < length; ++i) writeCharacter(file, static_cast<unsigned char>(text[i]));
}

int32_t faceLength(const Font& font) {
  const char* end = std::find(font.face, font.face + sizeof font.face, '\0');
  return static_cast<int32_t>(end - font.face);
}

void paintText(SvgWriter* svg, const DrawOp& op) {
  static constexpr const char* kAnchors[] = {"", " text-anchor=\"middle\"", " text-anchor=\"end\""};
  const Device metrics = builtInDevice();
  const char* text = svg->list->chars + op.firstChar;
  const Point at = svg->list->points[op.firstPoint];
  const int64_t width = metrics.textWidth(nullptr, op.font, text, op.charCount);
  const auto align = static_cast<int64_t>(op.align);
  const int64_t left = at.x - width * align / 2;
  const bool clipped = left < op.rect.left || left + width > op.rect.right || at.y < op.rect.top ||
                       int64_t{at.y} + metrics.lineHeight(nullptr, op.font) > op.rect.bottom;
  const qxRect seen = intersection(op.rect, svg->clip);
  if (isEmpty(seen)) return;
  if (clipped) openGroup(svg, seen);
  std::fprintf(svg->file, "<text x=\"%d\" y=\"%" PRId64 "\"%s font-family=\"", at.x,
               int64_t{at.y} + builtInAscent(op.font), kAnchors[align]);
  if (op.font.face[0] != '\0') {
    std::fputc('\'', svg->file);
    // A quote or backslash would end or bend the name in the style language.
    for (int32_t i = 0; i < faceLength(op.font); ++i) {
      const char c = op.font.face[i];
      if (c != '\'' && c != '\\') writeText(svg->file, &c, 1);
    }
    std::fputs("',", svg->file);
  }
  std::fprintf(svg->file, "Arial,'Liberation Sans',Helvetica,sans-serif\" font-size=\"%d\" fill=\"",
               op.font.height);
  writeColour(svg->file, op.textColour);
  std::fputs("\">", svg->file);
  writeText(svg->file, text, op.charCount);
  std::fputs(clipped ? "</text></g>\n" : "</text>\n", svg->file);
}

void paintFrame(SvgWriter* svg, const DrawOp& op) {
  const qxRect& r = op.rect;
  const int64_t left = int64_t{2} * r.left + 1, top = int64_t{2} * r.top + 1;
  const int64_t right = int64_t{2} * r.right - 1, bottom = int64_t{2} * r.bottom - 1;
  const struct {
    uint32_t colour;
    int64_t x1, y1, x2, y2, x3, y3;
  } sides[] = {{kFrameLight, right, top, right, bottom, left, bottom},
               {kFrameDark, left, bottom, left, top, right, top}};
  for (const auto& side : sides) {
    std::fputs("<path fill=\"none\" stroke-linecap=\"square\" stroke=\"", svg->file);
    writeColour(svg->file, side.colour);
    std::fputs("\" d=\"M", svg->file);
    const int64_t numbers[] = {side.x1, side.y1, side.x2, side.y2, side.x3, side.y3};
    for (int i = 0; i < 6; ++i) {
      if (i > 0) std::fputc(i == 2 || i == 4 ? 'L' : ' ', svg->file);
      writeHalves(svg->file, numbers[i]);
    }
    std::fputs("\"/>\n", svg->file);
  }
}

// Paints the operation at `at`, and those that join it; returns the last one painted.
int64_t paintOp(SvgWriter* svg, int64_t at) {
  const DrawOp& op = svg->list->ops[at];
  switch (op.kind) {
    case DrawKind::kFill:
      paintFill(svg, op);
      break;
    case DrawKind::kPolyline:
      return paintPolylines(svg, at);
    case DrawKind::kRectangle:
      paintRectangle(svg, op);
      break;
    case DrawKind::kEllipse:
      paintEllipse(svg, op);
      break;
    case DrawKind::kPolygon:
      paintPolygon(svg, op);
      break;
    case DrawKind::kText:
      paintText(svg, op);
      break;
    case DrawKind::kFrame:
      paintFrame(svg, op);
      break;
    case DrawKind::kClip:
      closeClip(svg);
      svg->clip = op.rect;
      openClip(svg, op.rect);
      break;
    case DrawKind::kUnclip:
      closeClip(svg);
      svg->clip = svg->area;
      break;
    case DrawKind::kInvertOn:
      closeClip(svg);
      svg->inverting = true;
      break;
    case DrawKind::kInvertOff:
      svg->inverting = false;
      if (!(svg->clip == svg->area)) openClip(svg, svg->clip);
      break;
  }
  return at;
}

// Writes the list as one document whose picture is `area`. Lost output shows in ferror(file).
void writeSvg(const DrawList& list, const qxRect& area, std::FILE* file) {
  const int64_t width = int64_t{area.right} - area.left;
  const int64_t height = int64_t{area.bottom} - area.top;
  std::fprintf(file,
               "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%" PRId64 "\" height=\"%" PRId64
               "\" viewBox=\"%d %d %" PRId64 " %" PRId64 "\" shape-rendering=\"crispEdges\">\n",
               width, height, area.left, area.top, width, height);
  SvgWriter svg = {file, &list, area, area, false, false, 0, 0};
  for (int64_t i = 0; i < list.opCount; ++i) i = paintOp(&svg, i);
  closeClip(&svg);
  std::fputs("</svg>\n", file);
}

}  // namespace
}  // namespace qx

int32_t qxGraphPaintSVG(qxGraph* graph, const char* fileName) {
  if (graph == nullptr || fileName == nullptr) return QX_ERR_INVALID_PARM;
  if (graph->initialised == 0) qxGraphInit(graph);
  qx::DrawList list;
  const int32_t status = qx::planGraph(graph, qx::builtInDevice(), &list);
  if (status != QX_SUCCESS) return status;
  std::FILE* file = qx::openFile(fileName, "wt");
  if (file == nullptr) return QX_ERR_FILE_OPEN;
  qx::writeSvg(list, graph->area, file);
  const bool failed = std::ferror(file) != 0;
  return std::fclose(file) != 0 || failed ? QX_ERR_FILE_WRITE : QX_SUCCESS;
}
