// One case per indicator over bars: the values on the twelve worked bars from the start, and on
// bars with every degenerate shape from bar 2.
#ifndef QUORVEX_TESTS_INDICATORS_BAR_STUDY_CASES_H
#define QUORVEX_TESTS_INDICATORS_BAR_STUDY_CASES_H

#include <vector>

#include "tests/support/real_bars.h"
#include "tests/support/test_support.h"

namespace qxtest {

struct BarStudyCase {
  const char* name;
  int32_t (*study)(const qxBars* bars, qxArray* out, int32_t start);
  int32_t warmUp;  // first valid index less the start
  std::vector<double> worked;
  std::vector<double> awkward;
};

// Bars without range, without volume, with unchanged closes, equal volumes, no open interest.
inline const std::vector<Bar>& awkwardBars() {
  static const std::vector<Bar> bars = {{1, 10, 10, 10, 10, 100, 50}, {2, 10, 12, 10, 12, 0, 60},
                                        {3, 12, 12, 12, 12, 300, 55}, {4, 11, 11, 11, 11, 200, 70},
                                        {5, 11, 13, 9, 11, 200, 70},  {6, 11, 14, 10, 13, 400, 90},
                                        {7, 13, 13, 8, 9, 500, 0},    {8, 9, 12, 9, 12, 100, 40}};
  return bars;
}

// Runs the cases over real daily and intraday bars.
template <size_t N>
void checkFiniteOnRealBars(const BarStudyCase (&cases)[N]) {
  withRealBars([&](BarSet& bars) {
    Series out;
    for (const BarStudyCase& c : cases) {
      EXPECT_EQ(c.study(bars, out, 0), QX_SUCCESS);
      expectFinite(out, c.name);
    }
  });
}

inline void checkStudy(const BarStudyCase& c) {
  SCOPED_TRACE(c.name);
  BarSet worked(workedBars()), awkward(awkwardBars());
  // The first valid index of an input set does not raise the start.
  awkward->date.firstvalid = awkward->close.firstvalid = awkward->high.firstvalid = 1;
  Series out;
  EXPECT_EQ(c.study(worked, out, INT32_MIN), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, c.worked)) << "a negative start counts as 0";
  EXPECT_EQ(out.record.firstvalid, c.warmUp);
  EXPECT_EQ(c.study(awkward, out, 2), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, c.awkward)) << "into a reused output with a stale first valid index";
  EXPECT_EQ(out.record.firstvalid, 2 + c.warmUp);

  // A start past the bars computes nothing.
  EXPECT_EQ(c.study(awkward, out, 8), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, std::vector<double>(8), 0));
  EXPECT_EQ(c.study(awkward, out, INT32_MAX), QX_SUCCESS);
  EXPECT_EQ(out.record.firstvalid, INT32_MAX);

  // A single bar, an output that is smaller than the bars.
  BarSet one({awkwardBars()[2]});
  Series first, cut{5, 5, 5};
  EXPECT_EQ(c.study(one, first, 0), QX_SUCCESS);
  EXPECT_EQ(first.record.size, 1);
  EXPECT_EQ(c.study(worked, cut, 0), QX_SUCCESS);
  EXPECT_EQ(cut.record.size, 3);

  // Series of unequal size end at the shortest one that is read.
  qxBars uneven = *static_cast<qxBars*>(worked);
  uneven.close.size = uneven.high.size = uneven.volume.size = uneven.openint.size = 2;
  EXPECT_EQ(c.study(&uneven, out, 0), QX_SUCCESS);

  qxArray alias = worked->volume;
  EXPECT_EQ(c.study(worked, &alias, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(worked->volume.data[1], 1200.0);
  EXPECT_EQ(c.study(worked, nullptr, 0), QX_ERR_INVALID_PARM);
  BarSet none;
  EXPECT_EQ(c.study(none, first, 0), QX_ERR_INVALID_PARM);
  qxSetMaxFirstValid(0);
}

}  // namespace qxtest

#endif  // QUORVEX_TESTS_INDICATORS_BAR_STUDY_CASES_H
