#include <algorithm>
#include <cmath>
#include <functional>

#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;
using qxtest::near;
using qxtest::Series;
using qxtest::seriesNear;
using qxtest::workedBars;

using Values = std::vector<double>;

const Values kCloses = {51, 53, 52, 51, 49, 50, 53, 55, 54, 52, 55, 57};

// A study of bars or closes with up to five outputs, its parameters bound.
struct Case {
  const char* name;
  std::function<int32_t(const qxBars* bars, const qxArray* in, Series* out, int32_t start)> study;
  std::vector<int32_t> firstValid;
  std::vector<Values> expected;  // from start 0; the last line of the cloud is 3 bars shorter
  bool series = false;           // over the closes, whose first valid index raises the start
};

const Case kWorked[] = {
    {"movement",
     [](auto b, auto, auto o, auto s) { return qxDMIx(b, o[0], o[1], s); },
     {1, 1},
     {{0, 2, 1, 0, 0, 0, 2, 3, 1, 0, 1, 3}, {0, 0, 0, 2, 2, 1, 0, 0, 0, 3, 0, 0}}},
    {"DI",
     [](auto b, auto, auto o, auto s) { return qxDI(b, o[0], o[1], 3, s); },
     {3, 3},
     {{0, 0, 0, 31.0344827586, 19.1489361702, 12.1621621622, 28.0239520958, 45.3065859198,
       41.8016329809, 29.0471097056, 30.3928918949, 47.5993336926},
      {0, 0, 0, 20.6896551724, 31.914893617, 29.3918918919, 20.8383233533, 13.1718395155,
       9.31602195155, 36.9855369018, 25.3728724338, 15.5857135858}}},
    {"DX",
     [](auto b, auto, auto o, auto s) { return qxDX(b, o[0], 3, s); },
     {3},
     {{0, 0, 0, 20, 25, 41.4634146341, 14.7058823529, 54.9514563107, 63.5506677141, 12.0219733784,
       9.00197374067, 50.6664495569}}},
    {"ADX",
     [](auto b, auto, auto o, auto s) { return qxADX(b, o[0], 3, 2, s); },
     {4},
     {{0, 0, 0, 0, 22.5, 31.9817073171, 23.343794835, 39.1476255728, 51.3491466435, 31.6855600109,
       20.3437668758, 35.5051082163}}},
    {"ADXR",
     [](auto b, auto, auto o, auto s) { return qxADXR(b, o[0], 3, 2, 2, s); },
     {6},
     {{0, 0, 0, 0, 0, 0, 22.9218974175, 35.564666445, 37.3464707392, 35.4165927919, 35.8464567596,
       33.5953341136}}},
    {"Aroon",
     [](auto b, auto, auto o, auto s) { return qxAroon(b, o[0], o[1], 4, s); },
     {4, 4},
     {{0, 0, 0, 0, 50, 25, 0, 100, 100, 75, 50, 100},
      {0, 0, 0, 0, 100, 100, 75, 50, 25, 0, 0, 50}}},
    {"Aroon oscillator",
     [](auto b, auto, auto o, auto s) { return qxAroonOscillator(b, o[0], 4, s); },
     {4},
     {{0, 0, 0, 0, -50, -75, -75, 50, 75, 75, 50, 50}}},
    {"SAR",
     [](auto b, auto, auto o, auto s) { return qxSAR(b, o[0], o[1], 0.1, 0.2, s); },
     {2, 2},
     {{0, 0, 49, 50, 55, 54.7, 53.16, 47, 47.5, 49.4, 50.92, 51},
      {0, 0, 1, 1, -1, -1, -1, 1, 1, 1, 1, 1}}},
    {"VHF",
     [](auto, auto in, auto o, auto s) { return qxVHF(in, o[0], 3, s); },
     {3},
     {{0, 0, 0, 0.5, 0.75, 0.5, 0.6666666667, 0.8333333333, 0.3333333333, 0.6, 0.5, 0.7142857143}},
     true},
    {"RWI",
     [](auto b, auto, auto o, auto s) { return qxRWI(b, o[0], o[1], 3, s); },
     {3, 3},
     {{0, 0, 0, 0.519615, 0.471405, 0.606092, 1.06066, 1.41713, 1.10221, 0.34641, 0.942809,
       1.41421},
      {0, 0, 0, 1.01015, 1.21244, 1.03923, 0.314918, 0.202031, 0.404061, 1.21218, 0.866025,
       0.235702}}},
    {"zigzag",
     [](auto, auto in, auto o, auto s) { return qxZigZag(in, o[0], 5.0, s); },
     {0},
     {{51, 53, 51.6666666667, 50.3333333333, 49, 51, 53, 55, 53.5, 52, 54.5, 57}},
     true},
    {"Ichimoku",
     [](auto b, auto, auto o, auto s) {
       return qxIchimokuKinkoHyo(b, o[0], o[1], o[2], o[3], o[4], 2, 3, 5, s);
     },
     {1, 2, 5, 7, 0},
     {{0, 51.5, 52.5, 52.5, 50.5, 49.5, 50, 53, 54.5, 54, 53, 55},
      {0, 0, 52, 52.5, 51.5, 50, 50, 51.5, 53.5, 54, 54, 54.5},
      {0, 0, 0, 0, 0, 52.25, 52.5, 51, 49.75, 50, 52.25, 54},
      {0, 0, 0, 0, 0, 0, 0, 51.5, 51, 51, 51.5, 52},
      {51, 49, 50, 53, 55, 54, 52, 55, 57}}},
    {"trend score",
     [](auto, auto in, auto o, auto s) { return qxTrendScore(in, o[0], 2, 4, s); },
     {4},
     {{0, 0, 0, 0, -3, -3, 3, 3, 3, -1, 3, 3}},
     true},
    {"PFE",
     [](auto, auto in, auto o, auto s) { return qxPFE(in, o[0], 3, 1, s); },
     {3},
     {{0, 0, 0, 0, -98.7265, -71.1927, 52.9251, 98.4682, 73.3939, -53.7222, 0, 55.5726}},
     true},
    {"PFE, smoothed",
     [](auto, auto in, auto o, auto s) { return qxPFE(in, o[0], 3, 2, s); },
     {3},
     {{0, 0, 0, 0, -65.8177, -69.401, 12.1497, 69.6954, 72.161, -11.7611, -3.92038, 35.7416}},
     true},
    {"range indicator",
     [](auto b, auto, auto o, auto s) { return qxRangeIndicator(b, o[0], 3, 2, s); },
     {3},
     {{0, 0, 0, 100, 100, 100, 33.3333333333, 33.3333333333, 77.7777777778, 92.5925925926,
       30.8641975309, 43.6213991770}}},
};

