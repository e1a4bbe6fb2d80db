// Averages, statistics, trend, two-market studies and patterns over real bars: no NaN and no
// infinity where the definitions give none.
#include <functional>

#include "tests/support/real_bars.h"

namespace {

using qxtest::BarSet;
using qxtest::expectFinite;
using qxtest::Series;

using SeriesStudy = std::function<int32_t(const qxArray* in, qxArray* out)>;

TEST(RealPrices, AveragesAndStatisticsOfTheCloses) {
  const struct {
    const char* name;
    SeriesStudy study;
  } studies[] = {
      {"simple", [](auto* in, auto* out) { return qxSimpleMA(in, out, 20, 0); }},
      {"sum", [](auto* in, auto* out) { return qxMovingSum(in, out, 20, 0); }},
      {"exponential", [](auto* in, auto* out) { return qxExpMA(in, out, 20, 0); }},
      {"weighted", [](auto* in, auto* out) { return qxWeightedMA(in, out, 20, 0); }},
      {"Welles", [](auto* in, auto* out) { return qxWellesMA(in, out, 14, 0); }},
      {"Welles sum", [](auto* in, auto* out) { return qxWellesSum(in, out, 14, 0); }},
      {"triangular", [](auto* in, auto* out) { return qxTriangularMA(in, out, 20, 0); }},
      {"VIDYA", [](auto* in, auto* out) { return qxVIDYA(in, out, 12, 20, 0); }},
      {"variable", [](auto* in, auto* out) { return qxVariableMA(in, out, 20, 0); }},
      {"T3", [](auto* in, auto* out) { return qxT3(in, out, 20, 0.7, 3, 0); }},
      {"DEMA", [](auto* in, auto* out) { return qxDEMA(in, out, 20, 0); }},
      {"TEMA", [](auto* in, auto* out) { return qxTEMA(in, out, 20, 0); }},
      {"zero lag", [](auto* in, auto* out) { return qxZeroLagExpMA(in, out, 20, 0); }},
      {"least squares", [](auto* in, auto* out) { return qxLstSqrMA(in, out, 20, 0); }},
      {"CMO", [](auto* in, auto* out) { return qxCMO(in, out, 14, 0); }},
      {"deviation", [](auto* in, auto* out) { return qxStdDevMv(in, out, 1, 20, 0); }},
      {"error", [](auto* in, auto* out) { return qxStdErrMv(in, out, 20, 0); }},
      {"dispersion", [](auto* in, auto* out) { return qxDispersionMv(in, out, 20, 0); }},
      {"correlation", [](auto* in, auto* out) { return qxCorCoefMv(in, in, out, 1, 20, 0); }},
      {"covariance", [](auto* in, auto* out) { return qxCovarianceMv(in, in, out, 20, 0); }},
      {"R squared", [](auto* in, auto* out) { return qxRSquared(in, out, 20, 0); }},
      {"DMI", [](auto* in, auto* out) { return qxDMI(in, out, 0); }},
      {"VHF", [](auto* in, auto* out) { return qxVHF(in, out, 28, 0); }},
      {"zigzag", [](auto* in, auto* out) { return qxZigZag(in, out, 5.0, 0); }},
      {"trend score", [](auto* in, auto* out) { return qxTrendScore(in, out, 11, 20, 0); }},
      {"PFE", [](auto* in, auto* out) { return qxPFE(in, out, 10, 5, 0); }},
      {"performance", [](auto* in, auto* out) { return qxPerformancePct(in, out, 0); }},
      {"detrended", [](auto* in, auto* out) { return qxDeTrend(in, out, 0, INT32_MAX); }},
  };
  qxtest::withRealBars([&](BarSet& bars) {
    for (const auto& s : studies) {
      Series out;
      EXPECT_EQ(s.study(&bars->close, out), QX_SUCCESS) << s.name;
      EXPECT_GT(out.record.size, out.record.firstvalid) << s.name;
      expectFinite(out, s.name);
    }
  });
}

TEST(RealPrices, StudiesOfTheBars) {
  const struct {
    const char* name;
    std::function<int32_t(qxBars*, Series* o)> study;
  } studies[] = {
      {"true range", [](auto* b, auto* o) { return qxTR(b, o[0], 0); }},
      {"typical", [](auto* b, auto* o) { return qxTypicalPrices(b, o[0], 0); }},
      {"weighted close", [](auto* b, auto* o) { return qxWeightedCloses(b, o[0], 0); }},
      {"median", [](auto* b, auto* o) { return qxMedianPrices(b, o[0], 0); }},
      {"average price", [](auto* b, auto* o) { return qxAvgPrices(b, o[0], 0); }},
      {"volume adjusted",
       [](auto* b, auto* o) { return qxVolAdjustedMA(&b->close, &b->volume, o[0], 20, 0); }},
      {"line", [](auto* b,
                  auto* o) { return qxRegressionLineMv(&b->close, o[0], o[1], 20, 0, INT32_MAX); }},
      {"DI", [](auto* b, auto* o) { return qxDI(b, o[0], o[1], 14, 0); }},
      {"DX", [](auto* b, auto* o) { return qxDX(b, o[0], 14, 0); }},
      {"ADX", [](auto* b, auto* o) { return qxADX(b, o[0], 14, 14, 0); }},
      {"ADXR", [](auto* b, auto* o) { return qxADXR(b, o[0], 14, 14, 14, 0); }},
      {"DMIx", [](auto* b, auto* o) { return qxDMIx(b, o[0], o[1], 0); }},
      {"Aroon", [](auto* b, auto* o) { return qxAroon(b, o[0], o[1], 25, 0); }},
      {"Aroon oscillator", [](auto* b, auto* o) { return qxAroonOscillator(b, o[0], 25, 0); }},
      {"SAR", [](auto* b, auto* o) { return qxSAR(b, o[0], o[1], 0.02, 0.2, 0); }},
      {"RWI", [](auto* b, auto* o) { return qxRWI(b, o[0], o[1], 9, 0); }},
      {"cloud",
       [](auto* b, auto* o) {
         return qxIchimokuKinkoHyo(b, o[0], o[1], o[2], o[3], o[4], 9, 26, 52, 0);
       }},
      {"range", [](auto* b, auto* o) { return qxRangeIndicator(b, o[0], 10, 3, 0); }},
      {"performance against itself",
       [](auto* b, auto* o) { return qxCompPerformance(b, b, o[0], 0); }},
      {"strength", [](auto* b, auto* o) { return qxCompStrength(b, b, o[0], 0); }},
      {"RSIC", [](auto* b, auto* o) { return qxRSIC(b, b, o[0], 12, 0); }},
      {"spread", [](auto* b, auto* o) { return qxSpread(b, b, o[0], 0); }},
      {"selection", [](auto* b, auto* o) { return qxCSIndex(b, o[0], 14, 50, 2000, 25, 0); }},
      {"sinewave", [](auto* b, auto* o) { return qxMESAsinewave(&b->close, o[0], o[1], 25, 0); }},
      {"intervals", [](auto* b, auto* o) { return qxFillInterval(b, o[0], 20, 0); }},
  };
  qxtest::withRealBars([&](BarSet& bars) {
    for (const auto& s : studies) {
      Series outputs[5];
      EXPECT_EQ(s.study(bars, outputs), QX_SUCCESS) << s.name;
      for (const Series& out : outputs) expectFinite(out, s.name);
    }
  });
}

TEST(RealPrices, SignalsAreSignals) {
  const char* const formations[] = {"qxCPR",         "qxGap",       "qxGapDown",
                                    "qxGapUp",       "qxInsideBar", "qxIslandReversal",
                                    "qxKeyReversal", "qxOutsideBar"};
  qxtest::withRealBars([&](BarSet& bars) {
    Series out, average;
    for (const char* name : formations) {
      const int32_t found = qxFormationFill(bars, out, name, 0, INT32_MAX);
      int32_t counted = 0;
      for (const double value : out.values()) {
        EXPECT_TRUE(value == 0.0 || value == 1.0 || value == -1.0) << name;
        counted += value != 0.0 ? 1 : 0;
      }
      EXPECT_EQ(found, counted) << name;
    }
    EXPECT_EQ(qxSimpleMA(&bars->close, average, 20, 0), QX_SUCCESS);
    EXPECT_EQ(qxCrossOverFill(&bars->close, average, out, 0, INT32_MAX), QX_SUCCESS);
    // Up crossings and down crossings differ by the few that only touch and turn back.
    int32_t up = 0, down = 0;
    for (const double value : out.values()) {
      up += value == 1.0 ? 1 : 0;
      down += value == -1.0 ? 1 : 0;
    }
    EXPECT_GT(up, 5);
    EXPECT_NEAR(up, down, 0.2 * up + 1);
    EXPECT_EQ(qxTurnFill(average, out, 0, INT32_MAX), QX_SUCCESS);
    expectFinite(out, "turns");
  });
}

}  // namespace
