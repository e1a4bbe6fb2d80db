// Random arguments by their type. A call's arguments live in its Context, which releases every
// block that the call leaves behind.
#ifndef QUORVEX_TESTS_RANDOM_ARGUMENTS_H
#define QUORVEX_TESTS_RANDOM_ARGUMENTS_H

#include <cstdint>
#include <cstring>
#include <deque>
#include <string>
#include <type_traits>
#include <vector>

#include "quorvex.h"
#include "tests/random/random.h"

namespace qxrandom {

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
  std::deque<qxArray> arrays;  // addresses stay
  std::deque<qxBars> bars;
  std::deque<qxCandles> candles;
  std::deque<std::vector<char>> buffers;
  std::string described;  // filled only when asked for

  Context(Random& r, Lasting& l) : random(r), lasting(l) {}
};

// Releases every distinct block once, since records of one call may share blocks.
void release(Context& context);

// A series: mostly some bars long, at times unallocated, empty, aliasing another or null.
qxArray* randomArray(Context& context);
qxBars* randomBars(Context& context);
qxCandles* randomCandles(Context& context);
const char* randomText(Context& context);
// The lasting order system and graph, at times null, at times with hostile settings.
qxOrderSystem* randomSystem(Context& context);
qxGraph* randomGraph(Context& context);
// Bytes of the given size, exactly allocated so that an overrun is seen; null at
// times.
void* randomBytes(Context& context, int32_t size, bool nullable = true);

template <typename T>
struct Make;

template <>
struct Make<int32_t> {
  static int32_t value(Context& context) { return hostileInt(context.random); }
};
template <>
struct Make<uint32_t> {
  static uint32_t value(Context& context) {
    return static_cast<uint32_t>(hostileInt(context.random));
  }
};
template <>
struct Make<int16_t> {
  static int16_t value(Context& context) {
    return static_cast<int16_t>(hostileInt(context.random));
  }
};
template <>
struct Make<double> {
  static double value(Context& context) { return hostileDouble(context.random); }
};
template <>
struct Make<const char*> {
  static const char* value(Context& context) { return randomText(context); }
};
template <>
struct Make<char*> {  // a result text
  static char* value(Context& context) { return static_cast<char*>(randomBytes(context, 4096)); }
};
template <>
struct Make<qxArray*> {
  static qxArray* value(Context& context) { return randomArray(context); }
};
template <>
struct Make<const qxArray*> {
  static const qxArray* value(Context& context) { return randomArray(context); }
};
template <>
struct Make<qxBars*> {
  static qxBars* value(Context& context) { return randomBars(context); }
};
template <>
struct Make<const qxBars*> {
  static const qxBars* value(Context& context) { return randomBars(context); }
};
template <>
struct Make<qxCandles*> {
  static qxCandles* value(Context& context) { return randomCandles(context); }
};
template <>
struct Make<const qxCandles*> {
  static const qxCandles* value(Context& context) { return randomCandles(context); }
};
template <>
struct Make<qxOrderSystem*> {
  static qxOrderSystem* value(Context& context) { return randomSystem(context); }
};
template <>
struct Make<const qxOrderSystem*> {
  static const qxOrderSystem* value(Context& context) {
    return Make<qxOrderSystem*>::value(context);
  }
};
template <>
struct Make<qxGraph*> {
  static qxGraph* value(Context& context) { return randomGraph(context); }
};
template <>
struct Make<const qxGraph*> {
  static const qxGraph* value(Context& context) { return Make<qxGraph*>::value(context); }
};
template <>
struct Make<void*> {  // a device context: there is none
  static void* value(Context&) { return nullptr; }
};
template <>
struct Make<const void*> {
  static const void* value(Context& context) { return randomBytes(context, 4); }
};

// Fields of the smaller records; a record without its own form stays zero.
template <typename T>
void fill(Context&, T& record) {
  record = {};
}
void fill(Context& context, double& cell);
void fill(Context& context, int32_t& cell);
void fill(Context& context, qxTXTinfo& info);
void fill(Context& context, qxOptVar& variable);
void fill(Context& context, qxOptionLeg& leg);
void fill(Context& context, qxOptionStrategy& strategy);
void fill(Context& context, qxTimeValue& value);
void fill(Context& context, qxBond& bond);
void fill(Context& context, qxGraphChart& chart);
void fill(Context& context, qxGraphLine& line);
void fill(Context& context, qxGraphShape& shape);

// Every other record or result cell, null at times.
template <typename T>
struct Make<T*> {
  static T* value(Context& context) {
    void* bytes = randomBytes(context, sizeof(T));
    if (bytes == nullptr) return nullptr;
    std::remove_const_t<T> record;
    fill(context, record);
    std::memcpy(bytes, &record, sizeof record);
    return static_cast<T*>(bytes);
  }
};

// The argument as text, for the report of a failing call.
void describe(std::string& text, int64_t value);
void describe(std::string& text, double value);
void describe(std::string& text, const char* value);
void describe(std::string& text, const qxArray* value);
void describe(std::string& text, const qxBars* value);
void describe(std::string& text, const void* value);

template <typename T>
void describeArgument(std::string& text, const T& value) {
  if (!text.empty()) text += ", ";
  if constexpr (std::is_integral_v<T>) {
    describe(text, static_cast<int64_t>(value));
  } else if constexpr (std::is_same_v<T, char*>) {
    describe(text, static_cast<const void*>(value));
  } else {
    describe(text, value);
  }
}

}  // namespace qxrandom

#endif  // QUORVEX_TESTS_RANDOM_ARGUMENTS_H
