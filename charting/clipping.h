// Cuts lines and polygons to a rectangle, so that no painter meets coordinates beyond its range.
#ifndef QUORVEX_CHARTING_CLIPPING_H
#define QUORVEX_CHARTING_CLIPPING_H

#include <cstdint>

#include "charting/geometry.h"

namespace qx {

// The rectangle around a plot beyond which nothing need be drawn: far enough that cutting there is
// not seen in the slope of what remains.
qxRect guardOf(const qxRect& plot);

// Cuts a line to a rectangle, its edges included. False when nothing of it lies inside.
bool clipSegment(const qxRect& guard, Point* from, Point* to);

// The most corners that a polygon of `count` corners has after being cut.
inline constexpr int32_t kMostCutCorners = 32;

// Cuts a polygon of at most 8 corners. Returns the number of corners written, 0 when nothing lies
// inside.
int32_t clipPolygon(const qxRect& guard, const Point* corners, int32_t count,
                    Point (&cut)[kMostCutCorners]);

}  // namespace qx

#endif  // QUORVEX_CHARTING_CLIPPING_H
