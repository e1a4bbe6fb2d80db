// Allocation on the C allocator. The internal tests link their own version of this file, to make
// the n-th allocation fail.
#include "core/memory.h"

#include <cstdlib>
#include <limits>

namespace qx {
namespace {

// True when the byte count fits the address space; the allocator's own limit stands below that.
bool fits(uint64_t count, uint64_t elementSize) {
  return elementSize == 0 || count <= std::numeric_limits<size_t>::max() / 2 / elementSize;
}

}  // namespace

void* allocateZeroed(uint64_t count, uint64_t elementSize) {
  if (!fits(count, elementSize)) return nullptr;
  if (count == 0 || elementSize == 0) return std::calloc(1, 1);
  return std::calloc(count, elementSize);
}

void* reallocate(void* block, uint64_t count, uint64_t elementSize) {
  if (!fits(count, elementSize)) return nullptr;
  const uint64_t bytes = count * elementSize;
  return std::realloc(block, bytes == 0 ? 1 : bytes);
}

void release(void* block) {
  std::free(block);
}

}  // namespace qx
