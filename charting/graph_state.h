// What all graphs of the process share: the scale margins and the month names.
#ifndef QUORVEX_CHARTING_GRAPH_STATE_H
#define QUORVEX_CHARTING_GRAPH_STATE_H

#include <cstdint>

#include "platform/platform.h"

namespace qx {

// Pixels by which painting pads a scale at top and bottom.
struct ScaleMargins {
  int32_t bars;    // scales found from bars
  int32_t series;  // scales found from a series
};
const ScaleMargins& scaleMargins();

// The month names of the date axis, as the last qxGraphInit read them.
const MonthNames& monthNames();

}  // namespace qx

#endif  // QUORVEX_CHARTING_GRAPH_STATE_H
