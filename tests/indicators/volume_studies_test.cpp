#include "tests/indicators/bar_study_cases.h"

namespace {

using qxtest::BarSet;
using qxtest::BarStudyCase;
using qxtest::Series;

const BarStudyCase kCases[] = {
    {"qxMoneyFlowIndex",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxMoneyFlowIndex(b, o, 3, s); },
     3,
     {0, 0, 0, 66.180874426, 26.697761194, 0, 38.9370136544, 73.2182628062, 100, 65.9541511772,
      62.5744934446, 69.7453544391},
     {0, 0, 0, 0, 0, 69.1588785047, 49.6644295302, 54.6827794562}},
    {"qxKO",
     [](const qxBars* b, qxArray* o, int32_t s) {
       Series other;
       return qxKO(b, o, other, 2, 4, 3, s);
     },
     1,
     {0, 0, 5028.57142857, -4906.66666667, -13585.2698413, -18555.394709, 6732.01890653,
      15154.4697481, 16399.4995853, -2962.78957478, -6045.17018685, 4550.3990739},
     {0, 0, 0, 0, -5333.33333333, 355.555555556, -82.962962963, 1999.60493827}},
    {"qxKO signal",
     [](const qxBars* b, qxArray* o, int32_t s) {
       Series other;
       return qxKO(b, other, o, 2, 4, 3, s);
     },
     1,
     {0, 0, 2514.28571429, -1196.19047619, -7390.73015873, -12973.0624339, -3120.52176367,
      6016.9739922, 11208.2367887, 4122.72360698, -961.223289932, 1794.58789198},
     {0, 0, 0, 0, -2666.66666667, -1155.55555556, -619.259259259, 690.172839506}},
    {"qxWilliamsAD",
     qxWilliamsAD,
     1,
     {0, 3, 0, -2, -5, -2, 1, 4, 1, -1, 2, 5},
     {0, 0, 0, -1, -1, 2, -2, 1}},
    {"qxHerrickPayoffIndex",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxHerrickPayoffIndex(b, o, 100, 10, s); },
     1,
     {0, 0.1872, 0.306153267327, 0.0599379405941, -0.153055853465, -0.262750268119, 0.204562494542,
      0.591513652495, 0.682362287246, 0.217899643427, 0.32346816965, 0.766354997545},
     {0, 0, 0, -0.00909090909091, -0.00818181818182, 0.0554935064935, -0.0250558441558,
      -0.0225502597403}},
    {"qxDemandIdx",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxDemandIdx(b, o, 3, 3, s); },
     1,
     {0, 73.6875851418, 47.3318079671, -11.1851757425, -44.3931750064, -21.8788804445,
      35.4348975027, 53.357219307, 35.5973256181, -28.3212804492, 29.959023445, 55.1784930035},
     {0, 0, 0, -99.8112925009, -47.2790332899, 31.3513633421, -43.1327677995, -13.7168050719}},
    {"qxSwingIndex",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxSwingIndex(b, o, 3, s); },
     1,
     {0, 38.2352941176, -9.52380952381, -17.9487179487, -38.2352941176, 7.40740740741,
      73.0769230769, 39.4736842105, -9.52380952381, -50, 57.1428571429, 39.4736842105},
     {0, 0, 0, -33.3333333333, 0, 37.5, -83.3333333333, 43.75}},
    {"qxAccumSwingIndex",
     [](const qxBars* b, qxArray* o, int32_t s) { return qxAccumSwingIndex(b, o, 3, s); },
     1,
     {0, 38.2352941176, 28.7114845938, 10.7627666451, -27.4725274725, -20.0651200651, 53.0118030118,
      92.4854872223, 82.9616776985, 32.9616776985, 90.1045348414, 129.578219052},
     {0, 0, 0, -33.3333333333, -33.3333333333, 4.16666666667, -79.1666666667, -35.4166666667}},
};

TEST(VolumeStudies, AgreeWithAnIndependentComputation) {
  for (const BarStudyCase& c : kCases) checkStudy(c);
}

TEST(VolumeStudies, StayFiniteOnRealBars) {
  checkFiniteOnRealBars(kCases);
}

