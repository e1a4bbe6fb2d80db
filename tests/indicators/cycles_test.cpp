#include <cmath>
#include <numbers>

#include "tests/support/test_support.h"

namespace {

using qxtest::BarSet;
using qxtest::near;
using qxtest::Series;

const std::vector<double> kCloses = {51, 53, 52, 51, 49, 50, 53, 55, 54, 52, 55, 57};

TEST(SineWave, AgreesWithAnIndependentComputation) {
  const struct {
    int32_t firstValid, period;
    std::vector<double> sine, lead;
  } cases[] = {
      {0,
       6,
       {0, 0, 0, 0, 0, -0.755928946018, 0.5, 1, 0.654653670708, -0.225017580185, -0.693375245282,
        0.970725343394},
       {0, 0, 0, 0, 0, -0.0716124339386, 0.965925826289, 0.707106781187, -0.0716124339386,
        -0.848084275097, -0.999815003211, 0.856248028105}},
      {2,
       5,
       {0, 0, 0, 0, 0, 0, 0.761694642423, 0.942847535739, 0.351989129549, -0.544893675596,
        -0.431503290153, 0.975711207041},
       {0, 0, 0, 0, 0, 0, 0.996759501692, 0.431068628213, -0.412960937407, -0.978210688859,
        0.33277015933, 0.844831398412}},
      {0,
       12,
       {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0.757096732327},
       {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0.0733933991242}},
      {0, 13, std::vector<double>(12), std::vector<double>(12)},
      {0, 1, std::vector<double>(12, 1.0), std::vector<double>(12, std::sqrt(0.5))},
  };
  for (const auto& c : cases) {
    Series in(kCloses, c.firstValid), sine, lead;
    EXPECT_EQ(qxMESAsinewave(in, sine, lead, c.period, -3), QX_SUCCESS);
    EXPECT_TRUE(seriesNear(sine, c.sine)) << c.period;
    EXPECT_TRUE(seriesNear(lead, c.lead)) << c.period;
    EXPECT_EQ(sine.record.firstvalid, c.firstValid + c.period - 1);
    EXPECT_EQ(lead.record.firstvalid, c.firstValid + c.period - 1);
  }
}

TEST(SineWave, TracksThePhaseOfACycle) {
  std::vector<double> wave(60);
  for (size_t i = 0; i < wave.size(); ++i) {
    wave[i] = 100 + 5 * std::sin(2 * std::numbers::pi * static_cast<double>(i) / 20);
  }
  Series in(wave), sine, lead;
  EXPECT_EQ(qxMESAsinewave(in, sine, lead, 20, 0), QX_SUCCESS);
  for (int32_t i = 19; i < 60; ++i) {
    EXPECT_TRUE(near(sine[i], std::sin(2 * std::numbers::pi * i / 20), 1e-6)) << i;
    // Where the sine crosses 0, rounding decides the sign of the lead.
    if (i % 10 == 0) continue;
    EXPECT_TRUE(near(lead[i], std::sin(2 * std::numbers::pi * i / 20 + std::numbers::pi / 4), 1e-6))
        << i;
  }
}

TEST(SineWave, RefusesAndEndures) {
  Series in(kCloses), sine{4}, lead{4};
  for (const int32_t period : {0, -1, INT32_MIN}) {
    EXPECT_EQ(qxMESAsinewave(in, sine, lead, period, 0), QX_ERR_INVALID_PARM);
  }
  EXPECT_EQ(sine[0], 4.0) << "checks precede writes";
  EXPECT_EQ(qxMESAsinewave(in, sine, in, 3, 0), QX_ERR_INVALID_PARM);
  EXPECT_EQ(qxMESAsinewave(in, sine, lead, INT32_MAX, INT32_MAX), QX_SUCCESS);
  EXPECT_EQ(sine.record.firstvalid, INT32_MAX);
  Series zeros{0, 0, 0}, out, ahead;
  EXPECT_EQ(qxMESAsinewave(zeros, out, ahead, 3, 0), QX_SUCCESS);
  EXPECT_TRUE(near(out[2], 1.0)) << "no cycle: both sums are 0";
  qxSetMaxFirstValid(0);
}

TEST(FillInterval, MarksEveryInterval) {
  BarSet bars(qxtest::workedBars());
  Series out;
  EXPECT_EQ(qxFillInterval(bars, out, 4, 0), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0}, 0));
  EXPECT_EQ(qxFillInterval(bars, out, 5, 3), QX_SUCCESS);
  EXPECT_TRUE(seriesNear(out, {0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0}, 0));
  EXPECT_EQ(out.record.firstvalid, 3);
  EXPECT_EQ(qxFillInterval(bars, out, INT32_MAX, 11), QX_SUCCESS);
  EXPECT_EQ(out[11], 1.0);
  EXPECT_EQ(qxFillInterval(bars, out, 1, INT32_MAX), QX_SUCCESS);
  EXPECT_EQ(out[11], 0.0);
  EXPECT_EQ(qxFillInterval(bars, out, 0, 0), QX_ERR_INVALID_PARM);
  qxArray alias = bars->open;
  EXPECT_EQ(qxFillInterval(bars, &alias, 4, 0), QX_ERR_INVALID_PARM);
  qxSetMaxFirstValid(0);
}

}  // namespace
