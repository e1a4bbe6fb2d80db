#include <cmath>
#include <numbers>

#include "tests/indicators/study_case.h"

namespace {

using namespace qxtest;

const std::vector<StudyCase> kCases = {
    row(study<qxMESAsinewave>(), {period(6)}, {5, 5},
        {{0, 0, 0, 0, 0, -0.755928946, 0.5, 1, 0.6546536707, -0.2250175802, -0.6933752453,
          0.9707253434},
         {0, 0, 0, 0, 0, -0.07161243394, 0.9659258263, 0.7071067812, -0.07161243394, -0.8480842751,
          -0.9998150032, 0.8562480281}}),
    row(study<qxMESAsinewave>(), {period(12)}, {11, 11},
        {{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0.7570967323},
         {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0.07339339912}}),
    row(study<qxMESAsinewave>(), {period(1)}, {0, 0},
        {Values(12, 1.0), Values(12, std::sqrt(0.5))}),
    row(study<qxFillInterval>(), {period(4)}, {0}, {{1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0}}),
};

TEST(Cycles, WorkedCases) {
  checkCases(kCases);
}

TEST(Cycles, RealPrices) {
  checkRealPrices(kCases);
}

TEST(SineWave, TracksThePhaseOfACycle) {
  using std::numbers::pi;
  Values wave(60);
  for (size_t i = 0; i < 60; ++i) wave[i] = 100 + 5 * std::sin(static_cast<double>(i) * pi / 10);
  Series in(wave), sine, lead;
  EXPECT_EQ(qxMESAsinewave(in, sine, lead, 20, 0), QX_SUCCESS);
  for (int32_t i = 19; i < 60; ++i) {
    EXPECT_TRUE(near(sine[i], std::sin(i * pi / 10), 1e-6)) << i;
    // Where the sine crosses 0, rounding decides the sign of the lead.
    if (i % 10 == 0) continue;
    EXPECT_TRUE(near(lead[i], std::sin(i * pi / 10 + pi / 4), 1e-6)) << i;
  }
}

TEST(SineWave, OfNoCycleIsOne) {
  Series zeros{0, 0, 0}, sine, lead;
  EXPECT_TRUE(gives(qxMESAsinewave(zeros, sine, lead, 3, 0), sine, {0, 0, 1})) << "both sums are 0";
}

}  // namespace
