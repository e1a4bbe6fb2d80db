// Statistics of ranges, and the small functions of plain numbers.
#include <cmath>
#include <cstring>

#include "tests/same_bits/recorder.h"

namespace same_bits {
namespace {

struct Range {
  int32_t from, to;
};
const Range kRanges[] = {{0, 5104}, {100, 119}, {4000, 4000}, {2500, 1000}};

void computeNumbers() {
  std::vector<double> binary;
  for (const double number : {0.0, -1.0, 1455.219971, 1e-20, -3.25e10}) {
    const auto single = static_cast<float>(number);
    unsigned char format[4];
    float back = 0;
    qxIEEEtoMS(&single, format);
    qxMStoIEEE(format, &back);
    binary.insert(binary.end(), format, format + sizeof format);
    binary.push_back(static_cast<double>(back));
    for (const int32_t digits : {0, 2, 6}) compute("qxDecimals", qxDecimals, number, digits);
    compute("qxSlopePts", qxSlopePts, 3.0, number, 17.0, 0.1);
    compute("qxFibonacciProject", qxFibonacciProject, number, 1399.42, value, value, value);
    compute("qxFibonacciRetrace", qxFibonacciRetrace, number, 1399.42, value, value, value);
    compute("qxApproxEqual", qxApproxEqual, number, 1455.0, 0.001);
  }
  print("qxIEEEtoMS", "", binary);
  print("qxMStoIEEE", "", binary);
}

}  // namespace

void computeStatistics(const Prices& prices) {
  const qxArray *close = &prices.close, *volume = &prices.volume;
  for (const Range& range : kRanges) {
    const int32_t from = range.from, to = range.to;
    for (const int32_t flag : {0, 1}) {
      compute("qxArrayStats", qxArrayStats, volume, value, value, value, value, from, to, flag);
      compute("qxArrayStatsPos", qxArrayStatsPos, volume, whole, whole, from, to, flag);
      compute("qxStdDev", qxStdDev, close, flag, from, to);
      compute("qxCorCoef", qxCorCoef, close, volume, flag, from, to);
    }
    compute("qxBarStats", qxBarStats, &prices.bars, value, value, from, to);
    compute("qxStdErr", qxStdErr, close, from, to);
    compute("qxRegressionLine", qxRegressionLine, close, value, value, from, to);
    compute("qxCovariance", qxCovariance, close, volume, from, to);
    compute("qxDispersion", qxDispersion, close, from, to);
    compute("qxSlopeArrayPts", qxSlopeArrayPts, close, from, to);
    compute("qxSumPrev", qxSumPrev, close, to - from, to);
    compute("qxLastHigh", qxLastHigh, close, from, to);
    compute("qxLastLow", qxLastLow, close, from, to);
  }
  compute("qxFirstNonZeroItem", qxFirstNonZeroItem, &prices.upVolume);
  computeEach("qxGetArrayItem", qxGetArrayItem, close->size, close);
  computeNumbers();
}

}  // namespace same_bits
