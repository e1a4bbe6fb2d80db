// Whole-series transforms: linear map, rescale, shift along the index and sums by calendar period.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/calendar_periods.h"
#include "core/indicator_frame.h"

namespace {

// Elements of a map from `in` to `out`: in place all of the series, otherwise what the argument
// check prepares. Series without storage are never in place, whatever their null blocks say.
int32_t mappedLength(const qxArray* in, qxArray* out) {
  if (in == nullptr || out == nullptr) return QX_ERR_INVALID_PARM;
  if (in->data != nullptr && qx::inPlace(in, out)) return qx::heldSize(*in);
  return qxCheckArgs({}, {in}, {out});
}

void mapLinear(const double* in, double* out, int64_t from, int64_t length, double multiplier,
               double addend) {
  for (int64_t i = from; i < length; ++i) out[i] = in[i] * multiplier + addend;
}

void rescale(const double* in, double* out, int64_t from, int64_t length, double low,
             double targetLow, double factor) {
  for (int64_t i = from; i < length; ++i) out[i] = targetLow + (in[i] - low) * factor;
}

void moveElements(double* data, int64_t to, int64_t from, int64_t count) {
  if (count > 0) std::memmove(data + to, data + from, static_cast<size_t>(count) * sizeof(double));
}

struct Sums {
  int64_t count;       // periods written
  int64_t firstValid;  // the first period that begins with a valid element
};

// Sums `in` within the periods of `dates`. Both series hold at least `length` elements, `out` at
// least one. `out` may be `in`: a period never stands behind its first element.
Sums sumPeriods(const double* dates, const double* in, int64_t length, int64_t inFirstValid,
                int32_t frequency, double* out, int64_t room) {
  int64_t k = 0;
  int64_t firstValid = -1;
  if (inFirstValid <= 0) {
    out[0] = in[0];
    firstValid = 0;
  }
  qx::CalendarDay before = length > 0 ? qx::calendarDay(frequency, dates[0]) : qx::CalendarDay();
  for (int64_t i = 1; i < length; ++i) {
    const qx::CalendarDay now = qx::calendarDay(frequency, dates[i]);
    const bool valid = i >= inFirstValid;
    if (qx::startsPeriod(frequency, before, now)) {
      if (k + 1 >= room) break;
      ++k;
      if (valid) {
        out[k] = in[i];
        if (firstValid < 0) firstValid = k;
      }
    } else if (valid) {
      // Kept: a period that begins before the first valid element adds to what its slot holds.
      out[k] += in[i];
    }
    before = now;
  }
  return {k + 1, std::max<int64_t>(0, firstValid)};
}

}  // namespace

int32_t qxMultAddArray(const qxArray* in, qxArray* out, double multiplier, double addend,
                       int32_t first) {
  const int32_t length = mappedLength(in, out);
  if (length < 1) return length;
  mapLinear(in->data, out->data, qx::startIndex(first, {in}), length, multiplier, addend);
  return QX_SUCCESS;
}

int32_t qxScaleArray(const qxArray* in, qxArray* out, double low, double high, double targetLow,
                     double targetHigh, int32_t skipZeros, int32_t first) {
  const int32_t length = mappedLength(in, out);
  if (length < 1) return length;
  const int64_t start = qx::startIndex(first, {in});
  const int32_t last = qx::heldSize(*in) - 1;
  if (low == 0.0 && high == 0.0 && start <= last) {
    qxArrayStats(in, &low, &high, nullptr, nullptr, static_cast<int32_t>(start), last, skipZeros);
  }
  // Kept: a target given from high to low still scales upwards from its first bound.
  const double factor = std::fabs(targetHigh - targetLow) / std::fabs(high - low);
  rescale(in->data, out->data, start, length, low, targetLow, factor);
  return QX_SUCCESS;
}

void qxShiftArray(qxArray* array, int32_t count) {
  if (array == nullptr || count == 0) return;
  const int64_t capacity = array->data == nullptr ? 0 : std::max(0, array->datasize);
  const int64_t size = qx::heldSize(*array);
  const int64_t shift = count;
  array->firstvalid =
      static_cast<int32_t>(std::min(std::max<int64_t>(0, array->firstvalid + shift), capacity));

  if (shift < 0) {
    const int64_t left = std::max<int64_t>(0, size + shift);
    moveElements(array->data, 0, -shift, left);
    array->size = static_cast<int32_t>(left);
    return;
  }
  const int64_t zeros = std::min(shift, capacity);
  const int64_t grown = shift < capacity ? std::min(size + shift, capacity) : capacity;
  moveElements(array->data, zeros, 0, grown - zeros);
  std::fill_n(array->data, zeros, 0.0);
  array->size = static_cast<int32_t>(grown);
}

int32_t qxGroupArray(const qxBars* bars, const qxArray* in, qxArray* out, int32_t frequency) {
  if (bars == nullptr || in == nullptr || out == nullptr) return QX_ERR_INVALID_PARM;
  if (!qx::isCalendarFrequency(frequency)) return QX_ERR_INVALID_PARM;
  if (bars->date.data == nullptr || qx::heldSize(*in) < 1) return QX_ERR_INVALID_PARM;
  if (out->data == nullptr) {
    const int32_t status = qxAllocArray(out, in->size);
    if (status != QX_SUCCESS) return status;
  }
  if (out->datasize < 1) return QX_ERR_INVALID_PARM;

  const int32_t length = qx::heldLength(bars->barsize, {&bars->date, in});
  const Sums sums = sumPeriods(bars->date.data, in->data, length, in->firstvalid, frequency,
                               out->data, out->datasize);
  qxReSizeArray(out, static_cast<int32_t>(sums.count));
  return qx::markFirstValid(sums.firstValid, {out});
}
