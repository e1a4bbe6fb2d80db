// The flat list of drawing operations that a planned graph consists of: plain data that the
// painters replay, on a device or into a file. Nothing here knows a device.
#ifndef QUORVEX_CHARTING_DRAW_LIST_H
#define QUORVEX_CHARTING_DRAW_LIST_H

#include <cstdint>

#include "charting/geometry.h"
#include "quorvex.h"

namespace qx {

struct Pen {
  int32_t style;    // QX_PEN_...; any other number draws solid
  int32_t width;    // pixels; below 1 counts as 1
  uint32_t colour;  // 0x00BBGGRR
};

enum class BrushKind : int32_t { kNone, kSolid, kPattern };

struct Brush {
  BrushKind kind;
  uint32_t colour;  // solid, or the set bits of the pattern
  uint32_t second;  // the clear bits of the pattern
  int32_t pattern;  // 4 x 4 bits, rows from the highest nibble down
};

struct Font {
  char face[32];   // zero-terminated
  int32_t height;  // of the em square, pixels
};

// Where a text stands against its anchor: the anchor is the top of its line and this side of it.
enum class TextAlign : int32_t { kLeft, kCentre, kRight };

enum class DrawKind : int32_t {
  kFill,       // rect filled with the brush, no outline
  kPolyline,   // points joined by the pen, both end pixels included
  kRectangle,  // rect filled with the brush and outlined by the pen along its inside
  kEllipse,    // the ellipse that touches rect from inside, filled and outlined
  kPolygon,    // filled with the brush between pixel corners, outlined by the pen
  kText,       // a text at points[0], clipped to rect
  kFrame,      // a sunken edge along the inside of rect, one pixel wide
  kClip,       // drawing from here on is limited to rect
  kUnclip,     // drawing is limited no more
  kInvertOn,   // rectangles from here on invert what they cover
  kInvertOff
};

struct DrawOp {
  DrawKind kind;
  Pen pen;
  Brush brush;
  qxRect rect;
  Font font;
  uint32_t textColour;
  TextAlign align;
  int64_t firstPoint;  // into DrawList::points
  int32_t pointCount;
  int64_t firstChar;  // into DrawList::chars
  int32_t charCount;
};

// A growing list. After a failed allocation `status` is QX_ERR_MALLOC and additions do nothing.
struct DrawList {
  DrawOp* ops = nullptr;
  Point* points = nullptr;
  char* chars = nullptr;
  int64_t opCount = 0, opCapacity = 0;
  int64_t pointCount = 0, pointCapacity = 0;
  int64_t charCount = 0, charCapacity = 0;
  int32_t status = 0;

  DrawList() = default;
  ~DrawList();
  DrawList(const DrawList&) = delete;
  DrawList& operator=(const DrawList&) = delete;
};

inline constexpr Pen kNoPen = {QX_PEN_NULL, 1, 0};
inline constexpr Brush kNoBrush = {BrushKind::kNone, 0, 0, 0};

inline Pen solidPen(uint32_t colour, int32_t width = 1) {
  return {QX_PEN_SOLID, width, colour};
}
inline Brush solidBrush(uint32_t colour) {
  return {BrushKind::kSolid, colour, 0, 0};
}

inline bool isEmpty(const qxRect& rect) {
  return rect.left >= rect.right || rect.top >= rect.bottom;
}
inline bool operator==(const qxRect& a, const qxRect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
qxRect intersection(const qxRect& a, const qxRect& b);

void addFill(DrawList* list, const qxRect& rect, const Brush& brush);
void addLine(DrawList* list, const Pen& pen, Point from, Point to);
void addPolyline(DrawList* list, const Pen& pen, const Point* points, int32_t count);
void addRectangle(DrawList* list, const qxRect& rect, const Pen& pen, const Brush& brush);
void addEllipse(DrawList* list, const qxRect& rect, const Pen& pen, const Brush& brush);
void addPolygon(DrawList* list, const Point* points, int32_t count, const Pen& pen,
                const Brush& brush);
void addText(DrawList* list, const Font& font, uint32_t colour, Point anchor, TextAlign align,
             const qxRect& clip, const char* text);
void addFrame(DrawList* list, const qxRect& rect);
void addClip(DrawList* list, const qxRect& rect);
void addUnclip(DrawList* list);
void addInvert(DrawList* list, bool on);

// Appends one point to the last operation, a polyline.
void appendPoint(DrawList* list, Point point);

}  // namespace qx

#endif  // QUORVEX_CHARTING_DRAW_LIST_H
