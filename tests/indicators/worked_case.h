// One case per indicator: its outputs over the twelve worked bars, and what holds for every
// indicator whatever it computes.
#ifndef QUORVEX_TESTS_INDICATORS_WORKED_CASE_H
#define QUORVEX_TESTS_INDICATORS_WORKED_CASE_H

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "tests/support/real_bars.h"
#include "tests/support/test_support.h"

namespace qxtest {

// What a call may read: bars, their closes and their opens as series of their own.
struct Inputs {
  const qxBars* bars;
  const qxArray* in;
  const qxArray* other;
};

struct Numbers {
  std::array<int32_t, 4> p = {};
  double k = 0.0;
  int32_t method = 0;
};

struct WorkedCase {
  const char* name;
  int32_t (*call)(Inputs x, Series* o, Numbers n, int32_t start);
  Numbers numbers;
  std::vector<int32_t> firstValid;          // of each output, from start 0
  std::vector<std::vector<double>> values;  // of each output
};

inline std::vector<double> closesOf(const std::vector<Bar>& bars) {
  std::vector<double> values;
  for (const Bar& bar : bars) values.push_back(bar.close);
  return values;
}

inline std::vector<double> opensOf(const std::vector<Bar>& bars) {
  std::vector<double> values;
  for (const Bar& bar : bars) values.push_back(bar.open);
  return values;
}

// Bars with their closes and opens as series; firstValid is that of the two series.
struct CaseInputs {
  BarSet bars;
  Series in, other;

