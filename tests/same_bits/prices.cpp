// The sample prices: read through the library, with the series that breadth studies need derived
// from them.
#include <cmath>

#include "tests/same_bits/recorder.h"

namespace same_bits {
namespace {

constexpr int32_t kMissingBars = 100;  // bars that the second market lacks at its beginning

bool readBars(const std::string& path, qxBars* bars) {
  const qxTXTinfo info = {1, 0, 2, 3, 4, 5, 7, 0, QX_ORDER_YMD, 1, ","};
  const size_t slash = path.find_last_of("/\\");
  const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash);
  const std::string file = slash == std::string::npos ? path : path.substr(slash + 1);
  return qxTXTread(bars, folder.c_str(), file.c_str(), &info, 0, -1) == QX_SUCCESS &&
         bars->barsize > 2 * kMissingBars;
}

void deriveOther(Prices* prices) {
  const qxBars& bars = prices->bars;
  const int32_t size = bars.barsize - kMissingBars;
  qxAllocBars(&prices->other, size);
  for (int32_t i = 0; i < size; ++i) {
    const int32_t from = i + kMissingBars;
    const double shift = 3.0 + i % 7;
    prices->other.date.data[i] = bars.date.data[from];
    prices->other.open.data[i] = bars.close.data[from] + shift;
    prices->other.high.data[i] = bars.high.data[from] + 2 * shift;
    prices->other.low.data[i] = bars.low.data[from];
    prices->other.close.data[i] = (bars.high.data[from] + bars.low.data[from]) / 2 + shift;
    prices->other.volume.data[i] = bars.volume.data[from];
  }
}

void deriveBreadth(Prices* prices) {
  const qxBars& bars = prices->bars;
  for (qxArray* series :
       {&prices->advances, &prices->declines, &prices->upVolume, &prices->downVolume}) {
    qxAllocArray(series, bars.barsize);
  }
  for (int32_t i = 1; i < bars.barsize; ++i) {
    const double change = bars.close.data[i] - bars.close.data[i - 1];
    const double range = bars.high.data[i] - bars.low.data[i];
    const double above = bars.close.data[i] - bars.low.data[i];
    prices->advances.data[i] = std::floor(1000 + 10 * change);
    prices->declines.data[i] = std::floor(1000 - 8 * change);
    prices->upVolume.data[i] = range > 0 ? bars.volume.data[i] * above / range : 0.0;
    prices->downVolume.data[i] = bars.volume.data[i] - prices->upVolume.data[i];
  }
}

}  // namespace

bool loadPrices(const char* path, Prices* prices) {
  prices->path = path;
  qxBars& bars = prices->bars;
  if (!readBars(prices->path, &bars)) return false;
  for (int32_t i = 0; i < bars.barsize; ++i) {
    bars.openint.data[i] = std::floor(bars.volume.data[i] / 1000) + i;
  }
  deriveOther(prices);
  deriveBreadth(prices);
  qxCopyArray(&bars.close, &prices->late);
  prices->late.firstvalid = 7;
  prices->candles.equality = 0.002;
  return qxCandleConstruct(&bars, &prices->candles) == QX_SUCCESS;
}

void freePrices(Prices* prices) {
  qxFreeBars(&prices->bars);
  qxFreeBars(&prices->other);
  qxCandleFree(&prices->candles);
  for (qxArray* series : {&prices->late, &prices->advances, &prices->declines, &prices->upVolume,
                          &prices->downVolume}) {
    qxFreeArray(series);
  }
}

}  // namespace same_bits
