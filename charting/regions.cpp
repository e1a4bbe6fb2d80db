// Whether a point lies in a polygon, an ellipse or near a line.
#include "charting/regions.h"

#include <algorithm>
#include <cmath>

namespace qx {
namespace {

// Coordinates within this bound multiply without overflow.
constexpr int32_t kBound = 1 << 30;

int64_t bounded(int32_t coordinate) {
  return std::clamp(coordinate, -kBound, kBound);
}

// True when the edge crosses the point's row at the point or to its left.
bool crossesLeftOf(Point a, Point b, Point point) {
  if (a.y > b.y) std::swap(a, b);
  if (point.y < a.y || point.y >= b.y) return false;
  const int64_t rise = bounded(b.y) - bounded(a.y);
  const int64_t run = bounded(b.x) - bounded(a.x);
  return (bounded(point.y) - bounded(a.y)) * run <= (bounded(point.x) - bounded(a.x)) * rise;
}

}  // namespace

bool inPolygon(std::span<const Point> corners, Point point) {
  bool inside = false;
  for (size_t i = 0; i < corners.size(); ++i) {
    const Point next = corners[i + 1 < corners.size() ? i + 1 : 0];
    if (crossesLeftOf(corners[i], next, point)) inside = !inside;
  }
  return inside;
}

bool inEllipse(const qxRect& box, Point point) {
  if (!contains(box, point.x, point.y)) return false;
  // From the box's centre to the pixel's, in half widths and heights of the box.
  const double x = (2.0 * point.x + 1.0 - box.left - box.right) / (1.0 * box.right - box.left);
  const double y = (2.0 * point.y + 1.0 - box.top - box.bottom) / (1.0 * box.bottom - box.top);
  return x * x + y * y <= 1.0;
}

double distanceToSegment(Point from, Point to, Point point) {
  const double dx = 1.0 * to.x - from.x;
  const double dy = 1.0 * to.y - from.y;
  const double px = 1.0 * point.x - from.x;
  const double py = 1.0 * point.y - from.y;
  const double length = dx * dx + dy * dy;
  const double along = length == 0.0 ? 0.0 : std::clamp((px * dx + py * dy) / length, 0.0, 1.0);
  return std::hypot(px - along * dx, py - along * dy);
}

}  // namespace qx
