// Merging of consecutive bars: over a rolling number of bars, by calendar period and by seconds.
#include <algorithm>
#include <cmath>

#include "core/bars.h"
#include "core/calendar_periods.h"
#include "core/indicator_frame.h"
#include "core/numeric.h"

namespace {

// The bars that each of the seven series really holds, at most `count`.
int32_t heldBars(const qxBars& bars, int32_t count) {
  for (const qxArray* series : qx::seriesOf(bars)) count = std::min(count, qx::heldSize(*series));
  return std::max(0, count);
}

// The bars that a set has room for.
int32_t roomOf(const qxBars& bars) {
  int32_t room = bars.datasize;
  for (const qxArray* series : qx::seriesOf(bars)) {
    room = std::min(room, series->data == nullptr ? 0 : series->datasize);
  }
  return std::max(0, room);
}

bool sharesDates(const qxBars* source, const qxBars* destination) {
  return source->date.data == destination->date.data;
}

// A rolling merge of `period` bars for the bars first..count - 1.
struct Rolling {
  int64_t period;
  int64_t first;
  int64_t count;
};

// Folds the window of every bar: out[i] = seed(oldest), then fold(out[i], value) over the window's
// elements from the oldest on. Windows are cut at the first valid element; before it the result is
// 0. `out` may be the series: whole windows are folded from the last bar down, eight side by side,
// and what is left is one growing window, folded upwards.
template <typename Seed, typename Fold>
void foldWindows(const qxArray& in, const Rolling& rolling, Seed seed, Fold fold, double* out) {
  constexpr int64_t kLanes = 8;
  const double* data = in.data;
  const int64_t floor = std::max(0, in.firstvalid);
  const int64_t firstWhole = std::max(rolling.first, floor + rolling.period - 1);

  int64_t end = rolling.count;
  for (; end - kLanes >= firstWhole; end -= kLanes) {
    const double* oldest = data + (end - kLanes - rolling.period + 1);
    double folded[kLanes];
    for (int64_t lane = 0; lane < kLanes; ++lane) folded[lane] = seed(oldest[lane]);
    for (int64_t k = 0; k < rolling.period; ++k) {
      for (int64_t lane = 0; lane < kLanes; ++lane) {
        folded[lane] = fold(folded[lane], oldest[k + lane]);
      }
    }
    std::copy_n(folded, kLanes, out + end - kLanes);
  }
  for (; end > firstWhole; --end) {
    const double* oldest = data + (end - rolling.period);
    double folded = seed(*oldest);
    for (int64_t k = 0; k < rolling.period; ++k) folded = fold(folded, oldest[k]);
    out[end - 1] = folded;
  }

  for (int64_t i = rolling.first; i < std::min(floor, end); ++i) out[i] = 0.0;
  if (floor >= end) return;
  double growing = seed(data[floor]);
  for (int64_t i = floor; i < end; ++i) {
    growing = fold(growing, data[i]);
    if (i >= rolling.first) out[i] = growing;
  }
}

void mergeRolling(const qxBars& src, const Rolling& rolling, qxBars& dst) {
  const auto itself = [](double value) { return value; };
  const auto nothing = [](double) { return 0.0; };
  const auto higher = [](double high, double value) { return value > high ? value : high; };
  const auto lower = [](double low, double value) { return value < low ? value : low; };
  const auto sum = [](double total, double value) { return total + value; };
  for (int64_t i = rolling.count - 1; i >= rolling.first; --i) {
    dst.open.data[i] = src.open.data[std::max<int64_t>(0, i - rolling.period + 1)];
    dst.close.data[i] = src.close.data[i];
    dst.date.data[i] = src.date.data[i];
  }
  foldWindows(src.high, rolling, itself, higher, dst.high.data);
  foldWindows(src.low, rolling, itself, lower, dst.low.data);
  foldWindows(src.volume, rolling, nothing, sum, dst.volume.data);
  // Kept: open interest is summed like volume, here and below.
  foldWindows(src.openint, rolling, nothing, sum, dst.openint.data);
}

// One merged bar.
struct MergedBar {
  double date, open, high, low, close, volume, openint;
};

MergedBar barAt(const qxBars& bars, int32_t i) {
  return {bars.date.data[i],  bars.open.data[i],   bars.high.data[i],   bars.low.data[i],
          bars.close.data[i], bars.volume.data[i], bars.openint.data[i]};
}

void storeBar(qxBars& bars, int32_t i, const MergedBar& bar) {
  bars.date.data[i] = bar.date;
  bars.open.data[i] = bar.open;
  bars.high.data[i] = bar.high;
  bars.low.data[i] = bar.low;
  bars.close.data[i] = bar.close;
  bars.volume.data[i] = bar.volume;
  bars.openint.data[i] = bar.openint;
}

void addBar(MergedBar& group, const MergedBar& next) {
  if (next.high > group.high) group.high = next.high;
  if (next.low < group.low) group.low = next.low;
  group.volume += next.volume;
  group.openint += next.openint;
  group.close = next.close;
  group.date = next.date;
}

// A new group begins with each calendar period.
struct CalendarGroups {
  int32_t frequency;
  qx::CalendarDay before;  // of the bar before
};

void beginFirst(CalendarGroups& groups, double date) {
  groups.before = qx::calendarDay(groups.frequency, date);
}

bool beginsGroup(CalendarGroups& groups, double date) {
  const qx::CalendarDay now = qx::calendarDay(groups.frequency, date);
  const bool begins = qx::startsPeriod(groups.frequency, groups.before, now);
  groups.before = now;
  return begins;
}

// A new group begins with each day, and when the seconds since the group's first bar are over.
struct TimeGroups {
  int64_t seconds;
  int64_t day;          // of the bar before
  int64_t firstSecond;  // of the group
};

// The second of the day, rounded down.
int64_t secondOfDay(double date) {
  constexpr double kSecondsPerDay = 86400.0;
  return qx::truncateToInt64(std::floor(kSecondsPerDay * std::fabs(date - std::trunc(date))));
}

void beginFirst(TimeGroups& groups, double date) {
  groups.day = qx::truncateToInt64(date);
  groups.firstSecond = secondOfDay(date);
}

bool beginsGroup(TimeGroups& groups, double date) {
  const int64_t day = qx::truncateToInt64(date);
  const int64_t second = secondOfDay(date);
  const bool begins = day != groups.day || second - groups.firstSecond >= groups.seconds;
  groups.day = day;
  if (begins) groups.firstSecond = second;
  return begins;
}

// Merges the bars from `first` on, dated up to `end`, and returns the number of merged bars, at
// least one and at most `room`. A bar is stored when its group is complete, never behind the
// group's own bars, so `dst` may be `src`.
template <typename Groups>
int32_t mergeGroups(const qxBars& src, int32_t first, int32_t count, double end, Groups groups,
                    qxBars& dst, int32_t room) {
  MergedBar group = barAt(src, first);
  beginFirst(groups, group.date);
  int32_t k = 0;
  for (int32_t i = first + 1; i < count && src.date.data[i] <= end; ++i) {
    const MergedBar bar = barAt(src, i);
    if (!beginsGroup(groups, bar.date)) {
      addBar(group, bar);
      continue;
    }
    if (k + 1 >= room) break;
    storeBar(dst, k++, group);
    group = bar;
  }
  storeBar(dst, k, group);
  return k + 1;
}

// The frame of the two merges by date. `dst` is ready to be written.
template <typename Groups>
int32_t compress(qxBars* src, qxBars* dst, double start, double end, Groups groups) {
  const int32_t count = heldBars(*src, src->barsize);
  const int32_t room = roomOf(*dst);
  const double* dates = src->date.data;
  if (end == 0.0 && count > 0) end = dates[count - 1];
  int32_t first = 0;
  while (first < count && dates[first] < start) ++first;

  const bool anything = first < count && room > 0;
  const int32_t merged = anything ? mergeGroups(*src, first, count, end, groups, *dst, room) : 0;
  qxReSizeBars(dst, merged);
  if (sharesDates(src, dst)) *src = *dst;
  return QX_SUCCESS;
}

// Allocates an unallocated destination and gives it the source's descriptive fields.
int32_t prepareDestination(const qxBars* src, qxBars* dst) {
  if (dst->date.data == nullptr) {
    const int32_t status = qxAllocBars(dst, src->datasize);
    if (status != QX_SUCCESS) return status;
  }
  qxCopyBarInfo(src, dst);
  return QX_SUCCESS;
}

void store(double* result, double value) {
  if (result != nullptr) *result = value;
}

}  // namespace

