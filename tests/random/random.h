// A small generator with the hostile values that callers pass by mistake.
#ifndef QUORVEX_TESTS_RANDOM_RANDOM_H
#define QUORVEX_TESTS_RANDOM_RANDOM_H

#include <cstdint>

namespace qxrandom {

// SplitMix64: one 64-bit state, the same sequence everywhere.
struct Random {
  uint64_t state;
};

uint64_t next(Random& random);
// 0 .. bound - 1.
int32_t below(Random& random, int32_t bound);
// True once in `times`.
bool onceIn(Random& random, int32_t times);

// Mostly small numbers and the neighbourhood of sizes, at times the extremes of the type.
int32_t hostileInt(Random& random);
// Mostly prices and dates, at times zeros, NaN, infinities, huge and tiny numbers.
double hostileDouble(Random& random);
// A text of the corpus: dates, names, pictures, formats, delimiters, over-long and empty texts.
const char* hostileText(Random& random);

}  // namespace qxrandom

#endif  // QUORVEX_TESTS_RANDOM_RANDOM_H
