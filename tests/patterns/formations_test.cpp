#include <algorithm>

#include "tests/support/real_bars.h"
#include "tests/support/test_support.h"

namespace {

using qxtest::Bar;
using qxtest::BarSet;
using qxtest::Series;

Bar bar(double high, double low, double close) {
  return {0, 0, high, low, close, 0, 0};
}

struct Formation {
  const char* name;
  int32_t (*test)(const qxBars* bars, int32_t index);
};

const Formation kFormations[] = {{"qxCPR", qxCPR},
                                 {"QXGAP", qxGap},
                                 {"qxIslandReversal", qxIslandReversal},
                                 {"qxinsidebar", qxInsideBar},
                                 {"qxKeyReversal", qxKeyReversal},
                                 {"qxOutsideBar", qxOutsideBar}};

struct FormationCase {
  const char* what;
  Bar before, at;
  double signals[6];  // in the order of kFormations
};

// Every formation fires in both of its directions, and stays silent on a near miss.
const FormationCase kCases[] = {
    {"flat", bar(10, 8, 9), bar(10, 8, 9), {0, 0, 0, 0, 0, 0}},
    {"outside closing above", bar(10, 8, 9), bar(12, 7, 11), {1, 0, 0, 0, 1, 1}},
    {"outside closing at the old high", bar(10, 8, 9), bar(12, 7, 10), {0, 0, 0, 0, 1, 1}},
    {"outside closing below", bar(10, 8, 9), bar(12, 7, 7.5), {-1, 0, 0, 0, -1, 1}},
    {"outside closing at the old low", bar(10, 8, 9), bar(12, 7, 8), {0, 0, 0, 0, -1, 1}},
    {"equal highs are no outside bar", bar(10, 8, 9), bar(10, 7, 7.5), {0, 0, 0, 0, 0, 0}},
    {"equal lows are no outside bar", bar(10, 8, 9), bar(12, 8, 11), {0, 0, 0, 0, 0, 0}},
    {"gap up, close high", bar(10, 8, 9), bar(20, 10.5, 19), {0, 1, 0, 0, 0, 0}},
    {"no gap at equal prices", bar(10, 8, 9), bar(20, 10, 11), {0, 0, 0, 0, 0, 0}},
    {"gap up, close in the lower 30 %", bar(10, 8, 9), bar(21, 11, 13.75), {0, 1, -1, 0, 0, 0}},
    {"gap up, close at 30 %", bar(10, 8, 9), bar(21, 11, 14), {0, 1, 0, 0, 0, 0}},
    {"gap down, close low", bar(10, 8, 9), bar(7.5, 1, 2), {0, -1, 0, 0, 0, 0}},
    {"no gap at equal prices below", bar(10, 8, 9), bar(8, 1, 2), {0, 0, 0, 0, 0, 0}},
    {"gap down, close in the upper 30 %", bar(30, 25, 27), bar(20, 10, 17.5), {0, -1, 1, 0, 0, 0}},
    {"gap down, close at 70 %", bar(30, 25, 27), bar(20, 10, 17), {0, -1, 0, 0, 0, 0}},
    {"inside", bar(10, 8, 9), bar(9.5, 8.5, 9), {0, 0, 0, 1, 0, 0}},
    {"equal highs are no inside bar", bar(10, 8, 9), bar(10, 8.5, 9), {0, 0, 0, 0, 0, 0}},
    {"equal lows are no inside bar", bar(10, 8, 9), bar(9.5, 8, 9), {0, 0, 0, 0, 0, 0}},
    {"new low, higher close", bar(10, 8, 9), bar(10, 7, 9.5), {0, 0, 0, 0, 1, 0}},
    {"new low, equal close", bar(10, 8, 9), bar(10, 7, 9), {0, 0, 0, 0, 0, 0}},
    {"new high, lower close", bar(10, 8, 9), bar(11, 8, 8.5), {0, 0, 0, 0, -1, 0}},
    {"new high, equal close", bar(10, 8, 9), bar(11, 8, 9), {0, 0, 0, 0, 0, 0}},
};

TEST(Formations, FireAndStaySilent) {
  for (const FormationCase& c : kCases) {
    SCOPED_TRACE(c.what);
    BarSet bars({c.before, c.at});
    Series out;
    for (size_t k = 0; k < 6; ++k) {
      const auto [name, test] = kFormations[k];
      EXPECT_EQ(test(bars, 1), c.signals[k]) << name;
      EXPECT_EQ(qxFormationFill(bars, out, name, 0, 9), c.signals[k] != 0) << name;
      EXPECT_TRUE(seriesNear(out, {0, c.signals[k]}, 0)) << name;
    }
    for (const auto& [name, sign] : {std::pair("qxgapdown", -1.0), std::pair("qxGapUp", 1.0)}) {
      const double found = c.signals[1] == sign ? 1 : 0;
      EXPECT_EQ(qxFormationFill(bars, out, name, 0, 9), found) << name;
      EXPECT_TRUE(seriesNear(out, {0, found}, 0)) << name;
    }
  }
}

TEST(Formations, GiveZeroOutsideTheBars) {
  BarSet bars({bar(10, 8, 9), bar(12, 7, 11)});
  for (const auto& [name, test] : kFormations) {
    for (int32_t index : {INT32_MIN, -1, 0, 2, INT32_MAX}) EXPECT_EQ(test(bars, index), 0) << name;
    EXPECT_EQ(test(nullptr, 1), 0) << name;
  }
  bars->low.size = 1;
  EXPECT_EQ(qxCPR(bars, 1), 0) << "a shorter series ends the bars";
}

TEST(FormationFill, WritesAndCountsTheRange) {
  // Outside bars at 1, 2 and 3.
  BarSet bars({bar(10, 9, 9), bar(11, 8, 9), bar(12, 7, 9), bar(13, 6, 9), bar(13, 6, 9)});
  const struct {
    int32_t from, to, count, firstValid;
    std::vector<double> written;
  } cases[] = {{2, 4, 2, 2, {0, 0, 1, 1, 0}},
               {0, 2, 2, 0, {0, 1, 1, 0, 0}},
               {4, 1, 0, 4, {0, 0, 0, 0, 0}},
               {INT32_MIN, INT32_MAX, 3, 0, {0, 1, 1, 1, 0}}};
  Series out{7, 7, 7, 7, 7};
  for (const auto& c : cases) {
    EXPECT_EQ(qxFormationFill(bars, out, "qxOutsideBar", c.from, c.to), c.count);
    EXPECT_TRUE(seriesNear(out, c.written, 0)) << c.from << ".." << c.to;
    EXPECT_EQ(out.record.firstvalid, c.firstValid);
  }
}

TEST(FormationFill, RefusesUnknownNamesAfterClearing) {
  BarSet bars(qxtest::workedBars());
  for (const char* name : {"", "qxGa", "qxGaps", "qxTurn"}) {
    Series out{5, 5};
    EXPECT_EQ(qxFormationFill(bars, out, name, 0, 11), QX_ERR_INVALID_PARM) << name;
    EXPECT_TRUE(seriesNear(out, {0, 0}));
  }
  Series out{5, 5};
  EXPECT_EQ(qxFormationFill(bars, out, nullptr, 0, 11), QX_ERR_INVALID_PARM);
  EXPECT_EQ(out[0], 5.0);
  qxArray alias = bars->close;
  EXPECT_EQ(qxFormationFill(bars, &alias, "qxGap", 0, 11), QX_ERR_INVALID_PARM);
}

TEST(Formations, FillsOfRealBarsAreSignals) {
  qxtest::withRealBars([](BarSet& bars) {
    Series out, average;
    const auto countOf = [&out](double signal) {
      const auto values = out.values();
      return static_cast<int32_t>(std::count(values.begin(), values.end(), signal));
    };
    for (const auto& [name, test] : kFormations) {
      const int32_t found = qxFormationFill(bars, out, name, 0, INT32_MAX);
      EXPECT_EQ(found, countOf(1) + countOf(-1)) << name;
      EXPECT_EQ(countOf(1) + countOf(-1) + countOf(0), bars->barsize) << name;
    }
    EXPECT_EQ(qxSimpleMA(&bars->close, average, 20, 0), QX_SUCCESS);
    EXPECT_EQ(qxCrossOverFill(&bars->close, average, out, 0, INT32_MAX), QX_SUCCESS);
    // Up crossings and down crossings differ by the few that only touch and turn back.
    EXPECT_GT(countOf(1), 5);
    EXPECT_NEAR(countOf(1), countOf(-1), 0.2 * countOf(1) + 1);
  });
}

TEST(CrossOver, CountsTouching) {
  Series a{1, 2, 3, 3, 2, 1, 2}, b{2, 2, 2, 2, 2, 2, 2};
  const int32_t expected[] = {0, 1, 0, 0, -1, 0, 1};
  for (int32_t i = 0; i < 7; ++i) EXPECT_EQ(qxCrossOver(a, b, i), expected[i]) << i;
  for (int32_t i : {INT32_MIN, -1, 7, INT32_MAX}) EXPECT_EQ(qxCrossOver(a, b, i), 0);
  qxtest::expectNullsRefused("qxCrossOver", qxCrossOver, 0, a, b, 1);
}

TEST(CrossOverFill, ExcludesTheLastIndex) {
  Series a{1, 3, 1, 3, 1, 3}, b{2, 2, 2, 2, 2, 2}, out{9, 9, 9, 9, 9, 9};
  EXPECT_TRUE(gives(qxCrossOverFill(a, b, out, 0, 5), out, {0, 1, -1, 1, -1, 0}, 0));
  EXPECT_TRUE(gives(qxCrossOverFill(a, b, out, -4, INT32_MAX), out, {0, 1, -1, 1, -1, 1}, 0));
  EXPECT_EQ(out.record.firstvalid, 0);
  b.record.firstvalid = 2;
  EXPECT_TRUE(gives(qxCrossOverFill(a, b, out, 1, 6), out, {0, 0, 0, 1, -1, 1}, 0));
  EXPECT_EQ(out.record.firstvalid, 2);
  b.record.firstvalid = INT32_MAX;
  EXPECT_TRUE(gives(qxCrossOverFill(a, b, out, 1, 6), out, {0, 0, 0, 0, 0, 0}, 0));
  EXPECT_EQ(qxCrossOverFill(a, b, a, 0, 6), QX_ERR_INVALID_PARM);
  qxSetMaxFirstValid(0);
}

TEST(Turn, FindsTroughsAndPeaks) {
  Series x{3, 1, 2, 2, 1, 4, 3}, out;
  const int32_t expected[] = {0, 0, 1, 0, 0, 1, -1};
  for (int32_t i = 0; i < 7; ++i) EXPECT_EQ(qxTurn(x, i), expected[i]) << i;
  for (int32_t i : {INT32_MIN, -1, 7, INT32_MAX}) EXPECT_EQ(qxTurn(x, i), 0);
  EXPECT_EQ(qxTurn(nullptr, 3), 0);

  EXPECT_TRUE(gives(qxTurnFill(x, out, 0, 5), out, {0, 0, 1, 0, 0, 1, 0}, 0))
      << "the last included";
  x.record.firstvalid = 3;
  EXPECT_TRUE(gives(qxTurnFill(x, out, 1, INT32_MAX), out, {0, 0, 0, 0, 0, 1, -1}, 0));
  EXPECT_EQ(out.record.firstvalid, 3);
  EXPECT_EQ(qxTurnFill(x, out, INT32_MAX, INT32_MIN), QX_SUCCESS);
  EXPECT_EQ(out.record.firstvalid, INT32_MAX);
  EXPECT_EQ(qxTurnFill(x, x, 0, 5), QX_ERR_INVALID_PARM);
  qxSetMaxFirstValid(0);
}

}  // namespace
