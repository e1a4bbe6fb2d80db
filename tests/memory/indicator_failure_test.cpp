// Every indicator and pattern with every allocation failing in turn.
#include <cstring>
#include <deque>
#include <tuple>

#include "tests/support/failing_memory.h"
#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;

constexpr int32_t kBars = 90;

// Prices that rise and fall, so that every study has something to compute.
BarSet* sampleBars() {
  static std::vector<qxtest::Bar> bars;
  if (bars.empty()) {
    for (int32_t i = 0; i < kBars; ++i) {
      const double close = 100.0 + (i * 37 % 23) - (i * 11 % 17) + i / 8.0;
      const double open = close + (i * 7 % 9 - 4) / 4.0;
      bars.push_back({36526.0 + i, open, std::max(open, close) + 1.0 + i % 3,
                      std::min(open, close) - 0.5 - i % 2, close, 1000.0 + i * 71 % 300,
                      500.0 + i % 40});
    }
  }
  static BarSet set(bars);
  return &set;
}

// The outputs of one attempt.
struct Outputs {
  std::deque<qxArray> arrays;

  bool equal(const Outputs& other) const {
    for (size_t i = 0; i < arrays.size(); ++i) {
      const qxArray &a = arrays[i], &b = other.arrays[i];
      if (a.size != b.size || a.firstvalid != b.firstvalid) return false;
      const auto size = static_cast<size_t>(a.size) * sizeof(double);
      if (std::memcmp(a.data, b.data, size) != 0) return false;
    }
    return true;
  }
  void release() {
    for (qxArray& array : arrays) qxFreeArray(&array);
  }
};

// Arguments by type: prices for inputs, unallocated outputs, small periods; the last integer is the
// start or the end of the range.
struct Maker {
  Outputs* outputs;
  int32_t inputs = 0;
  int32_t integers = 0;

  qxArray* output() {
    outputs->arrays.emplace_back();
    return &outputs->arrays.back();
  }
};

template <typename T>
T make(Maker& maker) {
  qxBars& bars = sampleBars()->record;
  if constexpr (std::is_same_v<T, const qxBars*>) {
    return &bars;
  } else if constexpr (std::is_same_v<T, const qxArray*>) {
    const qxArray* const series[] = {&bars.close, &bars.open, &bars.volume, &bars.openint};
    return series[maker.inputs++ % 4];
  } else if constexpr (std::is_same_v<T, qxArray*>) {
    return maker.output();
  } else if constexpr (std::is_same_v<T, int32_t>) {
    constexpr int32_t kPeriods[] = {3, 5, 2, 4};
    return kPeriods[maker.integers++ % 4];
  } else {
    return 2.0;
  }
}

struct Study {
  const char* name;
  int32_t (*run)(Outputs* outputs);
  // The allocations of inner steps whose status the study ignores by contract.
  int64_t firstIgnored = 0, lastIgnored = 0;
};

template <auto Function>
struct ByType;

template <typename... Arguments, int32_t (*Function)(Arguments...)>
struct ByType<Function> {
  static int32_t run(Outputs* outputs) {
    Maker maker = {outputs};
    std::tuple<Arguments...> arguments{make<Arguments>(maker)...};
    return std::apply(Function, arguments);
  }
};

// A method of moving average.
template <int32_t Method>
int32_t average(Outputs* outputs) {
  Maker maker = {outputs};
  return qxMovingAverage(&sampleBars()->record.close, maker.output(), Method, 5, 0);
}

int32_t regressionLines(Outputs* outputs) {
  Maker maker = {outputs};
  qxArray* const slopes = maker.output();
  return qxRegressionLineMv(&sampleBars()->record.close, slopes, maker.output(), 5, 0, kBars - 1);
}

