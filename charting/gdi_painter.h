// Painting on Windows devices, as far as tests look inside.
#ifndef QUORVEX_CHARTING_GDI_PAINTER_H
#define QUORVEX_CHARTING_GDI_PAINTER_H

#include <cstdint>

#include "quorvex.h"

namespace qx {

// Graphics objects made and given back while painting; equal afterwards.
struct GdiCounts {
  int64_t created, deleted;
};

// qxGraphPaint, counting into `counts`.
int32_t paintOnDevice(qxGraph* graph, void* deviceContext, GdiCounts* counts);

}  // namespace qx

#endif  // QUORVEX_CHARTING_GDI_PAINTER_H
