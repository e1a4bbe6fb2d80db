// Whether a point lies in a polygon, an ellipse or near a line: plain geometry with the results of
// the region functions of a graphics interface.
#ifndef QUORVEX_CHARTING_REGIONS_H
#define QUORVEX_CHARTING_REGIONS_H

#include <span>

#include "charting/geometry.h"

namespace qx {

// Inside by the even-odd rule; a point on a left or top edge is inside, on a right or bottom one
// outside.
bool inPolygon(std::span<const Point> corners, Point point);

// Inside the ellipse of a box. Like the elliptic regions of graphics interfaces it leaves out the
// box's last column and row, and holds the very pixels that they hold.
bool inEllipse(const qxRect& box, Point point);

double distanceToSegment(Point from, Point to, Point point);

}  // namespace qx

#endif  // QUORVEX_CHARTING_REGIONS_H