const Study kStudies[] = {
    {"qxMultAddArray", ByType<qxMultAddArray>::run},
    {"qxScaleArray", ByType<qxScaleArray>::run},
    {"qxGroupArray", ByType<qxGroupArray>::run},
    {"qxSimpleMA", ByType<qxSimpleMA>::run},
    {"qxMovingSum", ByType<qxMovingSum>::run},
    {"qxWeightedMA", ByType<qxWeightedMA>::run},
    {"qxTriangularMA", ByType<qxTriangularMA>::run},
    {"qxLstSqrMA", ByType<qxLstSqrMA>::run},
    {"qxVolAdjustedMA", ByType<qxVolAdjustedMA>::run},
    {"qxExpMA", ByType<qxExpMA>::run},
    {"qxDEMA", ByType<qxDEMA>::run},
    {"qxTEMA", ByType<qxTEMA>::run},
    {"qxT3", ByType<qxT3>::run},
    {"qxZeroLagExpMA", ByType<qxZeroLagExpMA>::run},
    {"qxWellesMA", ByType<qxWellesMA>::run},
    {"qxWellesSum", ByType<qxWellesSum>::run},
    {"qxCMO", ByType<qxCMO>::run},
    {"qxVIDYA", ByType<qxVIDYA>::run},
    {"qxVariableMA", ByType<qxVariableMA>::run},
    {"qxMovingAverage 0", average<0>},
    {"qxMovingAverage 1", average<1>},
    {"qxMovingAverage 2", average<2>},
    {"qxMovingAverage 3", average<3>},
    {"qxMovingAverage 4", average<4>},
    {"qxMovingAverage 5", average<5>},
    {"qxMovingAverage 6", average<6>},
    {"qxMovingAverage 7", average<7>},
    {"qxTypicalPrices", ByType<qxTypicalPrices>::run},
    {"qxWeightedCloses", ByType<qxWeightedCloses>::run},
    {"qxMedianPrices", ByType<qxMedianPrices>::run},
    {"qxAvgPrices", ByType<qxAvgPrices>::run},
    {"qxTR", ByType<qxTR>::run},
    {"qxStdDevMv", ByType<qxStdDevMv>::run},
    {"qxStdErrMv", ByType<qxStdErrMv>::run},
    {"qxDispersionMv", ByType<qxDispersionMv>::run},
    {"qxCorCoefMv", ByType<qxCorCoefMv>::run},
    {"qxCovarianceMv", ByType<qxCovarianceMv>::run},
    {"qxRegressionLineMv", regressionLines},
    {"qxRSquared", ByType<qxRSquared>::run},
    {"qxOscillator", ByType<qxOscillator>::run},
    {"qxOscillatorPct", ByType<qxOscillatorPct>::run},
    {"qxRatio", ByType<qxRatio>::run},
    {"qxMomentum", ByType<qxMomentum>::run},
    {"qxRateOfChange", ByType<qxRateOfChange>::run},
    {"qxRMI", ByType<qxRMI>::run},
    {"qxRSI", ByType<qxRSI>::run},
    {"qxUpAverage", ByType<qxUpAverage>::run},
    {"qxDownAverage", ByType<qxDownAverage>::run},
    {"qxPriceOscillator", ByType<qxPriceOscillator>::run},
    {"qxPriceOscillatorPct", ByType<qxPriceOscillatorPct>::run},
    {"qxDPO", ByType<qxDPO>::run},
    {"qxStochastic", ByType<qxStochastic>::run},
    {"qxRawK", ByType<qxRawK>::run},
    {"qxFastD", ByType<qxFastD>::run},
    {"qxSlowD", ByType<qxSlowD>::run},
    {"qxStochasticOscillator", ByType<qxStochasticOscillator>::run},
    {"qxStochRSI", ByType<qxStochRSI>::run},
    {"qxWilliamsR", ByType<qxWilliamsR>::run},
    {"qxSMI", ByType<qxSMI>::run},
    {"qxMACD", ByType<qxMACD>::run},
    {"qxMACDx", ByType<qxMACDx>::run},
    {"qxTRIX", ByType<qxTRIX>::run},
    {"qxTSI", ByType<qxTSI>::run},
    {"qxRVIoriginal", ByType<qxRVIoriginal>::run},
    {"qxRVI", ByType<qxRVI>::run},
    {"qxInertia", ByType<qxInertia>::run},
    {"qxCCI", ByType<qxCCI>::run},
    {"qxUltimateOsc", ByType<qxUltimateOsc>::run},
    {"qxIMI", ByType<qxIMI>::run},
    {"qxNMO", ByType<qxNMO>::run},
    {"qxQstick", ByType<qxQstick>::run},
    {"qxLineOsc", ByType<qxLineOsc>::run},
    {"qxForecastOscillator", ByType<qxForecastOscillator>::run},
    {"qxDMIx", ByType<qxDMIx>::run},
    {"qxDI", ByType<qxDI>::run},
    {"qxDX", ByType<qxDX>::run},
    {"qxADX", ByType<qxADX>::run, 2, 6},
    {"qxADXR", ByType<qxADXR>::run, 3, 7},
    {"qxAroon", ByType<qxAroon>::run},
    {"qxAroonOscillator", ByType<qxAroonOscillator>::run},
    {"qxDMI", ByType<qxDMI>::run},
    {"qxSAR", ByType<qxSAR>::run},
    {"qxVHF", ByType<qxVHF>::run},
    {"qxRWI", ByType<qxRWI>::run},
    {"qxZigZag", ByType<qxZigZag>::run},
    {"qxIchimokuKinkoHyo", ByType<qxIchimokuKinkoHyo>::run},
    {"qxTrendScore", ByType<qxTrendScore>::run},
    {"qxPFE", ByType<qxPFE>::run},
    {"qxRangeIndicator", ByType<qxRangeIndicator>::run},
    {"qxATR", ByType<qxATR>::run},
    {"qxBollinger", ByType<qxBollinger>::run},
    {"qxBollingerWidth", ByType<qxBollingerWidth>::run},
    {"qxEnvelope", ByType<qxEnvelope>::run},
    {"qxEnvelopePct", ByType<qxEnvelopePct>::run},
    {"qxMAEnvelope", ByType<qxMAEnvelope>::run},
    {"qxMAHighLow", ByType<qxMAHighLow>::run},
    {"qxStdErrBands", ByType<qxStdErrBands>::run},
    {"qxPriceChannels", ByType<qxPriceChannels>::run},
    {"qxProjectionBands", ByType<qxProjectionBands>::run},
    {"qxProjectionBandwidth", ByType<qxProjectionBandwidth>::run},
    {"qxProjectionOscillator", ByType<qxProjectionOscillator>::run},
    {"qxChaikinVolatility", ByType<qxChaikinVolatility>::run},
    {"qxMassIndex", ByType<qxMassIndex>::run},
    {"qxWellesVolatility", ByType<qxWellesVolatility>::run},
    {"qxOBV", ByType<qxOBV>::run},
    {"qxOBVolMv", ByType<qxOBVolMv>::run},
    {"qxOBOiMv", ByType<qxOBOiMv>::run},
    {"qxOBVolExp", ByType<qxOBVolExp>::run},
    {"qxAccumDist", ByType<qxAccumDist>::run},
    {"qxAccumulate", ByType<qxAccumulate>::run},
    {"qxChaikinMoneyFlow", ByType<qxChaikinMoneyFlow>::run},
    {"qxChaikinOscillator", ByType<qxChaikinOscillator>::run},
    {"qxNVI", ByType<qxNVI>::run},
    {"qxPVI", ByType<qxPVI>::run},
    {"qxPVT", ByType<qxPVT>::run},
    {"qxPVO", ByType<qxPVO>::run},
    {"qxPVrank", ByType<qxPVrank>::run},
    {"qxArmsEMV", ByType<qxArmsEMV>::run},
    {"qxMFI", ByType<qxMFI>::run},
    {"qxMoneyFlowIndex", ByType<qxMoneyFlowIndex>::run},
    {"qxKO", ByType<qxKO>::run},
    {"qxWilliamsAD", ByType<qxWilliamsAD>::run},
    {"qxHerrickPayoffIndex", ByType<qxHerrickPayoffIndex>::run},
    {"qxDemandIdx", ByType<qxDemandIdx>::run},
    {"qxSwingIndex", ByType<qxSwingIndex>::run},
    {"qxAccumSwingIndex", ByType<qxAccumSwingIndex>::run},
    {"qxCFTPP", ByType<qxCFTPP>::run},
    {"qxADIssues", ByType<qxADIssues>::run},
    {"qxUpDownVolume", ByType<qxUpDownVolume>::run},
    {"qxABI", ByType<qxABI>::run},
    {"qxADRatio", ByType<qxADRatio>::run},
    {"qxUpDownRatio", ByType<qxUpDownRatio>::run},
    {"qxADLineBreadth", ByType<qxADLineBreadth>::run},
    {"qxTRIN", ByType<qxTRIN>::run},
    {"qxArmsIdx", ByType<qxArmsIdx>::run},
    {"qxADLine", ByType<qxADLine>::run},
    {"qxCVI", ByType<qxCVI>::run},
    {"qxBoltonTremblay", ByType<qxBoltonTremblay>::run},
    {"qxOverBoughtSold", ByType<qxOverBoughtSold>::run},
    {"qxSTIX", ByType<qxSTIX>::run},
    {"qxBreadthThrust", ByType<qxBreadthThrust>::run},
    {"qxOpen10TRIN", ByType<qxOpen10TRIN>::run},
    {"qxBretzTRIN5", ByType<qxBretzTRIN5>::run},
    {"qxMcClellanOscillator", ByType<qxMcClellanOscillator>::run},
    {"qxMcClellanSummation", ByType<qxMcClellanSummation>::run},
    {"qxMcClellanOscSum", ByType<qxMcClellanOscSum>::run},
    {"qxCompPerformance", ByType<qxCompPerformance>::run},
    {"qxCompStrength", ByType<qxCompStrength>::run},
    {"qxSpread", ByType<qxSpread>::run},
    {"qxRSIC", ByType<qxRSIC>::run},
    {"qxPerformancePct", ByType<qxPerformancePct>::run},
    {"qxDeTrend", ByType<qxDeTrend>::run},
    {"qxCSIndex", ByType<qxCSIndex>::run, 5, 9},
    {"qxMESAsinewave", ByType<qxMESAsinewave>::run},
    {"qxFillInterval", ByType<qxFillInterval>::run},
    {"qxCrossOverFill", ByType<qxCrossOverFill>::run},
    {"qxTurnFill", ByType<qxTurnFill>::run},
};

