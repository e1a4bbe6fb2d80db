// Cutting of lines (Liang and Barsky) and polygons (Sutherland and Hodgman) in doubles.
#include "charting/clipping.h"

#include <algorithm>
#include <cmath>

#include "core/numeric.h"

namespace qx {
namespace {

constexpr int32_t kGuard = 4096;

struct Exact {
  double x, y;
};

Point rounded(const Exact& point) {
  return {truncateToInt32(std::floor(point.x + 0.5)), truncateToInt32(std::floor(point.y + 0.5))};
}

// Narrows the part of a line that lies on the inner side of one edge. `along` is how fast the line
// leaves the inner side, `room` how far its start is inside.
bool narrowPart(double along, double room, double* begin, double* end) {
  if (along == 0.0) return room >= 0.0;
  const double at = room / along;
  if (along > 0.0) {
    *end = std::min(*end, at);
  } else {
    *begin = std::max(*begin, at);
  }
  return *begin <= *end;
}

// One edge of the guard: how far inside a point lies.
double inside(const qxRect& guard, int32_t edge, const Exact& point) {
  switch (edge) {
    case 0:
      return point.x - guard.left;
    case 1:
      return guard.right - point.x;
    case 2:
      return point.y - guard.top;
    default:
      return guard.bottom - point.y;
  }
}

int32_t cutByEdge(const qxRect& guard, int32_t edge, const Exact* corners, int32_t count,
                  Exact* cut) {
  int32_t written = 0;
  for (int32_t i = 0; i < count && written + 2 <= kMostCutCorners; ++i) {
    const Exact& from = corners[i];
    const Exact& to = corners[(i + 1) % count];
    const double fromInside = inside(guard, edge, from), toInside = inside(guard, edge, to);
    if (fromInside >= 0.0) cut[written++] = from;
    if ((fromInside >= 0.0) == (toInside >= 0.0)) continue;
    const double at = fromInside / (fromInside - toInside);
    cut[written++] = {from.x + at * (to.x - from.x), from.y + at * (to.y - from.y)};
  }
  return written;
}

}  // namespace

qxRect guardOf(const qxRect& plot) {
  const auto beyond = [](int32_t edge, int32_t by) { return saturateToInt32(int64_t{edge} + by); };
  return {beyond(plot.left, -kGuard), beyond(plot.top, -kGuard), beyond(plot.right, kGuard),
          beyond(plot.bottom, kGuard)};
}

bool clipSegment(const qxRect& guard, Point* from, Point* to) {
  const Exact start = {static_cast<double>(from->x), static_cast<double>(from->y)};
  const double dx = static_cast<double>(to->x) - start.x;
  const double dy = static_cast<double>(to->y) - start.y;
  double begin = 0.0, end = 1.0;
  if (!narrowPart(-dx, start.x - guard.left, &begin, &end) ||
      !narrowPart(dx, guard.right - start.x, &begin, &end) ||
      !narrowPart(-dy, start.y - guard.top, &begin, &end) ||
      !narrowPart(dy, guard.bottom - start.y, &begin, &end)) {
    return false;
  }
  if (end < 1.0) *to = rounded({start.x + end * dx, start.y + end * dy});
  if (begin > 0.0) *from = rounded({start.x + begin * dx, start.y + begin * dy});
  return true;
}

int32_t clipPolygon(const qxRect& guard, const Point* corners, int32_t count,
                    Point (&cut)[kMostCutCorners]) {
  Exact a[kMostCutCorners], b[kMostCutCorners];
  for (int32_t i = 0; i < count; ++i) {
    a[i] = {static_cast<double>(corners[i].x), static_cast<double>(corners[i].y)};
  }
  Exact* from = a;
  Exact* to = b;
  for (int32_t edge = 0; edge < 4 && count > 0; ++edge) {
    count = cutByEdge(guard, edge, from, count, to);
    std::swap(from, to);
  }
  for (int32_t i = 0; i < count; ++i) cut[i] = rounded(from[i]);
  return count;
}

}  // namespace qx
