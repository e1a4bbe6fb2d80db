// The one place where the library takes and gives back memory.
#ifndef QUORVEX_CORE_MEMORY_H
#define QUORVEX_CORE_MEMORY_H

#include <cstdint>

namespace qx {

// A zero-filled block of `count` elements; null when there is no memory. A block of no elements is
// still a block.
void* allocateZeroed(uint64_t count, uint64_t elementSize);

// The block grown or shrunk to `count` elements, its new tail not cleared; null when there is no
// memory, with the old block left in place.
void* reallocate(void* block, uint64_t count, uint64_t elementSize);

// Gives a block back; null is ignored.
void release(void* block);

}  // namespace qx

#endif  // QUORVEX_CORE_MEMORY_H
