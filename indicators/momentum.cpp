// Momentum: differences and rates of change, relative strength and its kin, exponential momentum.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/indicator_frame.h"
#include "core/numeric.h"
#include "quorvex.h"

namespace {

// Bars over which the relative volatility index takes its standard deviations.
constexpr int32_t kDeviationBars = 10;

// The fixed factors of qxMACD: the share of a new value and that of the average so far.
constexpr double kFastFactor = 0.15;
constexpr double kFastKept = 0.85;
constexpr double kSlowFactor = 0.075;
constexpr double kSlowKept = 0.925;

// The sizes of one bar's move: one of the two is 0.
struct Move {
  double up;
  double down;
};

double strength(double up, double down) {
  return 100.0 * up / (up + down);
}

double netStrength(double up, double down) {
  return 100.0 * (up - down) / (up + down);
}

// Averages the up and down moves of the bars from `first` on, plainly over the first `period` bars,
// then as Wilder does, and stores value(up, down). The plain part is divided by `period` even where
// the series ends within it. A move is read before its slot in `out` is written.
template <typename SeedMove, typename LaterMove>
void smoothMoves(double* out, int64_t first, int64_t length, int32_t period, SeedMove seedMove,
                 LaterMove laterMove, double (*value)(double, double)) {
  double up = 0.0;
  double down = 0.0;
  const int64_t seedEnd = std::min(first + period, length);
  int64_t i = first;
  for (; i < seedEnd; ++i) {
    const Move move = seedMove(i);
    up += move.up;
    down += move.down;
    out[i] = 0.0;
  }
  up /= period;
  down /= period;
  if (i > first && up + down != 0.0) out[i - 1] = value(up, down);

  const double kept = period - 1.0;
  for (; i < length; ++i) {
    const Move move = laterMove(i);
    up = (up * kept + move.up) / period;
    down = (down * kept + move.down) / period;
    out[i] = up + down == 0.0 ? 0.0 : value(up, down);
  }
}

// Gains and losses over `lag` bars.
void smoothChanges(const double* in, double* out, int64_t s, int64_t length, int32_t period,
                   int32_t lag, double (*value)(double, double)) {
  // A NaN counts as a loss while the averages are seeded, and as no move later.
  const auto seedMove = [in, lag](int64_t i) {
    return in[i] > in[i - lag] ? Move{in[i] - in[i - lag], 0.0} : Move{0.0, in[i - lag] - in[i]};
  };
  const auto laterMove = [in, lag](int64_t i) {
    return Move{in[i] > in[i - lag] ? in[i] - in[i - lag] : 0.0,
                in[i] <= in[i - lag] ? in[i - lag] - in[i] : 0.0};
  };
  smoothMoves(out, s + lag, length, period, seedMove, laterMove, value);
}

// The relative volatility index where out[i] holds the standard deviation of the bars that end at
// i.
void smoothDeviations(const double* in, double* out, int64_t first, int64_t length,
                      int32_t period) {
  const auto move = [in, out](int64_t i) {
    return Move{in[i] > in[i - 1] ? out[i] : 0.0, in[i - 1] > in[i] ? out[i] : 0.0};
  };
  smoothMoves(out, first, length, period, move, move, strength);
}

// Wilder's average of move(i) from s + 1 on; a seed that the series cuts short is averaged over the
// moves there are.
template <typename MoveOf>
void averageMoves(double* out, int64_t s, int64_t length, int32_t period, MoveOf move) {
  const int64_t seedEnd = std::min(s + period + 1, length);
  double sum = 0.0;
  int64_t i = s + 1;
  for (; i < seedEnd; ++i) sum += move(i);
  if (i > s + 1) out[i - 1] = sum / static_cast<double>(i - 1 - s);

  const double kept = period - 1.0;
  for (; i < length; ++i) out[i] = (out[i - 1] * kept + move(i)) / period;
}

void difference(const double* a, const double* b, double* out, int64_t s, int64_t length) {
  for (int64_t i = s; i < length; ++i) out[i] = a[i] - b[i];
}

void percentDifference(const double* a, const double* b, double* out, int64_t s, int64_t length) {
  for (int64_t i = s; i < length; ++i) {
    // Kept: the test is on a although b divides.
    out[i] = a[i] == 0.0 ? 0.0 : 100.0 * (a[i] - b[i]) / b[i];
  }
}

void change(const double* in, double* out, int64_t s, int64_t length, int32_t period) {
  for (int64_t i = s + period; i < length; ++i) out[i] = in[i] - in[i - period];
}

void rateOfChange(const double* in, double* out, int64_t s, int64_t length, int32_t period,
                  double scale) {
  for (int64_t i = s + period; i < length; ++i) {
    const double before = in[i - period];
    out[i] = before == 0.0 ? 0.0 : (in[i] - before) / before * scale;
  }
}

// Returns the number of elements that have a centred average.
int64_t detrend(const double* in, double* out, int64_t s, int64_t length, int32_t period) {
  const int64_t half = period / 2 + 1;
  double sum = 0.0;
  int64_t i = std::min(s, length);
  // Kept: at least two elements are summed, even with a period of 1, which divides by 1.
  for (; i < s + std::max(period, 2) && i < length; ++i) sum += in[i];
  if (i < length && i - 1 - half >= 0) out[i - 1 - half] = in[i - 1 - half] - sum / period;
  for (; i < length; ++i) {
    sum += in[i] - in[i - period];
    if (i - half >= 0) out[i - half] = in[i - half] - sum / period;
  }
  return std::max<int64_t>(0, i - half);
}

void convergence(const double* in, double* out, int64_t s, int64_t length) {
  if (s >= length) return;
  double fast = in[s];
  double slow = in[s];
  for (int64_t i = s + 1; i < length; ++i) {
    fast = kFastFactor * in[i] + kFastKept * fast;
    slow = kSlowFactor * in[i] + kSlowKept * slow;
    out[i] = fast - slow;
  }
}

void tripleExponentialChange(const double* in, double* out, int64_t s, int64_t length,
                             int32_t period) {
  if (s >= length) return;
  const double a = 2.0 / (period + 1.0);
  double e1 = in[s];
  double e2 = in[s];
  double e3 = in[s];
  for (int64_t i = s + 1; i < length; ++i) {
    const double previous = e3;
    e1 = a * in[i] + (1.0 - a) * e1;
    e2 = a * e1 + (1.0 - a) * e2;
    e3 = a * e2 + (1.0 - a) * e3;
    out[i] = 100.0 * (e3 - previous) / e3;
  }
}

using Combine = int32_t (*)(const qxArray*, const qxArray*, qxArray*, int32_t);

int32_t oscillateAverages(const qxArray* in, qxArray* out, int32_t period1, int32_t period2,
                          int32_t method, int32_t start, Combine combine) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<2> averages(length);
  if (averages.status != QX_SUCCESS) return averages.status;

