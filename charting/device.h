// What the planner must know about the device that will be painted on.
#ifndef QUORVEX_CHARTING_DEVICE_H
#define QUORVEX_CHARTING_DEVICE_H

#include <cstdint>

#include "charting/draw_list.h"

namespace qx {

struct Device {
  void* context;  // handed to the functions below
  int32_t (*textWidth)(void* context, const Font& font, const char* text, int32_t length);
  int32_t (*lineHeight)(void* context, const Font& font);
  bool (*visible)(void* context, const qxRect& rect);  // null: everything is visible
  int32_t dotsPerInchX, dotsPerInchY;
};

// Pixels of a font size given in points.
int32_t fontPixels(const Device& device, float points);

// The built-in metrics of an Arial-compatible face at 96 dots per inch, for painting without a
// device.
Device builtInDevice();

// Baseline of a line of text below its top, in the built-in metrics.
int32_t builtInAscent(const Font& font);

}  // namespace qx

#endif  // QUORVEX_CHARTING_DEVICE_H
