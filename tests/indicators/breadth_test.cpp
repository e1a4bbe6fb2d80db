#include <cmath>

#include "tests/indicators/study_case.h"
#include "tests/support/real_bars.h"

namespace {

using namespace qxtest;

// Fourteen days of a small market, with a zero in every series: the advancing, declining and
// unchanged issues and the advancing and declining volumes, as open, high, low, close and volume.
std::vector<Bar> market() {
  const Values a{600, 400, 0, 700, 500, 900, 300, 250, 800, 650, 400, 0, 550, 720};
  const Values d{400, 600, 500, 0, 500, 100, 700, 750, 200, 350, 600, 0, 450, 280};
  const Values u{50, 0, 100, 25, 80, 0, 60, 40, 50, 100, 20, 10, 0, 80};
  const Values av{300, 150, 90, 400, 0, 800, 120, 100, 700, 500, 250, 60, 0, 640};
  const Values dv{100, 350, 260, 200, 240, 0, 480, 500, 160, 240, 350, 0, 280, 220};
  std::vector<Bar> days;
  for (size_t i = 0; i < a.size(); ++i) days.push_back({0, a[i], d[i], u[i], av[i], dv[i], 0});
  return days;
}

int32_t armsToTheEnd(const qxArray* a, const qxArray* d, const qxArray* av, const qxArray* dv,
                     qxArray* out, int32_t start) {
  return qxArmsIdx(a, d, av, dv, out, start, INT32_MAX);
}

const Values kTradingIndex = {
    0.5,          1.555555556,  0, 0, 0,           0, 1.714285714, 1.666666667, 0.9142857143,
    0.8914285714, 0.9333333333, 0, 0, 0.8839285714};
const Values kOscillator = {0,           -85.71428571, -168.3673469, 83.3090379,  11.29216993,
                            155.3872642, -72.49123983, -164.9490999, 61.30867866, 69.07093118,
                            -45.1669688, -36.65665182, -6.952016925, 77.50706938};
const Values kSummation = {0,
                           -85.71428571,
                           -254.0816327,
                           -170.7725948,
                           -159.4804248,
                           -4.093160588,
                           -76.58440042,
                           -241.5335003,
                           -180.2248216,
                           -111.1538905,
                           -156.3208593,
                           -192.9775111,
                           -199.929528,
                           -122.4224586};

// The series that each study reads are named by the letters of those columns.
const std::vector<StudyCase> kCases = {
    row(study<qxADIssues>("oh"), {}, {0},
        {{200, -200, -500, 700, 0, 800, -400, -500, 600, 300, -200, 0, 100, 440}}),
    row(study<qxUpDownVolume>("cv"), {}, {0},
        {{200, -200, -170, 200, -240, 800, -360, -400, 540, 260, -100, 60, -280, 420}}),
    row(study<qxABI>("oh"), {}, {0},
        {{200, 200, 500, 700, 0, 800, 400, 500, 600, 300, 200, 0, 100, 440}}),
    row(study<qxADRatio>("oh"), {}, {0},
        {{1.5, 0.6666666667, 0, 0, 1, 9, 0.4285714286, 0.3333333333, 4, 1.857142857, 0.6666666667,
          0, 1.222222222, 2.571428571}}),
    row(study<qxUpDownRatio>("cv"), {}, {0},
        {{3, 0.4285714286, 0.3461538462, 2, 0, 0, 0.25, 0.2, 4.375, 2.083333333, 0.7142857143, 0, 0,
          2.909090909}}),
    row(study<qxADLineBreadth>("oh"), {}, {0},
        {{0.6, 0.4, 0, 1, 0.5, 0.9, 0.3, 0.25, 0.8, 0.65, 0.4, 0, 0.55, 0.72}}),
    row(study<qxTRIN>("ohcv"), {}, {0}, {kTradingIndex}),
    row(study<armsToTheEnd>("ohcv"), {}, {0}, {kTradingIndex}),
    row(study<qxADLine>("oh"), {}, {1},
        {{200, 0, -500, 200, 200, 1000, 600, 100, 700, 1000, 800, 800, 900, 1340}}),
    row(study<qxCVI>("cv"), {}, {0},
        {{200, 0, -170, 30, -210, 590, 230, -170, 370, 630, 530, 590, 310, 730}}),
    row(study<qxBoltonTremblay>("ohl"), {}, {1},
        {{0, 0, -2.236067977, 3.055434645, 3.055434645, 3.055434645, 0.4734457472, -3.062088159,
          0.4020134564, 2.134064264, -1.028213396, -1.028213396, -1.028213396, 1.316994484}}),
    row(study<qxOverBoughtSold>("oh"), {}, {0},
        {{200, 127.2727273, 13.2231405, 138.0916604, 112.9840858, 237.8960702, 121.9149665,
          8.83951806, 116.323242, 149.7190162, 86.13374055, 70.47306045, 75.84159491, 142.052214}}),
    row(study<qxSTIX>("oh"), {4}, {0},
        {{60, 52, 31.2, 58.72, 55.232, 69.1392, 53.48352, 42.090112, 57.2540672, 60.35244032,
          52.21146419, 31.32687852, 40.79612711, 53.27767627}}),
    row(study<qxBreadthThrust>("oh"), {}, {9},
        {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0.54, 0.52, 0.48, 0.535, 0.507}}),
    row(study<qxOpen10TRIN>("ohcv"), {}, {9},
        {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0.9959092312, 1.018619607, 0.9786110614, 1.156903081,
          1.005201435}}),
    row(study<qxBretzTRIN5>("ohcv"), {}, {0}, {kTradingIndex}),
    row(study<qxMcClellanOscillator>("oh"), {3, 6}, {0}, {kOscillator}),
    row(study<qxMcClellanSummation>("oh"), {3, 6}, {0}, {kSummation}),
    row(study<qxMcClellanOscSum>("oh"), {3, 6}, {0, 1}, {kOscillator, kSummation}),
};

