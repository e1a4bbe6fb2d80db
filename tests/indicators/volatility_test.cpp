#include <cmath>

#include "tests/indicators/worked_case.h"

namespace {

using qxtest::BarSet;
using qxtest::near;
using qxtest::Series;
using qxtest::seriesNear;
using qxtest::WorkedCase;
using N = qxtest::Numbers;
using X = qxtest::Inputs;

const WorkedCase kCases[] = {
    {"qxATR",
     [](X x, Series* o, N n, int32_t s) { return qxATR(x.bars, o[0], n.p[0], s); },
     {{3}},
     {2},
     {{0, 0, 3.33333333333, 3.22222222222, 3.48148148148, 3.65432098765, 3.43621399177,
       3.62414266118, 3.41609510745, 3.2773967383, 3.18493115887, 3.45662077258}}},
    {"qxBollinger",
     [](X x, Series* o, N n, int32_t s) {
       return qxBollinger(x.bars, o[0], o[1], o[2], n.k, n.p[0], s);
     },
     {{4}, 2.0},
     {3, 3, 3},
     {{0, 0, 0, 53.906084234, 54.4828863002, 54.2108187008, 53.1581400503, 55.984099897,
       57.8018755592, 56.3668706772, 56.1856197619, 57.7886646457},
      {0, 0, 0, 51.8333333333, 51.5833333333, 50.8333333333, 50.5833333333, 51.3333333333,
       52.6666666667, 53.4166666667, 53.9166666667, 54.4166666667},
      {0, 0, 0, 49.7605824326, 48.6837803665, 47.4558479659, 48.0085266164, 46.6825667697,
       47.5314577741, 50.4664626561, 51.6477135715, 51.0446686877}}},
    {"qxBollingerWidth",
     [](X x, Series* o, N n, int32_t s) { return qxBollingerWidth(x.bars, o[0], n.k, n.p[0], s); },
     {{4}, 2.0},
     {3},
     {{0, 0, 0, 4.14550180137, 5.79910593364, 6.75497073492, 5.14961343389, 9.30153312731,
       10.2704177851, 5.90040802105, 4.53790619037, 6.743995958}}},
    {"qxEnvelope",
     [](X x, Series* o, N n, int32_t s) { return qxEnvelope(x.in, x.other, o[0], o[1], n.k, s); },
     {{}, 0.1},
     {0, 0},
     {{56, 58.1, 57.3, 56.2, 54.1, 54.9, 58, 60.3, 59.5, 57.4, 60.2, 62.5},
      {46, 47.9, 46.7, 45.8, 43.9, 45.1, 48, 49.7, 48.5, 46.6, 49.8, 51.5}}},
    {"qxEnvelopePct",
     [](X x, Series* o, N n, int32_t s) { return qxEnvelopePct(x.in, o[0], o[1], n.k, s); },
     {{}, 0.05},
     {0, 0},
     {{53.55, 55.65, 54.6, 53.55, 51.45, 52.5, 55.65, 57.75, 56.7, 54.6, 57.75, 59.85},
      {48.45, 50.35, 49.4, 48.45, 46.55, 47.5, 50.35, 52.25, 51.3, 49.4, 52.25, 54.15}}},
    {"qxMAEnvelope",
     [](X x, Series* o, N n, int32_t s) {
       return qxMAEnvelope(x.in, o[0], o[1], n.k, n.method, n.p[0], s);
     },
     {{3}, 0.1, QX_MA_SIMPLE},
     {2, 2},
     {{0, 0, 57.2, 57.2, 55.7333333333, 55, 55.7333333333, 57.9333333333, 59.4, 59.0333333333,
       59.0333333333, 60.1333333333},
      {0, 0, 46.8, 46.8, 45.6, 45, 45.6, 47.4, 48.6, 48.3, 48.3, 49.2}}},
    {"qxMAHighLow",
     [](X x, Series* o, N n, int32_t s) {
       return qxMAHighLow(x.bars, o[0], o[1], n.method, n.p[0], s);
     },
     {{3}, 0.0, QX_MA_WEIGHTED},
     {2, 2},
     {{0, 0, 54.1666666667, 53.8333333333, 52.8333333333, 51.6666666667, 52.1666666667,
       54.1666666667, 56, 55.3333333333, 55, 56.3333333333},
      {0, 0, 50.8333333333, 50.6666666667, 49.3333333333, 47.8333333333, 48.6666666667, 50.5,
       52.6666666667, 52.1666666667, 52, 52.8333333333}}},
    {"qxStdErrBands",
     [](X x, Series* o, N n, int32_t s) {
       return qxStdErrBands(x.in, o[0], o[1], o[2], n.k, n.p[0], s);
     },
     {{4}, 2.0},
     {3, 3, 3},
     {{0, 0, 0, 53.8237900077, 48.7745966692, 50.3973665961, 56.0496478699, 58.1832159566,
       59.3982753492, 55.3982753492, 56.9058772732, 60.9058772732},
      {0, 0, 0, 51.5, 48, 48.5, 52.5, 57, 56.5, 52.5, 53.5, 57.5},
      {0, 0, 0, 49.1762099923, 47.2254033308, 46.6026334039, 48.9503521301, 55.8167840434,
       53.6017246508, 49.6017246508, 50.0941227268, 54.0941227268}}},
    {"qxPriceChannels",
     [](X x, Series* o, N n, int32_t s) { return qxPriceChannels(x.bars, o[0], o[1], n.p[0], s); },
     {{3}},
     {3, 3},
     {{0, 0, 0, 55, 55, 55, 53, 53, 56, 57, 57, 57},
      {0, 0, 0, 49, 50, 48, 47, 47, 47, 50, 51, 51}}},
    {"qxProjectionBands",
     [](X x, Series* o, N n, int32_t s) {
       return qxProjectionBands(x.bars, o[0], o[1], n.p[0], s);
     },
     {{3}},
     {4, 4},
     {{0, 0, 0, 0, 52, 51, 53, 56, 58, 56, 55, 58},
      {0, 0, 0, 0, 48, 46.5, 48, 52, 54, 51, 50, 53.5}}},
    {"qxProjectionBandwidth",
     [](X x, Series* o, N n, int32_t s) { return qxProjectionBandwidth(x.bars, o[0], n.p[0], s); },
     {{3}},
     {4},
     {{0, 0, 0, 0, 8, 9.23076923077, 9.90099009901, 7.40740740741, 7.14285714286, 9.34579439252,
       9.52380952381, 8.07174887892}}},
    {"qxProjectionOscillator",
     [](X x, Series* o, N n, int32_t s) {
       return qxProjectionOscillator(x.bars, o[0], n.p[0], n.p[1], s);
     },
     {{3, 2}},
     {4},
     {{0, 0, 0, 0, 25, 60.1851851852, 86.7283950617, 78.9094650206, 26.3031550069, 22.101051669,
       74.0336838897, 76.5297464817}}},
    {"qxChaikinVolatility",
     [](X x, Series* o, N n, int32_t s) { return qxChaikinVolatility(x.bars, o[0], n.p[0], s); },
     {{3}},
     {3},
     {{0, 0, 0, 4.16666666667, 1.78571428571, 16.3461538462, 8.5, 3.72807017544, -11.4669421488,
       -6.39400921659, -16.4640591966, 5.84889148191}}},
    {"qxMassIndex",
     [](X x, Series* o, N n, int32_t s) { return qxMassIndex(x.bars, o[0], n.p[0], s); },
     {{3}},
     {3},
     {{0, 0, 0, 3.10060383726, 3.10578283642, 3.15480479938, 3.17981506271, 3.18639957384,
       3.13375940003, 3.09551965029, 3.01882329478, 3.01772669058}}},
    {"qxWellesVolatility",
     [](X x, Series* o, N n, int32_t s) {
       return qxWellesVolatility(x.bars, o[0], o[1], o[2], o[3], n.k, n.p[0], s);
     },
     {{2}, 1.0},
     {0, 1, 1, 1},
     {{51, 53, 53, 53, 49, 49, 53, 55, 55, 55, 55, 57},
      {0, 3.5, 3.25, 3.125, 3.5625, 3.78125, 3.390625, 3.6953125, 3.34765625, 3.173828125,
       3.0869140625, 3.54345703125},
      {0, 51, 49.5, 49.75, 49.875, 52.5625, 52.78125, 49.609375, 51.3046875, 51.65234375,
       51.826171875, 51.9130859375},
      {0, 1, 0, 0, -1, 0, 1, 0, 0, 0, 0, 0}}},
};

TEST(Volatility, WorkedCases) {
  for (const WorkedCase& c : kCases) qxtest::checkCase(c);
}

TEST(Volatility, RealPrices) {
  qxtest::checkRealPrices(kCases);
}

TEST(Volatility, ChannelsLeaveOutTheCurrentBar) {
  BarSet bars({{1, 5, 6, 4, 5, 0, 0}, {2, 0, 7, 5, 6, 0, 0}, {3, 9, 20, 1, 9, 0, 0}});
  Series upper, lower;
  EXPECT_EQ(qxPriceChannels(bars, upper, lower, 2, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(upper, {0, 0, 7}));
  EXPECT_TRUE(seriesNear(lower, {0, 0, 4})) << "the missing open does not count";
}

TEST(Volatility, BarsOfOneRange) {
  BarSet bars(std::vector<qxtest::Bar>(6, {1, 5, 7, 4, 5, 0, 0}));
  BarSet flat(std::vector<qxtest::Bar>(6, {1, 5, 5, 5, 5, 0, 0}));
  Series out, other;
  EXPECT_EQ(qxMassIndex(bars, out, 3, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0, 0, 3, 3, 3}));
  EXPECT_EQ(qxMassIndex(flat, out, 3, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, std::vector<double>(6), 0)) << "no range at all";
  EXPECT_EQ(qxChaikinVolatility(flat, out, 2, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, std::vector<double>(6), 0));
  EXPECT_EQ(qxProjectionOscillator(flat, out, 2, 1, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, std::vector<double>(6), 0)) << "bands that meet";
  EXPECT_EQ(qxBollingerWidth(flat, out, 2, 3, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, std::vector<double>(6), 0));
}

TEST(Volatility, ProjectionIsSmoothedAboveOneBarOnly) {
  BarSet bars(qxtest::workedBars());
  Series upper, lower, raw, same, smooth;
  qxProjectionBands(bars, upper, lower, 4, 0);
  EXPECT_EQ(qxProjectionOscillator(bars, raw, 4, 1, 0), QX_SUCCESS);
  EXPECT_EQ(qxProjectionOscillator(bars, same, 4, INT32_MIN, 0), QX_SUCCESS);
  EXPECT_EQ(raw.values(), same.values());
  for (int32_t i = 6; i < 12; ++i) {
    const double close = bars->close.data[i];
    EXPECT_EQ(raw[i], 100 * (close - lower[i]) / (upper[i] - lower[i])) << i;
  }
  EXPECT_EQ(qxProjectionOscillator(bars, smooth, 4, 2, 0), QX_SUCCESS);
  EXPECT_TRUE(near(smooth[7], 2.0 / 3 * raw[7] + (1 - 2.0 / 3) * raw[6]));
}

TEST(Volatility, SystemReversesAtItsStop) {
  // Ranges of 2 at each bar, so that the stop lies 2 from the best close.
  BarSet bars({{1, 10, 11, 9, 10, 0, 0},
               {2, 10, 11, 9, 9, 0, 0},      // short from 10; the range of bar 0 is still empty
               {3, 9, 10, 8, 8, 0, 0},       // stop 9 + 2, best close 8
               {4, 10, 11, 9, 11, 0, 0},     // stop 8 + 2.x: reversed to long at 11
               {5, 11, 13, 11, 13, 0, 0},    // best close 13
               {6, 10, 12, 10, 10, 0, 0}});  // reversed to short at 10
  Series significant, range, stop, reversal;
  EXPECT_EQ(qxWellesVolatility(bars, significant, range, stop, reversal, 1.0, 2, 0), QX_SUCCESS);
  // True ranges 2, 2, 2, 3, 2, 3 in Welles' average of 2 bars.
  EXPECT_TRUE(seriesNear(range, {0, 2, 2, 2.5, 2.25, 2.625}));
  EXPECT_TRUE(seriesNear(significant, {10, 9, 8, 11, 13, 10}));
  EXPECT_TRUE(seriesNear(stop, {0, 10, 11, 10, 8.5, 10.75}));
  EXPECT_TRUE(seriesNear(reversal, {0, 0, 0, 1, 0, -1})) << "a signal, not a state";
  EXPECT_EQ(range.record.firstvalid, 1);
  EXPECT_EQ(significant.record.firstvalid, 0);
  EXPECT_EQ(stop.record.firstvalid, 1);

  // Bars that end within the first average: its partial sum / 8, not multiplied.
  EXPECT_EQ(qxWellesVolatility(bars, significant, range, stop, reversal, 5.0, 8, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(range, {0, 0, 0, 0, 0, 14 / 8.0}));
}

TEST(Volatility, BandsOfShortSeriesKeepTheirMiddle) {
  BarSet bars({{1, 1, 3, 3, 3, 0, 0}, {2, 1, 6, 6, 6, 0, 0}});
  Series upper, middle, lower;
  EXPECT_EQ(qxBollinger(bars, upper, middle, lower, 2, 3, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(middle, {0, 3})) << "9 / 3";
  EXPECT_TRUE(seriesNear(upper, {0, 0}));
  EXPECT_EQ(middle.record.firstvalid, 2);

  // The middle of the error bands begins with the series, wherever the start lies.
  Series in{1, 2, 3, 4, 5, 7}, above, line, below;
  EXPECT_EQ(qxStdErrBands(in, above, line, below, 1, 3, 2), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(line, {0, 0, 4, 5, 6, 16 / 3.0 + 3}));
  EXPECT_TRUE(seriesNear(above, {0, 0, 0, 0, 6, line[5] + std::sqrt(1 / 6.0)}));
  for (const Series* band : {&above, &line, &below}) EXPECT_EQ(band->record.firstvalid, 4);
}

TEST(Volatility, EnvelopesPassOnTheStatusOfTheirAverage) {
  Series in({1, 2, 3, 4}, 1), upper{7, 7, 7, 7}, lower;
  EXPECT_EQ(qxMAEnvelope(in, upper, lower, 0.1, 8, 2, 0), QX_ERR_INVALID_PARM);
  EXPECT_TRUE(seriesNear(upper, {0, 0, 0, 0}));
  EXPECT_EQ(qxMAEnvelope(in, upper, lower, 0.5, QX_MA_SIMPLE, 2, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(upper, {0, 0, 3.75, 5.25}));
  EXPECT_EQ(upper.record.firstvalid, 2) << "that of the average";
  BarSet bars(qxtest::workedBars());
  EXPECT_EQ(qxMAHighLow(bars, upper, lower, -1, 2, 0), QX_ERR_INVALID_PARM);
}

}  // namespace
