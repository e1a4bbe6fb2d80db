// Turns a graph into a list of drawing operations and writes the layout and the scales that it
// finds back into the graph's records. Pure computation over the metrics of a device.
#ifndef QUORVEX_CHARTING_PLAN_H
#define QUORVEX_CHARTING_PLAN_H

#include "charting/device.h"
#include "charting/draw_list.h"
#include "quorvex.h"

namespace qx {

// Plans the whole graph. QX_ERR_INVALID_PARM, with nothing changed, when the drawing area is empty
// or inverted; QX_ERR_MALLOC when the list could not be held.
int32_t planGraph(qxGraph* graph, const Device& device, DrawList* list);

// Plans the header and footer alone, in the strips that the last plan of the graph laid out.
int32_t planHeadFoot(const qxGraph& graph, const Device& device, DrawList* list);

// True for a drawing area that can be painted.
bool isPaintable(const qxRect& area);

}  // namespace qx

#endif  // QUORVEX_CHARTING_PLAN_H
