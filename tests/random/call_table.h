// The one table of the exported functions that the random calls go through.
#ifndef QUORVEX_TESTS_RANDOM_CALL_TABLE_H
#define QUORVEX_TESTS_RANDOM_CALL_TABLE_H

#include <tuple>
#include <vector>

#include "tests/random/arguments.h"
#include "tests/random/files.h"

namespace qxrandom {

struct Call {
  const char* name;
  // Makes arguments and calls; with `describeOnly` the arguments are only written to
  // context.described.
  void (*run)(Context& context, bool describeOnly);
};

// Calls a function with the arguments made, or describes them.
template <auto Function, typename... Arguments>
void finish(Context& context, bool describeOnly, Arguments... arguments) {
  if (describeOnly) {
    (describeArgument(context.described, arguments), ...);
  } else {
    Function(arguments...);
  }
}

// Any exported function, its arguments made by type from left to right.
template <auto Function>
struct ByType;

template <typename Result, typename... Arguments, Result (*Function)(Arguments...)>
struct ByType<Function> {
  static void run(Context& context, bool describeOnly) {
    std::tuple<Arguments...> arguments{Make<Arguments>::value(context)...};
    std::apply([&](auto... a) { finish<Function>(context, describeOnly, a...); }, arguments);
  }
};

// The same with texts of a certain kind.
template <auto Function, Texts Kind>
struct WithTexts {
  static void run(Context& context, bool describeOnly) {
    context.texts = Kind;
    if (Kind == Texts::kFiles || Kind == Texts::kTyped) disturbFiles(context.random);
    ByType<Function>::run(context, describeOnly);
  }
};

const std::vector<Call>& callTable();

}  // namespace qxrandom

#endif  // QUORVEX_TESTS_RANDOM_CALL_TABLE_H