TEST(StudyMemory, EveryFailureIsReportedAndLeavesNothingBehind) {
  const double* const data = sampleBars()->record.close.data;
  const std::vector<double> closes(data, data + kBars);
  for (const Study& study : kStudies) {
    const int64_t before = qxtest::liveBlocks();
    Outputs expected;
    const int32_t usual = study.run(&expected);
    ASSERT_EQ(usual, QX_SUCCESS) << study.name;
    const int64_t kept = qxtest::liveBlocks();
    for (int64_t n = 1;; ++n) {
      Outputs outputs;
      qxtest::failAllocation(n);
      const int32_t status = study.run(&outputs);
      const bool all = qxtest::failureIsPending();
      qxtest::failAllocation(0);
      const bool ignored = n >= study.firstIgnored && n <= study.lastIgnored;
      EXPECT_EQ(status, all || ignored ? QX_SUCCESS : QX_ERR_MALLOC)
          << study.name << ", allocation " << n;
      outputs.release();
      EXPECT_EQ(qxtest::liveBlocks(), kept) << study.name << ", allocation " << n;
      Outputs next;
      EXPECT_EQ(study.run(&next), QX_SUCCESS) << study.name;
      EXPECT_TRUE(next.equal(expected)) << study.name << " after allocation " << n << " failed";
      next.release();
      if (all) break;
      ASSERT_LT(n, 1000) << study.name;
    }
    expected.release();
    EXPECT_EQ(qxtest::liveBlocks(), before) << study.name;
  }
  EXPECT_EQ(std::vector<double>(data, data + kBars), closes) << "inputs stay as they are";
}

}  // namespace
