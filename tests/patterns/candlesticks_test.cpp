#include <algorithm>
#include <cctype>
#include <map>
#include <numeric>
#include <set>
#include <sstream>

#include "tests/support/name_of.h"
#include "tests/support/real_bars.h"
#include "tests/support/test_support.h"

namespace {

using qxtest::Bar;
using qxtest::BarSet;
using qxtest::Series;

using Test = int32_t (*)(const qxBars* bars, const qxCandles* candles, int32_t index);

template <Test... kTests>
std::map<std::string, Test> byName() {
  return {{qxtest::nameOf<kTests>(), kTests}...};
}

const std::map<std::string, Test> kTests =
    byName<qxBeltHoldLineBull, qxBeltHoldLineBear, qxGravestoneDoji, qxLongLeggedDoji, qxHighWave,
           qxHammer, qxHangingman, qxInvertedHammer, qxShootingStar, qxCounterAttackBear,
           qxCounterAttackBull, qxDarkCloudCover, qxPiercingLine, qxEngulfingLineBear,
           qxEngulfingLineBull, qxHaramiBlack, qxHaramiCrossBlack, qxHaramiCrossWhite,
           qxHaramiWhite, qxInNeckLine, qxThrustingLine, qxSeperatingLineBear, qxSeperatingLineBull,
           qxStalledPattern, qxTweezerBottoms, qxTweezerTops, qxAbandonedBabyBottom,
           qxAbandonedBabyTop, qxEveningDojiStar, qxEveningStar, qxMorningDojiStar, qxMorningStar,
           qxDragonflyDojiBull, qxDragonflyDojiBear, qxMeetingLinesBear, qxMeetingLinesBull,
           qxThreeOutsideDown, qxThreeOutsideUp, qxThreeStarsInTheSouth, qxUpsideGap2Crows,
           qxBreakawayBear, qxBreakawayBull, qxLadderBottom, qxTriStarBear, qxTriStarBull,
           qxAdvanceBlock, qxDeliberationBull, qxDeliberationBear, qxOnNeck, qxSideBySideWhiteGapDn,
           qxSideBySideWhiteGapUp, qxTasukiDownsideGap, qxTasukiUpsideGap, qxThreeGapsUp,
           qxThreeGapsDown, qxThreeWhiteSoldiers, qxThreeLineStrikeBear, qxThreeLineStrikeBull,
           qxFalling3Method, qxRising3Method, qxMatHoldPattern>();

// A line of candlesticks.txt, which tells how to read it.
struct Pattern {
  std::string name;
  Test test = nullptr;
  std::vector<Bar> bars = {};
  std::string codes = {};  // four letters for each bar
  std::vector<std::string> misses = {};
};

std::vector<Pattern> readPatterns() {
  std::vector<Pattern> patterns;
  std::istringstream lines(qxtest::readFile(QX_CANDLESTICKS_FILE));
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream words(line);
    std::string word, codes;
    Pattern pattern;
    words >> pattern.name >> word;
    pattern.test = kTests.at(pattern.name);
    do {
      Bar bar = {40000.0 + static_cast<double>(pattern.bars.size()), 0, 0, 0, 0, 100, 0};
      words >> bar.open >> bar.high >> bar.low >> bar.close >> codes >> word;
      pattern.bars.push_back(bar);
      pattern.codes += codes;
    } while (word == "/");
    while (words >> word) pattern.misses.push_back(word);
    patterns.push_back(pattern);
  }
  return patterns;
}

const std::vector<Pattern> kPatterns = readPatterns();

void applyChanges(std::vector<Bar>& bars, const std::string& changes) {
  std::istringstream in(changes);
  std::string change;
  while (std::getline(in, change, ',')) {
    Bar& bar = bars[bars.size() - 1 - static_cast<size_t>(change[0] - '0')];
    double* const prices[] = {&bar.open, &bar.high, &bar.low, &bar.close};
    *prices[std::string("ohlc").find(change[1])] = std::stod(change.substr(3));
  }
}

struct Candles {
  qxCandles record = {};
  explicit Candles(const qxBars* bars) { EXPECT_EQ(qxCandleConstruct(bars, &record), QX_SUCCESS); }
  ~Candles() { qxCandleFree(&record); }
  Candles(const Candles&) = delete;
  Candles& operator=(const Candles&) = delete;
  operator qxCandles*() { return &record; }
};

// A pattern's bars and their candles, followed by forty bars whose bodies of 2 hold the average
// body near 2.
struct Scene {
  BarSet bars;
  Candles candles;
  int32_t last;  // bar of the pattern

  explicit Scene(const std::vector<Bar>& pattern)
      : bars(withFillers(pattern)), candles(bars), last(static_cast<int32_t>(pattern.size()) - 1) {}
  static std::vector<Bar> withFillers(std::vector<Bar> bars) {
    bars.insert(bars.end(), 40, {50000, 100, 102, 100, 102, 100, 0});
    return bars;
  }
};

