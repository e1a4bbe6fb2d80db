// The bar-set record: lifecycle, copies and the search for a date.
#include "core/bars.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "core/indicator_frame.h"
#include "core/memory.h"
#include "core/numeric.h"
#include "core/series.h"

int32_t qxAllocBars(qxBars* bars, int32_t size) {
  if (bars == nullptr || size < 0) return QX_ERR_INVALID_PARM;
  const int32_t count = std::min(size, qx::kMaxElements);
  qxArray fresh[7] = {};
  for (int i = 0; i < 7; ++i) {
    if (qxAllocArray(&fresh[i], count) != QX_SUCCESS) {
      while (i > 0) qxFreeArray(&fresh[--i]);
      *bars = {};
      return QX_ERR_MALLOC;
    }
  }
  const auto series = qx::seriesOf(*bars);
  for (size_t i = 0; i < series.size(); ++i) *series[i] = fresh[i];
  bars->barsize = count;
  bars->datasize = count;
  return QX_SUCCESS;
}

int32_t qxReAllocBars(qxBars* bars, int32_t size) {
  if (bars == nullptr || size < 0) return QX_ERR_INVALID_PARM;
  if (bars->date.data == nullptr) return qxAllocBars(bars, size);
  if (size <= bars->datasize) return qxReSizeBars(bars, size);
  // Kept: no roll-back. Series grown before a failure stay grown; the set keeps its counts. A later
  // call brings them to the common size, also down.
  for (qxArray* series : qx::seriesOf(*bars)) {
    void* grown = qx::reallocate(series->data, static_cast<uint64_t>(size), sizeof(double));
    if (grown == nullptr) return QX_ERR_MALLOC;
    series->data = static_cast<double*>(grown);
    series->size = size;
    series->datasize = size;
  }
  bars->barsize = size;
  bars->datasize = size;
  return QX_SUCCESS;
}

int32_t qxReSizeBars(qxBars* bars, int32_t size) {
  if (bars == nullptr || size < 0) return QX_ERR_INVALID_PARM;
  if (size > bars->datasize) return QX_ERR_MALLOC;
  bars->barsize = size;
  for (qxArray* series : qx::seriesOf(*bars)) series->size = size;
  return QX_SUCCESS;
}

void qxFreeBars(qxBars* bars) {
  if (bars == nullptr) return;
  for (qxArray* series : qx::seriesOf(*bars)) qxFreeArray(series);
  *bars = {};
}

void qxCopyBarInfo(const qxBars* source, qxBars* destination) {
  if (source == nullptr || destination == nullptr || source == destination) return;
  std::memcpy(destination->path, source->path, sizeof source->path);
  std::memcpy(destination->name, source->name, sizeof source->name);
  std::memcpy(destination->description, source->description, sizeof source->description);
  std::memcpy(destination->symbol, source->symbol, sizeof source->symbol);
  std::memcpy(destination->cusip, source->cusip, sizeof source->cusip);
  destination->reccnt = source->reccnt;
  destination->begindate = source->begindate;
  destination->enddate = source->enddate;
  destination->filetype = source->filetype;
  destination->frequency = source->frequency;
  destination->datatype = source->datatype;
  destination->optiontype = source->optiontype;
  destination->deliverydate = source->deliverydate;
  destination->strikeprice = source->strikeprice;
}

int32_t qxCopyBars(const qxBars* source, qxBars* destination) {
  if (source == nullptr || destination == nullptr) return QX_ERR_INVALID_PARM;
  if (destination->date.data == nullptr) {
    const int32_t status = qxAllocBars(destination, source->datasize);
    if (status != QX_SUCCESS) return status;
  }
  qxCopyBarInfo(source, destination);
  destination->barsize = std::min(source->barsize, destination->datasize);
  const auto from = qx::seriesOf(*source);
  const auto to = qx::seriesOf(*destination);
  for (size_t i = 0; i < from.size(); ++i) qxCopyArray(from[i], to[i]);
  return QX_SUCCESS;
}

int32_t qxDecimals(double value, int32_t digits) {
  constexpr int32_t kMostDigits = 300;  // beyond it every result saturates
  const double magnitude = std::fabs(value);
  if (!std::isfinite(magnitude)) return 0;
  const double fraction = magnitude - std::trunc(magnitude);
  if (fraction <= std::numeric_limits<double>::epsilon()) return 0;
  return qx::truncateToInt32(
      std::floor(fraction * qx::powerOfTen(std::clamp(digits, 0, kMostDigits))));
}

int32_t qxFindDate(const qxBars* bars, double date) {
  if (bars == nullptr) return 0;
  const int32_t held = qx::heldLength(bars->barsize, {&bars->date});
  for (int32_t i = 0; i < held; ++i) {
    if (bars->date.data[i] >= date) return i;
  }
  return bars->barsize;
}