TEST(Trend, WorkedValues) {
  for (const Case& c : kWorked) {
    SCOPED_TRACE(c.name);
    BarSet bars(workedBars());
    Series in(kCloses), out[5];
    ASSERT_EQ(c.study(bars, in, out, INT32_MIN), QX_SUCCESS);
    for (size_t k = 0; k < c.expected.size(); ++k) {
      EXPECT_TRUE(seriesNear(out[k], c.expected[k], 1e-5)) << "output " << k;
      EXPECT_EQ(out[k].record.firstvalid, c.firstValid[k]) << "output " << k;
    }
  }
}

// Three bars of noise in front change nothing but the place, into outputs used before.
TEST(Trend, BarStudiesBeginAtTheStartGivenSeriesAtTheFirstValidIndex) {
  std::vector<qxtest::Bar> shifted = {
      {1, 9, 99, 1, 77, 0, 0}, {2, 5, 8, 4, 6, 0, 0}, {3, 60, 90, 5, 70, 0, 0}};
  shifted.insert(shifted.end(), workedBars().begin(), workedBars().end());
  for (const Case& c : kWorked) {
    SCOPED_TRACE(c.name);
    BarSet bars(shifted);
    bars->date.firstvalid = 5;
    Values closes = {77, 6, 70};
    closes.insert(closes.end(), kCloses.begin(), kCloses.end());
    Series in(closes, 3), out[5];
    for (Series& o : out) {
      qxAllocArray(o, 15);
      o.record.firstvalid = 9;
    }
    ASSERT_EQ(c.study(bars, in, out, c.series ? 0 : 3), QX_SUCCESS);
    for (size_t k = 0; k < c.expected.size(); ++k) {
      Values expected(3, 0.0);
      expected.insert(expected.end(), c.expected[k].begin(), c.expected[k].end());
      EXPECT_TRUE(seriesNear(out[k], expected, 1e-5)) << "output " << k;
      EXPECT_EQ(out[k].record.firstvalid, c.firstValid[k] + 3) << "output " << k;
    }
  }
}

