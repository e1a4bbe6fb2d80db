#include "datafiles/range_rule.h"

#include <algorithm>

#include "core/bars.h"

namespace qx {

int32_t barCapacity(const qxBars& bars) {
  int32_t capacity = bars.datasize;
  for (const qxArray* series : seriesOf(bars)) {
    capacity = std::min(capacity, series->data == nullptr ? 0 : series->datasize);
  }
  return std::max(capacity, 0);
}

int32_t provideBars(qxBars* bars, int32_t* count) {
  if (bars->date.data == nullptr && *count != 0) {
    const int32_t status = qxAllocBars(bars, *count);
    if (status != QX_SUCCESS) return status;
  }
  *count = std::min(*count, barCapacity(*bars));
  return QX_SUCCESS;
}

int32_t applyRangeRule(qxBars* bars, int32_t records, int32_t* start, int32_t* count) {
  if (*start >= records) return QX_ERR_RECORD_NOT_FOUND;
  if (*count < 0) *count = *start > 0 ? records - *start : records;
  const int32_t status = provideBars(bars, count);
  if (status != QX_SUCCESS) return status;
  if (*start < 0) *start = std::max(records - *count, 0);
  return QX_SUCCESS;
}

}  // namespace qx
