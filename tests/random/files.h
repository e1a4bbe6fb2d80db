// The files that random calls read: a small one of every kind, at times damaged.
#ifndef QUORVEX_TESTS_RANDOM_FILES_H
#define QUORVEX_TESTS_RANDOM_FILES_H

#include "tests/random/random.h"

namespace qxrandom {

// Writes every file into the current folder.
void writeFiles();

// At times writes one of them anew, sound or with some of its bytes changed or its end cut off.
void disturbFiles(Random& random);

}  // namespace qxrandom

#endif  // QUORVEX_TESTS_RANDOM_FILES_H
