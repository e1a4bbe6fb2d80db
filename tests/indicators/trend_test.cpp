#include <cmath>

#include "tests/indicators/study_case.h"

namespace {

using namespace qxtest;

int32_t scoreOfThreeLags(const qxArray* in, qxArray* out, int32_t start) {
  return qxTrendScore(in, out, 2, 4, start);
}

const std::vector<StudyCase> kCases = {
    row(study<qxDMIx>(), {}, {1, 1},
        {{0, 2, 1, 0, 0, 0, 2, 3, 1, 0, 1, 3}, {0, 0, 0, 2, 2, 1, 0, 0, 0, 3, 0, 0}}),
    row(study<qxDI>(), {notBelow(0, 4)}, {4, 4},
        {{0, 0, 0, 0, 21.81818182, 15.72052402, 26.8486917, 40.31685332, 38.79046603, 30.03691257,
          30.79934686, 43.67834234},
         {0, 0, 0, 0, 29.09090909, 27.94759825, 21.84300341, 15.73340617, 12.2945571, 32.08638642,
          24.66507616, 17.47827276}}),
    row(study<qxDX>(), {notBelow(0, 3)}, {3},
        {{0, 0, 0, 20, 25, 41.46341463, 14.70588235, 54.95145631, 63.55066771, 12.02197338,
          9.001973741, 50.66644956}}),
    row(study<qxADX>(), {notBelow(0, 3), 2}, {4},
        {{0, 0, 0, 0, 22.5, 31.98170732, 23.34379484, 39.14762557, 51.34914664, 31.68556001,
          20.34376688, 35.50510822}}),
    row(study<qxADXR>(), {notBelow(0, 3), 2, 2}, {6},
        {{0, 0, 0, 0, 0, 0, 22.92189742, 35.56466645, 37.34647074, 35.41659279, 35.84645676,
          33.59533411}}),
    row(study<qxAroon>(), {notBelow(0, 4)}, {4, 4},
        {{0, 0, 0, 0, 50, 25, 0, 100, 100, 75, 50, 100},
         {0, 0, 0, 0, 100, 100, 75, 50, 25, 0, 0, 50}}),
    row(study<qxAroonOscillator>(), {notBelow(0, 4)}, {4},
        {{0, 0, 0, 0, -50, -75, -75, 50, 75, 75, 50, 50}}),
    row(study<qxSAR>(), {0.1, 0.2}, {2, 2},
        {{0, 0, 49, 50, 55, 54.7, 53.16, 47, 47.5, 49.4, 50.92, 51},
         {0, 0, 1, 1, -1, -1, -1, 1, 1, 1, 1, 1}}),
    row(study<qxVHF>(), {period(3)}, {3},
        {{0, 0, 0, 0.5, 0.75, 0.5, 0.6666666667, 0.8333333333, 0.3333333333, 0.6, 0.5,
          0.7142857143}}),
    row(study<qxRWI>(), {notBelow(2, 3)}, {3, 3},
        {{0, 0, 0, 0.5196152423, 0.4714045208, 0.6060915267, 1.060660172, 1.417132479, 1.10221415,
          0.3464101615, 0.9428090416, 1.414213562},
         {0, 0, 0, 1.010152545, 1.212435565, 1.039230485, 0.3149183286, 0.2020305089, 0.4040610178,
          1.212183053, 0.8660254038, 0.2357022604}}),
    row(study<qxZigZag>(), {notBelow(1, 5)}, {0},
        {{51, 53, 51.66666667, 50.33333333, 49, 51, 53, 55, 53.5, 52, 54.5, 57}}),
    row(study<qxIchimokuKinkoHyo>(), {period(2), period(3), period(5)}, {1, 2, 5, 7, 0},
        {{0, 51.5, 52.5, 52.5, 50.5, 49.5, 50, 53, 54.5, 54, 53, 55},
         {0, 0, 52, 52.5, 51.5, 50, 50, 51.5, 53.5, 54, 54, 54.5},
         {0, 0, 0, 0, 0, 52.25, 52.5, 51, 49.75, 50, 52.25, 54},
         {0, 0, 0, 0, 0, 0, 0, 51.5, 51, 51, 51.5, 52},
         {51, 49, 50, 53, 55, 54, 52, 55, 57}}),
    row(study<scoreOfThreeLags>(), {}, {4}, {{0, 0, 0, 0, -3, -3, 3, 3, 3, -1, 3, 3}}),
    row(study<qxPFE>(), {period(3), period(1)}, {3},
        {{0, 0, 0, 0, -98.72652454, -71.1927093, 52.9250634, 98.46819287, 73.39385763, -53.72222038,
          0, 55.57258096}}),
    row(study<qxPFE>(), {period(3), period(2)}, {3},
        {{0, 0, 0, 0, -65.81768303, -69.40103387, 12.14969764, 69.69536113, 72.16102546,
          -11.76113843, -3.920379478, 35.74159415}}),
    row(study<qxRangeIndicator>(), {period(3), period(2)}, {3},
        {{0, 0, 0, 100, 100, 100, 33.33333333, 33.33333333, 77.77777778, 92.59259259, 30.86419753,
          43.62139918}}),
};

TEST(Trend, WorkedCases) {
  checkCases(kCases);
}

TEST(Trend, RealPrices) {
  checkRealPrices(kCases);
  checkRealPrices({row(study<qxDMI>(), {}, {}, {})});
}

TEST(Trend, NumbersThatExcludeEachOther) {
  BarSet bars(workedBars());
  Series a, b, c, d, lagging;
  EXPECT_EQ(qxZigZag(&bars->close, a, NAN, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxTrendScore(&bars->close, a, 0, 4, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxTrendScore(&bars->close, a, 5, 4, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(a.record.data, nullptr);
  EXPECT_EQ(qxTrendScore(&bars->close, a, 4, 4, 0), QX_SUCCESS);
  EXPECT_EQ(qxIchimokuKinkoHyo(bars, a, b, c, d, lagging, 2, INT32_MAX, 5, 0), QX_SUCCESS);
  EXPECT_EQ(lagging.record.size, 0);
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
  BarSet bars(barsFrom("10 11 9 10 / 10 13 7 10 / 10 12 8 10 / 10 12 7 10"));
  Series plus, minus, index;
  EXPECT_TRUE(gives(qxDMIx(bars, plus, minus, 0), plus, {0, 0, 0, 0}));
  EXPECT_TRUE(seriesNear(minus, {0, 0, 0, 1}));
  EXPECT_TRUE(gives(qxDX(bars, index, 2, 0), index, {0, 0, 0, 100})) << "0 where both are equal";
}

TEST(Trend, AroonTakesTheEarliestOfEqualsWithinTheValidPart) {
  BarSet bars(barsFrom("5 9 1 5 / 5 7 3 5 / 5 7 3 5 / 5 7 3 5"));
  Series up, down;
  EXPECT_TRUE(gives(qxAroon(bars, up, down, 2, 0), up, {0, 0, 0, 0})) << "the oldest of P + 1 bars";
  bars->high.firstvalid = 2;
  EXPECT_TRUE(gives(qxAroon(bars, up, down, 2, 0), up, {0, 0, 100, 50}));
  EXPECT_TRUE(seriesNear(down, {0, 0, 0, 0}));
  bars->high.firstvalid = 3;
  EXPECT_TRUE(gives(qxAroon(bars, up, down, 2, 0), up, {0, 0, 150, 100}))
      << "bar 2 counts from bar 3";
}

TEST(Trend, SarReversesOnATieAndLimitsItsFactor) {
  // Equal first closes start short, with the stop at the higher of the two highs.
  BarSet tie(barsFrom("10 11 9 10 / 10 12 8 10 / 10 12 9 12"));
  BarSet lower(barsFrom("10 12 9 10 / 10 13 8 11 / 11 13 10 12"));
  Series stop, position;
  EXPECT_TRUE(gives(qxSAR(lower, stop, position, 0.02, 0.2, 0), stop, {0, 0, 8})) << "of two lows";
  EXPECT_EQ(qxSAR(tie, stop, position, 0.02, 0.2, 0), QX_SUCCESS);
  EXPECT_EQ(position[2], 1.0) << "a close on the stop";
  EXPECT_EQ(stop[2], 8.0) << "the lowest of extreme and the two lows";

  // A steady rise: stop 10, extreme 21, 31 ..., factor 0.5 then 0.6 for good.
  BarSet rise(barsFrom("10 11 10 10 / 20 21 20 20 / 30 31 30 30 / 40 41 40 40 / 50 51 50 50"));
  Series rising, sides;
  // 10; 10 + 0.6 * 21 = 22.6 held to 20; 20 + 0.6 * 21 = 32.6 held to 30.
  EXPECT_TRUE(gives(qxSAR(rise, rising, sides, 0.5, 0.6, 0), rising, {0, 0, 10, 20, 30}));
  EXPECT_EQ(qxSAR(rise, rising, sides, 0.3, 0.1, 0), QX_SUCCESS);
  EXPECT_TRUE(near(rising[3], 10 + 21 * 0.1)) << "the first step is already limited";
}

TEST(Trend, SarPassesOverAMissingPrice) {
  // Short from bar 0. The high of bar 2 is missing; that of bar 1 still holds the next stop up.
  BarSet bars(barsFrom("30 40 29 30 / 20 38 19 20 / 10 nan 9 10 / 5 6 4 5"));
  Series stop, position;
  // 40 - 0.5 * 31 = 24.5 lies below the high of bar 1.
  EXPECT_TRUE(gives(qxSAR(bars, stop, position, 0.5, 0.5, 0), stop, {0, 0, 40, 38}));
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

  // Swings of 2, then a jump that leaves a lookback of 4.7 or of 3.9 bars.
  const struct { double jump, rises, falls; } jumps[] = {{10, 12, 4}, {13, 15, 2}};
  for (const auto& [jump, rises, falls] : jumps) {
    Values swings(40);
    for (size_t i = 0; i < 39; ++i) swings[i] = i % 2 == 0 ? 50.0 : 52.0;
    swings[39] = 50.0 + jump;
    EXPECT_EQ(qxDMI(Series(swings), out, 0), QX_SUCCESS);
    EXPECT_TRUE(near(out[39], 100 * rises / (rises + falls))) << jump;
  }

  Values walk, expected(30);
  for (int i = 0; i < 40; ++i) walk.push_back(50 + (i * 7 % 11) - (i * 5 % 13) * 0.5);
  for (const double value : {48.0, 46.39175258, 46.39175258, 40.90909091, 55.68181818, 48.51485149,
                             48.51485149, 48.51485149, 47.15447154, 57.72357724})
    expected.push_back(value);
  EXPECT_TRUE(gives(qxDMI(Series(walk), out, 0), out, expected));
}

TEST(Trend, DegenerateStudies) {
  Series flat{5, 5, 5, 5, 5}, out;
  EXPECT_TRUE(gives(qxVHF(flat, out, 2, 0), out, Values(5)));
  EXPECT_TRUE(gives(qxZigZag(flat, out, 5, 0), out, Values(5, 5.0))) << "a flat series";
  EXPECT_TRUE(gives(qxPFE(flat, out, 2, 1, 0), out, Values(5))) << "no change has no sign";
  Series few{51, 53, 52, 51, 49, 50, 57}, line, up, down, range;
  EXPECT_TRUE(gives(qxZigZag(few, line, 20, 0), line, {51, 52, 53, 54, 55, 56, 57})) << "no turn";
  for (const Values& exact : {Values{100, 150, 120}, {100, 150, 75, 80}, {100, 50, 75, 70}}) {
    Series turning(exact), same;
    EXPECT_TRUE(gives(qxZigZag(turning, same, 50, 0), same, exact)) << "moves of just 50 %";
  }
  BarSet still(barsFrom("5 5 5 5 / 5 5 5 5 / 5 5 5 5 / 5 6 4 5"));
  EXPECT_TRUE(gives(qxRWI(still, up, down, 2, 0), up, Values(4))) << "no range, no term";
  EXPECT_TRUE(gives(qxRangeIndicator(still, range, 2, 1, 0), range, {0, 0, 0, 100}));
}

}  // namespace