TEST(Trend, RefusalsShortSeriesAndFarStarts) {
  for (const Case& c : kWorked) {
    SCOPED_TRACE(c.name);
    BarSet bars(workedBars()), none, one({workedBars()[0]});
    Series in(kCloses), nothing, single{51}, out[5];
    EXPECT_EQ(c.study(nullptr, nullptr, out, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(c.study(none, nothing, out, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(out[0].record.data, nullptr);
    for (int32_t start : {11, 12, 13, INT32_MAX - 3, INT32_MAX}) {
      EXPECT_EQ(c.study(bars, in, out, start), QX_SUCCESS) << start;
    }
    EXPECT_EQ(c.study(one, single, out, 0), QX_SUCCESS);
    for (Series& o : out) qxFreeArray(o);
    out[0].record = c.series ? in.record : bars->close;  // an output in an input's block
    EXPECT_EQ(c.study(bars, in, out, 0), QX_ERR_INVALID_PARM);
    out[0].record = {};
  }
  qxSetMaxFirstValid(0);
}

TEST(Trend, HostilePeriods) {
  BarSet bars(workedBars());
  Series in(kCloses), a, b, c, d, e;
  for (int32_t p : {0, -1, INT32_MIN}) {
    EXPECT_EQ(qxDI(bars, a, b, p, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxDX(bars, a, p, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxADX(bars, a, p, 2, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxADXR(bars, a, p, 2, 2, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxAroon(bars, a, b, p, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxAroonOscillator(bars, a, p, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxVHF(in, a, p, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxRWI(bars, a, b, p + 1, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxZigZag(in, a, p, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxIchimokuKinkoHyo(bars, a, b, c, d, e, 2, p, 5, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxTrendScore(in, a, p, 4, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxPFE(in, a, 3, p, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxRangeIndicator(bars, a, p, 2, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(a.record.data, nullptr);
  }
  EXPECT_EQ(qxZigZag(in, a, NAN, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxTrendScore(in, a, 5, 4, 0), QX_ERR_INVALID_PARM);
  for (int32_t p : {INT32_MIN, -20, -1, 0, 1, 50, INT32_MAX}) {
    EXPECT_EQ(qxADX(bars, a, 3, p, 0), QX_SUCCESS);
    EXPECT_EQ(qxADXR(bars, a, 3, p, p, 0), QX_SUCCESS);
    EXPECT_EQ(qxADXR(bars, a, INT32_MAX, INT32_MAX, p, INT32_MAX), QX_SUCCESS);
  }
  EXPECT_EQ(qxIchimokuKinkoHyo(bars, a, b, c, d, e, 2, INT32_MAX, 5, 0), QX_SUCCESS);
  EXPECT_EQ(e.record.size, 0);
  EXPECT_EQ(qxPFE(in, a, INT32_MAX, INT32_MAX, INT32_MAX), QX_SUCCESS);
  qxSetMaxFirstValid(0);
}

TEST(Trend, RatingLooksAheadWithANegativeLag) {
  BarSet bars(workedBars());
  Series adx, rating;
  qxADX(bars, adx, 3, 2, 0);
  EXPECT_EQ(qxADXR(bars, rating, 3, 2, -2, 0), QX_SUCCESS);
  EXPECT_EQ(rating.record.firstvalid, 2);
  for (int32_t i = 2; i < 12; ++i) {
    EXPECT_TRUE(near(rating[i], (adx[i] + (i + 2 < 12 ? adx[i + 2] : 0.0)) / 2));
  }
}

TEST(Trend, EqualOutwardMovesCancel) {
  BarSet bars({{1, 10, 11, 9, 10, 0, 0},
               {2, 10, 13, 7, 10, 0, 0},
               {3, 10, 12, 8, 10, 0, 0},
               {4, 10, 12, 7, 10, 0, 0}});
  Series plus, minus, index;
  EXPECT_EQ(qxDMIx(bars, plus, minus, 0), QX_SUCCESS);
  EXPECT_EQ(plus.values(), (Values{0, 0, 0, 0}));
  EXPECT_EQ(minus.values(), (Values{0, 0, 0, 1}));
  EXPECT_EQ(qxDX(bars, index, 2, 0), QX_SUCCESS);
  EXPECT_EQ(index.values(), (Values{0, 0, 0, 100})) << "0 where both are equal";
}

TEST(Trend, AroonTakesTheEarliestOfEqualsWithinTheValidPart) {
  BarSet bars(
      {{1, 5, 9, 1, 5, 0, 0}, {2, 5, 7, 3, 5, 0, 0}, {3, 5, 7, 3, 5, 0, 0}, {4, 5, 7, 3, 5, 0, 0}});
  Series up, down;
  EXPECT_EQ(qxAroon(bars, up, down, 2, 0), QX_SUCCESS);
  EXPECT_EQ(up.values(), (Values{0, 0, 0, 0})) << "the oldest of P + 1 bars";
  bars->high.firstvalid = 2;
  EXPECT_EQ(qxAroon(bars, up, down, 2, 0), QX_SUCCESS);
  EXPECT_EQ(up.values(), (Values{0, 0, 100, 50}));
  EXPECT_EQ(down.values(), (Values{0, 0, 0, 0}));
}

TEST(Trend, SarReversesOnATieAndLimitsItsFactor) {
  // Equal first closes start short, with the stop at the higher of the two highs.
  BarSet tie({{1, 10, 12, 9, 10, 0, 0}, {2, 10, 11, 8, 10, 0, 0}, {3, 10, 12, 9, 12, 0, 0}});
  Series stop, position;
  EXPECT_EQ(qxSAR(tie, stop, position, 0.02, 0.2, 0), QX_SUCCESS);
  EXPECT_EQ(position[2], 1.0) << "a close on the stop";
  EXPECT_EQ(stop[2], 8.0) << "the lowest of extreme and the two lows";

  // A steady rise: stop 10, extreme 21, 31 ..., factor 0.5 then 0.6 for good.
  BarSet rise({{1, 10, 11, 10, 10, 0, 0},
               {2, 20, 21, 20, 20, 0, 0},
               {3, 30, 31, 30, 30, 0, 0},
               {4, 40, 41, 40, 40, 0, 0},
               {5, 50, 51, 50, 50, 0, 0}});
  Series rising, sides;
  EXPECT_EQ(qxSAR(rise, rising, sides, 0.5, 0.6, 0), QX_SUCCESS);
  // 10; 10 + 0.6 * 21 = 22.6 held to 20; 20 + 0.6 * 21 = 32.6 held to 30.
  EXPECT_TRUE(seriesNear(rising, {0, 0, 10, 20, 30}));
  EXPECT_EQ(qxSAR(rise, rising, sides, 0.3, 0.1, 0), QX_SUCCESS);
  EXPECT_TRUE(near(rising[3], 10 + 21 * 0.1)) << "the first step is already limited";
}

TEST(Trend, SarPassesOverAMissingPrice) {
  // Short from bar 0. The high of bar 2 is missing; that of bar 1 still holds the next stop up.
  const double none = std::nan("");
  BarSet bars({{1, 30, 40, 29, 30, 0, 0},
               {2, 20, 38, 19, 20, 0, 0},
               {3, 10, none, 9, 10, 0, 0},
               {4, 5, 6, 4, 5, 0, 0}});
  Series stop, position;
  EXPECT_EQ(qxSAR(bars, stop, position, 0.5, 0.5, 0), QX_SUCCESS);
  EXPECT_EQ(stop[2], 40.0);
  EXPECT_EQ(stop[3], 38.0) << "40 - 0.5 * 31 = 24.5 lies below the high of bar 1";
  EXPECT_EQ(position[3], -1.0);
}

TEST(Trend, DynamicLookbackStaysWithinThreeAndThirty) {
  Values quiet(45, 50.0), burst(45);
  for (size_t i = 40; i < 45; ++i) quiet[i] = 50.0 + static_cast<double>(i - 39);
  Series in(quiet), out;
  EXPECT_EQ(qxDMI(in, out, 0), QX_SUCCESS);
  EXPECT_EQ(out.record.firstvalid, 30);
  EXPECT_EQ(out[39], 0.0) << "no change at all";
  EXPECT_EQ(out[44], 100.0);

  // Wild swings, then five nearly equal values: the lookback reaches back 30 changes.
  for (size_t i = 0; i < 45; ++i) burst[i] = i % 2 == 0 ? 50.0 : 60.0;
  for (size_t i = 40; i < 45; ++i) burst[i] = 60.0 + 0.001 * static_cast<double>(i);
  Series wild(burst);
  EXPECT_EQ(qxDMI(wild, out, 0), QX_SUCCESS);
  double up = 0, down = 0;
  for (size_t j = 15; j < 45; ++j) {
    (burst[j] > burst[j - 1] ? up : down) += std::fabs(burst[j] - burst[j - 1]);
  }
  EXPECT_TRUE(near(out[44], 100 * up / (up + down)));

  Values walk;
  for (int i = 0; i < 40; ++i) walk.push_back(50 + (i * 7 % 11) - (i * 5 % 13) * 0.5);
  Series mixed(walk);
  EXPECT_EQ(qxDMI(mixed, out, 0), QX_SUCCESS);
  const Values last = {48,
                       46.3917525773,
                       46.3917525773,
                       40.9090909091,
                       55.6818181818,
                       48.5148514851,
                       48.5148514851,
                       48.5148514851,
                       47.1544715447,
                       57.7235772358};
  for (size_t k = 0; k < 10; ++k) {
    EXPECT_TRUE(near(out[30 + static_cast<int32_t>(k)], last[k]));
  }
}

TEST(Trend, DegenerateStudies) {
  Series flat{5, 5, 5, 5, 5}, out;
  EXPECT_EQ(qxVHF(flat, out, 2, 0), QX_SUCCESS);
  EXPECT_EQ(out.values(), Values(5, 0.0));
  EXPECT_EQ(qxZigZag(flat, out, 5, 0), QX_SUCCESS);
  EXPECT_EQ(out.values(), Values(5, 5.0)) << "a flat series returns itself";
  EXPECT_EQ(qxPFE(flat, out, 2, 1, 0), QX_SUCCESS);
  EXPECT_EQ(out.values(), Values(5, 0.0)) << "no change has no sign";
  Series closes(kCloses), straight, up, down, range;
  EXPECT_EQ(qxZigZag(closes, straight, 20, 0), QX_SUCCESS);
  for (int32_t i = 0; i < 12; ++i) EXPECT_TRUE(near(straight[i], 51 + 6.0 * i / 11));
  BarSet still(
      {{1, 5, 5, 5, 5, 0, 0}, {2, 5, 5, 5, 5, 0, 0}, {3, 5, 5, 5, 5, 0, 0}, {4, 5, 6, 4, 5, 0, 0}});
  EXPECT_EQ(qxRWI(still, up, down, 2, 0), QX_SUCCESS);
  EXPECT_EQ(up.values(), Values(4, 0.0)) << "terms without range are skipped";
  EXPECT_EQ(qxRangeIndicator(still, range, 2, 1, 0), QX_SUCCESS);
  EXPECT_EQ(range.values(), (Values{0, 0, 0, 100}));
}

}  // namespace
