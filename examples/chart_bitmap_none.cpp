#include "chart_bitmap.h"

int32_t writeChartBitmap(qxGraph* /*graph*/, const char* /*fileName*/) {
  return QX_ERR_INVALID_PARM;
}
