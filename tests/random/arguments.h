// Random arguments by their kind. A call's arguments live in its Context, which releases every
// block that the call leaves behind.
#ifndef QUORVEX_TESTS_RANDOM_ARGUMENTS_H
#define QUORVEX_TESTS_RANDOM_ARGUMENTS_H

#include <deque>
#include <string>
#include <vector>

#include "tests/every_function/function_table.h"
#include "tests/random/random.h"

namespace qxrandom {

using every_function::address;
using every_function::Argument;
using every_function::Arguments;
using every_function::Function;
using every_function::Kind;
using every_function::Parameter;

// Records that live over many calls, so that sequences of calls meet.
struct Lasting {
  qxBars bars = {};
  qxOrderSystem system = {};
  qxGraph graph = {};
  qxArray chartSeries[3] = {};
};

void openLasting(Lasting& lasting, Random& random);
void closeLasting(Lasting& lasting);

// Where the texts of a call come from.
enum class Texts {
  kAny,
  kFiles,   // a folder and a file of it, then any
  kTyped,   // a file type, a folder and a file of it
  kOutput,  // an output name, then any
  kNames    // order names
};

struct Context {
  Random& random;
  Lasting& lasting;
  Texts texts = Texts::kAny;
  int32_t textsMade = 0;
  std::deque<qxArray> arrays = {};  // addresses stay
  std::deque<qxBars> bars = {};
  std::deque<qxCandles> candles = {};
  std::deque<std::vector<char>> buffers = {};
  qxOrderSystem ownSystem = {};
};

// Releases every distinct block once, since records of one call may share blocks.
void release(Context& context);

// Anything that the kind allows; what is pointed to is null at times.
Argument randomArgument(Context& context, const Parameter& parameter);
const char* randomText(Context& context);
// Bytes of the given size, exactly allocated so that an overrun is seen; null at times.
void* randomBytes(Context& context, size_t size);

// The argument as text, for the report of a failing call.
std::string described(const Argument& argument, const Parameter& parameter);

}  // namespace qxrandom

#endif  // QUORVEX_TESTS_RANDOM_ARGUMENTS_H
