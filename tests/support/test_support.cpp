#include "tests/support/test_support.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <random>
#include <sstream>

namespace qxtest {

std::vector<double> valuesOf(const qxArray& series) {
  return series.data == nullptr ? std::vector<double>()
                                : std::vector<double>(series.data, series.data + series.size);
}

double sumOf(const qxArray& series) {
  const auto values = valuesOf(series);
  return std::accumulate(values.begin(), values.end(), 0.0);
}

Series::Series(std::initializer_list<double> values, int32_t firstValid)
    : Series(std::vector<double>(values), firstValid) {}

Series::Series(const std::vector<double>& values, int32_t firstValid) {
  EXPECT_EQ(qxAllocArray(&record, static_cast<int32_t>(values.size())), QX_SUCCESS);
  std::copy(values.begin(), values.end(), record.data);
  record.firstvalid = firstValid;
}

std::vector<Bar> barsFrom(const std::string& text) {
  std::vector<Bar> bars;
  std::istringstream lines(text);
  std::string line;
  while (std::getline(lines, line, '/')) {
    Bar bar = {40000.0 + static_cast<double>(bars.size()), 0, 0, 0, 0, 100, 0};
    std::istringstream words(line);
    std::string word;
    for (double* cell : {&bar.open, &bar.high, &bar.low, &bar.close, &bar.volume, &bar.openint}) {
      if (words >> word) *cell = std::stod(word);
    }
    bars.push_back(bar);
  }
  return bars;
}

BarSet::BarSet(std::initializer_list<Bar> bars) : BarSet(std::vector<Bar>(bars)) {}

BarSet::BarSet(const std::vector<Bar>& bars) {
  EXPECT_EQ(qxAllocBars(&record, static_cast<int32_t>(bars.size())), QX_SUCCESS);
  for (size_t i = 0; i < bars.size(); ++i) {
    const Bar& bar = bars[i];
    const double values[] = {bar.date,  bar.open,   bar.high,   bar.low,
                             bar.close, bar.volume, bar.openint};
    for (size_t k = 0; k < 7; ++k) seriesOf(record)[k]->data[i] = values[k];
  }
}

std::ostream& operator<<(std::ostream& out, const Bar& bar) {
  return out << bar.date << ": " << bar.open << " " << bar.high << " " << bar.low << " "
             << bar.close << ", " << bar.volume << ", " << bar.openint;
}

std::array<qxArray*, 7> seriesOf(qxBars& bars) {
  return {&bars.date, &bars.open, &bars.high, &bars.low, &bars.close, &bars.volume, &bars.openint};
}

std::vector<Bar> barsOf(const qxBars* bars) {
  std::vector<Bar> result;
  for (int32_t i = 0; bars->date.data != nullptr && i < bars->barsize; ++i) {
    result.push_back({bars->date.data[i], bars->open.data[i], bars->high.data[i], bars->low.data[i],
                      bars->close.data[i], bars->volume.data[i], bars->openint.data[i]});
  }
  return result;
}

const std::vector<Bar>& workedBars() {
  static const std::vector<Bar> bars = {
      {40000, 50, 52, 49, 51, 1000, 5000}, {40001, 51, 54, 50, 53, 1200, 5100},
      {40002, 53, 55, 52, 52, 900, 5050},  {40003, 52, 53, 50, 51, 1100, 5000},
      {40004, 51, 52, 48, 49, 1500, 5200}, {40005, 49, 51, 47, 50, 1300, 5300},
      {40006, 50, 53, 50, 53, 1700, 5400}, {40007, 53, 56, 52, 55, 1600, 5450},
      {40008, 55, 57, 54, 54, 1000, 5450}, {40009, 54, 54, 51, 52, 1400, 5300},
      {40010, 52, 55, 52, 55, 1250, 5350}, {40011, 55, 58, 54, 57, 1800, 5500}};
  return bars;
}

::testing::AssertionResult near(double actual, double expected, double tolerance) {
  const bool equal = actual == expected || (std::isnan(actual) && std::isnan(expected));
  const double scale = std::max(1.0, std::fabs(expected));
  if (equal || std::fabs(actual - expected) <= tolerance * scale) {
    return ::testing::AssertionSuccess();
  }
  char text[96];
  std::snprintf(text, sizeof text, "actual %.17g, expected %.17g", actual, expected);
  return ::testing::AssertionFailure() << text;
}

::testing::AssertionResult seriesNear(const Series& actual, const std::vector<double>& expected,
                                      double tolerance) {
  if (actual.record.size != static_cast<int32_t>(expected.size())) {
    return ::testing::AssertionFailure()
           << "actual size " << actual.record.size << ", expected size " << expected.size();
  }
  for (size_t i = 0; i < expected.size(); ++i) {
    const auto result = near(actual[static_cast<int32_t>(i)], expected[i], tolerance);
    if (!result) {
      return ::testing::AssertionFailure() << "element " << i << ": " << result.message();
    }
  }
  return ::testing::AssertionSuccess();
}

::testing::AssertionResult gives(int32_t status, const Series& out,
                                 const std::vector<double>& expected, double tolerance) {
  if (status != QX_SUCCESS) return ::testing::AssertionFailure() << "status " << status;
  return seriesNear(out, expected, tolerance);
}

std::string samplePath(const std::string& name) {
  return std::string(QX_SAMPLES_DIR) + "/" + name;
}

std::string testDataPath(const std::string& name) {
  const char* folder = std::getenv("QX_TEST_DATA");
  return folder == nullptr || *folder == '\0' ? std::string() : std::string(folder) + "/" + name;
}

TemporaryFolder::TemporaryFolder() {
  static std::atomic<unsigned> count{0};
  std::random_device seed;
  const auto name = "qx" + std::to_string(seed()) + "-" + std::to_string(count++);
  const auto folder = std::filesystem::temp_directory_path() / name;
  std::filesystem::create_directories(folder);
  path = folder.string();
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

std::string TemporaryFolder::file(const std::string& name) const {
  return (std::filesystem::path(path) / name).string();
}

std::string TemporaryFolder::write(const std::string& name, const std::string& bytes) const {
  const std::string target = file(name);
  std::ofstream(target, std::ios::binary)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return target;
}

std::string readFile(const std::string& path, bool text) {
  std::ifstream in(path, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (text) {
    for (size_t at = 0; (at = bytes.find("\r\n", at)) != std::string::npos; ++at)
      bytes.erase(at, 1);
  }
  return bytes;
}

}  // namespace qxtest
