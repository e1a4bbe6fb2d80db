// Moving extremes by blocks: the window that ends inside a block is a suffix of the block before
// it and a prefix of its own, so two comparisons per element serve any period.
#include "indicators/moving_windows.h"

#include <algorithm>
#include <limits>

#include "core/memory.h"

namespace qx {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

bool isNaN(double value) {
  return value != value;
}

// An element and where it stands.
struct Placed {
  double value;
  int64_t position;
};

// What stays of an earlier and a later candidate. Candidates are never NaN, so that any grouping
// of a window finds the same one.
struct Lower {
  static constexpr double kWorst = kInfinity;
  double operator()(double earlier, double later) const {
    return later < earlier ? later : earlier;
  }
  Placed operator()(Placed earlier, Placed later) const {
    return later.value < earlier.value ? later : earlier;
  }
};

struct Higher {
  static constexpr double kWorst = -kInfinity;
  double operator()(double earlier, double later) const {
    return later > earlier ? later : earlier;
  }
  Placed operator()(Placed earlier, Placed later) const {
    return later.value > earlier.value ? later : earlier;
  }
};

// Calls store(begin, end, winner) for each window, ends ascending. `suffixes` has room for one
// item per element of a period.
template <typename Item, typename Load, typename Pick, typename Store>
void slide(const Windows& windows, int64_t base, Item* suffixes, Load load, Pick pick,
           Store store) {
  const int64_t period = windows.period;
  const int64_t lastCut = std::min(windows.last, base + period - 2);
  if (windows.first <= lastCut) {
    Item winner = load(base);
    for (int64_t i = base; i <= lastCut; ++i) {
      winner = pick(winner, load(i));
      if (i >= windows.first) store(base, i, winner);
    }
  }
  for (int64_t block = base; block + period - 1 <= windows.last; block += period) {
    Item winner = load(block + period - 1);
    suffixes[period - 1] = winner;
    for (int64_t k = period - 2; k >= 0; --k) {
      winner = pick(load(block + k), winner);
      suffixes[k] = winner;
    }
    store(block, block + period - 1, winner);

    const int64_t next = block + period;
    const int64_t count = std::min(period - 1, windows.last - next + 1);
    if (count < 1) continue;
    winner = load(next);
    for (int64_t k = 0; k < count; ++k) {
      winner = pick(winner, load(next + k));
      store(block + k + 1, next + k, pick(suffixes[k + 1], winner));
    }
  }
}

template <typename Item, typename Load, typename Pick, typename Store>
int32_t slideWithScratch(const Windows& windows, Load load, Pick pick, Store store) {
  if (windows.period < 1) return QX_ERR_INVALID_PARM;
  const int64_t base = std::max({windows.first - windows.period + 1, windows.floor, int64_t{0}});
  if (base > windows.last || windows.first > windows.last) return QX_SUCCESS;

  // A period beyond the data has no full window and needs no suffixes.
  const int64_t room = std::min(windows.period, windows.last - base + 1);
  auto* suffixes = static_cast<Item*>(allocateZeroed(static_cast<uint64_t>(room), sizeof(Item)));
  if (suffixes == nullptr) return QX_ERR_MALLOC;
  slide(windows, base, suffixes, load, pick, store);
  release(suffixes);
  return QX_SUCCESS;
}

template <typename Pick>
int32_t movingExtreme(const double* series, const Windows& windows, double* out) {
  const auto load = [series](int64_t i) { return isNaN(series[i]) ? Pick::kWorst : series[i]; };
  const auto store = [series, out](int64_t begin, int64_t end, double winner) {
    const double oldest = series[begin];
    out[end] = isNaN(oldest) ? oldest : winner;
  };
  return slideWithScratch<double>(windows, load, Pick(), store);
}

template <typename Pick>
int32_t movingExtremePosition(const double* series, const Windows& windows, double* out) {
  const auto load = [series](int64_t i) {
    return Placed{isNaN(series[i]) ? Pick::kWorst : series[i], i};
  };
  const auto store = [series, out](int64_t begin, int64_t end, Placed winner) {
    out[end] = static_cast<double>(isNaN(series[begin]) ? begin : winner.position);
  };
  return slideWithScratch<Placed>(windows, load, Pick(), store);
}

}  // namespace

int32_t movingLowest(const double* series, const Windows& windows, double* out) {
  return movingExtreme<Lower>(series, windows, out);
}

int32_t movingHighest(const double* series, const Windows& windows, double* out) {
  return movingExtreme<Higher>(series, windows, out);
}

int32_t movingLowestPosition(const double* series, const Windows& windows, double* out) {
  return movingExtremePosition<Lower>(series, windows, out);
}

int32_t movingHighestPosition(const double* series, const Windows& windows, double* out) {
  return movingExtremePosition<Higher>(series, windows, out);
}

int32_t movingBarLowest(const qxBars& bars, const Windows& windows, double* out) {
  const double* const prices[] = {bars.open.data, bars.high.data, bars.low.data, bars.close.data};
  const double* close = bars.close.data;
  const auto load = [&prices](int64_t i) {
    double lowest = kInfinity;
    for (const double* price : prices) {
      if (price[i] != 0.0 && price[i] < lowest) lowest = price[i];
    }
    return lowest;
  };
  // The scan begins with the first non-zero close of the window, a NaN included, or else with 0.
  int64_t seed = 0;
  const auto store = [close, out, &seed](int64_t begin, int64_t end, double winner) {
    seed = std::max(seed, begin);
    while (seed <= end && close[seed] == 0.0) ++seed;
    if (seed > end) {
      out[end] = winner < 0.0 ? winner : 0.0;
    } else {
      out[end] = isNaN(close[seed]) ? close[seed] : winner;
    }
  };
  return slideWithScratch<double>(windows, load, Lower(), store);
}

int32_t movingBarHighest(const qxBars& bars, const Windows& windows, double* out) {
  const double* const prices[] = {bars.open.data, bars.high.data, bars.low.data, bars.close.data};
  const auto load = [&prices](int64_t i) {
    double highest = 0.0;
    for (const double* price : prices) {
      if (price[i] > highest) highest = price[i];
    }
    return highest;
  };
  const auto store = [out](int64_t, int64_t end, double winner) { out[end] = winner; };
  return slideWithScratch<double>(windows, load, Higher(), store);
}

}  // namespace qx
