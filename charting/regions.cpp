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

// Larger ellipses than any screen are not traced: sums would overflow, and no pixel would show it.
constexpr int64_t kMaxTraced = 4096;

// How many columns an ellipse leaves out on either side of a row of its lower half. Traced from
// the end of the middle row (A. Zingl, "A Rasterizing Algorithm for Drawing Curves"), since the
// regions of graphics interfaces are traced so and hold fewer pixels than the curve has centres in.
int64_t columnsLeftOut(int64_t width, int64_t height, int64_t row) {
  const int64_t a = width - 1;
  const int64_t b = height - 1;
  const int64_t odd = b % 2;
  int64_t columnStep = 4 * b * b * (1 - a);
  int64_t rowStep = 4 * a * a * (1 + odd);
  int64_t error = columnStep + rowStep + a * a * odd;
  int64_t x = 0;
  int64_t y = height / 2;
  while (y < row) {
    const int64_t twice = 2 * error;
    const bool nextColumn = twice >= columnStep;
    if (nextColumn) {
      if (2 * (x + 1) > a) break;  // the tip of a narrow ellipse: its middle columns to the end
      ++x;
      columnStep += 8 * b * b;
      error += columnStep;
    }
    if (twice <= rowStep || !nextColumn) {
      ++y;
      rowStep += 8 * a * a;
      error += rowStep;
    }
  }
  return x;
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
  const int64_t width = int64_t{box.right} - box.left - 1;
  const int64_t height = int64_t{box.bottom} - box.top - 1;
  const int64_t column = int64_t{point.x} - box.left;
  const int64_t row = int64_t{point.y} - box.top;
  if (column >= width || row >= height) return false;
  if (width < 2 || height < 2) return true;
  if (width <= kMaxTraced && height <= kMaxTraced) {
    const int64_t leftOut = columnsLeftOut(width, height, std::max(row, height - 1 - row));
    return column >= leftOut && column < width - leftOut;
  }
  // From the centre of the ellipse to the pixel's, in half widths and heights.
  const double x = static_cast<double>(2 * column + 1 - width) / static_cast<double>(width);
  const double y = static_cast<double>(2 * row + 1 - height) / static_cast<double>(height);
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
