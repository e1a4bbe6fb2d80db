#include "tests/every_function/function_table.h"

#include <cstdio>
#include <cstdlib>
#include <type_traits>
#include <utility>

#include "tests/support/name_of.h"

namespace every_function {
namespace {

template <typename T, typename... Others>
constexpr bool kIsOneOf = (std::is_same_v<T, Others> || ...);

// Without the const of what a pointer points to.
template <typename T>
constexpr Kind kindOf() {
  if (std::is_same_v<T, int32_t>) return Kind::kInteger;
  if (std::is_same_v<T, int16_t>) return Kind::kShort;
  if (std::is_same_v<T, uint32_t>) return Kind::kUnsigned;
  if (std::is_same_v<T, double>) return Kind::kReal;
  if (std::is_same_v<T, int32_t*>) return Kind::kIntegerCell;
  if (std::is_same_v<T, int16_t*>) return Kind::kShortCell;
  if (std::is_same_v<T, double*>) return Kind::kRealCell;
  if (std::is_same_v<T, char*>) return Kind::kText;
  if (std::is_same_v<T, void*>) return Kind::kBytes;
  if (std::is_same_v<T, qxArray*>) return Kind::kSeries;
  if (std::is_same_v<T, qxBars*>) return Kind::kBars;
  if (std::is_same_v<T, qxCandles*>) return Kind::kCandles;
  if (std::is_same_v<T, qxOrderSystem*>) return Kind::kOrderSystem;
  if (std::is_same_v<T, qxGraph*>) return Kind::kGraph;
  if (std::is_same_v<T, qxGraphChart*>) return Kind::kGraphChart;
  if (std::is_same_v<T, qxTXTinfo*>) return Kind::kTextLayout;
  if (std::is_same_v<T, qxOptionLeg*>) return Kind::kOptionLeg;
  if (kIsOneOf<T, qxOptVar*, qxOptionStrategy*, qxTimeValue*, qxBond*, qxGraphLine*, qxGraphShape*>)
    return Kind::kNumbers;
  return Kind::kRecord;
}

template <typename T>
constexpr Parameter parameterOf() {
  using Target = std::remove_pointer_t<T>;
  if constexpr (!std::is_pointer_v<T>) {
    return {kindOf<T>(), true, 0};
  } else if constexpr (std::is_void_v<Target>) {
    return {Kind::kBytes, std::is_const_v<Target>, 0};
  } else {
    return {kindOf<std::remove_const_t<Target>*>(), std::is_const_v<Target>, sizeof(Target)};
  }
}

template <typename T>
T passed(const Argument& argument) {
  if constexpr (std::is_pointer_v<T>) {
    return address<std::remove_pointer_t<T>>(argument);
  } else if constexpr (std::is_same_v<T, double>) {
    return std::get<double>(argument);
  } else {
    return static_cast<T>(std::get<int32_t>(argument));
  }
}

template <auto Exported>
struct Described;

template <typename Result, typename... Types, Result (*Exported)(Types...)>
struct Described<Exported> {
  template <size_t... Index>
  static double callWith(const Arguments& arguments, std::index_sequence<Index...>) {
    if constexpr (std::is_arithmetic_v<Result>) {
      return static_cast<double>(Exported(passed<Types>(arguments[Index])...));
    } else {
      Exported(passed<Types>(arguments[Index])...);
      return 0.0;
    }
  }
  static double call(const Arguments& arguments) {
    return callWith(arguments, std::index_sequence_for<Types...>());
  }
  static Function function() {
    return {qxtest::nameOf<Exported>(), {parameterOf<Types>()...}, call};
  }
};

// The series printer takes any number of series: more here than a short format can consume.
int32_t qxArrayPrintf(const char* fileName, int32_t append, int32_t start, int32_t end,
                      const char* header, const char* format, const qxArray* a, const qxArray* b,
                      const qxArray* c, const qxArray* d) {
  return ::qxArrayPrintf(fileName, append, start, end, header, format, a, b, c, d, a, b, c, d, a, b,
                         c, d, a, b, c, d, a, b, c, d, a, b, c, d);
}

template <auto... Exported>
std::vector<Function> functions() {
  return {Described<Exported>::function()...};
}

}  // namespace

const std::vector<Function>& functionTable() {
  static const std::vector<Function> kTable = functions<
      // Series and bar records.
      qxAllocArray, qxReAllocArray, qxReSizeArray, qxFreeArray, qxCopyArray, qxGetArrayItem,
      qxSetArrayItem, qxSetFirstValid, qxSetMaxFirstValid, qxGetMaxFirstValid, qxAllocBars,
      qxReAllocBars, qxReSizeBars, qxFreeBars, qxCopyBars, qxCopyBarInfo, qxDecimals, qxFindDate,
      // Status codes and number conversions.
      qxErrDesc, qxErrMessageBox, qxIEEEtoMS, qxMStoIEEE,
      // Series transforms.
      qxMultAddArray, qxScaleArray, qxShiftArray, qxGroupArray,
      // Bar compression.
      qxGroupBars, qxGroupBarsPeriods, qxGroupBarsArray, qxGroupBarsDate, qxGroupBarsTime,
      // Series text.
      qxTXT2Array, qxArrayPrintf,
      // Calendar.
      qxSet2DigitYearCutoff, qxIsLeapYear, qxYearToDays, qxYMDtoDate, qxNumToDate, qxNumToTime,
      qxDateToYMD, qxDatePart, qxDateDiff, qxDayOfWeek, qxDateValidate,
      // Date and time strings.
      qxSetDefaultDateFormat, qxDateStrToYMD, qxDateStrValidate, qxDateStrToDate, qxTimeStrToHMS,
      qxTimeStrToTime, qxFormatDate,
      // Julian text dates.
      qxYMDToJulian, qxHMSToJulian, qxJulianToYMD, qxJulianToHMS, qxJulianDOW, qxJulianDif,
      qxYMDDif, qxHMSDif, qxDateTxtToJulian, qxDateTxtVal, qxDateTxtDif, qxTimeTxtToJulian,
      qxTimeTxtDif, qxJulianToDateTxt, qxJulianToTimeTxt,
      // Moving averages.
      qxSimpleMA, qxMovingSum, qxWeightedMA, qxTriangularMA, qxLstSqrMA, qxVolAdjustedMA, qxExpMA,
      qxEMA, qxPeriodToExp, qxExpToPeriod, qxDEMA, qxTEMA, qxT3, qxZeroLagExpMA, qxWellesMA,
      qxWellesSum, qxCMO, qxVIDYA, qxVariableMA, qxMovingAverage,
      // Series statistics.
      qxArrayStats, qxArrayStatsPos, qxBarStats, qxStdDev, qxStdErr, qxRegressionLine, qxCorCoef,
      qxCovariance, qxDispersion, qxSumPrev, qxSlopeArrayPts, qxSlopePts, qxFirstNonZeroItem,
      qxLastHigh, qxLastLow, qxTypicalPrice, qxWeightedClose, qxMedianPrice, qxAvgPrice, qxTrueHigh,
      qxTrueLow, qxTrueRange, qxTypicalPrices, qxWeightedCloses, qxMedianPrices, qxAvgPrices, qxTR,
      qxStdDevMv, qxStdErrMv, qxDispersionMv, qxCorCoefMv, qxCovarianceMv, qxRegressionLineMv,
      qxRSquared,
      // Momentum oscillators.
      qxOscillator, qxOscillatorPct, qxRatio, qxMomentum, qxRateOfChange, qxROC, qxRMI, qxRSI,
      qxUpAverage, qxDownAverage, qxPriceOscillator, qxPriceOscillatorPct, qxDPO, qxStochastic,
      qxRawK, qxFastD, qxSlowD, qxStochasticOscillator, qxStochRSI, qxWilliamsR, qxSMI, qxMACD,
      qxMACDx, qxTRIX, qxTSI, qxRVIoriginal, qxRVI, qxInertia, qxCCI, qxUltimateOsc, qxIMI, qxNMO,
      qxQstick, qxLineOsc, qxForecastOscillator,
      // Trend and directional indicators.
      qxDMIx, qxDI, qxDX, qxADX, qxADXR, qxAroon, qxAroonOscillator, qxDMI, qxSAR, qxVHF, qxRWI,
      qxZigZag, qxIchimokuKinkoHyo, qxTrendScore, qxPFE, qxRangeIndicator,
      // Volatility, bands and channels.
      qxATR, qxBollinger, qxBollingerWidth, qxEnvelope, qxEnvelopePct, qxMAEnvelope, qxMAHighLow,
      qxStdErrBands, qxPriceChannels, qxProjectionBands, qxProjectionBandwidth,
      qxProjectionOscillator, qxChaikinVolatility, qxMassIndex, qxWellesVolatility,
      // Volume and money flow.
      qxOBV, qxOBVol, qxOBVolMv, qxOBOi, qxOBOiMv, qxOBVolExp, qxAccumDist, qxAccumulate,
      qxChaikinMoneyFlow, qxChaikinOscillator, qxNVI, qxPVI, qxPVT, qxPVO, qxPVrank, qxArmsEMV,
      qxMFI, qxMoneyFlowIndex, qxKO, qxWilliamsAD, qxHerrickPayoffIndex, qxDemandIdx, qxSwingIndex,
      qxAccumSwingIndex, qxCFTPP,
      // Market breadth.
      qxADIssues, qxUpDownVolume, qxABI, qxADRatio, qxUpDownRatio, qxADLineBreadth, qxTRIN,
      qxArmsIdx, qxADLine, qxCVI, qxBoltonTremblay, qxOverBoughtSold, qxSTIX, qxBreadthThrust,
      qxOpen10TRIN, qxBretzTRIN5, qxMcClellanOscillator, qxMcClellanSummation, qxMcClellanOscSum,
      // Relative performance and projections.
      qxCompPerformance, qxCompStrength, qxSpread, qxRSIC, qxPerformancePct, qxDeTrend, qxCSIndex,
      qxMESAsinewave, qxFillInterval, qxFibonacciProject, qxFibonacciRetrace,
      // Bar formations and crossovers.
      qxCPR, qxGap, qxIslandReversal, qxInsideBar, qxKeyReversal, qxOutsideBar, qxFormationFill,
      qxCrossOver, qxCrossOverFill, qxTurn, qxTurnFill,
      // Candles.
      qxCandleConstruct, qxCandleFree, qxCandleColor, qxCandleShape, qxCandleTopShadow,
      qxCandleBotShadow, qxApproxEqual, qxBodyMidpoint, qxBodyGapUp, qxBodyGapDn, qxWesternGapUp,
      qxWesternGapDn,
      // Candlestick patterns.
      qxCandleFill, qxBeltHoldLineBull, qxBeltHoldLineBear, qxGravestoneDoji, qxLongLeggedDoji,
      qxHighWave, qxHammer, qxHangingman, qxInvertedHammer, qxShootingStar, qxCounterAttackBear,
      qxCounterAttackBull, qxDarkCloudCover, qxPiercingLine, qxEngulfingLineBear,
      qxEngulfingLineBull, qxHaramiBlack, qxHaramiCrossBlack, qxHaramiWhite, qxHaramiCrossWhite,
      qxInNeckLine, qxThrustingLine, qxSeperatingLineBear, qxSeperatingLineBull, qxStalledPattern,
      qxTweezerBottoms, qxTweezerTops, qxAbandonedBabyBottom, qxAbandonedBabyTop, qxEveningDojiStar,
      qxEveningStar, qxMorningDojiStar, qxMorningStar, qxDragonflyDojiBull, qxDragonflyDojiBear,
      qxMeetingLinesBear, qxMeetingLinesBull, qxThreeOutsideDown, qxThreeOutsideUp,
      qxThreeStarsInTheSouth, qxUpsideGap2Crows, qxBreakawayBear, qxBreakawayBull, qxLadderBottom,
      qxTriStarBear, qxTriStarBull, qxAdvanceBlock, qxDeliberationBull, qxDeliberationBear,
      qxOnNeck, qxSideBySideWhiteGapDn, qxSideBySideWhiteGapUp, qxTasukiDownsideGap,
      qxTasukiUpsideGap, qxThreeGapsUp, qxThreeGapsDown, qxThreeWhiteSoldiers,
      qxThreeLineStrikeBear, qxThreeLineStrikeBull, qxFalling3Method, qxRising3Method,
      qxMatHoldPattern,
      // Options.
      qxOptionInit, qxApprxCumProbDist, qxBlackScholes, qxBullCall, qxBullPut, qxBearCall,
      qxBearPut, qxLongStraddle, qxLongStrangle, qxShortStraddle, qxShortStrangle,
      // Bonds and time value.
      qxFutureValue, qxPresentValue, qxFutureValuePrinc, qxFutureValueInt, qxFutureValueAnnuity,
      qxPresentValueAnnuity, qxBondAccrInt, qxBondPricing, qxBondDuration, qxBondDurationPriceChg,
      qxYieldtoMaturity, qxTBillDiscYield, qxTBillBondEqYield,
      // File-type dispatch and file information.
      qxFILEtype, qxFILEfindrec, qxFILElist, qxFILEread, qxFILEprintinfo,
      // CompuTrac files.
      qxCTread, qxCTfindrec, qxCTreadarray, qxCTlist,
      // Other vendors' files.
      qxCSIfindrec, qxCSIlist, qxCSIread, qxDJfindrec, qxDJlist, qxDJread, qxFSfindrec, qxFSlist,
      qxFSread, qxTCfindrec, qxTClist, qxTCread, qxTTfindrec, qxTTlist, qxTTread, qxAIQfindrec,
      qxAIQlist, qxAIQread,
      // Delimited text files.
      qxTXTreadinfo, qxTXTwriteinfo, qxTXTread, qxTXTreadarray, qxTXTfindrec, qxTXTlist, qxTXTwrite,
      qxTXTwriteline,
      // Trading simulation: orders and positions.
      qxOrderSystemInit, qxOrderSystemReset, qxOrderSystemClose, qxBuyToOpen, qxSellToOpen,
      qxSellToClose, qxBuyToClose, qxCancelOrder,
      // Trading simulation: order processing.
      qxProcessOrders,
      // Trading simulation: reports.
      qxProfitRpt, qxProfitRpt1, qxPrintTrades, qxPrintOrders, qxTradeRpt1, qxOpenPosRpt1,
      qxOrderRpt1,
      // Trading simulation: optimisation variables and markers.
      qxOptVarCount, qxOptVarValue, qxOptVarString, qxOptVarStringLen, qxCreateTradeGraph,
      // Graph model.
      qxGraphInit, qxGraphFree, qxGraphSubwinAdd, qxGraphSubwinRemove, qxGraphSubwinOrder,
      qxGraphChartAdd, qxGraphChartRemove, qxGraphLineAdd, qxGraphLineRemove, qxGraphShapeAdd,
      qxGraphShapeRemove, qxGraphSetSubwinMargins, qxGraphGetSubwin, qxGraphSetSubwin,
      qxGraphGetChart, qxGraphGetLine, qxGraphGetShape, qxGraphSetChart, qxGraphSetLine,
      qxGraphSetShape, qxGraphSubwinGetChart, qxGraphSubwinSetChart, qxGraphSubwinGetLine,
      qxGraphSubwinSetLine, qxGraphSubwinGetShape, qxGraphSubwinSetShape,
      // Graph scaling and hit test.
      qxGraphGetXYpos, qxGraphGetXYinfo, qxGraphSelectObject,
      // Graph painting.
      qxGraphPaint, qxGraphPaintPicture, qxGraphRefreshHeadFoot, qxGraphPaintSVG,
      // Point and figure.
      qxBars2PNF, qxBars2PNFhilo, qxPNFchart>();
  return kTable;
}

const Function& functionNamed(const std::string& name) {
  for (const Function& function : functionTable()) {
    if (function.name == name) return function;
  }
  std::fprintf(stderr, "%s is not in the table\n", name.c_str());
  std::abort();
}

}  // namespace every_function
