// Building the list of drawing operations.
#include "charting/draw_list.h"

#include <algorithm>
#include <cstring>

#include "core/memory.h"
#include "quorvex.h"

namespace qx {
namespace {

constexpr int64_t kGrowth = 256;  // least number of elements by which a block grows

// Room for `wanted` more elements, growing by half; false when there is no memory.
template <typename T>
bool reserve(DrawList* list, T** block, int64_t count, int64_t* capacity, int64_t wanted) {
  if (list->status != QX_SUCCESS) return false;
  if (count + wanted <= *capacity) return true;
  const int64_t grown = std::max(count + wanted, *capacity + std::max(kGrowth, *capacity / 2));
  void* larger = reallocate(*block, static_cast<uint64_t>(grown), sizeof(T));
  if (larger == nullptr) {
    list->status = QX_ERR_MALLOC;
    return false;
  }
  *block = static_cast<T*>(larger);
  *capacity = grown;
  return true;
}

// A new operation of the given kind with everything else zero; null when there is no memory.
DrawOp* addOp(DrawList* list, DrawKind kind) {
  if (!reserve(list, &list->ops, list->opCount, &list->opCapacity, 1)) return nullptr;
  DrawOp* op = &list->ops[list->opCount++];
  *op = {};
  op->kind = kind;
  op->pen = kNoPen;
  op->firstPoint = list->pointCount;
  op->firstChar = list->charCount;
  return op;
}

// The points of the operation just added; without memory for them the operation goes too.
void addPoints(DrawList* list, DrawOp* op, const Point* points, int32_t count) {
  if (!reserve(list, &list->points, list->pointCount, &list->pointCapacity, count)) {
    --list->opCount;
    return;
  }
  std::copy(points, points + count, list->points + list->pointCount);
  list->pointCount += count;
  op->pointCount = count;
}

void addRectOp(DrawList* list, DrawKind kind, const qxRect& rect, const Pen& pen,
               const Brush& brush) {
  DrawOp* op = addOp(list, kind);
  if (op == nullptr) return;
  op->rect = rect;
  op->pen = pen;
  op->brush = brush;
}

}  // namespace

DrawList::~DrawList() {
  release(ops);
  release(points);
  release(chars);
}

qxRect intersection(const qxRect& a, const qxRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

void addFill(DrawList* list, const qxRect& rect, const Brush& brush) {
  if (!isEmpty(rect)) addRectOp(list, DrawKind::kFill, rect, kNoPen, brush);
}

void addLine(DrawList* list, const Pen& pen, Point from, Point to) {
  const Point ends[] = {from, to};
  addPolyline(list, pen, ends, 2);
}

void addPolyline(DrawList* list, const Pen& pen, const Point* points, int32_t count) {
  if (count < 1 || pen.style == QX_PEN_NULL) return;
  DrawOp* op = addOp(list, DrawKind::kPolyline);
  if (op == nullptr) return;
  op->pen = pen;
  addPoints(list, op, points, count);
}

void appendPoint(DrawList* list, Point point) {
  if (!reserve(list, &list->points, list->pointCount, &list->pointCapacity, 1)) return;
  list->points[list->pointCount++] = point;
  ++list->ops[list->opCount - 1].pointCount;
}

void addRectangle(DrawList* list, const qxRect& rect, const Pen& pen, const Brush& brush) {
  if (!isEmpty(rect)) addRectOp(list, DrawKind::kRectangle, rect, pen, brush);
}

void addEllipse(DrawList* list, const qxRect& rect, const Pen& pen, const Brush& brush) {
  if (!isEmpty(rect)) addRectOp(list, DrawKind::kEllipse, rect, pen, brush);
}

void addPolygon(DrawList* list, const Point* points, int32_t count, const Pen& pen,
                const Brush& brush) {
  if (count < 3) return;
  DrawOp* op = addOp(list, DrawKind::kPolygon);
  if (op == nullptr) return;
  op->pen = pen;
  op->brush = brush;
  addPoints(list, op, points, count);
}

void addText(DrawList* list, const Font& font, uint32_t colour, Point anchor, TextAlign align,
             const qxRect& clip, const char* text) {
  const auto length = static_cast<int32_t>(std::strlen(text));
  if (length == 0 || isEmpty(clip)) return;
  DrawOp* op = addOp(list, DrawKind::kText);
  if (op == nullptr) return;
  op->font = font;
  op->textColour = colour;
  op->align = align;
  op->rect = clip;
  addPoints(list, op, &anchor, 1);
  if (list->status != QX_SUCCESS) return;
  if (!reserve(list, &list->chars, list->charCount, &list->charCapacity, length)) {
    --list->opCount;
    return;
  }
  std::memcpy(list->chars + list->charCount, text, static_cast<size_t>(length));
  list->charCount += length;
  op->charCount = length;
}

void addFrame(DrawList* list, const qxRect& rect) {
  if (!isEmpty(rect)) addRectOp(list, DrawKind::kFrame, rect, kNoPen, kNoBrush);
}

void addClip(DrawList* list, const qxRect& rect) {
  addRectOp(list, DrawKind::kClip, rect, kNoPen, kNoBrush);
}

void addUnclip(DrawList* list) {
  addOp(list, DrawKind::kUnclip);
}

void addInvert(DrawList* list, bool on) {
  addOp(list, on ? DrawKind::kInvertOn : DrawKind::kInvertOff);
}

}  // namespace qx
