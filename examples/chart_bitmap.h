// A graph painted by the library into a bitmap file, where there are devices to paint on.
#ifndef QUORVEX_EXAMPLES_CHART_BITMAP_H
#define QUORVEX_EXAMPLES_CHART_BITMAP_H

#include "quorvex.h"

// Paints the graph, whose drawing area begins at the origin, and writes a 24-bit BMP file. Without
// devices it writes nothing and returns QX_ERR_INVALID_PARM.
int32_t writeChartBitmap(qxGraph* graph, const char* fileName);

#endif  // QUORVEX_EXAMPLES_CHART_BITMAP_H
