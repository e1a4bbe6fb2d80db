// Candle construction and every candlestick pattern over a million bars.
#include "bench/bench_support.h"

namespace {

using qxbench::bars;
using qxbench::countElements;
using qxbench::output;

void construct(benchmark::State& state) {
  for (auto _ : state) {
    qxCandles candles = {};
    qxCandleConstruct(&bars(), &candles);
    benchmark::DoNotOptimize(candles.codes);
    qxCandleFree(&candles);
  }
  countElements(state);
}

const qxCandles& constructed() {
  static const qxCandles candles = [] {
    qxCandles fresh = {};
    qxCandleConstruct(&bars(), &fresh);
    return fresh;
  }();
  return candles;
}

void fill(benchmark::State& state, const char* name) {
  const qxCandles& candles = constructed();
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        qxCandleFill(&bars(), &candles, &output(), name, 0, qxbench::kElements));
  }
  countElements(state);
}

const char* const kPatterns[] = {"qxAbandonedBabyBottom",
                                 "qxAbandonedBabyTop",
                                 "qxAdvanceBlock",
                                 "qxBeltHoldLineBear",
                                 "qxBeltHoldLineBull",
                                 "qxCounterAttackBear",
                                 "qxCounterAttackBull",
                                 "qxDarkCloudCover",
                                 "qxEngulfingLineBear",
                                 "qxEngulfingLineBull",
                                 "qxEveningDojiStar",
                                 "qxEveningStar",
                                 "qxFalling3Method",
                                 "qxGravestoneDoji",
                                 "qxHammer",
                                 "qxHangingman",
                                 "qxHaramiBlack",
                                 "qxHaramiCrossBlack",
                                 "qxHaramiCrossWhite",
                                 "qxHaramiWhite",
                                 "qxHighWave",
                                 "qxInNeckLine",
                                 "qxInvertedHammer",
                                 "qxLongLeggedDoji",
                                 "qxMatHoldPattern",
                                 "qxMorningDojiStar",
                                 "qxMorningStar",
                                 "qxPiercingLine",
                                 "qxRising3Method",
                                 "qxSeperatingLineBear",
                                 "qxSeperatingLineBull",
                                 "qxShootingStar",
                                 "qxSideBySideWhiteGapDn",
                                 "qxSideBySideWhiteGapUp",
                                 "qxStalledPattern",
                                 "qxTasukiDownsideGap",
                                 "qxTasukiUpsideGap",
                                 "qxThreeGapsUp",
                                 "qxThreeGapsDown",
                                 "qxThreeWhiteSoldiers",
                                 "qxThrustingLine",
                                 "qxUpsideGap2Crows",
                                 "qxBreakawayBear",
                                 "qxBreakawayBull",
                                 "qxDeliberationBull",
                                 "qxDeliberationBear",
                                 "qxDragonflyDojiBull",
                                 "qxDragonflyDojiBear",
                                 "qxLadderBottom",
                                 "qxMeetingLinesBear",
                                 "qxMeetingLinesBull",
                                 "qxOnNeck",
                                 "qxThreeLineStrikeBear",
                                 "qxThreeLineStrikeBull",
                                 "qxThreeOutsideDown",
                                 "qxThreeOutsideUp",
                                 "qxThreeStarsInTheSouth",
                                 "qxTriStarBear",
                                 "qxTriStarBull",
                                 "qxTweezerBottoms",
                                 "qxTweezerTops"};

const int kRegistered = [] {
  for (const char* name : kPatterns) benchmark::RegisterBenchmark(name, fill, name);
  return 0;
}();

BENCHMARK(construct)->Name("qxCandleConstruct");

}  // namespace
