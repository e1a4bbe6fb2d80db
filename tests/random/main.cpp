// Random calls of every exported function: quorvex_random_calls [--calls N] [--seed S] [--only NAME]
// [--list]. A call that crashes prints its seed, number, function and arguments.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "tests/random/call_table.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

using namespace qxrandom;

constexpr int64_t kCallsPerLasting = 2000;  // calls that share one order system and one graph

struct Progress {
  uint64_t seed;
  int64_t number;
  const Call* call;
  uint64_t argumentState;  // the generator just before the arguments were made
  Lasting* lasting;
};

Progress progress = {};

void report() {
  if (progress.call == nullptr) return;
  std::fprintf(stderr, "seed %llu, call %lld: %s\n", static_cast<unsigned long long>(progress.seed),
               static_cast<long long>(progress.number), progress.call->name);
  Random again = {progress.argumentState};
  Context context = {again, *progress.lasting, {}, {}, {}, {}, {}};
  progress.call->run(context, true);
  std::fprintf(stderr, "arguments: %s\n", context.described.c_str());
}

// Files that the readers can find in the current folder.
void writeFiles(Random& random) {
  std::filesystem::create_directory("folder");
  std::ofstream("prices.csv") << "date,open,high,low,close,volume\n"
                                 "1999-03-15,10,12,9,11,100\n1999-03-16,11,13,10,12,200\n"
                                 "\n1999-03-17,12,14,11,13,300";
  std::ofstream("txtinfo.txt") << "delimit = ,\nskip=1\ndt=1\nop=2\nhi=3\nlo=4\ncl=5\nvol=6\n"
                                  "dtformat=YMD\n";
  std::ofstream master("master", std::ios::binary);
  for (int32_t i = 0; i < 53 * 4; ++i) master.put(i == 0 ? 3 : static_cast<char>(next(random)));
  std::ofstream data("F1.DAT", std::ios::binary);
  for (int32_t i = 0; i < 28 * 5; ++i) data.put(static_cast<char>(next(random)));
}

}  // namespace

#if defined(__SANITIZE_ADDRESS__)
// A huge allocation fails as it would on a small machine.
extern "C" const char* __asan_default_options() {
  return "allocator_may_return_null=1:max_allocation_size_mb=64:detect_leaks=1";
}
#endif

int main(int argc, char** argv) {
  int64_t calls = 200000;
  uint64_t seed = 1;
  const char* only = nullptr;
  for (int i = 1; i < argc; ++i) {
    const bool hasValue = i + 1 < argc;
    if (std::strcmp(argv[i], "--list") == 0) {
      for (const Call& call : callTable()) std::puts(call.name);
      return 0;
    }
    if (std::strcmp(argv[i], "--calls") == 0 && hasValue) {
      calls = std::strtoll(argv[++i], nullptr, 10);
    } else if (std::strcmp(argv[i], "--seed") == 0 && hasValue) {
      seed = std::strtoull(argv[++i], nullptr, 10);
    } else if (std::strcmp(argv[i], "--only") == 0 && hasValue) {
      only = argv[++i];
    } else {
      std::fprintf(stderr, "usage: %s [--calls N] [--seed S] [--only NAME] [--list]\n", argv[0]);
      return 2;
    }
  }

  std::vector<Call> chosen;
  for (const Call& call : callTable()) {
    if (only == nullptr || std::strcmp(only, call.name) == 0) chosen.push_back(call);
  }
  if (chosen.empty()) {
    std::fprintf(stderr, "no function of that name\n");
    return 2;
  }

  const auto home = std::filesystem::current_path();
  const auto folder = std::filesystem::temp_directory_path() /
                      ("qxrandom" + std::to_string(seed) + "-" + std::to_string(calls));
  std::filesystem::create_directories(folder);
  std::filesystem::current_path(folder);
  // What the functions print to standard output is not looked at here.
  if (std::freopen("printed.txt", "w", stdout) == nullptr) return 1;
#if defined(__SANITIZE_ADDRESS__)
  __sanitizer_set_death_callback(report);
#endif

  Random random = {seed};
  Lasting lasting = {};
  progress.seed = seed;
  progress.lasting = &lasting;
  writeFiles(random);
  openLasting(lasting, random);
  for (int64_t n = 0; n < calls; ++n) {
    if (n % kCallsPerLasting == kCallsPerLasting - 1) {
      closeLasting(lasting);
      lasting = {};
      openLasting(lasting, random);
      writeFiles(random);
      if (std::freopen("printed.txt", "w", stdout) == nullptr) return 1;
    }
    const Call& call = chosen[static_cast<size_t>(below(random, static_cast<int32_t>(chosen.size())))];
    progress.number = n;
    progress.call = &call;
    progress.argumentState = random.state;
    Context context = {random, lasting, {}, {}, {}, {}, {}};
    call.run(context, false);
    progress.call = nullptr;
    release(context);
  }
  closeLasting(lasting);
  std::filesystem::current_path(home);
  std::fclose(stdout);
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
  std::fprintf(stderr, "%lld random calls of %zu functions, seed %llu\n",
               static_cast<long long>(calls), chosen.size(), static_cast<unsigned long long>(seed));
  return 0;
}