  qxMovingAverage(in, &averages[0], method, period1, start);
  qxMovingAverage(in, &averages[1], method, period2, start);
  const int64_t first = qx::startIndex(start) + std::max(period1, period2) - 1;
  combine(&averages[0], &averages[1], out, qx::saturateToInt32(first));
  return QX_SUCCESS;
}

}  // namespace

int32_t qxOscillator(const qxArray* a, const qxArray* b, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({}, {a, b}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {a, b});
  difference(a->data, b->data, out->data, s, length);
  return qx::markFirstValid(s, {out});
}

int32_t qxOscillatorPct(const qxArray* a, const qxArray* b, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({}, {a, b}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {a, b});
  percentDifference(a->data, b->data, out->data, s, length);
  return qx::markFirstValid(s, {out});
}

int32_t qxRatio(const qxArray* a, const qxArray* b, qxArray* out, int32_t start) {
  const int32_t length = qxCheckArgs({}, {a, b}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {a});  // Kept: b does not raise the start index.
  for (int64_t i = s; i < length; ++i) {
    out->data[i] = b->data[i] == 0.0 ? 0.0 : a->data[i] / b->data[i];
  }
  return qx::markFirstValid(s, {out});
}

int32_t qxMomentum(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  if (period < 0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  change(in->data, out->data, s, length, period);
  return qx::markFirstValid(s + period, {out});
}

int32_t qxRateOfChange(const qxArray* in, qxArray* out, double scale, int32_t period,
                       int32_t start) {
  if (period < 0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  if (scale == 0.0) {
    change(in->data, out->data, s, length, period);
  } else {
    rateOfChange(in->data, out->data, s, length, period, scale);
  }
  return qx::markFirstValid(s + period, {out});
}

double qxROC(const qxArray* array, int32_t index, int32_t period, double scale) {
  if (array == nullptr) return 0.0;
  const int64_t size = qx::heldSize(*array);
  const int64_t before = int64_t{index} - period;
  if (index < 0 || index >= size || before < 0 || before >= size) return 0.0;
  if (before < array->firstvalid) return 0.0;
  const double now = array->data[index];
  const double then = array->data[before];
  if (scale == 0.0) return now - then;
  return then == 0.0 ? 0.0 : (now - then) / then * scale;
}

int32_t qxRMI(const qxArray* in, qxArray* out, int32_t period, int32_t lag, int32_t start) {
  if (lag < 0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  smoothChanges(in->data, out->data, s, length, period, lag, strength);
  return qx::markFirstValid(s + lag + period - 1, {out});
}

int32_t qxRSI(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  return qxRMI(in, out, period, 1, start);
}

int32_t qxUpAverage(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  const double* x = in->data;
  averageMoves(out->data, s, length, period,
               [x](int64_t i) { return x[i] > x[i - 1] ? x[i] - x[i - 1] : 0.0; });
  return qx::markFirstValid(s + period, {out});
}

int32_t qxDownAverage(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  const double* x = in->data;
  averageMoves(out->data, s, length, period,
               [x](int64_t i) { return x[i - 1] > x[i] ? x[i - 1] - x[i] : 0.0; });
  return qx::markFirstValid(s + period, {out});
}

int32_t qxPriceOscillator(const qxArray* in, qxArray* out, int32_t period1, int32_t period2,
                          int32_t method, int32_t start) {
  return oscillateAverages(in, out, period1, period2, method, start, qxOscillator);
}

int32_t qxPriceOscillatorPct(const qxArray* in, qxArray* out, int32_t period1, int32_t period2,
                             int32_t method, int32_t start) {
  return oscillateAverages(in, out, period1, period2, method, start, qxOscillatorPct);
}

int32_t qxDPO(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  if (period < 0) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  out->size = static_cast<int32_t>(detrend(in->data, out->data, s, length, period));
  return qx::markFirstValid(s + period - (period / 2 + 1) - 1, {out});
}

int32_t qxMACD(const qxArray* in, qxArray* macdOut, qxArray* signalOut, int32_t signalPeriod,
               int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {macdOut, signalOut});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  convergence(in->data, macdOut->data, s, length);
  qx::markFirstValid(s + 1, {macdOut});

  const qxArray macd = qx::headOf(*macdOut, length);
  qxExpMA(&macd, signalOut, signalPeriod, qx::saturateToInt32(s + 1));
  return QX_SUCCESS;
}

int32_t qxMACDx(const qxArray* in, qxArray* fastOut, qxArray* slowOut, qxArray* macdOut,
                qxArray* signalOut, qxArray* crossOut, int32_t period1, int32_t period2,
                int32_t signalPeriod, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {fastOut, slowOut, macdOut, signalOut, crossOut});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  const int32_t first = qx::saturateToInt32(s);
  const int32_t second = qx::saturateToInt32(s + 1);

  qxArray fast = qx::headOf(*fastOut, length);
  qxArray slow = qx::headOf(*slowOut, length);
  qxArray macd = qx::headOf(*macdOut, length);
  qxArray signal = qx::headOf(*signalOut, length);
  qxArray cross = qx::headOf(*crossOut, length);
  qxExpMA(in, &fast, std::min(period1, period2), first);
  qxExpMA(in, &slow, std::max(period1, period2), first);
  qxOscillator(&fast, &slow, &macd, first);
  qxExpMA(&macd, &signal, signalPeriod, second);
  // Kept: the fill excludes its last index, so that the last element is never tested.
  qxCrossOverFill(&macd, &signal, &cross, second, length - 1);

  qx::markFirstValid(s, {fastOut, slowOut, macdOut});
  return qx::markFirstValid(s + 1, {signalOut, crossOut});
}

int32_t qxTRIX(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  tripleExponentialChange(in->data, out->data, s, length, period);
  return qx::markFirstValid(s + 1, {out});
}

int32_t qxTSI(const qxArray* in, qxArray* out, int32_t period1, int32_t period2, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<2> moves(length);
  if (moves.status != QX_SUCCESS) return moves.status;
  const int64_t s = qx::startIndex(start, {in});
  for (int64_t i = s + 1; i < length; ++i) {
    moves[0].data[i] = in->data[i] - in->data[i - 1];
    moves[1].data[i] = std::fabs(moves[0].data[i]);
  }

  const int32_t first = qx::saturateToInt32(s + 1);
  for (qxArray& move : moves.arrays) {
    qxExpMA(&move, &move, period1, first);
    qxExpMA(&move, &move, period2, first);
  }
  qxRatio(&moves[0], &moves[1], out, first);
  return QX_SUCCESS;
}

int32_t qxRVIoriginal(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  qxStdDevMv(in, out, 1, kDeviationBars, qx::saturateToInt32(s));
  smoothDeviations(in->data, out->data, s + kDeviationBars - 1, length, period);
  return qx::markFirstValid(s + period + kDeviationBars - 2, {out});
}

int32_t qxRVI(const qxBars* bars, qxArray* out, int32_t period, int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> ofHighs(length);
  if (ofHighs.status != QX_SUCCESS) return ofHighs.status;

  qxArray ofLows = qx::headOf(*out, length);
  qxRVIoriginal(&bars->high, &ofHighs[0], period, start);
  qxRVIoriginal(&bars->low, &ofLows, period, start);
  const int64_t first = qx::startIndex(start) + period + kDeviationBars - 2;
  for (int64_t i = std::max<int64_t>(0, first); i < length; ++i) {
    out->data[i] = (ofHighs[0].data[i] + out->data[i]) / 2.0;
  }
  return qx::markFirstValid(first, {out});
}

int32_t qxInertia(const qxBars* bars, qxArray* out, int32_t rviPeriod, int32_t lsqPeriod,
                  int32_t start) {
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 1) return length;
  qx::ScratchArrays<1> volatility(length);
  if (volatility.status != QX_SUCCESS) return volatility.status;

  const int64_t first = qx::startIndex(start) + rviPeriod + kDeviationBars - 2;
  const int32_t status = qxRVI(bars, &volatility[0], rviPeriod, start);
  if (status != QX_SUCCESS) return status;
  qxLstSqrMA(&volatility[0], out, lsqPeriod, qx::saturateToInt32(first));
  return qx::markFirstValid(first + lsqPeriod - 1, {out});
}

int32_t qxNMO(const qxArray* in, qxArray* out, int32_t period, int32_t start) {
  if (period < 1) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({}, {in}, {out});
  if (length < 1) return length;
  const int64_t s = qx::startIndex(start, {in});
  smoothChanges(in->data, out->data, s, length, period, 1, netStrength);
  return qx::markFirstValid(s + period, {out});
}
