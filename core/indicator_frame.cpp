// Argument check, start-index rule and all-or-none allocation, shared by indicators and patterns.
#include "core/indicator_frame.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>

namespace {

// True when the block is one that the bar set's price and volume series occupy.
bool isInputBlock(const qxBars& bars, const double* block) {
  const qxArray* const series[] = {&bars.open,  &bars.high,   &bars.low,
                                   &bars.close, &bars.volume, &bars.openint};
  return std::any_of(std::begin(series), std::end(series),
                     [block](const qxArray* s) { return s->data == block; });
}

template <typename Records>
bool anyNull(const Records& records) {
  return std::any_of(records.begin(), records.end(), [](const auto* r) { return r == nullptr; });
}

// What qxCheckArgs does, with a choice of whether the elements that will be in use are cleared.
int32_t prepare(std::initializer_list<const qxBars*> bars,
                std::initializer_list<const qxArray*> inputs,
                std::initializer_list<qxArray*> outputs, bool clearUsed) {
  if (bars.size() == 0 && inputs.size() == 0) return QX_ERR_INVALID_PARM;
  if (anyNull(bars) || anyNull(inputs) || anyNull(outputs)) return QX_ERR_INVALID_PARM;

  int32_t length = std::numeric_limits<int32_t>::max();
  int32_t capacity = std::numeric_limits<int32_t>::max();
  for (const qxBars* set : bars) {
    if (set->date.data == nullptr) return QX_ERR_INVALID_PARM;
    length = std::min({length, set->barsize, set->datasize});
    capacity = std::min(capacity, set->datasize);
  }
  for (const qxArray* in : inputs) {
    if (in->data == nullptr) return QX_ERR_INVALID_PARM;
    length = std::min({length, in->size, in->datasize});
    capacity = std::min(capacity, in->datasize);
  }
  if (length < 1) return QX_ERR_INVALID_PARM;

  for (const qxArray* out : outputs) {
    if (out->data == nullptr) continue;
    if (out->datasize < 1) return QX_ERR_INVALID_PARM;
    for (const qxBars* set : bars) {
      if (isInputBlock(*set, out->data)) return QX_ERR_INVALID_PARM;
    }
    for (const qxArray* in : inputs) {
      if (in->data == out->data) return QX_ERR_INVALID_PARM;
    }
  }

  for (qxArray* out : outputs) {
    if (out->data != nullptr) {
      const int32_t kept = clearUsed ? 0 : std::min(length, out->datasize);
      std::memset(out->data + kept, 0, static_cast<size_t>(out->datasize - kept) * sizeof(double));
    } else {
      const int32_t status = qxAllocArray(out, capacity);
      if (status != QX_SUCCESS) return status;
    }
    length = std::min(length, out->datasize);
    out->size = length;
  }
  return length;
}

}  // namespace

int32_t qxCheckArgs(std::initializer_list<const qxBars*> bars,
                    std::initializer_list<const qxArray*> inputs,
                    std::initializer_list<qxArray*> outputs) {
  return prepare(bars, inputs, outputs, true);
}

int32_t qxMaxFirstValid(int32_t start, std::initializer_list<const qxArray*> arrays) {
  for (const qxArray* array : arrays) start = std::max(start, array->firstvalid);
  return start;
}

int32_t qxAllocArrays(int32_t size, std::initializer_list<qxArray*> arrays) {
  for (qxArray* const* it = arrays.begin(); it != arrays.end(); ++it) {
    const int32_t status = qxAllocArray(*it, size);
    if (status != QX_SUCCESS) {
      while (it != arrays.begin()) qxFreeArray(*--it);
      return status;
    }
  }
  return QX_SUCCESS;
}

namespace qx {

int32_t checkArgsForOverwrite(const qxArray* in, qxArray* out) {
  return prepare({}, {in}, {out}, false);
}

int64_t startIndex(int32_t start, std::initializer_list<const qxArray*> arrays) {
  return std::max(0, qxMaxFirstValid(start, arrays));
}

int32_t heldSize(const qxArray& array) {
  return array.data == nullptr ? 0 : std::max(0, std::min(array.size, array.datasize));
}

int32_t heldLength(int32_t length, std::initializer_list<const qxArray*> series) {
  for (const qxArray* s : series) length = std::min(length, heldSize(*s));
  return std::max(0, length);
}

qxArray headOf(const qxArray& array, int32_t length) {
  const int32_t held = std::min(heldSize(array), length);
  return {array.data, held, held, array.firstvalid};
}

int32_t heldBars(const qxBars& bars, int32_t length) {
  return heldLength(length, {&bars.high, &bars.low, &bars.close});
}

int32_t markFirstValid(int64_t index, std::initializer_list<qxArray*> outputs) {
  const int64_t bounded = std::clamp<int64_t>(index, 0, std::numeric_limits<int32_t>::max());
  for (qxArray* out : outputs) qxSetFirstValid(out, static_cast<int32_t>(bounded));
  return QX_SUCCESS;
}

}  // namespace qx
