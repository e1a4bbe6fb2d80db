// Calls of every function: their arguments are made by kind, and those that belong together are
// then made to: pointers with counts, records that own their blocks, results of a stated size,
// sequences without which a function would find nothing to do.
#ifndef QUORVEX_TESTS_RANDOM_CAREFUL_CALLS_H
#define QUORVEX_TESTS_RANDOM_CAREFUL_CALLS_H

#include "tests/random/arguments.h"

namespace qxrandom {

struct Call {
  const Function* function;
  Texts texts;
  // Replaces arguments by such as belong together; null where any will do.
  void (*adjust)(Context& context, Arguments& arguments);
  // Calls the function among others; null where it is called alone.
  void (*among)(Context& context, const Function& function, const Arguments& arguments);
};

Call careful(const Function& function);

Arguments randomArguments(Context& context, const Call& call);
void run(Context& context, const Call& call, const Arguments& arguments);

}  // namespace qxrandom

#endif  // QUORVEX_TESTS_RANDOM_CAREFUL_CALLS_H
