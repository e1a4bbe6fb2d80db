// CompuTrac data files read into bars and into one series.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>

#include "quorvex.h"

namespace {

constexpr int32_t kBars = 32000;  // the format counts records in 16 bits
constexpr int32_t kFields = 7;

void appendNumber(std::string* bytes, float value) {
  char number[4];
  qxIEEEtoMS(&value, number);
  bytes->append(number, sizeof number);
}

// A folder of one instrument, removed at the end of the program.
struct Folder {
  std::string path;

  Folder() {
    const auto folder = std::filesystem::temp_directory_path() /
                        ("qxbench" + std::to_string(std::random_device()()));
    std::filesystem::create_directories(folder);
    path = folder.string();
    std::string directory(2 * 53, '\0');
    directory[0] = 1;   // one entry
    directory[53] = 1;  // of file 1
    directory[57] = kFields;
    directory.replace(53 + 7, 5, "BENCH");
    directory[53 + 33] = 'D';
    directory.replace(53 + 36, 5, "BENCH");
    write(folder / "master", directory);

    std::string data(4 * kFields, '\0');
    const auto count = static_cast<int16_t>(kBars + 1);
    std::memcpy(data.data() + 2, &count, sizeof count);
    for (int32_t i = 0; i < kBars; ++i) {
      appendNumber(&data, static_cast<float>(990101 + i % 28));
      for (int32_t field = 1; field < kFields; ++field) {
        appendNumber(&data, static_cast<float>(100 * field + i % 50));
      }
    }
    write(folder / "F1.DAT", data);
  }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  static void write(const std::filesystem::path& name, const std::string& bytes) {
    std::FILE* file = std::fopen(name.string().c_str(), "wb");
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
  }
};

void readBars(benchmark::State& state) {
  const Folder folder;
  qxBars bars = {};
  for (auto _ : state) {
    const int32_t status = qxCTread(&bars, folder.path.c_str(), "BENCH", 0, -1);
    if (status != QX_SUCCESS) state.SkipWithError("the bars could not be read");
  }
  state.SetBytesProcessed(state.iterations() * int64_t{4} * kFields * kBars);
  qxFreeBars(&bars);
}

void readCloses(benchmark::State& state) {
  const Folder folder;
  qxArray closes = {};
  for (auto _ : state) {
    const int32_t status = qxCTreadarray(&closes, folder.path.c_str(), "BENCH", 6, 0, -1);
    if (status != QX_SUCCESS) state.SkipWithError("the closes could not be read");
  }
  state.SetBytesProcessed(state.iterations() * int64_t{4} * kFields * kBars);
  qxFreeArray(&closes);
}

BENCHMARK(readBars)->Name("compuTracBars")->Unit(benchmark::kMillisecond);
BENCHMARK(readCloses)->Name("compuTracCloses")->Unit(benchmark::kMillisecond);

}  // namespace
