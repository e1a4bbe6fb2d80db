#include "tests/every_function/samples.h"

#include <cstdio>
#include <cstdlib>
#include <deque>

namespace every_function {
namespace {

bool holdsSamples(Kind kind) {
  return kind == Kind::kSeries || kind == Kind::kBars || kind == Kind::kCandles;
}

// The source of a merge by dates is not constant, since it may be the destination too; apart from
// that it is only read.
bool reads(const Function& function, size_t i) {
  const std::vector<Parameter>& all = function.parameters;
  const bool isSource = i == 0 && all.size() > 1 && all[1].kind == Kind::kBars;
  return holdsSamples(all[i].kind) && (all[i].constant || (isSource && all[i].kind == Kind::kBars));
}

// What one call stores; addresses stay.
struct Results {
  struct Cell {
    int32_t integer = 0;
    int16_t whole = 0;
    double real = 0.0;
    char text[4096] = {};
  };
  std::deque<qxArray> series;
  std::deque<qxBars> bars;
  std::deque<qxCandles> candles;
  std::deque<Cell> cells;
};

// Places in the samples and the given arguments.
struct Turns {
  size_t series = 0, bars = 0, integer = 0, real = 0, pointer = 0;
};

template <typename T>
Argument takeNext(const Arguments& given, size_t* turn) {
  for (size_t tried = 0; tried < given.size(); ++tried) {
    const Argument& next = given[(*turn)++ % given.size()];
    if (std::holds_alternative<T>(next)) return next;
  }
  std::fprintf(stderr, "no argument of a kind that the function takes is given\n");
  std::abort();
}

Argument sample(const Samples& samples, Kind kind, Turns* turns) {
  if (kind == Kind::kSeries) return samples.series[turns->series++ % 4];
  if (kind == Kind::kBars) return samples.bars[turns->bars++ % 2];
  return samples.candles;
}

Argument result(Results* results, Kind kind) {
  if (kind == Kind::kSeries) return &results->series.emplace_back();
  if (kind == Kind::kBars) return &results->bars.emplace_back();
  if (kind == Kind::kCandles) return &results->candles.emplace_back();
  Results::Cell& cell = results->cells.emplace_back();
  if (kind == Kind::kIntegerCell) return &cell.integer;
  if (kind == Kind::kShortCell) return &cell.whole;
  if (kind == Kind::kRealCell) return &cell.real;
  return cell.text;
}

Argument makeArgument(const Function& function, size_t i, const Samples& samples,
                      const Arguments& given, Results* results, Turns* turns) {
  const auto& [kind, constant, size] = function.parameters[i];
  if (reads(function, i)) return sample(samples, kind, turns);
  if (kind <= Kind::kUnsigned) return takeNext<int32_t>(given, &turns->integer);
  if (kind == Kind::kReal) return takeNext<double>(given, &turns->real);
  if (!constant && kind <= Kind::kCandles) return result(results, kind);
  return takeNext<const void*>(given, &turns->pointer);
}

void appendResult(Kind kind, const Argument& place, const qxBars* bars,
                  std::vector<double>* numbers) {
  if (kind == Kind::kSeries) appendSeries(*address<qxArray>(place), numbers);
  if (kind == Kind::kBars) appendBars(*address<qxBars>(place), numbers);
  if (kind == Kind::kIntegerCell) numbers->push_back(*address<int32_t>(place));
  if (kind == Kind::kShortCell) numbers->push_back(*address<int16_t>(place));
  if (kind == Kind::kRealCell) numbers->push_back(*address<double>(place));
  if (kind == Kind::kBytes) {
    numbers->insert(numbers->end(), address<char>(place), address<char>(place) + 4);
  }
  if (kind == Kind::kText) {
    for (const char* c = address<char>(place); *c != '\0'; ++c) numbers->push_back(*c);
  }
  if (kind == Kind::kCandles) {
    const uint8_t* codes = address<qxCandles>(place)->codes;
    if (codes != nullptr) numbers->insert(numbers->end(), codes, codes + 4 * bars->barsize);
  }
}

void release(Results* results) {
  for (qxArray& series : results->series) qxFreeArray(&series);
  for (qxBars& bars : results->bars) qxFreeBars(&bars);
  for (qxCandles& candles : results->candles) qxCandleFree(&candles);
}

}  // namespace

bool takesSamples(const Function& function) {
  bool any = false;
  for (size_t i = 0; i < function.parameters.size(); ++i) {
    const Parameter& p = function.parameters[i];
    const bool number = p.kind == Kind::kInteger || p.kind == Kind::kReal;
    const bool cell = p.kind == Kind::kIntegerCell || p.kind == Kind::kRealCell;
    if (!number && !cell && !holdsSamples(p.kind)) return false;
    any = any || reads(function, i);
  }
  return any;
}

bool fillsRecords(const Function& function) {
  for (size_t i = 0; i < function.parameters.size(); ++i) {
    if (holdsSamples(function.parameters[i].kind) && !reads(function, i)) return true;
  }
  return false;
}

SampleCall callWithSamples(const Function& function, const Samples& samples,
                           const Arguments& given) {
  SampleCall call;
  Results results;
  Turns turns;
  for (size_t i = 0; i < function.parameters.size(); ++i) {
    call.arguments.push_back(makeArgument(function, i, samples, given, &results, &turns));
  }
  qxSetMaxFirstValid(0);
  call.numbers.push_back(function.call(call.arguments));
  call.numbers.push_back(qxGetMaxFirstValid());
  for (size_t i = 0; i < function.parameters.size(); ++i) {
    const Parameter& p = function.parameters[i];
    if (!p.constant && !reads(function, i)) {
      appendResult(p.kind, call.arguments[i], samples.bars[0], &call.numbers);
    }
  }
  release(&results);
  return call;
}

void appendSeries(const qxArray& series, std::vector<double>* numbers) {
  numbers->insert(numbers->end(), {1.0 * series.size, 1.0 * series.firstvalid});
  numbers->insert(numbers->end(), series.data, series.data + series.datasize);
}

void appendBars(const qxBars& bars, std::vector<double>* numbers) {
  numbers->insert(numbers->end(),
                  {1.0 * bars.barsize, bars.begindate, bars.enddate, 1.0 * bars.frequency});
  for (const qxArray* series :
       {&bars.date, &bars.open, &bars.high, &bars.low, &bars.close, &bars.volume, &bars.openint}) {
    appendSeries(*series, numbers);
  }
}

}  // namespace every_function