TEST(Breadth, WorkedCases) {
  checkCases(kCases, market());
}

TEST(Breadth, TradingIndexEndsWhereTold) {
  BarSet m(market());
  const struct {
    int32_t start, end, written;
  } cases[] = {{0, 0, 1}, {0, 8, 5}, {0, INT32_MAX, 8}, {3, 2, 0}, {0, -1, 0}, {0, INT32_MIN, 0}};
  for (const auto& c : cases) {
    Series out;
    EXPECT_EQ(qxArmsIdx(&m->open, &m->high, &m->close, &m->volume, out, c.start, c.end),
              QX_SUCCESS);
    int32_t written = 0;
    for (const double value : out.values()) written += value != 0.0;
    EXPECT_EQ(written, c.written) << c.start << ".." << c.end;
    EXPECT_EQ(out.record.firstvalid, c.start);
  }
}

TEST(Breadth, OpenTradingIndexGuardsOnlyThreeZeroSums) {
  const struct {
    double d, av, dv, expected;
  } cases[] = {{1, 1, 1, 1},         {0, 0, 0, 0}, {0, 0, 1, kInfinity}, {0, 1, 0, kNaN},
               {0, 1, 1, kInfinity}, {1, 1, 0, 0}, {1, 0, 1, kInfinity}, {1, 0, 0, kNaN}};
  for (const auto& c : cases) {
    Series a(Values(12, 1.0)), d(Values(12, c.d)), av(Values(12, c.av)), dv(Values(12, c.dv)), out;
    EXPECT_EQ(qxOpen10TRIN(a, d, av, dv, out, 0), QX_SUCCESS);
    EXPECT_EQ(out[8], 0.0);
    for (const int32_t i : {9, 10, 11}) EXPECT_TRUE(near(out[i], c.expected));
  }
}

TEST(Breadth, ShortSeriesKeepPartialResultsAtTheirEnd) {
  Series a{3, 1}, d{1, 1}, av{1, 1}, dv{1, 3}, out;
  EXPECT_TRUE(gives(qxOpen10TRIN(a, d, av, dv, out, 0), out, {0, (4.0 / 2.0) / (2.0 / 4.0)}));
  EXPECT_EQ(out.record.firstvalid, 9);
  EXPECT_TRUE(gives(qxBreadthThrust(a, d, out, 0), out, {0, 1.25 / 10.0}));
  EXPECT_EQ(out.record.firstvalid, 9);
}

TEST(Breadth, StaysFiniteOnAnExchangesHistory) {
  if (testDataPath("").empty()) GTEST_SKIP() << "QX_TEST_DATA is unset";
  // The five columns are read as if they were prices and volume.
  const qxTXTinfo layout = {1, 0, 2, 3, 4, 5, 6, 0, QX_ORDER_YMD, 1, ","};
  BarSet days;
  ASSERT_EQ(qxTXTread(days, testDataPath("text").c_str(), "nyse-breadth-1995-2015-joined.csv",
                      &layout, 0, -1),
            QX_SUCCESS);
  ASSERT_EQ(days->barsize, 5285);
  for (const StudyCase& c : kCases) {
    Series outputs[2];
    EXPECT_EQ(run(c, days, outputs, 0), QX_SUCCESS);
    for (const Series& out : outputs) expectFinite(out, describe(c).c_str());
  }
  Series line;
  qxADLine(&days->open, &days->high, line, 0);
  EXPECT_EQ(line[5284], 374465.0);
  qxCVI(&days->close, &days->volume, line, 0);
  EXPECT_EQ(line[5284], 147468061158.0);
}

}  // namespace