TEST(VolumeStudies, RefusePeriodsBelowOne) {
  BarSet bars(qxtest::workedBars());
  Series a{3}, b{3};
  for (const int32_t p : {0, -5, INT32_MIN}) {
    EXPECT_EQ(qxMoneyFlowIndex(bars, a, p, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxKO(bars, a, b, p, 2, 2, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxKO(bars, a, b, 2, p, 2, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxKO(bars, a, b, 2, 2, p, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxDemandIdx(bars, a, p, 2, 0), QX_ERR_INVALID_PARM);
    EXPECT_EQ(qxDemandIdx(bars, a, 2, p, 0), QX_ERR_INVALID_PARM);
  }
  EXPECT_EQ(a[0], 3.0) << "checks precede writes";
  EXPECT_EQ(qxMoneyFlowIndex(bars, a, INT32_MAX, INT32_MAX), QX_SUCCESS);
  EXPECT_EQ(qxKO(bars, a, b, INT32_MAX, 1, INT32_MAX, 0), QX_SUCCESS);
  qxSetMaxFirstValid(0);
}

TEST(VolumeStudies, MoneyFlowLeavesNoTraceOfBarsThatLeftTheWindow) {
  BarSet bars(qxtest::workedBars());
  Series out;
  qxMoneyFlowIndex(bars, out, 3, 0);
  EXPECT_EQ(out[5], 0.0);
  EXPECT_EQ(out[8], 100.0);
}

TEST(VolumeStudies, ZeroDivisors) {
  // Neither range nor volume, prices not above 0, no open interest, no change.
  BarSet bars({{0, 0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0, 0}, {0, -1, -1, -1, -1, 5, 3}});
  Series out, other;
  qxMoneyFlowIndex(bars, out, 1, 0);
  EXPECT_TRUE(seriesNear(out, {0, 0, 0}, 0)) << "only a fall";
  qxKO(bars, out, other, 1, 2, 3, 0);
  EXPECT_TRUE(seriesNear(out, {0, 0, 0}, 0));
  qxHerrickPayoffIndex(bars, out, 100, 10, 0);
  EXPECT_TRUE(seriesNear(out, {0, 0, 100 * 5 * -1.0 / 100000 * 10 / 100}));
  qxDemandIdx(bars, out, 1, 1, 0);
  EXPECT_TRUE(seriesNear(out, {0, 0, 0}, 0)) << "factor 1 without a positive price";
  qxSwingIndex(bars, out, 0, 0);
  EXPECT_TRUE(seriesNear(out, {0, 0, 0}, 0));
}

TEST(VolumeStudies, FloorTradersLevelsComeFromTheBarBefore) {
  BarSet bars(qxtest::workedBars());
  Series pivot, r1, r2, s1, s2;
  ASSERT_EQ(qxCFTPP(bars, pivot, r1, r2, s1, s2, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(pivot, {0, 152 / 3.0, 157 / 3.0, 53, 154 / 3.0, 149 / 3.0, 148 / 3.0, 52,
                                 163 / 3.0, 55, 157 / 3.0, 54}));
  const struct {
    const Series& level;
    double at1, at2, at3;
  } cases[] = {{r1, 157 / 3.0, 164 / 3.0, 54},
               {r2, 161 / 3.0, 169 / 3.0, 56},
               {s1, 148 / 3.0, 152 / 3.0, 51},
               {s2, 143 / 3.0, 145 / 3.0, 50}};
  for (const auto& c : cases) {
    EXPECT_EQ(c.level[0], 0.0);
    EXPECT_TRUE(qxtest::near(c.level[1], c.at1));
    EXPECT_TRUE(qxtest::near(c.level[2], c.at2));
    EXPECT_TRUE(qxtest::near(c.level[3], c.at3));
    EXPECT_EQ(c.level.record.firstvalid, 1);
  }
  ASSERT_EQ(qxCFTPP(bars, pivot, r1, r2, s1, s2, 10), QX_SUCCESS);
  EXPECT_EQ(pivot[10], 0.0);
  EXPECT_EQ(pivot[11], 54.0);
  EXPECT_EQ(pivot.record.firstvalid, 11);
  qxArray alias = bars->high;
  EXPECT_EQ(qxCFTPP(bars, pivot, r1, r2, s1, &alias, 0), QX_ERR_INVALID_PARM);
}

}  // namespace
