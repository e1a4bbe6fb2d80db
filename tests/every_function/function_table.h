// The one table of the exported functions: what each is called, what it takes, and a way to call it
// with arguments made at run time. Every program that goes through all functions goes through this.
#ifndef QUORVEX_TESTS_EVERY_FUNCTION_FUNCTION_TABLE_H
#define QUORVEX_TESTS_EVERY_FUNCTION_FUNCTION_TABLE_H

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "quorvex.h"

namespace every_function {

// Whole numbers first, then what a function may fill, then records that a caller keeps.
enum class Kind {
  kInteger,
  kShort,
  kUnsigned,
  kReal,
  kIntegerCell,  // the place of a result
  kShortCell,
  kRealCell,
  kText,  // a result where it may be written
  kBytes,
  kSeries,
  kBars,
  kCandles,
  kOrderSystem,
  kGraph,
  kGraphChart,
  kTextLayout,
  kOptionLeg,
  kNumbers,  // a record of numbers
  kRecord    // any other
};

struct Parameter {
  Kind kind;
  bool constant;  // points to what the function only reads
  int32_t size;   // bytes of what it points to
};

// Whole numbers of any width, reals, addresses.
using Argument = std::variant<int32_t, double, const void*>;
using Arguments = std::vector<Argument>;

// The address among the arguments, as what it is.
template <typename T>
T* address(const Argument& argument) {
  return static_cast<T*>(const_cast<void*>(std::get<const void*>(argument)));
}

struct Function {
  std::string name;
  std::vector<Parameter> parameters;
  double (*call)(const Arguments& arguments);  // 0 where the function returns no number
};

// In the order of the header.
const std::vector<Function>& functionTable();

// The function of that name; ends the program when there is none.
const Function& functionNamed(const std::string& name);

}  // namespace every_function

#endif  // QUORVEX_TESTS_EVERY_FUNCTION_FUNCTION_TABLE_H