int32_t result(Test test, const std::vector<Bar>& pattern) {
  Scene scene(pattern);
  return test(scene.bars, scene.candles, scene.last);
}

TEST(Candlesticks, EachPatternFiresAndItsNearMissesDoNot) {
  for (const Pattern& p : kPatterns) {
    EXPECT_EQ(result(p.test, p.bars), 1) << p.name;
    for (const std::string& miss : p.misses) {
      std::vector<Bar> changed = p.bars;
      applyChanges(changed, miss);
      EXPECT_EQ(result(p.test, changed), 0) << p.name << ": " << miss;
    }
    if (p.bars.size() == 1) continue;
    EXPECT_EQ(result(p.test, {p.bars.begin() + 1, p.bars.end()}), 0) << p.name << " cut short";
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
  for (const Pattern& p : kPatterns) {
    Scene scene(p.bars);
    ASSERT_EQ(p.codes.size(), 4 * p.bars.size()) << p.name;
    for (size_t k = 0; k < p.codes.size(); ++k) {
      uint8_t& code = scene.candles.record.codes[k];
      const uint8_t own = code;
      for (code = 0; code <= 3; ++code) {
        EXPECT_EQ(p.test(scene.bars, scene.candles, scene.last), admits(p.codes[k], code, own))
            << p.name << ", code " << k << " = " << int{code};
      }
      code = own;
    }
  }
}

// What a test says of every bar.
std::vector<double> signalsOf(Test test, BarSet& bars, Candles& candles) {
  std::vector<double> signals;
  for (int32_t i = 0; i < bars->barsize; ++i) signals.push_back(test(bars, candles, i));
  return signals;
}

TEST(Candlesticks, FillFindsEveryTestByNameInAnyCase) {
  std::set<std::string> names;
  for (const Pattern& p : kPatterns) {
    names.insert(p.name);
    Scene scene(p.bars);
    Series out;
    std::vector<double> expected = signalsOf(p.test, scene.bars, scene.candles);
    EXPECT_EQ(qxCandleFill(scene.bars, scene.candles, out, p.name.c_str(), INT32_MIN, INT32_MAX),
              std::accumulate(expected.begin(), expected.end(), 0.0));
    EXPECT_EQ(out.values(), expected) << p.name;

    std::string upper = p.name;
    for (char& letter : upper) letter = static_cast<char>(std::toupper(letter));
    EXPECT_EQ(qxCandleFill(scene.bars, scene.candles, out, upper.c_str(), scene.last, scene.last),
              1);
    std::fill(expected.begin(), expected.end(), 0.0);
    expected[static_cast<size_t>(scene.last)] = 1.0;
    EXPECT_EQ(out.values(), expected) << upper;

    qxReSizeBars(scene.bars, scene.last + 1);
    EXPECT_EQ(qxCandleFill(scene.bars, scene.candles, out, p.name.c_str(), 0, INT32_MAX), 1)
        << p.name << " at the end of the bars";
  }
  EXPECT_EQ(names.size(), kTests.size());
  EXPECT_EQ(names.size(), 61u);
}

TEST(Candlesticks, RealBarsHoldPatterns) {
  std::set<std::string> seen;
  qxtest::withRealBars([&](BarSet& bars) {
    Candles candles(bars);
    Series out;
    for (const auto& [name, test] : kTests) {
      const int32_t found = qxCandleFill(bars, candles, out, name.c_str(), 0, INT32_MAX);
      EXPECT_EQ(out.values(), signalsOf(test, bars, candles)) << name;
      EXPECT_EQ(found, qxtest::sumOf(out.record)) << name;
      if (found > 0) seen.insert(name);
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
  qxtest::expectNullsRefused("qxCandleFill", qxCandleFill, QX_ERR_INVALID_PARM, bars, candles, out,
                             "qxHammer", 0, 11);
  EXPECT_EQ(out.values(), (std::vector<double>{7, 8}));
  EXPECT_EQ(qxCandleFill(bars, candles, &bars->low, "qxHammer", 0, 11), QX_ERR_INVALID_PARM);
  EXPECT_TRUE(gives(qxCandleFill(bars, candles, out, "qxHammer", 5, 4), out, {0, 0}));
  EXPECT_EQ(out.record.firstvalid, 1);
}

TEST(Candlesticks, TestsReadNothingOutsideBarsAndCodes) {
  Scene scene({});
  BarSet fewer(qxtest::workedBars());
  Candles fewerCandles(fewer);
  qxCandles none = {};
  for (const auto& [name, test] : kTests) {
    for (int32_t index : {INT32_MIN, -1, 40, INT32_MAX}) {
      EXPECT_EQ(test(scene.bars, scene.candles, index), 0) << name;
    }
    EXPECT_EQ(test(scene.bars, fewerCandles, 20), 0) << name;
    EXPECT_EQ(test(scene.bars, &none, 20), 0) << name;
    qxtest::expectNullsRefused(name.c_str(), test, 0, scene.bars, scene.candles, 20);
  }
}

}  // namespace
