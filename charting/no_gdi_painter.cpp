// Painting on devices where there are none.
#include "quorvex.h"

int32_t qxGraphPaint(qxGraph* /*graph*/, void* /*deviceContext*/) {
  return QX_ERR_INVALID_PARM;
}

void* qxGraphPaintPicture(qxGraph* /*graph*/) {
  return nullptr;
}

int32_t qxGraphRefreshHeadFoot(qxGraph* /*graph*/, void* /*deviceContext*/) {
  return QX_ERR_INVALID_PARM;
}
