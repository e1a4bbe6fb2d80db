// Formations, crossings, turns and candlestick patterns at every bar.
#include "tests/same_bits/recorder.h"

namespace same_bits {
namespace {

const Named<decltype(qxGap)> kFormations[] = {
    {"qxCPR", qxCPR},
    {"qxGap", qxGap},
    {"qxIslandReversal", qxIslandReversal},
    {"qxInsideBar", qxInsideBar},
    {"qxKeyReversal", qxKeyReversal},
    {"qxOutsideBar", qxOutsideBar},
    {"qxBodyGapUp", qxBodyGapUp},
    {"qxBodyGapDn", qxBodyGapDn},
    {"qxWesternGapUp", qxWesternGapUp},
    {"qxWesternGapDn", qxWesternGapDn},
};
const Named<decltype(qxCandleColor)> kCandleClasses[] = {
    {"qxCandleColor", qxCandleColor},
    {"qxCandleShape", qxCandleShape},
    {"qxCandleTopShadow", qxCandleTopShadow},
    {"qxCandleBotShadow", qxCandleBotShadow},
};
const Named<decltype(qxHammer)> kCandlesticks[] = {
    {"qxBeltHoldLineBull", qxBeltHoldLineBull},
    {"qxBeltHoldLineBear", qxBeltHoldLineBear},
    {"qxGravestoneDoji", qxGravestoneDoji},
    {"qxLongLeggedDoji", qxLongLeggedDoji},
    {"qxHighWave", qxHighWave},
    {"qxHammer", qxHammer},
    {"qxHangingman", qxHangingman},
    {"qxInvertedHammer", qxInvertedHammer},
    {"qxShootingStar", qxShootingStar},
    {"qxCounterAttackBear", qxCounterAttackBear},
    {"qxCounterAttackBull", qxCounterAttackBull},
    {"qxDarkCloudCover", qxDarkCloudCover},
    {"qxPiercingLine", qxPiercingLine},
    {"qxEngulfingLineBear", qxEngulfingLineBear},
    {"qxEngulfingLineBull", qxEngulfingLineBull},
    {"qxHaramiBlack", qxHaramiBlack},
    {"qxHaramiCrossBlack", qxHaramiCrossBlack},
    {"qxHaramiWhite", qxHaramiWhite},
    {"qxHaramiCrossWhite", qxHaramiCrossWhite},
    {"qxInNeckLine", qxInNeckLine},
    {"qxThrustingLine", qxThrustingLine},
    {"qxSeperatingLineBear", qxSeperatingLineBear},
    {"qxSeperatingLineBull", qxSeperatingLineBull},
    {"qxStalledPattern", qxStalledPattern},
    {"qxTweezerBottoms", qxTweezerBottoms},
    {"qxTweezerTops", qxTweezerTops},
    {"qxAbandonedBabyBottom", qxAbandonedBabyBottom},
    {"qxAbandonedBabyTop", qxAbandonedBabyTop},
    {"qxEveningDojiStar", qxEveningDojiStar},
    {"qxEveningStar", qxEveningStar},
    {"qxMorningDojiStar", qxMorningDojiStar},
    {"qxMorningStar", qxMorningStar},
    {"qxDragonflyDojiBull", qxDragonflyDojiBull},
    {"qxDragonflyDojiBear", qxDragonflyDojiBear},
    {"qxMeetingLinesBear", qxMeetingLinesBear},
    {"qxMeetingLinesBull", qxMeetingLinesBull},
    {"qxThreeOutsideDown", qxThreeOutsideDown},
    {"qxThreeOutsideUp", qxThreeOutsideUp},
    {"qxThreeStarsInTheSouth", qxThreeStarsInTheSouth},
    {"qxUpsideGap2Crows", qxUpsideGap2Crows},
    {"qxBreakawayBear", qxBreakawayBear},
    {"qxBreakawayBull", qxBreakawayBull},
    {"qxLadderBottom", qxLadderBottom},
    {"qxTriStarBear", qxTriStarBear},
    {"qxTriStarBull", qxTriStarBull},
    {"qxAdvanceBlock", qxAdvanceBlock},
    {"qxDeliberationBull", qxDeliberationBull},
    {"qxDeliberationBear", qxDeliberationBear},
    {"qxOnNeck", qxOnNeck},
    {"qxSideBySideWhiteGapDn", qxSideBySideWhiteGapDn},
    {"qxSideBySideWhiteGapUp", qxSideBySideWhiteGapUp},
    {"qxTasukiDownsideGap", qxTasukiDownsideGap},
    {"qxTasukiUpsideGap", qxTasukiUpsideGap},
    {"qxThreeGapsUp", qxThreeGapsUp},
    {"qxThreeGapsDown", qxThreeGapsDown},
    {"qxThreeWhiteSoldiers", qxThreeWhiteSoldiers},
    {"qxThreeLineStrikeBear", qxThreeLineStrikeBear},
    {"qxThreeLineStrikeBull", qxThreeLineStrikeBull},
    {"qxFalling3Method", qxFalling3Method},
    {"qxRising3Method", qxRising3Method},
    {"qxMatHoldPattern", qxMatHoldPattern},
};
const char* const kFormationNames[] = {
    "qxCPR",       "qxGap",         "qxGapDown",   "qxGapUp", "qxIslandReversal",
    "qxInsideBar", "qxKeyReversal", "qxOutsideBar"};

}  // namespace

void computePatterns(const Prices& prices) {
  const qxBars* bars = &prices.bars;
  const int32_t count = bars->barsize;
  for (const auto& entry : kFormations) computeEach(entry.name, entry.function, count, bars);
  for (const char* name : kFormationNames) {
    compute("qxFormationFill", qxFormationFill, bars, out, name, 1, count - 1);
  }
  computeEach("qxCrossOver", qxCrossOver, count, &prices.close, &bars->open);
  computeEach("qxTurn", qxTurn, count, &prices.close);

  qxCandles candles = {};
  candles.equality = 0.002;
  compute("qxCandleConstruct", qxCandleConstruct, bars, &candles);
  for (const auto& entry : kCandleClasses) {
    computeEach(entry.name, entry.function, count, &candles);
  }
  for (const auto& entry : kCandlesticks) {
    computeEach(entry.name, entry.function, count, bars, &candles);
    compute("qxCandleFill", qxCandleFill, bars, &candles, out, entry.name, 0, count - 1);
  }
  qxCandleFree(&candles);
}

}  // namespace same_bits
