// Random calls of every exported function, or of one alone. A call that crashes or does not return
// prints its seed, number, function and arguments.
#include <atomic>
#include <chrono>
#include <cinttypes>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <thread>

#include "tests/random/careful_calls.h"
#include "tests/random/files.h"

namespace {

using namespace qxrandom;

constexpr int64_t kCallsPerLasting = 2000;  // calls that share one order system and one graph
constexpr auto kPatience = std::chrono::seconds(60);  // for one call

struct {
  uint64_t seed;
  std::atomic<int64_t> number;
  const Call* call;
  uint64_t argumentState;  // the generator just before the arguments were made
  Lasting* lasting;
} progress = {};

// Makes the arguments of the failing call once more, to print them.
void report() {
  const Call* const call = progress.call;
  progress.call = nullptr;  // should this fail in turn, it is not tried again
  if (call == nullptr) return;
  const Function& function = *call->function;
  std::fprintf(stderr, "seed %" PRIu64 ", call %" PRId64 ": %s\narguments: ", progress.seed,
               progress.number.load(), function.name.c_str());
  Random again = {progress.argumentState};
  Context context = {again, *progress.lasting};
  const Arguments arguments = randomArguments(context, *call);
  for (size_t i = 0; i < arguments.size(); ++i) {
    std::fprintf(stderr, "%s%s", i == 0 ? "" : ", ",
                 described(arguments[i], function.parameters[i]).c_str());
  }
  std::fputc('\n', stderr);
}

void reportSignal(int signal) {
  std::signal(signal, SIG_DFL);
  report();
  std::raise(signal);
}

// Ends the program when one call takes too long.
void watch() {
  int64_t last = -1;
  for (;;) {
    std::this_thread::sleep_for(kPatience);
    if (progress.number == last) {
      std::fprintf(stderr, "a call does not return\n");
      report();
      std::_Exit(1);
    }
    last = progress.number;
  }
}

struct Options {
  int64_t calls = 200000;
  uint64_t seed = 1;
  const char* only = nullptr;
  bool list = false;
};

bool readOptions(int argc, char** argv, Options* options) {
  for (int i = 1; i < argc; ++i) {
    const bool hasValue = i + 1 < argc;
    if (std::strcmp(argv[i], "--list") == 0) {
      options->list = true;
    } else if (std::strcmp(argv[i], "--calls") == 0 && hasValue) {
      options->calls = std::strtoll(argv[++i], nullptr, 10);
    } else if (std::strcmp(argv[i], "--seed") == 0 && hasValue) {
      options->seed = std::strtoull(argv[++i], nullptr, 10);
    } else if (std::strcmp(argv[i], "--only") == 0 && hasValue) {
      options->only = argv[++i];
    } else {
      return false;
    }
  }
  return true;
}

// What the functions print to standard output is not looked at here.
bool turnOutputAside() {
  return std::freopen("printed.txt", "w", stdout) != nullptr;
}

void makeCalls(const std::vector<Call>& chosen, const Options& options) {
  Random random = {options.seed};
  Lasting lasting = {};
  progress.seed = options.seed;
  progress.lasting = &lasting;
  openLasting(lasting, random);
  for (int64_t n = 0; n < options.calls; ++n) {
    if (n % kCallsPerLasting == kCallsPerLasting - 1) {
      closeLasting(lasting);
      lasting = {};
      openLasting(lasting, random);
      writeFiles();
      if (!turnOutputAside()) std::abort();
    }
    const Call& call =
        chosen[static_cast<size_t>(below(random, static_cast<int32_t>(chosen.size())))];
    progress.argumentState = random.state;
    progress.number = n;
    progress.call = &call;
    Context context = {random, lasting};
    run(context, call, randomArguments(context, call));
    progress.call = nullptr;
    release(context);
  }
  closeLasting(lasting);
}

}  // namespace

#if defined(__SANITIZE_ADDRESS__)
// A huge allocation fails as it would on a small machine; a fault ends in the signal that reports
// the call.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
  return "allocator_may_return_null=1:max_allocation_size_mb=64:detect_leaks=1:abort_on_error=1:"
         "quarantine_size_mb=16";
}
extern "C" const char* __ubsan_default_options();
extern "C" const char* __ubsan_default_options() {
  return "print_stacktrace=1:abort_on_error=1";
}
#endif

int main(int argc, char** argv) {
  Options options;
  if (!readOptions(argc, argv, &options)) {
    std::fprintf(stderr, "usage: %s [--calls N] [--seed S] [--only NAME] [--list]\n", argv[0]);
    return 2;
  }
  std::vector<Call> chosen;
  for (const Function& function : every_function::functionTable()) {
    if (options.list) std::puts(function.name.c_str());
    if (options.only == nullptr || function.name == options.only) {
      chosen.push_back(careful(function));
    }
  }
  if (options.list) return 0;
  if (chosen.empty()) {
    std::fprintf(stderr, "no function of that name\n");
    return 2;
  }

  // Three folders deep: names such as ".." lead no further than into the upper two.
  const auto home = std::filesystem::current_path();
  const auto top =
      std::filesystem::temp_directory_path() /
      ("qxrandom" + std::to_string(options.seed) + "-" + std::to_string(options.calls));
  std::filesystem::remove_all(top);
  std::filesystem::create_directories(top / "middle" / "work");
  std::filesystem::current_path(top / "middle" / "work");
  writeFiles();
  if (!turnOutputAside()) return 1;

  for (const int signal : {SIGABRT, SIGSEGV, SIGFPE, SIGILL}) std::signal(signal, reportSignal);
  std::thread(watch).detach();
  makeCalls(chosen, options);

  std::filesystem::current_path(home);
  std::fclose(stdout);
  std::error_code ignored;
  std::filesystem::remove_all(top, ignored);
  std::fprintf(stderr, "%" PRId64 " random calls of %zu functions, seed %" PRIu64 "\n",
               options.calls, chosen.size(), options.seed);
  return 0;
}
