// Studies of one or more plain series: averages, oscillators, bands, breadth.
#include "tests/same_bits/recorder.h"

namespace same_bits {
namespace {

const Named<decltype(qxSimpleMA)> kPeriodStudies[] = {
    {"qxSimpleMA", qxSimpleMA},
    {"qxMovingSum", qxMovingSum},
    {"qxWeightedMA", qxWeightedMA},
    {"qxTriangularMA", qxTriangularMA},
    {"qxLstSqrMA", qxLstSqrMA},
    {"qxWellesMA", qxWellesMA},
    {"qxWellesSum", qxWellesSum},
    {"qxCMO", qxCMO},
    {"qxVariableMA", qxVariableMA},
    {"qxStdErrMv", qxStdErrMv},
    {"qxDispersionMv", qxDispersionMv},
    {"qxRSquared", qxRSquared},
    {"qxMomentum", qxMomentum},
    {"qxRSI", qxRSI},
    {"qxUpAverage", qxUpAverage},
    {"qxDownAverage", qxDownAverage},
    {"qxDPO", qxDPO},
    {"qxStochastic", qxStochastic},
    {"qxStochRSI", qxStochRSI},
    {"qxTRIX", qxTRIX},
    {"qxRVIoriginal", qxRVIoriginal},
    {"qxNMO", qxNMO},
    {"qxLineOsc", qxLineOsc},
    {"qxForecastOscillator", qxForecastOscillator},
    {"qxVHF", qxVHF},
};
const Named<decltype(qxExpMA)> kRealPeriodStudies[] = {
    {"qxExpMA", qxExpMA},   {"qxDEMA", qxDEMA},
    {"qxTEMA", qxTEMA},     {"qxZeroLagExpMA", qxZeroLagExpMA},
    {"qxZigZag", qxZigZag},
};
const Named<decltype(qxVIDYA)> kTwoPeriodStudies[] = {
    {"qxVIDYA", qxVIDYA}, {"qxStdDevMv", qxStdDevMv},     {"qxRMI", qxRMI},
    {"qxTSI", qxTSI},     {"qxTrendScore", qxTrendScore}, {"qxPFE", qxPFE},
};
const Named<decltype(qxOscillator)> kPairStudies[] = {
    {"qxOscillator", qxOscillator},
    {"qxOscillatorPct", qxOscillatorPct},
    {"qxRatio", qxRatio},
    {"qxADIssues", qxADIssues},
    {"qxUpDownVolume", qxUpDownVolume},
    {"qxABI", qxABI},
    {"qxADRatio", qxADRatio},
    {"qxUpDownRatio", qxUpDownRatio},
    {"qxADLineBreadth", qxADLineBreadth},
    {"qxADLine", qxADLine},
    {"qxCVI", qxCVI},
    {"qxOverBoughtSold", qxOverBoughtSold},
    {"qxBreadthThrust", qxBreadthThrust},
};
const Named<decltype(qxVolAdjustedMA)> kPairPeriodStudies[] = {
    {"qxVolAdjustedMA", qxVolAdjustedMA},
    {"qxCovarianceMv", qxCovarianceMv},
    {"qxSTIX", qxSTIX},
};
const Named<decltype(qxCorCoefMv)> kPairTwoPeriodStudies[] = {
    {"qxCorCoefMv", qxCorCoefMv},
    {"qxMcClellanOscillator", qxMcClellanOscillator},
    {"qxMcClellanSummation", qxMcClellanSummation},
};
const Named<decltype(qxTRIN)> kFourSeriesStudies[] = {
    {"qxTRIN", qxTRIN},
    {"qxOpen10TRIN", qxOpen10TRIN},
    {"qxBretzTRIN5", qxBretzTRIN5},
};

void computeAverages(const Prices& prices) {
  const qxArray *close = &prices.close, *late = &prices.late;
  for (const auto& study : kPeriodStudies) {
    for (const int32_t period : {1, 2, 5, 14, 50, 233}) compute(study, close, out, period, 0);
    compute(study, late, out, 14, 100);
  }
  for (const auto& study : kRealPeriodStudies) {
    for (const double period : {1.0, 2.5, 9.0, 26.0}) compute(study, close, out, period, 0);
    compute(study, late, out, 9.0, 100);
  }
  for (const auto& study : kTwoPeriodStudies) {
    for (const int32_t first : {1, 3, 9, 14}) {
      for (const int32_t second : {5, 9, 20}) compute(study, close, out, first, second, 0);
    }
    compute(study, late, out, 1, 14, 100);
  }
  for (int32_t method = QX_MA_EXPONENTIAL; method <= QX_MA_ZERO_LAG; ++method) {
    compute("qxMovingAverage", qxMovingAverage, close, out, method, 21, 0);
    compute("qxPriceOscillator", qxPriceOscillator, close, out, 12, 26, method, 0);
    compute("qxPriceOscillatorPct", qxPriceOscillatorPct, late, out, 5, 34, method, 0);
    compute("qxMAEnvelope", qxMAEnvelope, close, out, out, 2.5, method, 20, 0);
  }
  for (const double factor : {0.0, 0.7, 1.0}) {
    compute("qxT3", qxT3, close, out, 5.0, factor, 3, 0);
    compute("qxT3", qxT3, late, out, 8.5, factor, 6, 10);
  }
  for (const double period : {1.0, 9.0, 12.5}) {
    compute("qxPeriodToExp", qxPeriodToExp, period);
    compute("qxExpToPeriod", qxExpToPeriod, 1 / period);
    compute("qxEMA", qxEMA, 1455.22, 1399.42, period);
  }
}

void computeOscillators(const Prices& prices) {
  const qxArray *close = &prices.close, *late = &prices.late;
  for (const double scale : {1.0, 100.0}) {
    compute("qxRateOfChange", qxRateOfChange, close, out, scale, 12, 0);
    compute("qxROC", qxROC, close, 4000, 12, scale);
  }
  for (const int32_t signal : {5, 9}) {
    compute("qxMACD", qxMACD, close, out, out, signal, 0);
    compute("qxMACDx", qxMACDx, late, out, out, out, out, out, 12, 26, signal, 0);
  }
  for (const int32_t start : {0, 50}) {
    compute("qxDMI", qxDMI, close, out, start);
    compute("qxAccumulate", qxAccumulate, late, out, start);
    compute("qxPerformancePct", qxPerformancePct, close, out, start);
    compute("qxTurnFill", qxTurnFill, close, out, start, 5000);
    compute("qxDeTrend", qxDeTrend, close, out, start, 1000);
  }
  for (const int32_t period : {1, 15, 25, 60}) {
    compute("qxMESAsinewave", qxMESAsinewave, close, out, out, period, 0);
  }
  for (const double percent : {1.0, 3.0, 5.0}) {
    compute("qxEnvelopePct", qxEnvelopePct, close, out, out, percent, 0);
    compute("qxEnvelope", qxEnvelope, close, &prices.bars.open, out, out, percent / 100, 0);
    compute("qxStdErrBands", qxStdErrBands, late, out, out, out, percent, 21, 0);
  }
  for (const int32_t period : {2, 14, 100}) {
    compute("qxRegressionLineMv", qxRegressionLineMv, close, out, out, period, 0, 5104);
  }
}

void computePairs(const Prices& prices) {
  const qxArray *advances = &prices.advances, *declines = &prices.declines;
  for (const auto& study : kPairStudies) {
    compute(study, advances, declines, out, 0);
    compute(study, &prices.upVolume, &prices.downVolume, out, 30);
    compute(study, &prices.late, &prices.bars.open, out, 0);
  }
  for (const auto& study : kPairPeriodStudies) {
    for (const int32_t period : {1, 5, 21, 100}) {
      compute(study, &prices.late, &prices.volume, out, period, 0);
      compute(study, advances, declines, out, period, 1);
    }
  }
  for (const auto& study : kPairTwoPeriodStudies) {
    for (const int32_t period : {10, 19}) {
      for (const int32_t first : {0, 1, 5}) {
        compute(study, advances, declines, out, first, period, 1);
      }
    }
  }
  for (const auto& study : kFourSeriesStudies) {
    for (const int32_t start : {0, 1, 40}) {
      compute(study, advances, declines, &prices.upVolume, &prices.downVolume, out, start);
    }
  }
  compute("qxArmsIdx", qxArmsIdx, advances, declines, &prices.upVolume, &prices.downVolume, out, 1,
          4000);
  compute("qxBoltonTremblay", qxBoltonTremblay, advances, declines, &prices.unchanged, out, 1);
  compute("qxMcClellanOscSum", qxMcClellanOscSum, advances, declines, out, out, 19, 39, 1);
  compute("qxCrossOverFill", qxCrossOverFill, &prices.close, &prices.bars.open, out, 0, 5104);
}

}  // namespace

void computeSeriesStudies(const Prices& prices) {
  computeAverages(prices);
  computeOscillators(prices);
  computePairs(prices);
}

}  // namespace same_bits
