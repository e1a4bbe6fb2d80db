#include <cmath>

#include "tests/indicators/study_case.h"

namespace {

using namespace qxtest;

int32_t simpleEnvelope(const qxArray* in, qxArray* upper, qxArray* lower, double pct,
                       int32_t length, int32_t start) {
  return qxMAEnvelope(in, upper, lower, pct, QX_MA_SIMPLE, length, start);
}

int32_t weightedHighLow(const qxBars* bars, qxArray* highs, qxArray* lows, int32_t length,
                        int32_t start) {
  return qxMAHighLow(bars, highs, lows, QX_MA_WEIGHTED, length, start);
}

// The outer bands alone; the middle does not heed the start.
int32_t errorBands(const qxArray* in, qxArray* upper, qxArray* lower, double k, int32_t length,
                   int32_t start) {
  Series middle;
  return qxStdErrBands(in, upper, middle, lower, k, length, start);
}

const std::vector<StudyCase> kCases = {
    row(study<qxATR>(), {3}, {2},
        {{0, 0, 3.333333333, 3.222222222, 3.481481481, 3.654320988, 3.436213992, 3.624142661,
          3.416095107, 3.277396738, 3.184931159, 3.456620773}}),
    row(study<qxBollinger>(), {2, period(4)}, {3, 3, 3},
        {{0, 0, 0, 53.90608423, 54.4828863, 54.2108187, 53.15814005, 55.9840999, 57.80187556,
          56.36687068, 56.18561976, 57.78866465},
         {0, 0, 0, 51.83333333, 51.58333333, 50.83333333, 50.58333333, 51.33333333, 52.66666667,
          53.41666667, 53.91666667, 54.41666667},
         {0, 0, 0, 49.76058243, 48.68378037, 47.45584797, 48.00852662, 46.68256677, 47.53145777,
          50.46646266, 51.64771357, 51.04466869}}),
    row(study<qxBollingerWidth>(), {2, period(4)}, {3},
        {{0, 0, 0, 4.145501801, 5.799105934, 6.754970735, 5.149613434, 9.301533127, 10.27041779,
          5.900408021, 4.53790619, 6.743995958}}),
    row(study<qxEnvelope>(), {0.1}, {0, 0},
        {{56, 58.1, 57.3, 56.2, 54.1, 54.9, 58, 60.3, 59.5, 57.4, 60.2, 62.5},
         {46, 47.9, 46.7, 45.8, 43.9, 45.1, 48, 49.7, 48.5, 46.6, 49.8, 51.5}}),
    row(study<qxEnvelopePct>(), {0.05}, {0, 0},
        {{53.55, 55.65, 54.6, 53.55, 51.45, 52.5, 55.65, 57.75, 56.7, 54.6, 57.75, 59.85},
         {48.45, 50.35, 49.4, 48.45, 46.55, 47.5, 50.35, 52.25, 51.3, 49.4, 52.25, 54.15}}),
    row(study<simpleEnvelope>(), {0.1, 3}, {2, 2},
        {{0, 0, 57.2, 57.2, 55.73333333, 55, 55.73333333, 57.93333333, 59.4, 59.03333333,
          59.03333333, 60.13333333},
         {0, 0, 46.8, 46.8, 45.6, 45, 45.6, 47.4, 48.6, 48.3, 48.3, 49.2}}),
    row(study<weightedHighLow>(), {3}, {2, 2},
        {{0, 0, 54.16666667, 53.83333333, 52.83333333, 51.66666667, 52.16666667, 54.16666667, 56,
          55.33333333, 55, 56.33333333},
         {0, 0, 50.83333333, 50.66666667, 49.33333333, 47.83333333, 48.66666667, 50.5, 52.66666667,
          52.16666667, 52, 52.83333333}}),
    row(study<errorBands>(), {2, period(4)}, {3, 3},
        {{0, 0, 0, 53.82379001, 48.77459667, 50.3973666, 56.04964787, 58.18321596, 59.39827535,
          55.39827535, 56.90587727, 60.90587727},
         {0, 0, 0, 49.17620999, 47.22540333, 46.6026334, 48.95035213, 55.81678404, 53.60172465,
          49.60172465, 50.09412273, 54.09412273}}),
    row(study<qxPriceChannels>(), {period(3)}, {3, 3},
        {{0, 0, 0, 55, 55, 55, 53, 53, 56, 57, 57, 57},
         {0, 0, 0, 49, 50, 48, 47, 47, 47, 50, 51, 51}}),
    row(study<qxProjectionBands>(), {period(3)}, {4, 4},
        {{0, 0, 0, 0, 52, 51, 53, 56, 58, 56, 55, 58},
         {0, 0, 0, 0, 48, 46.5, 48, 52, 54, 51, 50, 53.5}}),
    row(study<qxProjectionBandwidth>(), {period(3)}, {4},
        {{0, 0, 0, 0, 8, 9.230769231, 9.900990099, 7.407407407, 7.142857143, 9.345794393,
          9.523809524, 8.071748879}}),
    row(study<qxProjectionOscillator>(), {period(3), 2}, {4},
        {{0, 0, 0, 0, 25, 60.18518519, 86.72839506, 78.90946502, 26.30315501, 22.10105167,
          74.03368389, 76.52974648}}),
    row(study<qxChaikinVolatility>(), {notBelow(0, 3)}, {3},
        {{0, 0, 0, 4.166666667, 1.785714286, 16.34615385, 8.5, 3.728070175, -11.46694215,
          -6.394009217, -16.4640592, 5.848891482}}),
    row(study<qxMassIndex>(), {3}, {3},
        {{0, 0, 0, 3.100603837, 3.105782836, 3.154804799, 3.179815063, 3.186399574, 3.1337594,
          3.09551965, 3.018823295, 3.017726691}}),
    row(study<qxWellesVolatility>(), {1, period(2)}, {0, 1, 1, 1},
        {{51, 53, 53, 53, 49, 49, 53, 55, 55, 55, 55, 57},
         {0, 3.5, 3.25, 3.125, 3.5625, 3.78125, 3.390625, 3.6953125, 3.34765625, 3.173828125,
          3.086914062, 3.543457031},
         {0, 51, 49.5, 49.75, 49.875, 52.5625, 52.78125, 49.609375, 51.3046875, 51.65234375,
          51.82617188, 51.91308594},
         {0, 1, 0, 0, -1, 0, 1, 0, 0, 0, 0, 0}}),
};

TEST(Volatility, WorkedCases) {
  checkCases(kCases);
}

TEST(Volatility, RealPrices) {
  checkRealPrices(kCases);
}

TEST(Volatility, ChannelsLeaveOutTheCurrentBar) {
  BarSet bars(barsFrom("5 6 4 5 / 0 7 5 6 / 9 20 1 9"));
  Series upper, lower;
  EXPECT_TRUE(gives(qxPriceChannels(bars, upper, lower, 2, 0), upper, {0, 0, 7}));
  EXPECT_TRUE(seriesNear(lower, {0, 0, 4})) << "the missing open does not count";
}

TEST(Volatility, BarsOfOneRange) {
  BarSet bars(std::vector<Bar>(6, {1, 5, 7, 4, 5, 0, 0}));
  BarSet flat(std::vector<Bar>(6, {1, 5, 5, 5, 5, 0, 0}));
  const Values zeros(6);
  Series out;
  EXPECT_TRUE(gives(qxMassIndex(bars, out, 3, 0), out, {0, 0, 0, 3, 3, 3}));
  EXPECT_TRUE(gives(qxMassIndex(flat, out, 3, 0), out, zeros, 0)) << "no range at all";
  EXPECT_TRUE(gives(qxChaikinVolatility(flat, out, 2, 0), out, zeros, 0));
  EXPECT_TRUE(gives(qxProjectionOscillator(flat, out, 2, 1, 0), out, zeros, 0)) << "bands meet";
  EXPECT_TRUE(gives(qxBollingerWidth(flat, out, 2, 3, 0), out, zeros, 0));
}

TEST(Volatility, ProjectionIsSmoothedAboveOneBarOnly) {
  BarSet bars(workedBars());
  Series upper, lower, raw, same, smooth;
  qxProjectionBands(bars, upper, lower, 4, 0);
  EXPECT_EQ(qxProjectionOscillator(bars, raw, 4, 1, 0), QX_SUCCESS);
  EXPECT_TRUE(gives(qxProjectionOscillator(bars, same, 4, INT32_MIN, 0), same, raw.values(), 0));
  for (int32_t i = 6; i < 12; ++i) {
    const double close = bars->close.data[i];
    EXPECT_EQ(raw[i], 100 * (close - lower[i]) / (upper[i] - lower[i])) << i;
  }
  EXPECT_EQ(qxProjectionOscillator(bars, smooth, 4, 2, 0), QX_SUCCESS);
  EXPECT_TRUE(near(smooth[7], 2.0 / 3 * raw[7] + (1 - 2.0 / 3) * raw[6]));
}

TEST(Volatility, SystemReversesAtItsStop) {
  // Short from 10, the range of bar 0 still empty; stop 9 + 2, best close 8; stop 8 + 2.x: long at
  // 11; best close 13; short at 10.
  BarSet bars(
      barsFrom("10 11 9 10 / 10 11 9 9 / 9 10 8 8 / 10 11 9 11 / 11 13 11 13 / 10 12 10 10"));
  Series significant, range, stop, reversal;
  EXPECT_EQ(qxWellesVolatility(bars, significant, range, stop, reversal, 1.0, 2, 0), QX_SUCCESS);
  // True ranges 2, 2, 2, 3, 2, 3 in Welles' average of 2 bars.
  EXPECT_TRUE(seriesNear(range, {0, 2, 2, 2.5, 2.25, 2.625}));
  EXPECT_TRUE(seriesNear(significant, {10, 9, 8, 11, 13, 10}));
  EXPECT_TRUE(seriesNear(stop, {0, 10, 11, 10, 8.5, 10.75}));
  EXPECT_TRUE(seriesNear(reversal, {0, 0, 0, 1, 0, -1})) << "a signal, not a state";

  // Bars that end within the first average: its partial sum / 8, not multiplied.
  EXPECT_EQ(qxWellesVolatility(bars, significant, range, stop, reversal, 5.0, 8, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(range, {0, 0, 0, 0, 0, 14 / 8.0}));
  bars->close.data[3] = 10;
  EXPECT_EQ(qxWellesVolatility(bars, significant, range, stop, reversal, 1.0, 2, 0), QX_SUCCESS);
  EXPECT_EQ(reversal[3], 0.0) << "a close on the stop";
}

TEST(Volatility, BandsOfShortSeriesKeepTheirMiddle) {
  BarSet bars(barsFrom("1 3 3 3 / 1 6 6 6"));
  Series upper, middle, lower;
  EXPECT_TRUE(gives(qxBollinger(bars, upper, middle, lower, 2, 3, 0), middle, {0, 3})) << "9 / 3";
  EXPECT_TRUE(seriesNear(upper, {0, 0}));
  EXPECT_EQ(middle.record.firstvalid, 2);

  // The middle of the error bands begins with the series, wherever the start lies.
  Series in{1, 2, 3, 4, 5, 7}, above, line, below;
  const double last = 16 / 3.0 + 3;
  EXPECT_TRUE(gives(qxStdErrBands(in, above, line, below, 1, 3, 2), line, {0, 0, 4, 5, 6, last}));
  EXPECT_TRUE(seriesNear(above, {0, 0, 0, 0, 6, last + std::sqrt(1 / 6.0)}));
  for (const Series* band : {&above, &line, &below}) EXPECT_EQ(band->record.firstvalid, 4);
}

TEST(Volatility, EnvelopesPassOnTheStatusOfTheirAverage) {
  Series in({1, 2, 3, 4}, 1), upper{7, 7, 7, 7}, lower;
  EXPECT_EQ(qxMAEnvelope(in, upper, lower, 0.1, 8, 2, 0), QX_ERR_INVALID_PARM);
  EXPECT_TRUE(seriesNear(upper, {0, 0, 0, 0}));
  BarSet bars(workedBars());
  EXPECT_EQ(qxMAHighLow(bars, upper, lower, -1, 2, 0), QX_ERR_INVALID_PARM);
}

}  // namespace
