// The allocator of the internal tests: it counts blocks and fails on request.
#ifndef QUORVEX_TESTS_SUPPORT_FAILING_MEMORY_H
#define QUORVEX_TESTS_SUPPORT_FAILING_MEMORY_H

#include <cstdint>
#include <functional>

namespace qxtest {

// Makes the n-th allocation from now fail (1 is the next one), once. 0 lets all succeed.
void failAllocation(int64_t n);

// True when the requested failure has not come yet.
bool failureIsPending();

// Calls `event` before the next allocation, once: between the pass over a file that counts its
// records and the pass that reads them.
void beforeNextAllocation(std::function<void()> event);

// Blocks allocated and not yet released.
int64_t liveBlocks();

}  // namespace qxtest

#endif  // QUORVEX_TESTS_SUPPORT_FAILING_MEMORY_H
