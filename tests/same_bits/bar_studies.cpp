// Studies of bar sets.
#include "tests/same_bits/recorder.h"

namespace same_bits {
namespace {

const Named<decltype(qxOBV)> kPlainStudies[] = {
    {"qxTypicalPrices", qxTypicalPrices},
    {"qxWeightedCloses", qxWeightedCloses},
    {"qxMedianPrices", qxMedianPrices},
    {"qxAvgPrices", qxAvgPrices},
    {"qxTR", qxTR},
    {"qxOBV", qxOBV},
    {"qxAccumDist", qxAccumDist},
    {"qxNVI", qxNVI},
    {"qxPVI", qxPVI},
    {"qxPVT", qxPVT},
    {"qxPVrank", qxPVrank},
    {"qxMFI", qxMFI},
    {"qxWilliamsAD", qxWilliamsAD},
};
const Named<decltype(qxATR)> kPeriodStudies[] = {
    {"qxRawK", qxRawK},
    {"qxWilliamsR", qxWilliamsR},
    {"qxRVI", qxRVI},
    {"qxCCI", qxCCI},
    {"qxIMI", qxIMI},
    {"qxQstick", qxQstick},
    {"qxDX", qxDX},
    {"qxAroonOscillator", qxAroonOscillator},
    {"qxATR", qxATR},
    {"qxProjectionBandwidth", qxProjectionBandwidth},
    {"qxChaikinVolatility", qxChaikinVolatility},
    {"qxMassIndex", qxMassIndex},
    {"qxOBVolMv", qxOBVolMv},
    {"qxOBOiMv", qxOBOiMv},
    {"qxOBVolExp", qxOBVolExp},
    {"qxChaikinMoneyFlow", qxChaikinMoneyFlow},
    {"qxArmsEMV", qxArmsEMV},
    {"qxMoneyFlowIndex", qxMoneyFlowIndex},
    {"qxFillInterval", qxFillInterval},
};
const Named<decltype(qxADX)> kTwoPeriodStudies[] = {
    {"qxFastD", qxFastD},
    {"qxInertia", qxInertia},
    {"qxADX", qxADX},
    {"qxRangeIndicator", qxRangeIndicator},
    {"qxProjectionOscillator", qxProjectionOscillator},
    {"qxChaikinOscillator", qxChaikinOscillator},
    {"qxDemandIdx", qxDemandIdx},
};
const Named<decltype(qxADXR)> kThreePeriodStudies[] = {
    {"qxSlowD", qxSlowD},
    {"qxUltimateOsc", qxUltimateOsc},
    {"qxADXR", qxADXR},
};
const Named<decltype(qxDI)> kTwoLineStudies[] = {
    {"qxDI", qxDI},
    {"qxAroon", qxAroon},
    {"qxRWI", qxRWI},
    {"qxPriceChannels", qxPriceChannels},
    {"qxProjectionBands", qxProjectionBands},
};
const Named<decltype(qxSpread)> kTwoMarketStudies[] = {
    {"qxCompPerformance", qxCompPerformance},
    {"qxCompStrength", qxCompStrength},
    {"qxSpread", qxSpread},
};
const Named<decltype(qxMedianPrice)> kBarValues[] = {
    {"qxTypicalPrice", qxTypicalPrice}, {"qxWeightedClose", qxWeightedClose},
    {"qxMedianPrice", qxMedianPrice},   {"qxAvgPrice", qxAvgPrice},
    {"qxTrueHigh", qxTrueHigh},         {"qxTrueLow", qxTrueLow},
    {"qxTrueRange", qxTrueRange},       {"qxBodyMidpoint", qxBodyMidpoint},
};

void computeTables(const qxBars* bars) {
  for (const auto& study : kPlainStudies) {
    compute(study, bars, out, 0);
    compute(study, bars, out, 250);
  }
  for (const auto& study : kPeriodStudies) {
    for (const int32_t period : {1, 2, 5, 14, 50}) compute(study, bars, out, period, 0);
    compute(study, bars, out, 14, 250);
  }
  for (const auto& study : kTwoPeriodStudies) {
    for (const int32_t period : {1, 5, 14}) compute(study, bars, out, period, 9, 0);
    compute(study, bars, out, 10, 3, 250);
  }
  for (const auto& study : kThreePeriodStudies) {
    for (const int32_t period : {5, 7, 14}) compute(study, bars, out, period, 3, 5, 0);
    compute(study, bars, out, 10, 14, 2, 250);
  }
  for (const auto& study : kTwoLineStudies) {
    for (const int32_t period : {1, 5, 14, 50}) compute(study, bars, out, out, period, 0);
    compute(study, bars, out, out, 14, 250);
  }
  for (const auto& entry : kBarValues) {
    computeEach(entry.name, entry.function, bars->barsize, bars);
  }
}

void computeOthers(const qxBars* bars) {
  for (int32_t method = QX_MA_EXPONENTIAL; method <= QX_MA_ZERO_LAG; ++method) {
    compute("qxStochasticOscillator", qxStochasticOscillator, bars, out, out, method, 14, 3, 5, 0);
    compute("qxMAHighLow", qxMAHighLow, bars, out, out, method, 10, 0);
    compute("qxPVO", qxPVO, bars, out, 12, 26, method, 0);
  }
  for (const int32_t start : {0, 250}) {
    compute("qxSMI", qxSMI, bars, out, out, 13, 25, 2, 9, start);
    compute("qxDMIx", qxDMIx, bars, out, out, start);
    compute("qxIchimokuKinkoHyo", qxIchimokuKinkoHyo, bars, out, out, out, out, out, 9, 26, 52,
            start);
    compute("qxKO", qxKO, bars, out, out, 34, 55, 13, start);
    compute("qxHerrickPayoffIndex", qxHerrickPayoffIndex, bars, out, 100.0, 0.1, start);
    compute("qxCFTPP", qxCFTPP, bars, out, out, out, out, out, start);
    compute("qxCSIndex", qxCSIndex, bars, out, 14, 250.0, 15000.0, 25.0, start);
    for (const double factor : {0.02, 2.0, 3.0}) {
      compute("qxSAR", qxSAR, bars, out, out, factor, 0.2, start);
      compute("qxBollinger", qxBollinger, bars, out, out, out, factor, 20, start);
      compute("qxBollingerWidth", qxBollingerWidth, bars, out, factor, 20, start);
      compute("qxWellesVolatility", qxWellesVolatility, bars, out, out, out, out, factor, 7, start);
      compute("qxSwingIndex", qxSwingIndex, bars, out, 10 * factor, start);
      compute("qxAccumSwingIndex", qxAccumSwingIndex, bars, out, 10 * factor, start);
    }
  }
  compute("qxOBVol", qxOBVol, bars, 10, 5000);
  compute("qxOBOi", qxOBOi, bars, 10, 5000);
}

void computePointAndFigure(const qxBars* bars) {
  const Named<decltype(qxBars2PNF)> kinds[] = {{"qxBars2PNF", qxBars2PNF},
                                               {"qxBars2PNFhilo", qxBars2PNFhilo}};
  for (const auto& kind : kinds) {
    for (const double box : {5.0, 12.5}) {
      qxBars columns = {};
      qxArray map = {};
      std::vector<double> numbers = {
          static_cast<double>(kind.function(bars, &columns, &map, box, 3.0, 0))};
      appendBars(columns, &numbers);
      appendSeries(map, &numbers);
      print(kind.name, box == 5.0 ? " 5" : " 12.5", numbers);
      qxFreeBars(&columns);
      qxFreeArray(&map);
    }
  }
}

}  // namespace

void computeBarStudies(const Prices& prices) {
  computeTables(&prices.bars);
  computeOthers(&prices.bars);
  computePointAndFigure(&prices.bars);
  for (const double date : {0.0, 38000.0}) {
    for (const auto& study : kTwoMarketStudies) {
      compute(study, &prices.bars, &prices.other, out, date);
    }
    compute("qxRSIC", qxRSIC, &prices.bars, &prices.other, out, 14, date);
  }
}

}  // namespace same_bits
