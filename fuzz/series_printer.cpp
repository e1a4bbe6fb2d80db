// The series printer: a header, a format, and as many series as any format of that length takes.
#include <limits>
#include <utility>

#include "fuzz/fuzz_support.h"

using namespace qxfuzz;

namespace {

constexpr size_t kSeries = 64;
constexpr size_t kLongestFormat = 2 * kSeries;  // a conversion has two characters at least

template <size_t... I>
int32_t print(const char* file, const char* header, const char* format, qxArray* series,
              std::index_sequence<I...>) {
  return qxArrayPrintf(file, 0, 0, 3, header, format, &series[I % 3]...);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input input = {data, size};
  const std::string header = takeLine(&input);
  const std::string format = takeBytes(&input, kLongestFormat);
  double values[][3] = {{36164.75, -0.0, 1e300},
                        {std::numeric_limits<double>::quiet_NaN(),
                         std::numeric_limits<double>::infinity(), -2.5e-310},
                        {-1.5, 0.0, 0.0}};
  qxArray series[] = {{values[0], 3, 3, 0}, {values[1], 3, 3, 2}, {values[2], 1, 3, 0}};
  const int32_t status = print(scratchFile("series.out").c_str(), header.c_str(), format.c_str(),
                               series, std::make_index_sequence<kSeries>());
  require(status == QX_SUCCESS, "any format prints");
  return 0;
}
