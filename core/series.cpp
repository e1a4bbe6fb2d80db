// The series record: its lifecycle, element access and the first-valid convention.
#include "core/series.h"

#include <algorithm>
#include <cstring>

#include "core/indicator_frame.h"
#include "core/memory.h"

namespace {

int32_t maxFirstValid = 0;

}  // namespace

int32_t qxAllocArray(qxArray* array, int32_t size) {
  if (array == nullptr || size < 0) return QX_ERR_INVALID_PARM;
  const int32_t count = std::min(size, qx::kMaxElements);
  array->size = count;
  array->datasize = count;
  array->firstvalid = 0;
  array->data =
      static_cast<double*>(qx::allocateZeroed(static_cast<uint64_t>(count), sizeof(double)));
  if (array->data == nullptr) {
    *array = {};
    return QX_ERR_MALLOC;
  }
  return QX_SUCCESS;
}

int32_t qxReAllocArray(qxArray* array, int32_t size) {
  if (array == nullptr || size < 0) return QX_ERR_INVALID_PARM;
  if (array->data == nullptr) return qxAllocArray(array, size);
  if (size <= array->datasize) return qxReSizeArray(array, size);
  void* grown = qx::reallocate(array->data, static_cast<uint64_t>(size), sizeof(double));
  if (grown == nullptr) return QX_ERR_MALLOC;
  array->data = static_cast<double*>(grown);
  array->size = size;
  array->datasize = size;
  return QX_SUCCESS;
}

int32_t qxReSizeArray(qxArray* array, int32_t size) {
  if (array == nullptr || size < 0) return QX_ERR_INVALID_PARM;
  // Kept: a size beyond the capacity is reported as missing memory; callers compare the status.
  if (size > array->datasize) return QX_ERR_MALLOC;
  array->size = size;
  return QX_SUCCESS;
}

void qxFreeArray(qxArray* array) {
  if (array == nullptr) return;
  qx::release(array->data);
  *array = {};
}

int32_t qxCopyArray(const qxArray* source, qxArray* destination) {
  if (source == nullptr || destination == nullptr) return QX_ERR_INVALID_PARM;
  if (destination->data == nullptr) {
    const int32_t status = qxAllocArray(destination, source->datasize);
    if (status != QX_SUCCESS) return status;
  }
  destination->size = std::min(source->size, destination->datasize);
  destination->firstvalid = source->firstvalid;
  const int32_t extent = std::min(source->datasize, destination->datasize);
  if (source->data != nullptr && extent > 0) {
    std::memmove(destination->data, source->data, static_cast<size_t>(extent) * sizeof(double));
  }
  return QX_SUCCESS;
}

double qxGetArrayItem(const qxArray* array, int32_t index) {
  if (array == nullptr || index < 0 || index >= qx::heldSize(*array)) return 0.0;
  return array->data[index];
}

void qxSetArrayItem(qxArray* array, int32_t index, double value) {
  if (array == nullptr || index < 0 || index >= qx::heldSize(*array)) return;
  array->data[index] = value;
}

int32_t qxSetFirstValid(qxArray* array, int32_t index) {
  if (array == nullptr) return 0;
  array->firstvalid = index;
  maxFirstValid = std::max(maxFirstValid, index);
  return maxFirstValid;
}

int32_t qxSetMaxFirstValid(int32_t value) {
  maxFirstValid = value;
  return value;
}

int32_t qxGetMaxFirstValid() {
  return maxFirstValid;
}
