// Replays a list of drawing operations on a Windows device, and makes pictures of graphs.
#include "charting/gdi_painter.h"

#include <windows.h>
// After windows.h, on whose types it depends.
#include <olectl.h>

#include <algorithm>
#include <cstring>

#include "charting/device.h"
#include "charting/plan.h"

namespace qx {
namespace {

constexpr int32_t kCachedObjects = 8;

// A graphics object and what it was made from.
template <typename Description>
struct Cached {
  Description description;
  HGDIOBJ object;
};

// The pens, brushes and fonts of one painting. Charts use few, so each is made once; when a cache
// is full the oldest object makes room.
template <typename Description>
struct Cache {
  Cached<Description> items[kCachedObjects];
  int32_t count;
  int32_t oldest;
};

struct GdiPainter {
  HDC device;
  GdiCounts* counts;
  const DrawList* list;
  Cache<Pen> pens;
  Cache<Brush> brushes;
  Cache<Font> fonts;
  HRGN callerClip;  // the clip that the caller had set; null: none
};

HGDIOBJ makeObject(const Pen& pen) {
  const bool known = pen.style >= QX_PEN_SOLID && pen.style <= QX_PEN_INSIDE_FRAME;
  return CreatePen(known ? pen.style : PS_SOLID, std::max(pen.width, 1), pen.colour);
}

HGDIOBJ makeObject(const Brush& brush) {
  if (brush.kind == BrushKind::kSolid) return CreateSolidBrush(brush.colour);
  // Four rows of four pixels; each row begins on a word and shows its highest bits.
  BYTE rows[8] = {};
  for (int32_t row = 0; row < 4; ++row) {
    rows[2 * row] = static_cast<BYTE>((brush.pattern >> (12 - 4 * row) & 0xF) << 4);
  }
  const HBITMAP bits = CreateBitmap(4, 4, 1, 1, rows);
  if (bits == nullptr) return nullptr;
  const HBRUSH pattern = CreatePatternBrush(bits);
  DeleteObject(bits);
  return pattern;
}

HGDIOBJ makeObject(const Font& font) {
  return CreateFontA(-font.height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                     OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                     DEFAULT_PITCH | FF_DONTCARE, font.face);
}

bool sameObject(const Pen& a, const Pen& b) {
  return a.style == b.style && a.width == b.width && a.colour == b.colour;
}
bool sameObject(const Brush& a, const Brush& b) {
  return a.kind == b.kind && a.colour == b.colour && a.second == b.second && a.pattern == b.pattern;
}
bool sameObject(const Font& a, const Font& b) {
  return a.height == b.height && std::strncmp(a.face, b.face, sizeof a.face) == 0;
}

void deleteObject(GdiPainter* painter, HGDIOBJ object) {
  if (object != nullptr && DeleteObject(object)) ++painter->counts->deleted;
}

// The object of a description, made on first use; `standIn` while the device has none to give. An
// object that makes room is deselected first, since a selected one cannot be deleted.
template <typename Description>
HGDIOBJ cachedObject(GdiPainter* painter, Cache<Description>* cache, const Description& description,
                     HGDIOBJ standIn) {
  for (int32_t i = 0; i < cache->count; ++i) {
    if (sameObject(cache->items[i].description, description)) return cache->items[i].object;
  }
  const HGDIOBJ object = makeObject(description);
  if (object == nullptr) return standIn;
  ++painter->counts->created;
  int32_t at = cache->count;
  if (at < kCachedObjects) {
    ++cache->count;
  } else {
    at = cache->oldest;
    cache->oldest = (at + 1) % kCachedObjects;
    SelectObject(painter->device, standIn);
    deleteObject(painter, cache->items[at].object);
  }
  cache->items[at] = {description, object};
  return object;
}

template <typename Description>
void emptyCache(GdiPainter* painter, Cache<Description>* cache) {
  for (int32_t i = 0; i < cache->count; ++i) deleteObject(painter, cache->items[i].object);
  cache->count = 0;
}

void selectPen(GdiPainter* painter, const Pen& pen) {
  const HGDIOBJ none = GetStockObject(NULL_PEN);
  SelectObject(painter->device,
               pen.style == QX_PEN_NULL ? none : cachedObject(painter, &painter->pens, pen, none));
}

HGDIOBJ brushObject(GdiPainter* painter, const Brush& brush) {
  const HGDIOBJ none = GetStockObject(NULL_BRUSH);
  if (brush.kind == BrushKind::kPattern) {
    // The set bits of a monochrome pattern take the background colour, the clear ones the text's.
    SetBkColor(painter->device, brush.colour);
    SetTextColor(painter->device, brush.second);
  }
  return brush.kind == BrushKind::kNone ? none
                                        : cachedObject(painter, &painter->brushes, brush, none);
}

void selectFont(GdiPainter* painter, const Font& font) {
  SelectObject(painter->device,
               cachedObject(painter, &painter->fonts, font, GetStockObject(SYSTEM_FONT)));
}

RECT toRect(const qxRect& rect) {
  return {rect.left, rect.top, rect.right, rect.bottom};
}

// What the planner asks of the device.

int32_t gdiTextWidth(void* context, const Font& font, const char* text, int32_t length) {
  auto* painter = static_cast<GdiPainter*>(context);
  selectFont(painter, font);
  SIZE size = {};
  GetTextExtentPoint32A(painter->device, text, length, &size);
  return size.cx;
}

int32_t gdiLineHeight(void* context, const Font& font) {
  auto* painter = static_cast<GdiPainter*>(context);
  selectFont(painter, font);
  SIZE size = {};
  GetTextExtentPoint32A(painter->device, "0", 1, &size);
  return size.cy;
}

bool gdiVisible(void* context, const qxRect& rect) {
  const RECT area = toRect(rect);
  return RectVisible(static_cast<GdiPainter*>(context)->device, &area) != FALSE;
}

Device deviceOf(GdiPainter* painter) {
  return {painter,
          gdiTextWidth,
          gdiLineHeight,
          gdiVisible,
          std::max(GetDeviceCaps(painter->device, LOGPIXELSX), 1),
          std::max(GetDeviceCaps(painter->device, LOGPIXELSY), 1)};
}

// Replaying.

void paintPolyline(GdiPainter* painter, const DrawOp& op) {
  const Point* points = painter->list->points + op.firstPoint;
  selectPen(painter, op.pen);
  MoveToEx(painter->device, points[0].x, points[0].y, nullptr);
  for (int32_t i = 1; i < op.pointCount; ++i) {
    LineTo(painter->device, points[i].x, points[i].y);
  }
  // A thin line stops short of its end pixel: one step more, straight on where the line is upright.
  const Point last = points[op.pointCount - 1];
  const Point before = points[std::max(op.pointCount - 2, 0)];
  if (op.pen.width > 1 && op.pointCount > 1) return;
  const int32_t down = last.x == before.x && last.y != before.y ? (last.y > before.y ? 1 : -1) : 0;
  const int32_t right = down != 0 ? 0 : last.x < before.x ? -1 : 1;
  LineTo(painter->device, last.x + right, last.y + down);
}

void paintRectangle(GdiPainter* painter, const DrawOp& op) {
  selectPen(painter, op.pen);
  SelectObject(painter->device, brushObject(painter, op.brush));
  Rectangle(painter->device, op.rect.left, op.rect.top, op.rect.right, op.rect.bottom);
}

void paintEllipse(GdiPainter* painter, const DrawOp& op) {
  selectPen(painter, op.pen);
  SelectObject(painter->device, brushObject(painter, op.brush));
  Ellipse(painter->device, op.rect.left, op.rect.top, op.rect.right, op.rect.bottom);
}

void paintPolygon(GdiPainter* painter, const DrawOp& op) {
  static_assert(sizeof(Point) == sizeof(POINT));
  selectPen(painter, op.pen);
  SelectObject(painter->device, brushObject(painter, op.brush));
  POINT corners[64];
  const int32_t count = std::min(op.pointCount, 64);
  std::memcpy(corners, painter->list->points + op.firstPoint,
              static_cast<size_t>(count) * sizeof(POINT));
  Polygon(painter->device, corners, count);
}

void paintText(GdiPainter* painter, const DrawOp& op) {
  static constexpr UINT kAligns[] = {TA_LEFT | TA_TOP, TA_CENTER | TA_TOP, TA_RIGHT | TA_TOP};
  const Point at = painter->list->points[op.firstPoint];
  const RECT clip = toRect(op.rect);
  selectFont(painter, op.font);
  SetTextColor(painter->device, op.textColour);
  SetTextAlign(painter->device, kAligns[static_cast<int32_t>(op.align)]);
  ExtTextOutA(painter->device, at.x, at.y, ETO_CLIPPED, &clip, painter->list->chars + op.firstChar,
              static_cast<UINT>(op.charCount), nullptr);
}

// Limits drawing to a rectangle within the caller's own clip, or to that alone.
void setClip(GdiPainter* painter, const qxRect* rect) {
  SelectClipRgn(painter->device, painter->callerClip);
  if (rect == nullptr) return;
  IntersectClipRect(painter->device, rect->left, rect->top, rect->right, rect->bottom);
}

void paintOp(GdiPainter* painter, const DrawOp& op) {
  RECT rect = toRect(op.rect);
  switch (op.kind) {
    case DrawKind::kFill:
      FillRect(painter->device, &rect, static_cast<HBRUSH>(brushObject(painter, op.brush)));
      break;
    case DrawKind::kPolyline:
      paintPolyline(painter, op);
      break;
    case DrawKind::kRectangle:
      paintRectangle(painter, op);
      break;
    case DrawKind::kEllipse:
      paintEllipse(painter, op);
      break;
    case DrawKind::kPolygon:
      paintPolygon(painter, op);
      break;
    case DrawKind::kText:
      paintText(painter, op);
      break;
    case DrawKind::kFrame:
      DrawEdge(painter->device, &rect, BDR_SUNKENOUTER, BF_RECT);
      break;
    case DrawKind::kClip:
      setClip(painter, &op.rect);
      break;
    case DrawKind::kUnclip:
      setClip(painter, nullptr);
      break;
    case DrawKind::kInvertOn:
      SetROP2(painter->device, R2_XORPEN);
      break;
    case DrawKind::kInvertOff:
      SetROP2(painter->device, R2_COPYPEN);
      break;
  }
}

// Sets the device up; false when it is none.
bool beginPainting(GdiPainter* painter, HDC device, GdiCounts* counts, const DrawList* list) {
  *painter = {};
  painter->device = device;
  painter->counts = counts;
  painter->list = list;
  if (SaveDC(device) == 0) return false;
  SetMapMode(device, MM_TEXT);
  SetBkMode(device, TRANSPARENT);
  SetROP2(device, R2_COPYPEN);
  painter->callerClip = CreateRectRgn(0, 0, 0, 0);
  if (painter->callerClip == nullptr) return true;
  ++counts->created;
  if (GetClipRgn(device, painter->callerClip) != 1) {
    deleteObject(painter, painter->callerClip);
    painter->callerClip = nullptr;
  }
  return true;
}

void replay(GdiPainter* painter) {
  for (int64_t i = 0; i < painter->list->opCount; ++i) paintOp(painter, painter->list->ops[i]);
}

// Restores the device, which deselects every object of this painting, and deletes them.
void endPainting(GdiPainter* painter) {
  RestoreDC(painter->device, -1);
  emptyCache(painter, &painter->pens);
  emptyCache(painter, &painter->brushes);
  emptyCache(painter, &painter->fonts);
  deleteObject(painter, painter->callerClip);
}

bool isAllZero(const qxRect& rect) {
  return rect.left == 0 && rect.top == 0 && rect.right == 0 && rect.bottom == 0;
}

// The whole of a device: a window's client area, or the part of a page that can be printed.
qxRect wholeOf(HDC device) {
  if (const HWND window = WindowFromDC(device)) {
    RECT client = {};
    GetClientRect(window, &client);
    return {client.left, client.top, client.right, client.bottom};
  }
  const int32_t x = 2 * GetDeviceCaps(device, PHYSICALOFFSETX);
  const int32_t y = 2 * GetDeviceCaps(device, PHYSICALOFFSETY);
  return {x, y, GetDeviceCaps(device, HORZRES) - x, GetDeviceCaps(device, VERTRES) - y};
}

// A memory device as the desktop's, or null.
HDC memoryDevice(int32_t width, int32_t height, HBITMAP* bitmap) {
  const HWND desktop = GetDesktopWindow();
  const HDC screen = GetWindowDC(desktop);
  if (screen == nullptr) return nullptr;
  const HDC memory = CreateCompatibleDC(screen);
  *bitmap = memory == nullptr ? nullptr : CreateCompatibleBitmap(screen, width, height);
  ReleaseDC(desktop, screen);
  if (memory != nullptr && *bitmap == nullptr) {
    DeleteDC(memory);
    return nullptr;
  }
  return memory;
}

// The graph painted into a bitmap that its drawing area fills, or null.
HBITMAP paintBitmap(qxGraph* graph) {
  const qxRect& area = graph->area;
  HBITMAP bitmap = nullptr;
  const HDC memory = memoryDevice(area.right - area.left, area.bottom - area.top, &bitmap);
  if (memory == nullptr) return nullptr;
  const HGDIOBJ original = SelectObject(memory, bitmap);
  SetViewportOrgEx(memory, -area.left, -area.top, nullptr);
  const int32_t status = qxGraphPaint(graph, memory);
  SelectObject(memory, original);
  DeleteDC(memory);
  if (status == QX_SUCCESS) return bitmap;
  DeleteObject(bitmap);
  return nullptr;
}

}  // namespace

int32_t paintOnDevice(qxGraph* graph, void* deviceContext, GdiCounts* counts) {
  if (graph->initialised == 0) qxGraphInit(graph);
  DrawList list;
  GdiPainter painter;
  if (!beginPainting(&painter, static_cast<HDC>(deviceContext), counts, &list)) {
    return QX_ERR_INVALID_PARM;
  }
  if (isAllZero(graph->area)) graph->area = wholeOf(painter.device);
  const int32_t status = planGraph(graph, deviceOf(&painter), &list);
  if (status == QX_SUCCESS) replay(&painter);
  endPainting(&painter);
  return status;
}

}  // namespace qx