int32_t qxGroupBars(const qxBars* bars, double* open, double* high, double* low, double* close,
                    double* volume, double* openint, int32_t period, int32_t index) {
  if (bars == nullptr || period < 1) return QX_ERR_INVALID_PARM;
  if (index < 0 || index >= heldBars(*bars, bars->barsize)) return QX_ERR_INVALID_PARM;
  const auto from = static_cast<int32_t>(std::max<int64_t>(0, int64_t{index} - period + 1));
  store(open, bars->open.data[from]);
  store(close, bars->close.data[index]);
  qxArrayStats(&bars->high, nullptr, high, nullptr, nullptr, from, index, 0);
  qxArrayStats(&bars->low, low, nullptr, nullptr, nullptr, from, index, 0);
  qxArrayStats(&bars->volume, nullptr, nullptr, nullptr, volume, from, index, 0);
  qxArrayStats(&bars->openint, nullptr, nullptr, nullptr, openint, from, index, 0);
  return QX_SUCCESS;
}

int32_t qxGroupBarsPeriods(const qxBars* source, qxBars* destination, int32_t period,
                           int32_t first) {
  if (source == nullptr || destination == nullptr || period < 1) return QX_ERR_INVALID_PARM;
  if (source->date.data == nullptr) return QX_ERR_INVALID_PARM;
  if (!sharesDates(source, destination)) {
    const int32_t status = prepareDestination(source, destination);
    if (status != QX_SUCCESS) return status;
  }
  const int32_t held = heldBars(*source, source->barsize);
  qxReSizeBars(destination, std::max(0, std::min(destination->datasize, source->barsize)));
  const int32_t count = std::min(held, roomOf(*destination));
  mergeRolling(*source, {period, std::max(0, first), count}, *destination);
  return QX_SUCCESS;
}

int32_t qxGroupBarsArray(const qxBars* source, qxBars* destination, int32_t period, int32_t first) {
  return qxGroupBarsPeriods(source, destination, period, first);
}

int32_t qxGroupBarsDate(qxBars* source, qxBars* destination, int32_t frequency, double start,
                        double end) {
  if (source == nullptr || destination == nullptr) return QX_ERR_INVALID_PARM;
  if (!qx::isCalendarFrequency(frequency)) return QX_ERR_INVALID_PARM;
  if (source->date.data == nullptr) return QX_ERR_INVALID_PARM;
  const int32_t status = prepareDestination(source, destination);
  if (status != QX_SUCCESS) return status;
  destination->frequency = frequency;
  return compress(source, destination, start, end, CalendarGroups{frequency, {}});
}

int32_t qxGroupBarsTime(qxBars* source, qxBars* destination, int32_t seconds, double start,
                        double end) {
  if (source == nullptr || destination == nullptr) return QX_ERR_INVALID_PARM;
  if (source->date.data == nullptr) return QX_ERR_INVALID_PARM;
  const int32_t status = prepareDestination(source, destination);
  if (status != QX_SUCCESS) return status;
  return compress(source, destination, start, end, TimeGroups{seconds, 0, 0});
}
