// Text price files read into bars.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <random>
#include <string>

#include "quorvex.h"

namespace {

// A daily or a minute file of some 25 MB, removed at the end of the program.
struct PriceFile {
  std::string folder;
  std::string name;
  int64_t bytes;

  explicit PriceFile(bool minutes) : name(minutes ? "minutes.csv" : "days.csv") {
    const auto path = std::filesystem::temp_directory_path() /
                      ("qxbench" + std::to_string(std::random_device()()));
    std::filesystem::create_directories(path);
    folder = path.string();
    std::FILE* file = std::fopen((path / name).string().c_str(), "wb");
    std::mt19937 random(1);
    double price = 100.0;
    std::fputs("date,time,open,high,low,close,volume,openint\n", file);
    for (int i = 0; i < 500000; ++i) {
      char date[32];
      // Dates of some four centuries, then again from the first.
      qxFormatDate(30000 + (minutes ? i / 1440 : i % 150000), "yyyy-mm-dd", date);
      price += (static_cast<int>(random() % 200) - 100) / 100.0;
      std::fputs(date, file);
      if (minutes) std::fprintf(file, ",%02d:%02d:00", i / 60 % 24, i % 60);
      std::fprintf(file, ",%.2f,%.2f,%.2f,%.2f,%u,%u\n", price, price + 1.25, price - 1.5,
                   price + 0.5, static_cast<unsigned>(random() % 10000000),
                   static_cast<unsigned>(random() % 100000));
    }
    bytes = std::ftell(file);
    std::fclose(file);
  }
  ~PriceFile() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }
  PriceFile(const PriceFile&) = delete;
  PriceFile& operator=(const PriceFile&) = delete;
};

void readBars(benchmark::State& state, bool minutes) {
  const PriceFile file(minutes);
  const int32_t field = minutes ? 3 : 2;  // of the open price
  const qxTXTinfo info = {1,         minutes ? 2 : 0, field, field + 1, field + 2, field + 3,
                          field + 4, field + 5,       0,     1,         ","};
  qxBars bars = {};
  for (auto _ : state) {
    const int32_t status = qxTXTread(&bars, file.folder.c_str(), file.name.c_str(), &info, 0, -1);
    if (status != QX_SUCCESS) state.SkipWithError("the file could not be read");
  }
  state.SetBytesProcessed(state.iterations() * file.bytes);
  qxFreeBars(&bars);
}

BENCHMARK_CAPTURE(readBars, days, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readBars, minutes, true)->Unit(benchmark::kMillisecond);

}  // namespace
