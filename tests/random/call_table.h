// The one table of the exported functions that the random calls go through.
#ifndef QUORVEX_TESTS_RANDOM_CALL_TABLE_H
#define QUORVEX_TESTS_RANDOM_CALL_TABLE_H

#include <tuple>
#include <vector>

#include "tests/random/arguments.h"

namespace qxrandom {

struct Call {
  const char* name;
  // Makes arguments and calls; with `describeOnly` the arguments are only written to
  // context.described.
  void (*run)(Context& context, bool describeOnly);
};

// Any exported function, its arguments made by type from left to right.
template <auto Function>
struct ByType;

template <typename Result, typename... Arguments, Result (*Function)(Arguments...)>
struct ByType<Function> {
  static void run(Context& context, bool describeOnly) {
    std::tuple<Arguments...> arguments{Make<Arguments>::value(context)...};
    if (describeOnly) {
      std::apply([&](auto&... a) { (describeArgument(context.described, a), ...); }, arguments);
    } else {
      std::apply(Function, arguments);
    }
  }
};

const std::vector<Call>& callTable();

}  // namespace qxrandom

#endif  // QUORVEX_TESTS_RANDOM_CALL_TABLE_H
