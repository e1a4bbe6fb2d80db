// The growable arrays of graphs and panes, and the rules by which they grow and shrink.
#ifndef QUORVEX_CHARTING_GRAPH_ARRAYS_H
#define QUORVEX_CHARTING_GRAPH_ARRAYS_H

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

#include "core/memory.h"
#include "quorvex.h"

namespace qx {

inline constexpr int32_t kSubwinStep = 4;
inline constexpr int32_t kChartStep = 4;
inline constexpr int32_t kLineStep = 2;
inline constexpr int32_t kShapeStep = 4;

// The first index that an array of such elements cannot have.
template <typename Element>
constexpr int32_t indexLimit() {
  return std::numeric_limits<int32_t>::max() / static_cast<int32_t>(sizeof(Element));
}

// Makes the array at least `capacity` elements long, new ones zeroed. QX_ERR_MALLOC leaves it as it
// was.
template <typename Element>
int32_t setCapacity(Element** data, int32_t* held, int32_t capacity) {
  const int32_t old = *data == nullptr ? 0 : std::max(*held, 0);
  if (capacity <= old) return QX_SUCCESS;
  void* block = qx::reallocate(*data, static_cast<uint64_t>(capacity), sizeof(Element));
  if (block == nullptr) return QX_ERR_MALLOC;
  *data = static_cast<Element*>(block);
  std::memset(static_cast<void*>(*data + old), 0,
              static_cast<size_t>(capacity - old) * sizeof(Element));
  *held = capacity;
  return QX_SUCCESS;
}

// The capacity after growing for `index`.
// Kept: the remainder is that of the index, not of the capacity; an Add never asks for more than
// one past the count, so the step covers it.
inline int32_t grownCapacity(int32_t capacity, int32_t index, int32_t step) {
  return index < capacity ? capacity : std::max(capacity + step, index % step + 1);
}

// Grows an array to hold `index`, at most one past its count.
template <typename Element>
int32_t growArray(Element** data, int32_t* capacity, int32_t index, int32_t step) {
  const int32_t held = *data == nullptr ? 0 : std::max(*capacity, 0);
  if (index >= held && index >= indexLimit<Element>()) return QX_ERR_MALLOC;
  return setCapacity(data, capacity, grownCapacity(held, index, step));
}

// Takes an element out: the later ones move down and the vacated slot is cleared.
template <typename Element>
void removeElement(Element* data, int32_t* count, int32_t index) {
  std::memmove(static_cast<void*>(data + index), data + index + 1,
               static_cast<size_t>(*count - index - 1) * sizeof(Element));
  --*count;
  std::memset(static_cast<void*>(data + *count), 0, sizeof(Element));
}

// Turns -1 into the last index. False when the index is not one of `count` elements.
inline bool resolveIndex(int32_t* index, size_t count) {
  const auto held = static_cast<int32_t>(count);
  if (*index == -1) *index = held - 1;
  return *index >= 0 && *index < held;
}

}  // namespace qx

#endif  // QUORVEX_CHARTING_GRAPH_ARRAYS_H
