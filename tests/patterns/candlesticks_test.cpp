#include <cctype>
#include <map>
#include <set>
#include <sstream>

#include "tests/support/real_bars.h"
#include "tests/support/test_support.h"

namespace {

using qxtest::Bar;
using qxtest::BarSet;
using qxtest::Series;

struct Case {
  const char* name;
  int32_t (*test)(const qxBars*, const qxCandles*, int32_t);
  const char* bars;  // "open high low close" of each bar, the oldest first
  // Colour, body, upper and lower shadow that the test asks of each bar: black, white; doji, no
  // doji, small; short, long, not long (m); the body of its neighbour (=); '.' for any.
  const char* codes;
  const char* misses;  // each a change that silences the test: bars back, field, '=', new price
};

// Bodies above 2.4 are long, below half a percent dojis, the ones between small: see withFillers.
const Case kCases[] = {
    {"qxBeltHoldLineBull", qxBeltHoldLineBull, "100 106 100 105", "WL..", "0l=99.9"},
    {"qxBeltHoldLineBear", qxBeltHoldLineBear, "105 105 99 100", "BL..", "0h=105.1"},
    {"qxGravestoneDoji", qxGravestoneDoji, "100.2 103 100 100", ".D..", "0l=99.9"},
    {"qxLongLeggedDoji", qxLongLeggedDoji, "100 102 98 100.2", ".DLL", ""},
    {"qxHighWave", qxHighWave, "100 104 99.9 101", ".SL.", ""},
    {"qxHighWave", qxHighWave, "100 101.2 97 101", ".S.L", ""},
    {"qxHammer", qxHammer, "101 101.2 97 100", "BmSL", ""},
    {"qxHangingman", qxHangingman, "100 101.2 97 101", "WmSL", ""},
    {"qxInvertedHammer", qxInvertedHammer, "100 104 99.9 101", "WmLS", ""},
    {"qxShootingStar", qxShootingStar, "100 104 99.9 101", "WSLS", ""},
    {"qxCounterAttackBear", qxCounterAttackBear, "100 104.2 99.8 104 / 108 108.5 103.5 104.1",
     "Wn.. Bn..", "0o=107.9 0c=104.6"},
    {"qxCounterAttackBull", qxCounterAttackBull, "104 104.2 99.8 100 / 96 100.5 95.5 100.1",
     "Bn.. Wn..", "0o=96.1 0c=100.6"},
    {"qxDarkCloudCover", qxDarkCloudCover, "100 105 99.8 104 / 105.1 106 101 101.9", "WL.. B...",
     "0o=105 0c=102"},
    {"qxPiercingLine", qxPiercingLine, "104 105 99.8 100 / 99.9 103 99 102.1", "BL.. Wn..",
     "0o=100 0c=102"},
    {"qxEngulfingLineBear", qxEngulfingLineBear, "100 101.2 99.8 101 / 101.1 102 96 96.5",
     "WS.. BL..", "0o=101 0o=103,0c=100"},
    {"qxEngulfingLineBull", qxEngulfingLineBull, "101 101.2 99.8 100 / 99.9 105 99 104.5",
     "BS.. WL..", "0o=100 0o=98,0c=101"},
    {"qxHaramiBlack", qxHaramiBlack, "105 105.5 99.5 100 / 102 103.5 101.5 103", "BL.. .S..",
     "0o=104,0c=105 0o=100,0c=101 0o=105,0c=104 0o=101,0c=100"},
    {"qxHaramiCrossBlack", qxHaramiCrossBlack, "105 105.5 99.5 100 / 102 103.5 101.5 102.2",
     "BL.. .D..", "0o=105,0c=104.9 0o=100,0c=100.1 0o=100.1,0c=100 0o=104.9,0c=105"},
    {"qxHaramiCrossWhite", qxHaramiCrossWhite, "100 105.5 99.5 105 / 102 103.5 101.5 102.2",
     "WL.. .D..", "0o=100,0c=100.2 0o=105,0c=104.9 0o=104.9,0c=105 0o=100.1,0c=100"},
    {"qxHaramiWhite", qxHaramiWhite, "100 105.5 99.5 105 / 102 103.5 101.5 103", "WL.. .S..",
     "0o=104,0c=105 0o=100,0c=101 0o=105,0c=104 0o=101,0c=100"},
    {"qxInNeckLine", qxInNeckLine, "105 105.5 99.5 100 / 98.8 100.5 98 99.8", "Bn.. WS..",
     "0c=99.5 0o=99.1,0c=100.1"},
    {"qxThrustingLine", qxThrustingLine, "104 105 99.8 100 / 98 102 97.5 101.9", "B... W...",
     "0c=102 0o=97,0c=100"},
    {"qxSeperatingLineBear", qxSeperatingLineBear, "100 102 99.8 101.5 / 100 100.2 97 97.5",
     "Wn.. Bn..", "0o=100.1"},
    {"qxSeperatingLineBull", qxSeperatingLineBull, "100 100.2 97 97.5 / 100 102 99.8 101.5",
     "Bn.. Wn..", "0o=99.9"},
    {"qxStalledPattern", qxStalledPattern, "100 105.2 99.8 105 / 105.2 106.7 105 106.4",
     "WL.. WS..", "0o=105.6,0c=106.9"},
    {"qxTweezerBottoms", qxTweezerBottoms, "102 102.5 99 100 / 100 101.8 99.5 101.5", "Bn.. Wn..",
     "0o=100.1"},
    {"qxTweezerTops", qxTweezerTops, "100 102.5 99 102 / 102 102.3 100 100.5", "Wn.. Bn..",
     "0o=101.9"},
    {"qxAbandonedBabyBottom", qxAbandonedBabyBottom,
     "106 106.5 99.5 100 / 98 98.4 97.5 98.2 / 100 104.5 98.5 104", "BL.. .D.. W...",
     "0c=103 0l=98.4 1h=99.5,0l=99.6"},
    {"qxAbandonedBabyTop", qxAbandonedBabyTop,
     "100 106.5 99.5 106 / 108 108.4 107 108.2 / 105 106.9 101 102", "WL.. .D.. B...",
     "0c=103 0h=107 2h=107"},
    {"qxEveningDojiStar", qxEveningDojiStar,
     "100 106.5 99.5 106 / 107 107.5 106.5 107.2 / 106 106.5 101 102", "WL.. .D.. B...",
     "0c=103 1o=106,1c=106.2"},
    {"qxEveningStar", qxEveningStar, "100 106.5 99.5 106 / 107 108.5 106.5 108 / 106 106.5 101 102",
     "WL.. .S.. B...", "0c=103 1o=106,1c=107"},
    {"qxMorningDojiStar", qxMorningDojiStar,
     "106 106.5 99.5 100 / 98.8 99.5 98.5 99 / 99 104.5 98.9 104", "BL.. .D.. Wn..",
     "0c=103 0o=98.8 1o=99.9,1c=100,0o=99.95"},
    {"qxMorningStar", qxMorningStar, "106 106.5 99.5 100 / 98 99.5 97.5 99 / 99 104.5 98.9 104",
     "BL.. .S.. Wn..", "0c=103 0o=98 1o=99,1c=100,0o=99.5"},
    {"qxDragonflyDojiBull", qxDragonflyDojiBull,
     "104 104.5 102 102.5 / 102.5 103 100 101 / 100 100.1 98 100", "B... B... .DSL", ""},
    {"qxDragonflyDojiBear", qxDragonflyDojiBear,
     "102 104.5 101.5 104 / 104 106 103.5 105.5 / 100 100.1 98 100", "W... W... .DSL", ""},
    {"qxMeetingLinesBear", qxMeetingLinesBear,
     "100 102 99.5 101.5 / 101.5 103 101 102.8 / 105 105.5 102 102.9", "W... W... B...",
     "0c=103.4"},
    {"qxMeetingLinesBull", qxMeetingLinesBull,
     "105 105.5 103 103.5 / 103 103.5 101 101.5 / 99 102 98.5 101.6", "B... B... W...", "0c=102.1"},
    {"qxThreeOutsideDown", qxThreeOutsideDown,
     "100 101.3 99.8 101 / 102 103 97.6 98 / 98 98.2 95.9 96", "WSS. B..S B..S",
     "0c=97.6,0l=97.6 1h=101.3 1l=99.8"},
    {"qxThreeOutsideUp", qxThreeOutsideUp,
     "101 101.3 99.8 100 / 99 103.4 98.6 103 / 103 105.2 102.8 105", "BSS. W..S W.S.",
     "0c=103.4,0h=103.4 1l=99.8"},
    {"qxThreeStarsInTheSouth", qxThreeStarsInTheSouth,
     "105 105.5 85 100 / 102 103 95 100 / 99 99 97 97", "BLSL B... B...",
     "0h=99.1 0l=96.9 1h=105.5 1l=85 1o=100,1c=99"},
    {"qxUpsideGap2Crows", qxUpsideGap2Crows,
     "100 105.5 99.5 105 / 107 107.5 106 106.2 / 107.5 108 105.5 106", "WL.. B... B...",
     "0c=106.2 0o=107 0c=104,1c=105"},
    {"qxBreakawayBear", qxBreakawayBear,
     "110 110.5 104.5 105 / 105 105.5 102.5 103 / 103 103.5 100.5 101 / 101 101.5 98.5 99 / 99 "
     "104.5 98.5 104",
     "BL.. B... B... B... WL..", "0c=103 0o=105,0c=109 1c=96 2o=106 3o=108"},
    {"qxBreakawayBull", qxBreakawayBull,
     "100 105.5 99.5 105 / 105 107.5 104.5 107 / 107 109.5 106.5 109 / 109 111.5 108.5 111 / 111 "
     "111.5 105.5 106",
     "WL.. W... W... W... BL..", "0c=107 0o=105,0c=101 1c=114 2o=104 3o=102"},
    {"qxLadderBottom", qxLadderBottom,
     "112 112.5 108.5 109 / 109 109.5 105.5 106 / 106 106.5 102.5 103 / 102 105 99.9 101 / 103 "
     "107.2 102.5 107",
     "BL.. BL.. BL.. B.L. WLS.", "0o=102 1o=100.2,1c=99.6,1h=103"},
    {"qxTriStarBear", qxTriStarBear,
     "100 102.5 99.5 102 / 102 104.5 101.5 104 / 105 105.5 104.5 105.1 / 106 106.5 105.5 106.1 / "
     "105 105.5 104.5 105.2",
     "W... W... .D.. .D.. .D..", "0o=106,0c=106.1 2o=104,2c=104 2o=106,2c=106.1"},
    {"qxTriStarBull", qxTriStarBull,
     "104 104.5 101.5 102 / 102 102.5 99.5 100 / 99 99.5 98.5 99.1 / 99 99.5 98.5 98.9 / 99 99.5 "
     "98.5 99",
     "B... B... .D.. .D.. .D..", "2o=100,2c=100"},
    {"qxAdvanceBlock", qxAdvanceBlock, "100 103 99.9 103 / 103 105 102.9 105 / 105 106 104.9 106",
     "W... W... W...", "0o=104 0c=105,0o=104.5 1o=102 1o=101,1c=103"},
    {"qxAdvanceBlock", qxAdvanceBlock, "100 101 99.9 101 / 101 105 100.9 102 / 102 106 101.9 103",
     "W.m. W.L. W.L.", ""},
    {"qxDeliberationBull", qxDeliberationBull,
     "100 105.2 99.5 105 / 105 110.2 104.5 110 / 110.5 112 110 111.5", "WLS. WLS. WS..", "0o=110"},
    {"qxDeliberationBear", qxDeliberationBear,
     "115 115.5 109.8 110 / 110 110.5 104.8 105 / 104.5 105 103 103.5", "BL.S BL.S BS..", "0o=105"},
    {"qxOnNeck", qxOnNeck, "108 108.5 105.5 106 / 106 106.2 99.5 100 / 98 100 97.5 99.6",
     "B... BL.. W...", "0o=99.5 0c=100.1"},
    {"qxSideBySideWhiteGapDn", qxSideBySideWhiteGapDn,
     "110 110.5 108 108.5 / 104.8 106.2 104.5 106 / 105 106.5 104.5 106.1", ".... W=.. W=..",
     "0o=105.6,0c=106.8 2c=106"},
    {"qxSideBySideWhiteGapUp", qxSideBySideWhiteGapUp,
     "100 101.5 99.8 101 / 102 103.5 101.8 103 / 102.1 103.6 101.8 103.2", ".... W=.. W=..",
     "0o=102.7,0c=103.9 2c=102"},
    {"qxTasukiDownsideGap", qxTasukiDownsideGap,
     "108 108.5 105.8 106 / 104 104.2 102.8 103 / 103.5 105 103.2 104.5", "B... B=.. W=..",
     "0o=103 0o=103.2,0c=104 2c=104.5"},
    {"qxTasukiUpsideGap", qxTasukiUpsideGap,
     "100 102.2 99.8 102 / 104 105.2 103.8 105 / 104.5 104.8 103 103.5", "W... W=.. B=..",
     "0o=105 0o=104.8,0c=104 2c=103.5"},
    {"qxThreeGapsUp", qxThreeGapsUp,
     "100 101 99.5 100.5 / 101 102 100.5 101.5 / 102 103 101.8 102.5 / 103 104 102.8 103.5",
     ".... .... .... ....", "0o=102.5 1o=101.5 2o=100.5"},
    {"qxThreeGapsDown", qxThreeGapsDown,
     "103.5 104 102.8 103 / 102.5 103 101.8 102 / 101.5 102 100.5 101 / 100.5 101 99.5 100",
     ".... .... .... ....", "0o=101 1o=102 2o=103"},
    {"qxThreeWhiteSoldiers", qxThreeWhiteSoldiers,
     "100 103.1 99.5 103 / 102 105.1 101.5 105 / 104 107.1 103.5 107", "W.S. W.S. W.S.",
     "0h=107.7 1h=107.1,1c=107 2h=103.6 2h=105.1,2c=105 1h=105.6"},
    {"qxThreeLineStrikeBear", qxThreeLineStrikeBear,
     "112 112.5 108.5 109 / 109 109.5 105.5 106 / 106 106.5 102.5 103 / 102 113 101.5 112.5",
     "BL.. BL.. BL.. W...", "0o=103 0c=112 1o=110,1c=106 2o=113,2c=109"},
    {"qxThreeLineStrikeBull", qxThreeLineStrikeBull,
     "100 103.5 99.5 103 / 103 106.5 102.5 106 / 106 109.5 105.5 109 / 110 110.5 99 99.5",
     "WL.. WL.. WL.. B...", "0o=109 0c=100 1o=102,1c=106 2o=99,2c=103"},
    {"qxFalling3Method", qxFalling3Method,
     "110 110.5 103.5 104 / 104.5 106 104.2 105.5 / 105.5 107 105.2 106.5 / 106.5 108 106.2 107.5 "
     "/ 108 108.5 102 102.5",
     "BL.. WS.. WS.. WS.. BL..", "0c=104 0o=107,4o=107 1o=105.5,1c=106.5 2o=104.5,2c=105.5 3o=104"},
    {"qxFalling3Method", qxFalling3Method,
     "107 110.5 103.5 104 / 104.5 106 104.2 105.5 / 105.5 107 105.2 106.5 / 106.5 108 106.2 107.5 "
     "/ 107.5 108.5 102 102.5",
     "BL.. WS.. WS.. WS.. BL..", "0o=107.4"},
    {"qxRising3Method", qxRising3Method,
     "100 106.5 99.5 106 / 105.5 105.8 104.2 104.5 / 104.5 104.8 103.2 103.5 / 103.5 103.8 102.2 "
     "102.5 / 102 108 101.5 107.5",
     "WL.. BS.. BS.. BS.. WL..", "0c=106 0o=103,4o=103 1o=104.5,1c=103.5 2o=105.5,2c=104.5 3o=106"},
    {"qxRising3Method", qxRising3Method,
     "103 106.5 99.5 106 / 105.5 105.8 104.2 104.5 / 104.5 104.8 103.2 103.5 / 103.5 103.8 102.2 "
     "102.5 / 102.5 108 101.5 107.5",
     "WL.. BS.. BS.. BS.. WL..", "0o=102.6"},
    {"qxMatHoldPattern", qxMatHoldPattern,
     "100 105.5 99.5 105 / 107 107.5 105.8 106 / 106.5 107 105.2 105.5 / 106 106.5 104.8 105 / "
     "106.5 109 106.2 108.5",
     "WL.. BS.. BS.. BS.. Wn..", "0o=106 1o=106.5,1c=105.5,0o=107 2o=107,2c=106 3o=106.6,3c=105"},
};

std::vector<Bar> parseBars(const std::string& text) {
  std::vector<Bar> bars;
  std::istringstream in(text);
  std::string separator;
  do {
    Bar bar = {40000.0 + static_cast<double>(bars.size()), 0, 0, 0, 0, 100, 0};
    in >> bar.open >> bar.high >> bar.low >> bar.close;
    bars.push_back(bar);
  } while (in >> separator);
  return bars;
}

void applyChanges(std::vector<Bar>& bars, const std::string& changes) {
  std::istringstream in(changes);
  std::string change;
  while (std::getline(in, change, ',')) {
    Bar& bar = bars[bars.size() - 1 - static_cast<size_t>(change[0] - '0')];
    double& price = change[1] == 'o'   ? bar.open
                    : change[1] == 'h' ? bar.high
                    : change[1] == 'l' ? bar.low
                                       : bar.close;
    price = std::stod(change.substr(3));
  }
}

// The bars followed by forty whose bodies of 2 hold the average body near 2.
std::vector<Bar> withFillers(std::vector<Bar> bars) {
  bars.insert(bars.end(), 40, {50000, 100, 102, 100, 102, 100, 0});
  return bars;
}

struct Candles {
  qxCandles record = {};
  explicit Candles(const qxBars* bars) { EXPECT_EQ(qxCandleConstruct(bars, &record), QX_SUCCESS); }
  ~Candles() { qxCandleFree(&record); }
  Candles(const Candles&) = delete;
  Candles& operator=(const Candles&) = delete;
  operator qxCandles*() { return &record; }
};

int32_t result(const Case& c, const std::vector<Bar>& pattern, size_t index) {
  BarSet bars(withFillers(pattern));
  Candles candles(bars);
  return c.test(bars, candles, static_cast<int32_t>(index));
}

TEST(Candlesticks, EachPatternFiresAndItsNearMissesDoNot) {
  for (const Case& c : kCases) {
    const std::vector<Bar> pattern = parseBars(c.bars);
    EXPECT_EQ(result(c, pattern, pattern.size() - 1), 1) << c.name << ": " << c.bars;
    std::istringstream misses(c.misses);
    std::string miss;
    while (misses >> miss) {
      std::vector<Bar> changed = pattern;
      applyChanges(changed, miss);
      EXPECT_EQ(result(c, changed, pattern.size() - 1), 0) << c.name << ": " << miss;
    }
    if (pattern.size() > 1) {
      const std::vector<Bar> shortened(pattern.begin() + 1, pattern.end());
      EXPECT_EQ(result(c, shortened, shortened.size() - 1), 0) << c.name << " lacks its first bar";
    }
  }
}

// Whether a letter admits a code; '=' admits the one that the bar has.
bool admits(char letter, uint8_t code, uint8_t own) {
  static const std::map<char, std::string> kAdmitted = {{'.', "0123"}, {'D', "0"},  {'n', "123"},
                                                        {'B', "1"},    {'W', "2"},  {'S', "1"},
                                                        {'L', "3"},    {'m', "012"}};
  if (letter == '=') return code == own;
  return kAdmitted.at(letter).find(static_cast<char>('0' + code)) != std::string::npos;
}

TEST(Candlesticks, EachPatternAsksForItsCodesAndNoOthers) {
  for (const Case& c : kCases) {
    const std::vector<Bar> pattern = parseBars(c.bars);
    BarSet bars(withFillers(pattern));
    Candles candles(bars);
    std::string letters = c.codes;
    std::erase(letters, ' ');
    ASSERT_EQ(letters.size(), 4 * pattern.size()) << c.name;
    for (size_t k = 0; k < letters.size(); ++k) {
      uint8_t& code = candles.record.codes[k];
      const uint8_t own = code;
      for (code = 0; code <= 3; ++code) {
        EXPECT_EQ(c.test(bars, candles, static_cast<int32_t>(pattern.size()) - 1),
                  admits(letters[k], code, own))
            << c.name << ", code " << k << " = " << int{code};
      }
      code = own;
    }
  }
}

TEST(Candlesticks, FillFindsEveryTestByNameInAnyCase) {
  std::set<std::string> names;
  for (const Case& c : kCases) {
    names.insert(c.name);
    const std::vector<Bar> pattern = parseBars(c.bars);
    const auto last = static_cast<int32_t>(pattern.size()) - 1;
    BarSet bars(withFillers(pattern));
    Candles candles(bars);
    std::string upper = c.name;
    for (char& letter : upper) letter = static_cast<char>(std::toupper(letter));
    Series out;
    EXPECT_EQ(qxCandleFill(bars, candles, out, upper.c_str(), last, last), 1) << c.name;
    int32_t found = 0;
    for (int32_t i = 0; i < bars->barsize; ++i) {
      found += c.test(bars, candles, i);
      EXPECT_EQ(out[i], i == last ? 1.0 : 0.0) << c.name << " at " << i;
    }
    EXPECT_EQ(qxCandleFill(bars, candles, out, c.name, last + 1, INT32_MAX), found - 1) << c.name;
    EXPECT_EQ(qxCandleFill(bars, candles, out, c.name, INT32_MIN, last - 1), 0) << c.name;
    EXPECT_EQ(qxCandleFill(bars, candles, out, c.name, INT32_MIN, INT32_MAX), found) << c.name;
    for (int32_t i = 0; i < bars->barsize; ++i) {
      EXPECT_EQ(out[i], c.test(bars, candles, i)) << c.name << " at " << i;
    }
  }
  EXPECT_EQ(names.size(), 61u);
}

TEST(Candlesticks, RealBarsHoldPatterns) {
  std::set<std::string> seen;
  qxtest::withRealBars([&](BarSet& bars) {
    Candles candles(bars);
    Series out;
    for (const Case& c : kCases) {
      const int32_t found = qxCandleFill(bars, candles, out, c.name, 0, INT32_MAX);
      int32_t counted = 0;
      for (int32_t i = 0; i < bars->barsize; ++i) counted += c.test(bars, candles, i);
      EXPECT_EQ(found, counted) << c.name;
      if (found > 0) seen.insert(c.name);
    }
  });
  if (!qxtest::testDataPath("").empty()) {
    EXPECT_GT(seen.size(), 45u);
  }
}

TEST(Candlesticks, FillRefusesUnknownNamesBeforeItTouchesTheOutput) {
  BarSet bars(qxtest::workedBars());
  Candles candles(bars);
  Series out({7, 8}, 1);
  const std::string longName(5000, 'q');
  for (const char* name : {"qxGap", "Hammer", "", "qxHammer2", longName.c_str()}) {
    EXPECT_EQ(qxCandleFill(bars, candles, out, name, 0, 11), QX_ERR_INVALID_PARM) << name;
  }
  EXPECT_EQ(qxCandleFill(bars, candles, out, nullptr, 0, 11), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCandleFill(bars, nullptr, out, "qxHammer", 0, 11), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCandleFill(nullptr, candles, out, "qxHammer", 0, 11), QX_ERR_INVALID_PARM);
  EXPECT_EQ(out.values(), (std::vector<double>{7, 8}));
  EXPECT_EQ(qxCandleFill(bars, candles, &bars->low, "qxHammer", 0, 11), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxCandleFill(bars, candles, out, "qxHammer", 5, 4), 0);
  EXPECT_EQ(out.values(), (std::vector<double>{0, 0}));
  EXPECT_EQ(out.record.firstvalid, 1);
}

TEST(Candlesticks, TestsReadNothingOutsideBarsAndCodes) {
  BarSet bars(withFillers({}));
  Candles candles(bars);
  BarSet fewer(qxtest::workedBars());
  Candles fewerCandles(fewer);
  qxCandles none = {};
  for (const Case& c : kCases) {
    for (int32_t index : {INT32_MIN, -1, 40, INT32_MAX}) {
      EXPECT_EQ(c.test(bars, candles, index), 0) << c.name;
    }
    EXPECT_EQ(c.test(bars, fewerCandles, 20), 0) << c.name;
    EXPECT_EQ(c.test(bars, &none, 20), 0) << c.name;
    EXPECT_EQ(c.test(bars, nullptr, 20), 0) << c.name;
    EXPECT_EQ(c.test(nullptr, candles, 20), 0) << c.name;
  }
}

}  // namespace