int32_t qxGraphPaint(qxGraph* graph, void* deviceContext) {
  if (graph == nullptr || deviceContext == nullptr) return QX_ERR_INVALID_PARM;
  qx::GdiCounts counts = {};
  return qx::paintOnDevice(graph, deviceContext, &counts);
}

void* qxGraphPaintPicture(qxGraph* graph) {
  if (graph == nullptr || graph->initialised == 0 || !qx::isPaintable(graph->area)) return nullptr;
  const HBITMAP bitmap = qx::paintBitmap(graph);
  if (bitmap == nullptr) return nullptr;
  constexpr IID kDispatch = {0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
  PICTDESC description = {};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = bitmap;
  void* picture = nullptr;
  // The picture owns the bitmap from here on.
  if (SUCCEEDED(OleCreatePictureIndirect(&description, kDispatch, TRUE, &picture))) return picture;
  DeleteObject(bitmap);
  return nullptr;
}

int32_t qxGraphRefreshHeadFoot(qxGraph* graph, void* deviceContext) {
  if (graph == nullptr || deviceContext == nullptr || graph->initialised == 0) {
    return QX_ERR_INVALID_PARM;
  }
  qx::DrawList list;
  qx::GdiCounts counts = {};
  qx::GdiPainter painter;
  if (!qx::beginPainting(&painter, static_cast<HDC>(deviceContext), &counts, &list)) {
    return QX_ERR_INVALID_PARM;
  }
  const int32_t status = qx::planHeadFoot(*graph, qx::deviceOf(&painter), &list);
  if (status == QX_SUCCESS) qx::replay(&painter);
  qx::endPainting(&painter);
  return status;
}
