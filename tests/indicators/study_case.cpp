#include "tests/indicators/study_case.h"

#include <algorithm>
#include <utility>

#include "tests/support/real_bars.h"

namespace qxtest {

namespace {

constexpr size_t kMostOutputs = 5;
constexpr double kStale = 9.0;

Values numbersOf(const StudyCase& c) {
  Values numbers;
  for (const Number& number : c.numbers) numbers.push_back(number.value);
  return numbers;
}

int32_t call(const StudyCase& c, qxBars* bars, Series* outputs, const Values& numbers,
             int32_t start) {
  return c.study.call({bars, c.study.columns.c_str(), outputs, numbers, start});
}

int32_t statusFor(const StudyCase& c, const Values& numbers) {
  for (size_t k = 0; k < numbers.size(); ++k) {
    if (numbers[k] < c.numbers[k].least) return QX_ERR_INVALID_PARM;
  }
  return QX_SUCCESS;
}

// Outputs with storage of growing capacity, stale values and stale first valid indexes.
void reuse(Series* outputs, size_t count, int32_t capacity) {
  for (size_t k = 0; k < count; ++k) {
    qxFreeArray(outputs[k]);
    qxAllocArray(outputs[k], capacity + static_cast<int32_t>(k));
    std::fill_n(outputs[k].record.data, outputs[k].record.size, kStale);
    outputs[k].record.firstvalid = 11;
  }
}

// The expected values behind `shift` zeros.
void expectOutputs(const StudyCase& c, const Series* outputs, const std::vector<Values>& values,
                   int32_t shift) {
  for (size_t k = 0; k < values.size(); ++k) {
    SCOPED_TRACE("output " + std::to_string(k));
    Values expected(static_cast<size_t>(shift));
    expected.insert(expected.end(), values[k].begin(), values[k].end());
    EXPECT_EQ(outputs[k].record.firstvalid, c.firstValid[k] + shift);
    EXPECT_TRUE(seriesNear(outputs[k], expected));
  }
}

void checkValues(const StudyCase& c, const std::vector<Bar>& market) {
  Series outputs[kMostOutputs];
  BarSet bars(market);
  EXPECT_EQ(run(c, bars, outputs, INT32_MIN), QX_SUCCESS);
  expectOutputs(c, outputs, c.values, 0);
  reuse(outputs, c.values.size(), bars->barsize);
  EXPECT_EQ(run(c, bars, outputs, 0), QX_SUCCESS);
  expectOutputs(c, outputs, c.values, 0);
}

// Bars in front change nothing but the place, whatever they hold: the start counts, and the first
// valid index of each raising series; those of a bar set do not.
void checkStart(const StudyCase& c, const std::vector<Bar>& market) {
  constexpr int32_t kShift = 5;
  std::vector<Bar> shifted(kShift, Bar{39999, 7, 90, 3, 80, 1e6, 1});
  shifted[3] = {NAN, NAN, NAN, NAN, NAN, NAN, NAN};
  shifted.insert(shifted.end(), market.begin(), market.end());
  Series outputs[kMostOutputs];
  BarSet bars(shifted);
  if (c.study.columns == kBars) bars->date.firstvalid = bars->close.firstvalid = 9;
  EXPECT_EQ(run(c, bars, outputs, kShift), QX_SUCCESS);
  expectOutputs(c, outputs, c.values, kShift);
  for (const char letter : c.study.raising) {
    SCOPED_TRACE(letter);
    column(bars, letter)->firstvalid = kShift;
    reuse(outputs, c.values.size(), bars->barsize);
    EXPECT_EQ(run(c, bars, outputs, 1), QX_SUCCESS);
    expectOutputs(c, outputs, c.values, kShift);
    column(bars, letter)->firstvalid = 0;
  }
}

// Bars without range, without volume, with unchanged closes, equal volumes, no open interest.
void checkAwkwardBars(const StudyCase& c) {
  Series outputs[kMostOutputs];
  BarSet bars(
      barsFrom("10 10 10 10 100 50 / 10 12 10 12 0 60 / 12 12 12 12 300 55 / "
               "11 11 11 11 200 70 / 11 13 9 11 200 70 / 11 14 10 13 400 90 / "
               "13 13 8 9 500 0 / 9 12 9 12 100 40"));
  EXPECT_EQ(run(c, bars, outputs, 2), QX_SUCCESS);
  for (size_t k = 0; k < c.awkward.size(); ++k) {
    EXPECT_TRUE(seriesNear(outputs[k], c.awkward[k])) << "awkward bars, output " << k;
  }
}

// A start past the bars computes nothing.
void checkLateStart(const StudyCase& c, const std::vector<Bar>& market) {
  Series outputs[kMostOutputs];
  BarSet bars(market);
  EXPECT_EQ(run(c, bars, outputs, bars->barsize), QX_SUCCESS);
  for (size_t k = 0; k < c.values.size(); ++k) {
    EXPECT_EQ(outputs[k].values(), Values(c.values[k].size())) << "late start, output " << k;
    EXPECT_EQ(outputs[k].record.firstvalid, c.firstValid[k] + bars->barsize) << k;
  }
}

// One output that is shorter than the others limits the work of all to its length.
void checkShortOutput(const StudyCase& c, const std::vector<Bar>& market) {
  constexpr int32_t kShort = 9;
  BarSet bars(market), head(std::vector<Bar>(market.begin(), market.begin() + kShort));
  Series expected[kMostOutputs];
  EXPECT_EQ(run(c, head, expected, 0), QX_SUCCESS);
  for (size_t cut = 0; cut < c.values.size(); ++cut) {
    Series outputs[kMostOutputs];
    reuse(outputs, c.values.size(), bars->barsize);
    outputs[cut].record.datasize = kShort;
    EXPECT_EQ(run(c, bars, outputs, 0), QX_SUCCESS);
    EXPECT_EQ(outputs[cut].record.size, expected[cut].record.size);
    for (size_t k = 0; k < c.values.size(); ++k) {
      SCOPED_TRACE("output " + std::to_string(k) + " with a short output " + std::to_string(cut));
      EXPECT_EQ(outputs[k].record.firstvalid, expected[k].record.firstvalid);
      Values padded = expected[k].values();
      padded.resize(static_cast<size_t>(outputs[k].record.size));
      EXPECT_TRUE(seriesNear(outputs[k], padded));
    }
  }
}

// Checks precede writes.
void checkRefusals(const StudyCase& c, const std::vector<Bar>& market) {
  const size_t count = c.values.size();
  BarSet bars(market), none;
  Series outputs[kMostOutputs];
  EXPECT_EQ(run(c, nullptr, outputs, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(run(c, none, outputs, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(outputs[0].record.data, nullptr);
  EXPECT_EQ(run(c, bars, nullptr, 0), QX_ERR_INVALID_PARM);
  reuse(outputs, count, bars->barsize);
  for (size_t k = 0; k < count && !c.study.inPlace; ++k) {
    const qxArray kept = outputs[k].record;
    for (const char letter : c.study.columns) {
      outputs[k].record = *column(bars, letter);
      EXPECT_EQ(run(c, bars, outputs, 0), QX_ERR_INVALID_PARM) << "output " << k << " " << letter;
    }
    outputs[k].record = kept;
  }
  for (size_t k = 0; k < c.numbers.size(); ++k) {
    if (std::isinf(c.numbers[k].least)) continue;
    Values numbers = numbersOf(c);
    for (const double number : {c.numbers[k].least - 1.0, -1.0, double{INT32_MIN}}) {
      numbers[k] = number;
      EXPECT_EQ(call(c, bars, outputs, numbers, 0), QX_ERR_INVALID_PARM) << k << ": " << number;
    }
  }
  for (size_t k = 0; k < count; ++k) EXPECT_EQ(outputs[k][0], kStale);
  EXPECT_EQ(bars->close.data[0], market[0].close);
}

// Numbers of every size, starts past the data, a single bar, series of unequal size: a status, and
// outputs that stay within their storage (the sanitizers watch the rest).
void checkHostileNumbers(const StudyCase& c, const std::vector<Bar>& market) {
  BarSet whole(market), single({market[0]}), uneven(market);
  uneven->close.size = uneven->high.size = 5;
  uneven->low.size = uneven->volume.size = 1;
  for (qxBars* bars : {&whole.record, &single.record, &uneven.record}) {
    for (const int32_t start : {INT32_MIN, 0, 11, 12, INT32_MAX}) {
      for (const int32_t hostile : {INT32_MIN, INT32_MIN + 1, -2, -1, 0, 1, 12, 13, INT32_MAX}) {
        for (size_t changed = 0; changed <= c.numbers.size(); ++changed) {
          Values numbers = numbersOf(c);
          if (changed < numbers.size()) {
            numbers[changed] = hostile;
          } else {
            std::fill(numbers.begin(), numbers.end(), hostile);
          }
          Series outputs[kMostOutputs];
          EXPECT_EQ(call(c, bars, outputs, numbers, start), statusFor(c, numbers))
              << "number " << changed << " is " << hostile << ", start " << start;
          for (const Series& o : outputs) {
            EXPECT_GE(o.record.firstvalid, 0);
            EXPECT_LE(o.record.size, o.record.datasize);
            EXPECT_GE(o.record.size, 0);
          }
        }
      }
    }
  }
}

}  // namespace

qxArray* column(qxBars* bars, char letter) {
  return seriesOf(*bars)[1 + kBars.find(letter)];
}

StudyCase row(Study study, std::vector<Number> numbers, std::vector<int32_t> firstValid,
              std::vector<Values> values, std::vector<Values> awkward) {
  return {std::move(study), std::move(numbers), std::move(firstValid), std::move(values),
          std::move(awkward)};
}

std::string describe(const StudyCase& c) {
  std::string text = c.study.name;
  for (const Number& number : c.numbers) text += " " + std::to_string(number.value);
  return text;
}

int32_t run(const StudyCase& c, qxBars* bars, Series* outputs, int32_t start) {
  return call(c, bars, outputs, numbersOf(c), start);
}

void checkCases(const std::vector<StudyCase>& cases, const std::vector<Bar>& market) {
  for (const StudyCase& c : cases) {
    SCOPED_TRACE(describe(c));
    checkValues(c, market);
    checkStart(c, market);
    checkAwkwardBars(c);
    checkLateStart(c, market);
    if (!c.study.readsOn) checkShortOutput(c, market);
    checkRefusals(c, market);
    checkHostileNumbers(c, market);
  }
  qxSetMaxFirstValid(0);
}

void checkRealPrices(const std::vector<StudyCase>& cases) {
  withRealBars([&](BarSet& bars) {
    for (const StudyCase& c : cases) {
      Series outputs[kMostOutputs];
      EXPECT_EQ(run(c, bars, outputs, 0), QX_SUCCESS) << describe(c);
      for (const Series& o : outputs) expectFinite(o, describe(c).c_str());
    }
  });
}

}  // namespace qxtest
