// Series transforms, bar compression, and the readers of number columns.
#include "tests/same_bits/recorder.h"

namespace same_bits {
namespace {

void printBars(const char* name, const std::string& parameters, int32_t status, qxBars* bars) {
  std::vector<double> numbers = {static_cast<double>(status)};
  appendBars(*bars, &numbers);
  print(name, parameters, numbers);
  qxFreeBars(bars);
}

// The source of a merge by dates is not constant: it may share its storage with the destination.
void computeCompression(const Prices& prices) {
  qxBars copy = {};
  qxBars* bars = &copy;
  qxCopyBars(&prices.bars, bars);
  for (int32_t frequency = QX_FREQ_DAILY; frequency <= QX_FREQ_YEARLY; ++frequency) {
    const std::string parameters = label(frequency);
    qxBars merged = {};
    int32_t status = qxGroupBarsDate(bars, &merged, frequency, 37000.5, 0.0);
    printBars("qxGroupBarsDate", parameters, status, &merged);
    compute("qxGroupArray", qxGroupArray, bars, &bars->volume, out, frequency);
  }
  for (const int32_t period : {1, 5, 21}) {
    const std::string parameters = label(period);
    qxBars merged = {};
    int32_t status = qxGroupBarsPeriods(bars, &merged, period, 10);
    printBars("qxGroupBarsPeriods", parameters, status, &merged);
    status = qxGroupBarsArray(bars, &merged, period, 0);
    printBars("qxGroupBarsArray", parameters, status, &merged);
    compute("qxGroupBars", qxGroupBars, bars, value, value, value, value, value, value, period,
            3000);
  }

  // The daily bars become minutes of a few days.
  qxBars intraday = {};
  qxCopyBars(bars, &intraday);
  for (int32_t i = 0; i < intraday.barsize; ++i) {
    intraday.date.data[i] = 40000.0 + i / 400 + (i % 400 + 570) / 1440.0;
  }
  for (const int32_t seconds : {300, 3600}) {
    qxBars merged = {};
    const int32_t status = qxGroupBarsTime(&intraday, &merged, seconds, 40001.0, 40010.0);
    printBars("qxGroupBarsTime", label(seconds), status, &merged);
  }
  qxFreeBars(&intraday);
  qxFreeBars(bars);
}

void computeColumns(const Prices& prices) {
  std::vector<double> numbers;
  appendBars(prices.bars, &numbers);
  print("qxTXTread", "", numbers);
  for (const int32_t column : {2, 5, 6, 7}) {
    qxArray values = {};
    numbers = {static_cast<double>(qxTXT2Array(prices.path.c_str(), &values, ",", 1, column))};
    appendSeries(values, &numbers);
    print("qxTXT2Array", label(column), numbers);
    qxFreeArray(&values);
  }
}

}  // namespace

void computeTransforms(const Prices& prices) {
  const qxArray* close = &prices.close;
  for (const double factor : {1.0, -0.1, 3.3}) {
    compute("qxMultAddArray", qxMultAddArray, close, out, factor, 1 / factor, 10);
    compute("qxScaleArray", qxScaleArray, close, out, 0.0, 0.0, factor, 100.0, 1, 10);
    compute("qxScaleArray", qxScaleArray, close, out, 500.0, 2000.0, factor, 100.0, 0, 0);
  }
  for (const int32_t interval : {1, 20}) {
    compute("qxFillInterval", qxFillInterval, &prices.bars, out, interval, 7);
  }
  for (const int32_t count : {-3, 3}) {
    qxArray shifted = {};
    qxCopyArray(close, &shifted);
    qxShiftArray(&shifted, count);
    std::vector<double> numbers;
    appendSeries(shifted, &numbers);
    print("qxShiftArray", label(count), numbers);
    qxFreeArray(&shifted);
  }
  computeCompression(prices);
  computeColumns(prices);
}

}  // namespace same_bits