  explicit CaseInputs(const std::vector<Bar>& from, int32_t firstValid = 0)
      : bars(from), in(closesOf(from), firstValid), other(opensOf(from), firstValid) {}
  Inputs get() { return {bars, in, other}; }
};

inline void expectOutputs(const WorkedCase& c, const Series* outputs, int32_t shift) {
  for (size_t k = 0; k < c.values.size(); ++k) {
    std::vector<double> expected(static_cast<size_t>(shift), 0.0);
    expected.insert(expected.end(), c.values[k].begin(), c.values[k].end());
    EXPECT_EQ(outputs[k].record.firstvalid, c.firstValid[k] + shift) << "output " << k;
    EXPECT_TRUE(seriesNear(outputs[k], expected)) << "output " << k;
  }
}

// Outputs with storage of growing capacity, stale values and stale first valid indexes.
inline void reuse(Series* outputs, size_t count, int32_t capacity) {
  for (size_t k = 0; k < count; ++k) {
    qxFreeArray(outputs[k]);
    qxAllocArray(outputs[k], capacity + static_cast<int32_t>(k));
    for (int32_t i = 0; i < outputs[k].record.size; ++i) outputs[k].record.data[i] = 9.0;
    outputs[k].record.firstvalid = 11;
  }
}

inline void checkWorkedValues(const WorkedCase& c) {
  SCOPED_TRACE(c.name);
  const size_t count = c.values.size();
  Series outputs[5];
  CaseInputs worked(workedBars());
  EXPECT_EQ(c.call(worked.get(), outputs, c.numbers, INT32_MIN), QX_SUCCESS);
  expectOutputs(c, outputs, 0);
  reuse(outputs, count, 12);
  EXPECT_EQ(c.call(worked.get(), outputs, c.numbers, 0), QX_SUCCESS);
  expectOutputs(c, outputs, 0);

  // Five bars before the start change nothing, whatever they hold; the first valid indexes of a bar
  // set are not looked at.
  std::vector<Bar> shifted(5, Bar{39999, 7, 90, 3, 80, 1, 1});
  shifted.insert(shifted.end(), workedBars().begin(), workedBars().end());
  CaseInputs later(shifted, 5);
  later.bars->close.firstvalid = later.bars->date.firstvalid = 9;
  reuse(outputs, count, 17);
  EXPECT_EQ(c.call(later.get(), outputs, c.numbers, 5), QX_SUCCESS);
  expectOutputs(c, outputs, 5);
}

// One output that is shorter than the others limits the work of all to its length.
inline void checkShortOutput(const WorkedCase& c) {
  SCOPED_TRACE(c.name);
  constexpr int32_t kShort = 9;
  const auto& bars = workedBars();
  CaseInputs worked(bars), head(std::vector<Bar>(bars.begin(), bars.begin() + kShort));
  Series expected[5];
  EXPECT_EQ(c.call(head.get(), expected, c.numbers, 0), QX_SUCCESS);
  for (size_t cut = 0; cut < c.values.size(); ++cut) {
    Series outputs[5];
    reuse(outputs, c.values.size(), 12);
    outputs[cut].record.datasize = kShort;
    EXPECT_EQ(c.call(worked.get(), outputs, c.numbers, 0), QX_SUCCESS);
    for (size_t k = 0; k < c.values.size(); ++k) {
      SCOPED_TRACE(k);
      EXPECT_EQ(outputs[k].record.firstvalid, expected[k].record.firstvalid);
      if (cut == k) {
        EXPECT_EQ(outputs[k].record.size, expected[k].record.size);
      }
      for (int32_t i = 0; i < outputs[k].record.size; ++i) {
        EXPECT_TRUE(near(outputs[k][i], i < expected[k].record.size ? expected[k][i] : 0.0)) << i;
      }
    }
  }
}

inline void checkRefusals(const WorkedCase& c) {
  SCOPED_TRACE(c.name);
  CaseInputs worked(workedBars());
  const Inputs x = {worked.bars, &worked.bars->close, &worked.bars->open};
  for (size_t k = 0; k < c.values.size(); ++k) {
    Series outputs[5];
    reuse(outputs, c.values.size(), 12);
    const qxArray kept = outputs[k].record;
    outputs[k].record = worked.bars->close;
    EXPECT_EQ(c.call(x, outputs, c.numbers, 0), QX_ERR_INVALID_PARM) << "output " << k;
    outputs[k].record = kept;
    EXPECT_EQ(outputs[0][0], 9.0) << "checks precede writes";
  }
  EXPECT_EQ(worked.bars->close.data[0], 51.0);

  Series fresh[5];
  EXPECT_EQ(c.call({nullptr, nullptr, nullptr}, fresh, c.numbers, 0), QX_ERR_INVALID_PARM);
  CaseInputs none({});
  EXPECT_EQ(c.call(none.get(), fresh, c.numbers, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(fresh[0].record.data, nullptr);
}

// Numbers of every size, starts past the data, a single bar, series of unequal size: a status, and
// outputs that stay within their storage (the sanitizers watch the rest).
inline void checkHostileNumbers(const WorkedCase& c) {
  SCOPED_TRACE(c.name);
  constexpr int32_t kNumbers[] = {INT32_MIN, INT32_MIN + 1, -2, -1, 0, 1, 12, 13, INT32_MAX};
  CaseInputs worked(workedBars(), 1), single({workedBars()[0]});
  qxBars uneven = worked.bars.record;
  uneven.close.size = uneven.high.size = 5;
  uneven.low.size = 0;
  const Inputs inputs[] = {worked.get(), single.get(), {&uneven, worked.in, worked.other}};
  for (const Inputs& x : inputs) {
    for (int32_t start : {INT32_MIN, 0, 11, 12, INT32_MAX}) {
      for (int32_t number : kNumbers) {
        for (size_t changed = 0; changed < c.numbers.p.size() + 2; ++changed) {
          Numbers n = c.numbers;
          if (changed < n.p.size()) n.p[changed] = number;
          if (changed == n.p.size()) n.p.fill(number);
          if (changed > n.p.size()) n.method = number;
          Series outputs[5];
          const int32_t status = c.call(x, outputs, n, start);
          EXPECT_TRUE(status == QX_SUCCESS || status == QX_ERR_INVALID_PARM) << status;
          for (const Series& o : outputs) {
            EXPECT_GE(o.record.firstvalid, 0);
            EXPECT_LE(o.record.size, o.record.datasize);
            EXPECT_GE(o.record.size, 0);
          }
        }
      }
    }
  }
  qxSetMaxFirstValid(0);
}

inline void checkCase(const WorkedCase& c) {
  checkWorkedValues(c);
  checkShortOutput(c);
  checkRefusals(c);
  checkHostileNumbers(c);
}

// Real daily and intraday bars give finite values throughout.
template <size_t N>
void checkRealPrices(const WorkedCase (&cases)[N]) {
  withRealBars([&](BarSet& bars) {
    for (const WorkedCase& c : cases) {
      Series outputs[5];
      EXPECT_EQ(c.call({bars, &bars->close, &bars->open}, outputs, c.numbers, 0), QX_SUCCESS);
      for (const Series& o : outputs) expectFinite(o, c.name);
    }
  });
}

}  // namespace qxtest

#endif  // QUORVEX_TESTS_INDICATORS_WORKED_CASE_H
