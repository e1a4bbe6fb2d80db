// Stands in for core/memory.cpp in the internal tests.
#include "tests/support/failing_memory.h"

#include <cstdlib>
#include <utility>

#include "core/memory.h"

namespace {

int64_t allocationsToFailure = 0;
int64_t live = 0;
std::function<void()> pendingEvent;

bool failsNow() {
  if (const auto event = std::exchange(pendingEvent, nullptr)) event();
  return allocationsToFailure > 0 && --allocationsToFailure == 0;
}

}  // namespace

namespace qxtest {

void failAllocation(int64_t n) {
  allocationsToFailure = n;
}

void beforeNextAllocation(std::function<void()> event) {
  pendingEvent = std::move(event);
}

bool failureIsPending() {
  return allocationsToFailure > 0;
}

int64_t liveBlocks() {
  return live;
}

}  // namespace qxtest

namespace qx {

void* allocateZeroed(uint64_t count, uint64_t elementSize) {
  if (failsNow()) return nullptr;
  const bool nothing = count == 0 || elementSize == 0;
  void* block = nothing ? std::calloc(1, 1) : std::calloc(count, elementSize);
  if (block != nullptr) ++live;
  return block;
}

void* reallocate(void* block, uint64_t count, uint64_t elementSize) {
  if (failsNow()) return nullptr;
  const uint64_t bytes = count * elementSize;
  void* grown = std::realloc(block, bytes == 0 ? 1 : bytes);
  if (block == nullptr && grown != nullptr) ++live;
  return grown;
}

void release(void* block) {
  if (block != nullptr) --live;
  std::free(block);
}

}  // namespace qx
