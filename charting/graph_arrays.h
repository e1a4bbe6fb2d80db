// The growable arrays of graphs and panes, and the rules by which they grow and shrink.
#ifndef QUORVEX_CHARTING_GRAPH_ARRAYS_H
#define QUORVEX_CHARTING_GRAPH_ARRAYS_H

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>

#include "core/memory.h"
#include "quorvex.h"

namespace qx {

inline constexpr int32_t kSubwinStep = 4;

// The first index that an array of such elements cannot have.
template <typename Element>
constexpr int32_t indexLimit() {
  return std::numeric_limits<int32_t>::max() / static_cast<int32_t>(sizeof(Element));
}

// The capacity after growing for `index`.
// Kept: the remainder is that of the index, not of the capacity; an Add never asks for more than
// one past the count, so the step covers it.
inline int32_t grownCapacity(int32_t capacity, int32_t index, int32_t step) {
  return index < capacity ? capacity : std::max(capacity + step, index % step + 1);
}

// The array with `capacity` elements instead of `old`, new ones zeroed; null, with the old array in
// place, when there is no memory.
template <typename Element>
Element* grownArray(Element* data, int32_t old, int32_t capacity) {
  auto* grown =
      static_cast<Element*>(reallocate(data, static_cast<uint64_t>(capacity), sizeof(Element)));
  if (grown == nullptr) return nullptr;
  std::memset(static_cast<void*>(grown + old), 0,
              static_cast<size_t>(capacity - old) * sizeof(Element));
  return grown;
}

// Takes an element out: the later ones move down and the vacated slot is cleared. Returns the new
// count.
template <typename Element>
int32_t removeElement(std::span<Element> elements, int32_t index) {
  const auto last = static_cast<int32_t>(elements.size()) - 1;
  Element* gap = elements.data() + index;
  std::memmove(static_cast<void*>(gap), gap + 1,
               static_cast<size_t>(last - index) * sizeof(Element));
  std::memset(static_cast<void*>(elements.data() + last), 0, sizeof(Element));
  return last;
}

// Turns -1 into the last index. False when the index is not one of `count` elements.
inline bool resolveIndex(int32_t* index, size_t count) {
  const auto held = static_cast<int32_t>(count);
  if (*index == -1) *index = held - 1;
  return *index >= 0 && *index < held;
}

// One of the three arrays of a pane, as fields of its record.
template <typename Element>
struct PaneArray {
  Element* qxGraphSubwin::*data;
  int32_t qxGraphSubwin::*capacity;
  int32_t qxGraphSubwin::*count;
  int32_t step;

  // The elements in use: a caller may store a pane's record with any counts, so none is trusted
  // beyond its capacity.
  std::span<Element> in(const qxGraphSubwin& pane) const {
    const int32_t held = std::min(pane.*capacity, pane.*count);
    if (pane.*data == nullptr || held <= 0) return {};
    return {pane.*data, static_cast<size_t>(held)};
  }
};

inline constexpr PaneArray<qxGraphChart> kCharts = {
    &qxGraphSubwin::charts, &qxGraphSubwin::chartcap, &qxGraphSubwin::chartcount, 4};
inline constexpr PaneArray<qxGraphLine> kLines = {&qxGraphSubwin::lines, &qxGraphSubwin::linecap,
                                                  &qxGraphSubwin::linecount, 2};
inline constexpr PaneArray<qxGraphShape> kShapes = {
    &qxGraphSubwin::shapes, &qxGraphSubwin::shapecap, &qxGraphSubwin::shapecount, 4};

// Grows one of a pane's arrays to hold `index`, at most one past its count.
template <typename Element>
int32_t growPaneArray(qxGraphSubwin* pane, const PaneArray<Element>& array, int32_t index) {
  const int32_t old = pane->*array.data == nullptr ? 0 : std::max(pane->*array.capacity, 0);
  if (index < old) return QX_SUCCESS;
  if (index >= indexLimit<Element>()) return QX_ERR_MALLOC;
  const int32_t capacity = grownCapacity(old, index, array.step);
  Element* grown = grownArray(pane->*array.data, old, capacity);
  if (grown == nullptr) return QX_ERR_MALLOC;
  pane->*array.data = grown;
  pane->*array.capacity = capacity;
  return QX_SUCCESS;
}

}  // namespace qx

#endif  // QUORVEX_CHARTING_GRAPH_ARRAYS_H
