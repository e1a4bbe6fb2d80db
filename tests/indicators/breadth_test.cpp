#include <algorithm>
#include <cmath>

#include "tests/support/test_support.h"

namespace {

using qxtest::near;
using qxtest::Series;

// Fourteen days of a small market, with a zero in every series.
struct Market {
  Series a{600, 400, 0, 700, 500, 900, 300, 250, 800, 650, 400, 0, 550, 720};
  Series d{400, 600, 500, 0, 500, 100, 700, 750, 200, 350, 600, 0, 450, 280};
  Series u{50, 0, 100, 25, 80, 0, 60, 40, 50, 100, 20, 10, 0, 80};
  Series av{300, 150, 90, 400, 0, 800, 120, 100, 700, 500, 250, 60, 0, 640};
  Series dv{100, 350, 260, 200, 240, 0, 480, 500, 160, 240, 350, 0, 280, 220};
};

// The values from the start, and from element 3, where the declining issues and volumes become
// valid; element-wise studies only lose the elements before it.
struct BreadthCase {
  const char* name;
  int32_t (*study)(Market& market, qxArray* out, int32_t start);
  int32_t warmUp;  // first valid index less the start index
  std::vector<double> fromStart;
  std::vector<double> fromThird;
};

template <auto kStudy>
int32_t onIssues(Market& m, qxArray* o, int32_t s) {
  return kStudy(m.a, m.d, o, s);
}
template <auto kStudy>
int32_t onVolumes(Market& m, qxArray* o, int32_t s) {
  return kStudy(m.av, m.dv, o, s);
}
template <auto kStudy>
int32_t onAll(Market& m, qxArray* o, int32_t s) {
  return kStudy(m.a, m.d, m.av, m.dv, o, s);
}
template <auto kStudy>
int32_t withPeriods(Market& m, qxArray* o, int32_t s) {
  return kStudy(m.a, m.d, o, 3, 6, s);
}
int32_t armsToEight(Market& m, qxArray* o, int32_t s) {
  return qxArmsIdx(m.a, m.d, m.av, m.dv, o, s, 8);
}
int32_t boltonTremblay(Market& m, qxArray* o, int32_t s) {
  return qxBoltonTremblay(m.a, m.d, m.u, o, s);
}
int32_t stixOfFour(Market& m, qxArray* o, int32_t s) {
  return qxSTIX(m.a, m.d, o, 4, s);
}
int32_t oscillatorAlone(Market& m, qxArray* o, int32_t s) {
  Series sum;
  return qxMcClellanOscSum(m.a, m.d, o, sum, 3, 6, s);
}
int32_t sumAlone(Market& m, qxArray* o, int32_t s) {
  Series oscillator;
  return qxMcClellanOscSum(m.a, m.d, oscillator, o, 3, 6, s);
}

const BreadthCase kCases[] = {
    {"qxADIssues",
     onIssues<qxADIssues>,
     0,
     {200, -200, -500, 700, 0, 800, -400, -500, 600, 300, -200, 0, 100, 440},
     {}},
    {"qxUpDownVolume",
     onVolumes<qxUpDownVolume>,
     0,
     {200, -200, -170, 200, -240, 800, -360, -400, 540, 260, -100, 60, -280, 420},
     {}},
    {"qxABI",
     onIssues<qxABI>,
     0,
     {200, 200, 500, 700, 0, 800, 400, 500, 600, 300, 200, 0, 100, 440},
     {}},
    {"qxADRatio",
     onIssues<qxADRatio>,
     0,
     {1.5, 0.666666666667, 0, 0, 1, 9, 0.428571428571, 0.333333333333, 4, 1.85714285714,
      0.666666666667, 0, 1.22222222222, 2.57142857143},
     {}},
    {"qxUpDownRatio",
     onVolumes<qxUpDownRatio>,
     0,
     {3, 0.428571428571, 0.346153846154, 2, 0, 0, 0.25, 0.2, 4.375, 2.08333333333, 0.714285714286,
      0, 0, 2.90909090909},
     {}},
    {"qxADLineBreadth",
     onIssues<qxADLineBreadth>,
     0,
     {0.6, 0.4, 0, 1, 0.5, 0.9, 0.3, 0.25, 0.8, 0.65, 0.4, 0, 0.55, 0.72},
     {}},
    {"qxTRIN",
     onAll<qxTRIN>,
     0,
     {0.5, 1.55555555556, 0, 0, 0, 0, 1.71428571429, 1.66666666667, 0.914285714286, 0.891428571429,
      0.933333333333, 0, 0, 0.883928571429},
     {}},
    {"qxArmsIdx",
     armsToEight,
     0,
     {0.5, 1.55555555556, 0, 0, 0, 0, 1.71428571429, 1.66666666667, 0.914285714286, 0, 0, 0, 0, 0},
     {}},
    {"qxADLine",
     onIssues<qxADLine>,
     1,
     {200, 0, -500, 200, 200, 1000, 600, 100, 700, 1000, 800, 800, 900, 1340},
     {0, 0, 0, 700, 700, 1500, 1100, 600, 1200, 1500, 1300, 1300, 1400, 1840}},
    {"qxCVI",
     onVolumes<qxCVI>,
     0,
     {200, 0, -170, 30, -210, 590, 230, -170, 370, 630, 530, 590, 310, 730},
     {0, 0, 0, 200, -40, 760, 400, 0, 540, 800, 700, 760, 480, 900}},
    {"qxBoltonTremblay",
     boltonTremblay,
     1,
     {0, 0, -2.2360679775, 3.05543464463, 3.05543464463, 3.05543464463, 0.473445747158,
      -3.06208815877, 0.402013456363, 2.13406426393, -1.02821339624, -1.02821339624, -1.02821339624,
      1.31699448368},
     {0, 0, 0, 0, 0, 0, -2.58198889747, -6.1175228034, -2.65342118827, -0.921370380698,
      -4.08364804087, -4.08364804087, -4.08364804087, -1.73844016095}},
    {"qxOverBoughtSold",
     onIssues<qxOverBoughtSold>,
     0,
     {200, 127.272727273, 13.2231404959, 138.091660406, 112.984085786, 237.896070189, 121.914966518,
      8.83951806037, 116.323242049, 149.719016222, 86.1337405455, 70.4730604463, 75.8415949106,
      142.052214018},
     {0, 0, 0, 700, 572.727272727, 614.049586777, 429.676934636, 260.644764702, 322.345716574,
      318.282859015, 224.049611922, 183.313318845, 168.165442691, 217.589907657}},
    {"qxSTIX",
     stixOfFour,
     0,
     {60, 52, 31.2, 58.72, 55.232, 69.1392, 53.48352, 42.090112, 57.2540672, 60.35244032,
      52.211464192, 31.3268785152, 40.7961271091, 53.2776762655},
     {0, 0, 0, 100, 80, 84, 62.4, 47.44, 60.464, 62.2784, 53.36704, 32.020224, 41.2121344,
      53.52728064}},
    {"qxBreadthThrust",
     onIssues<qxBreadthThrust>,
     9,
     {0, 0, 0, 0, 0, 0, 0, 0, 0, 0.54, 0.52, 0.48, 0.535, 0.507},
     {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0.535, 0.507}},
    {"qxOpen10TRIN",
     onAll<qxOpen10TRIN>,
     9,
     {0, 0, 0, 0, 0, 0, 0, 0, 0, 0.995909231244, 1.01861960667, 0.978611061393, 1.15690308102,
      1.00520143521},
     {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1.15690308102, 1.00520143521}},
    {"qxBretzTRIN5",
     onAll<qxBretzTRIN5>,
     0,
     {0.5, 1.55555555556, 0, 0, 0, 0, 1.71428571429, 1.66666666667, 0.914285714286, 0.891428571429,
      0.933333333333, 0, 0, 0.883928571429},
     {}},
    {"qxMcClellanOscillator",
     withPeriods<qxMcClellanOscillator>,
     0,
     {0, -85.7142857143, -168.367346939, 83.3090379009, 11.2921699292, 155.387264235, -72.491239832,
      -164.94909988, 61.3086786571, 69.0709311837, -45.1669687974, -36.6566518196, -6.95201692469,
      77.5070693842},
     {0, 0, 0, 0, -150, -10.7142857143, -216.581632653, -280.594023324, -27.6564452312,
      2.34361054918, -94.4197424649, -72.6324053321, -33.0465841658, 58.6692925602}},
    {"qxMcClellanSummation",
     withPeriods<qxMcClellanSummation>,
     0,
     {0, -85.7142857143, -254.081632653, -170.772594752, -159.480424823, -4.09316058785,
      -76.5844004199, -241.5335003, -180.224821643, -111.153890459, -156.320859257, -192.977511076,
      -199.929528001, -122.422458617},
     {0, 0, 0, 0, -150, -160.714285714, -377.295918367, -657.889941691, -685.546386922,
      -683.202776373, -777.622518838, -850.25492417, -883.301508336, -824.632215775}},
    {"qxMcClellanOscSum oscillator",
     oscillatorAlone,
     0,
     {0, -85.7142857143, -168.367346939, 83.3090379009, 11.2921699292, 155.387264235, -72.491239832,
      -164.94909988, 61.3086786571, 69.0709311837, -45.1669687974, -36.6566518196, -6.95201692469,
      77.5070693842},
     {0, 0, 0, 0, -150, -10.7142857143, -216.581632653, -280.594023324, -27.6564452312,
      2.34361054918, -94.4197424649, -72.6324053321, -33.0465841658, 58.6692925602}},
    {"qxMcClellanOscSum sum",
     sumAlone,
     1,
     {0, -85.7142857143, -254.081632653, -170.772594752, -159.480424823, -4.09316058785,
      -76.5844004199, -241.5335003, -180.224821643, -111.153890459, -156.320859257, -192.977511076,
      -199.929528001, -122.422458617},
     {0, 0, 0, 0, -150, -160.714285714, -377.295918367, -657.889941691, -685.546386922,
      -683.202776373, -777.622518838, -850.25492417, -883.301508336, -824.632215775}},
};

TEST(Breadth, AgreesWithAnIndependentComputation) {
  for (const BreadthCase& c : kCases) {
    SCOPED_TRACE(c.name);
    Market market;
    Series out;
    EXPECT_EQ(c.study(market, out, INT32_MIN), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(out, c.fromStart)) << "a negative start counts as 0";
    EXPECT_EQ(out.record.firstvalid, c.warmUp);
    market.d.record.firstvalid = market.dv.record.firstvalid = 3;
    out.record.firstvalid = 11;
    EXPECT_EQ(c.study(market, out, 1), QX_SUCCESS);
    std::vector<double> fromThird = c.fromThird.empty() ? c.fromStart : c.fromThird;
    std::fill_n(fromThird.begin(), 3, 0.0);
    EXPECT_TRUE(seriesNear(out, fromThird)) << "into an output with a stale first valid index";
    EXPECT_EQ(out.record.firstvalid, 3 + c.warmUp);

    EXPECT_EQ(c.study(market, out, 14), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(out, std::vector<double>(14), 0)) << "a start past the data";
    EXPECT_EQ(c.study(market, out, INT32_MAX), QX_SUCCESS);
    EXPECT_EQ(out.record.firstvalid, INT32_MAX);

    Series small{7, 7};
    EXPECT_EQ(c.study(market, small, 0), QX_SUCCESS);
    EXPECT_EQ(small.values(), (std::vector<double>{0, 0})) << "valid only beyond the output";
    EXPECT_EQ(c.study(market, nullptr, 0), QX_ERR_INVALID_PARM);
    qxSetMaxFirstValid(0);
  }
}

TEST(Breadth, RefusesOutputsThatAreInputs) {
  Market m;
  EXPECT_EQ(qxADIssues(m.a, m.d, m.d, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxTRIN(m.a, m.d, m.av, m.dv, m.dv, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxBretzTRIN5(m.a, m.d, m.av, m.dv, m.a, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxBoltonTremblay(m.a, m.d, m.u, m.u, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxMcClellanSummation(m.a, m.d, m.a, 3, 6, 0), QX_ERR_INVALID_PARM);
  Series out, none;
  EXPECT_EQ(qxMcClellanOscSum(m.a, m.d, out, m.d, 3, 6, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxSTIX(m.a, none, out, 3, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(out.record.data, nullptr);
  EXPECT_EQ(m.a[0], 600.0);
}

TEST(Breadth, TradingIndexEndsWhereTold) {
  Market m;
  const struct {
    int32_t start, end, written;
  } cases[] = {{0, 0, 1}, {0, INT32_MAX, 8}, {3, 2, 0}, {0, -1, 0}, {0, INT32_MIN, 0}};
  for (const auto& c : cases) {
    Series out;
    EXPECT_EQ(qxArmsIdx(m.a, m.d, m.av, m.dv, out, c.start, c.end), QX_SUCCESS);
    int32_t written = 0;
    for (const double value : out.values()) written += value != 0.0;
    EXPECT_EQ(written, c.written) << c.start << ".." << c.end;
    EXPECT_EQ(out.record.firstvalid, c.start);
  }
}

TEST(Breadth, OpenTradingIndexGuardsOnlyThreeZeroSums) {
  const std::vector<double> ones(12, 1.0), zeros(12, 0.0);
  const struct {
    bool a, d, av, dv;
    double expected;
  } cases[] = {{true, true, true, true, 1.0},       {true, false, false, false, 0.0},
               {true, false, true, true, INFINITY}, {true, true, true, false, 0.0},
               {true, true, false, true, INFINITY}, {true, true, false, false, NAN}};
  for (const auto& c : cases) {
    Series a(ones), d(c.d ? ones : zeros), av(c.av ? ones : zeros), dv(c.dv ? ones : zeros), out;
    EXPECT_EQ(qxOpen10TRIN(a, d, av, dv, out, 0), QX_SUCCESS);
    EXPECT_EQ(out[8], 0.0);
    for (const int32_t i : {9, 10, 11}) EXPECT_TRUE(near(out[i], c.expected));
  }
}

TEST(Breadth, ShortSeriesKeepPartialResultsAtTheirEnd) {
  Series a{3, 1}, d{1, 1}, av{1, 1}, dv{1, 3}, out;
  EXPECT_EQ(qxOpen10TRIN(a, d, av, dv, out, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, (4.0 / 2.0) / (2.0 / 4.0)}));
  EXPECT_EQ(out.record.firstvalid, 9);
  EXPECT_EQ(qxBreadthThrust(a, d, out, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 1.25 / 10.0}));
  EXPECT_EQ(out.record.firstvalid, 9);
  qxSetMaxFirstValid(0);
}

TEST(Breadth, OutputsOfUnequalCapacityShareTheShorterLength) {
  Market m;
  Series osc, sum{9, 9, 9};
  EXPECT_EQ(qxMcClellanOscSum(m.a, m.d, osc, sum, 3, 6, 0), QX_SUCCESS);
  EXPECT_EQ(osc.record.size, 14);
  EXPECT_EQ(sum.record.size, 3);
  EXPECT_NE(osc[2], 0.0);
  EXPECT_EQ(osc[3], 0.0);
  for (const int32_t period : {-1, 0, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(qxMcClellanSummation(m.a, m.d, sum, period, period, 0), QX_SUCCESS);
    EXPECT_EQ(qxSTIX(m.a, m.d, sum, period, 0), QX_SUCCESS);
  }
}

TEST(Breadth, StaysFiniteOnAnExchangesHistory) {
  if (qxtest::testDataPath("").empty()) GTEST_SKIP() << "QX_TEST_DATA is unset";
  // The five columns are read as if they were prices and volume.
  const qxTXTinfo layout = {1, 0, 2, 3, 4, 5, 6, 0, QX_ORDER_YMD, 1, ","};
  qxtest::BarSet days;
  ASSERT_EQ(qxTXTread(days, qxtest::testDataPath("text").c_str(),
                      "nyse-breadth-1995-2015-joined.csv", &layout, 0, -1),
            QX_SUCCESS);
  ASSERT_EQ(days->barsize, 5285);
  Market market;
  const qxArray* const columns[] = {&days->open, &days->high, &days->low, &days->close,
                                    &days->volume};
  qxArray* const inputs[] = {market.a, market.d, market.u, market.av, market.dv};
  for (size_t k = 0; k < 5; ++k) {
    qxFreeArray(inputs[k]);
    qxCopyArray(columns[k], inputs[k]);
  }
  Series out;
  for (const BreadthCase& c : kCases) {
    EXPECT_EQ(c.study(market, out, 0), QX_SUCCESS);
    for (const double value : out.values()) ASSERT_TRUE(std::isfinite(value)) << c.name;
  }
  qxADLine(market.a, market.d, out, 0);
  EXPECT_EQ(out[5284], 374465.0);
  qxCVI(market.av, market.dv, out, 0);
  EXPECT_EQ(out[5284], 147468061158.0);
}

}  // namespace
