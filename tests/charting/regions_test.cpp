// Regions compared, pixel by pixel, with those of the system.
#include "charting/regions.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <random>

namespace {

// Expects the same answer for every pixel of a window around the region; releases the region.
template <typename Inside>
void expectSamePixels(HRGN region, Inside inside, const char* what, int seed) {
  for (int32_t y = -2; y < 70; ++y) {
    for (int32_t x = -2; x < 70; ++x) {
      ASSERT_EQ(inside(qx::Point{x, y}), PtInRegion(region, x, y) != 0)
          << what << " " << seed << " at " << x << "," << y;
    }
  }
  DeleteObject(region);
}

TEST(Regions, EllipsesHoldTheSystemsPixels) {
  // The tips of narrow upright ellipses are left out: their rows differ from run to run.
  for (int32_t width = 5; width <= 45; ++width) {
    for (int32_t height = 2; 4 * height <= width * width && height <= 45; height += 3) {
      const qxRect box = {3, 7, 3 + width, 7 + height};
      expectSamePixels(
          CreateEllipticRgn(box.left, box.top, box.right, box.bottom),
          [&box](qx::Point p) { return qx::inEllipse(box, p); }, "ellipse", width * 100 + height);
    }
  }
}

TEST(Regions, PolygonsHoldTheSystemsPixels) {
  std::mt19937 random(5);
  std::uniform_int_distribution<int32_t> coordinate(0, 60);
  for (int seed = 0; seed < 200; ++seed) {
    qx::Point corners[4];
    POINT systemCorners[4];
    for (int i = 0; i < 4; ++i) {
      corners[i] = {coordinate(random), coordinate(random)};
      systemCorners[i] = {corners[i].x, corners[i].y};
    }
    expectSamePixels(
        CreatePolygonRgn(systemCorners, 4, ALTERNATE),
        [&corners](qx::Point p) { return qx::inPolygon(corners, p); }, "polygon", seed);
  }
}

}  // namespace
