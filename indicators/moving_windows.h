// Statistics over every trailing window of a series: extremes with constant work per bar, whatever
// the period, and sums that keep each window's own order of addition.
#ifndef QUORVEX_INDICATORS_MOVING_WINDOWS_H
#define QUORVEX_INDICATORS_MOVING_WINDOWS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "quorvex.h"

namespace qx {

// The windows of `period` elements that end at first, first + 1, ... last. None reaches before
// `floor`: those that would are cut there, and those that end before it are left out.
struct Windows {
  int64_t first;
  int64_t last;
  int64_t period;
  int64_t floor = 0;
};

// Extremes: out[i] for each window end i, in one pass. Values and positions are those of a scan
// from the oldest element on which only a strictly lower (higher) element replaces the candidate:
// the earliest of equal extremes wins (the two zeros are equal), a NaN that comes first stays, and
// a later NaN is never taken. `out` must not be the series. They return QX_SUCCESS, QX_ERR_MALLOC,
// or QX_ERR_INVALID_PARM for a period below 1; with no window they write nothing.
int32_t movingLowest(const double* series, const Windows& windows, double* out);
int32_t movingHighest(const double* series, const Windows& windows, double* out);

// The index of the extreme, a whole number, so that a scratch series can hold it.
int32_t movingLowestPosition(const double* series, const Windows& windows, double* out);
int32_t movingHighestPosition(const double* series, const Windows& windows, double* out);

// The low and the high that qxBarStats finds in each window of bars: open, high, low and close
// together, zeros ignored by the low. The four series must hold the bars up to windows.last.
int32_t movingBarLowest(const qxBars& bars, const Windows& windows, double* out);
int32_t movingBarHighest(const qxBars& bars, const Windows& windows, double* out);

// Windows that are summed side by side. Each lane is another window with its own sum in its own
// order, so the values are those of one window after the other.
template <size_t N>
using Lanes = std::array<double, N>;

// Calls compute(lanes, i) until every index of first..last is covered: `lanes` is an integral
// constant N, and the call is to compute the N outputs i .. i + N - 1. The walk goes from the end
// downwards, so that the summed terms may lie in the output itself.
template <typename Compute>
inline void byLanes(int64_t first, int64_t last, Compute compute) {
  int64_t end = last;
  for (; end - first + 1 >= 64; end -= 64) {
    compute(std::integral_constant<size_t, 64>(), end - 63);
  }
  for (; end - first + 1 >= 8; end -= 8) compute(std::integral_constant<size_t, 8>(), end - 7);
  for (; end >= first; --end) compute(std::integral_constant<size_t, 1>(), end);
}

// The sums of N neighbouring windows of `count` elements, the first of which begins at `from`. The
// term of element j, the k-th (from 0) of the window in `lane`, is term(j, k, lane). The lanes are
// the inner loop, which compilers vectorise; four elements a turn save loads of the sums.
template <size_t N, typename Term>
inline Lanes<N> windowSums(int64_t from, int64_t count, Term term) {
  Lanes<N> sums = {};
  int64_t k = 0;
  for (; k + 3 < count; k += 4) {
    for (size_t lane = 0; lane < N; ++lane) {
      const int64_t j = from + k + static_cast<int64_t>(lane);
      sums[lane] = sums[lane] + term(j, k, lane) + term(j + 1, k + 1, lane) +
                   term(j + 2, k + 2, lane) + term(j + 3, k + 3, lane);
    }
  }
  for (; k < count; ++k) {
    for (size_t lane = 0; lane < N; ++lane) {
      sums[lane] += term(from + k + static_cast<int64_t>(lane), k, lane);
    }
  }
  return sums;
}

}  // namespace qx

#endif  // QUORVEX_INDICATORS_MOVING_WINDOWS_H
