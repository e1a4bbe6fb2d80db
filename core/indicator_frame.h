// The frame of every indicator and pattern: prepare, start index, compute, mark first valid.
#ifndef QUORVEX_CORE_INDICATOR_FRAME_H
#define QUORVEX_CORE_INDICATOR_FRAME_H

#include <cstdint>
#include <initializer_list>

#include "quorvex.h"

// Checks the inputs, prepares the outputs and returns the number of elements to compute, or a
// negative status. Outputs with storage are cleared over their whole capacity and must not be an
// input's block (the date block of a bar set may be one); the others are allocated at the smallest
// input capacity. firstvalid fields are left alone.
int32_t qxCheckArgs(std::initializer_list<const qxBars*> bars,
                    std::initializer_list<const qxArray*> inputs,
                    std::initializer_list<qxArray*> outputs);

// The greatest of `start` and the first valid indexes of the arrays.
int32_t qxMaxFirstValid(int32_t start, std::initializer_list<const qxArray*> arrays);

// Allocates every array with `size` elements, or none: QX_ERR_MALLOC.
int32_t qxAllocArrays(int32_t size, std::initializer_list<qxArray*> arrays);

namespace qx {

// qxCheckArgs for functions that write every element in use themselves, the leading zeros included:
// it clears only the capacity beyond them, which spares a pass over memory.
int32_t checkArgsForOverwrite(const qxArray* in, qxArray* out);

// Index at which an indicator begins: the caller's start raised to every input's first valid
// index, never below 0. In 64 bits, so that periods and lags can be added to it.
int64_t startIndex(int32_t start, std::initializer_list<const qxArray*> arrays = {});

// Elements that can be read from a series: its size, within its capacity; 0 without storage.
int32_t heldSize(const qxArray& array);

// The part of `length` that every given series really holds, at least 0. Bar-set functions limit
// their loops with it, since a caller may have made the seven sizes differ.
int32_t heldLength(int32_t length, std::initializer_list<const qxArray*> series);

// The first `length` elements of a prepared series as a record of its own, for inner calls: they
// read and write no more than these and leave the size of the series alone. What an inner call
// sets as first valid index has to be carried over.
qxArray headOf(const qxArray& array, int32_t length);

// The bars up to `length` of which high, low and close are all held.
int32_t heldBars(const qxBars& bars, int32_t length);

// Sets the first valid index of each output, brought into 0 .. INT32_MAX, and returns QX_SUCCESS.
int32_t markFirstValid(int64_t index, std::initializer_list<qxArray*> outputs);

// True when both records hold the same storage: the indicator works in place.
inline bool inPlace(const qxArray* in, const qxArray* out) {
  return in->data == out->data;
}

// Scratch series of one call, released on every path. `status` is what qxAllocArrays returned.
template <int N>
struct ScratchArrays {
  qxArray arrays[N] = {};
  int32_t status;

  explicit ScratchArrays(int32_t size) : status(QX_SUCCESS) {
    for (int i = 0; i < N && status == QX_SUCCESS; ++i) status = qxAllocArrays(size, {&arrays[i]});
  }
  ~ScratchArrays() {
    for (qxArray& array : arrays) qxFreeArray(&array);
  }
  ScratchArrays(const ScratchArrays&) = delete;
  ScratchArrays& operator=(const ScratchArrays&) = delete;
  qxArray& operator[](int i) { return arrays[i]; }
};

}  // namespace qx

#endif  // QUORVEX_CORE_INDICATOR_FRAME_H
