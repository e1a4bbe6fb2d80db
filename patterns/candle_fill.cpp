// The candlestick patterns by name, and the signal series of one of them over a range of bars.
#include <algorithm>

#include "core/ascii.h"
#include "core/indicator_frame.h"
#include "quorvex.h"

namespace {

using PatternTest = int32_t (*)(const qxBars*, const qxCandles*, int32_t);

struct Pattern {
  const char* name;
  PatternTest test;
};

constexpr Pattern kPatterns[] = {
    {"qxAbandonedBabyBottom", qxAbandonedBabyBottom},
    {"qxAbandonedBabyTop", qxAbandonedBabyTop},
    {"qxAdvanceBlock", qxAdvanceBlock},
    {"qxBeltHoldLineBear", qxBeltHoldLineBear},
    {"qxBeltHoldLineBull", qxBeltHoldLineBull},
    {"qxCounterAttackBear", qxCounterAttackBear},
    {"qxCounterAttackBull", qxCounterAttackBull},
    {"qxDarkCloudCover", qxDarkCloudCover},
    {"qxEngulfingLineBear", qxEngulfingLineBear},
    {"qxEngulfingLineBull", qxEngulfingLineBull},
    {"qxEveningDojiStar", qxEveningDojiStar},
    {"qxEveningStar", qxEveningStar},
    {"qxFalling3Method", qxFalling3Method},
    {"qxGravestoneDoji", qxGravestoneDoji},
    {"qxHammer", qxHammer},
    {"qxHangingman", qxHangingman},
    {"qxHaramiBlack", qxHaramiBlack},
    {"qxHaramiCrossBlack", qxHaramiCrossBlack},
    {"qxHaramiCrossWhite", qxHaramiCrossWhite},
    {"qxHaramiWhite", qxHaramiWhite},
    {"qxHighWave", qxHighWave},
    {"qxInNeckLine", qxInNeckLine},
    {"qxInvertedHammer", qxInvertedHammer},
    {"qxLongLeggedDoji", qxLongLeggedDoji},
    {"qxMatHoldPattern", qxMatHoldPattern},
    {"qxMorningDojiStar", qxMorningDojiStar},
    {"qxMorningStar", qxMorningStar},
    {"qxPiercingLine", qxPiercingLine},
    {"qxRising3Method", qxRising3Method},
    {"qxSeperatingLineBear", qxSeperatingLineBear},
    {"qxSeperatingLineBull", qxSeperatingLineBull},
    {"qxShootingStar", qxShootingStar},
    {"qxSideBySideWhiteGapDn", qxSideBySideWhiteGapDn},
    {"qxSideBySideWhiteGapUp", qxSideBySideWhiteGapUp},
    {"qxStalledPattern", qxStalledPattern},
    {"qxTasukiDownsideGap", qxTasukiDownsideGap},
    {"qxTasukiUpsideGap", qxTasukiUpsideGap},
    {"qxThreeGapsUp", qxThreeGapsUp},
    {"qxThreeGapsDown", qxThreeGapsDown},
    {"qxThreeWhiteSoldiers", qxThreeWhiteSoldiers},
    {"qxThrustingLine", qxThrustingLine},
    {"qxUpsideGap2Crows", qxUpsideGap2Crows},
    {"qxBreakawayBear", qxBreakawayBear},
    {"qxBreakawayBull", qxBreakawayBull},
    {"qxDeliberationBull", qxDeliberationBull},
    {"qxDeliberationBear", qxDeliberationBear},
    {"qxDragonflyDojiBull", qxDragonflyDojiBull},
    {"qxDragonflyDojiBear", qxDragonflyDojiBear},
    {"qxLadderBottom", qxLadderBottom},
    {"qxMeetingLinesBear", qxMeetingLinesBear},
    {"qxMeetingLinesBull", qxMeetingLinesBull},
    {"qxOnNeck", qxOnNeck},
    {"qxThreeLineStrikeBear", qxThreeLineStrikeBear},
    {"qxThreeLineStrikeBull", qxThreeLineStrikeBull},
    {"qxThreeOutsideDown", qxThreeOutsideDown},
    {"qxThreeOutsideUp", qxThreeOutsideUp},
    {"qxThreeStarsInTheSouth", qxThreeStarsInTheSouth},
    {"qxTriStarBear", qxTriStarBear},
    {"qxTriStarBull", qxTriStarBull},
    {"qxTweezerBottoms", qxTweezerBottoms},
    {"qxTweezerTops", qxTweezerTops},
};

PatternTest findPattern(const char* name) {
  for (const Pattern& pattern : kPatterns) {
    if (qx::equalIgnoringCase(pattern.name, name)) return pattern.test;
  }
  return nullptr;
}

}  // namespace

int32_t qxCandleFill(const qxBars* bars, const qxCandles* candles, qxArray* out, const char* name,
                     int32_t first, int32_t last) {
  if (candles == nullptr || name == nullptr) return QX_ERR_INVALID_PARM;
  const PatternTest test = findPattern(name);
  if (test == nullptr) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({bars}, {}, {out});
  if (length < 0) return length;

  const int32_t end = std::min(last, length - 1);
  int32_t found = 0;
  for (int32_t i = std::max(0, first); i <= end; ++i) {
    const int32_t signal = test(bars, candles, i);
    out->data[i] = signal;
    found += signal;
  }
  // Kept: the output's first valid index stays as it was.
  return found;
}
