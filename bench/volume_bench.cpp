// Every volume study over a million bars, with a short and a long period where it has one.
#include "bench/bench_support.h"

namespace {

using qxbench::bars;
using qxbench::output;
using qxbench::prices;

// The same bars with volumes and open interest that are no whole numbers, whose window sums cannot
// be rolled.
const qxBars& fractionalBars() {
  static const qxBars set = [] {
    qxBars copy = {};
    qxCopyBars(&bars(), &copy);
    for (int32_t i = 0; i < copy.barsize; ++i) {
      copy.volume.data[i] += 0.1;
      copy.openint.data[i] += 0.1;
    }
    return copy;
  }();
  return set;
}

const qxbench::Study kStudies[] = {
    {"qxOBV", false, [](int32_t) { qxOBV(&bars(), &output(), 0); }},
    {"qxOBVolMv", true, [](int32_t p) { qxOBVolMv(&bars(), &output(), p, 0); }},
    {"qxOBOiMv", true, [](int32_t p) { qxOBOiMv(&bars(), &output(), p, 0); }},
    {"qxOBVolExp", true, [](int32_t p) { qxOBVolExp(&bars(), &output(), p, 0); }},
    {"qxAccumDist", false, [](int32_t) { qxAccumDist(&bars(), &output(), 0); }},
    {"qxAccumulate", false, [](int32_t) { qxAccumulate(&prices(), &output(), 0); }},
    {"qxChaikinMoneyFlow", true, [](int32_t p) { qxChaikinMoneyFlow(&bars(), &output(), p, 0); }},
    {"qxChaikinOscillator", true,
     [](int32_t p) { qxChaikinOscillator(&bars(), &output(), 3, p, 0); }},
    {"qxNVI", false, [](int32_t) { qxNVI(&bars(), &output(), 0); }},
    {"qxPVI", false, [](int32_t) { qxPVI(&bars(), &output(), 0); }},
    {"qxPVT", false, [](int32_t) { qxPVT(&bars(), &output(), 0); }},
    {"qxPVO", true, [](int32_t p) { qxPVO(&bars(), &output(), 3, p, QX_MA_EXPONENTIAL, 0); }},
    {"qxPVrank", false, [](int32_t) { qxPVrank(&bars(), &output(), 0); }},
    {"qxArmsEMV", false, [](int32_t) { qxArmsEMV(&bars(), &output(), 10000, 0); }},
    {"qxMFI", false, [](int32_t) { qxMFI(&bars(), &output(), 0); }},
    {"qxMoneyFlowIndex", true, [](int32_t p) { qxMoneyFlowIndex(&bars(), &output(), p, 0); }},
    {"qxKO", true, [](int32_t p) { qxKO(&bars(), &output(0), &output(1), 5, p, p, 0); }},
    {"qxWilliamsAD", false, [](int32_t) { qxWilliamsAD(&bars(), &output(), 0); }},
    {"qxHerrickPayoffIndex", false,
     [](int32_t) { qxHerrickPayoffIndex(&bars(), &output(), 100, 10, 0); }},
    {"qxDemandIdx", true, [](int32_t p) { qxDemandIdx(&bars(), &output(), p, p, 0); }},
    {"qxSwingIndex", false, [](int32_t) { qxSwingIndex(&bars(), &output(), 3, 0); }},
    {"qxAccumSwingIndex", false, [](int32_t) { qxAccumSwingIndex(&bars(), &output(), 3, 0); }},
    {"qxCFTPP", false,
     [](int32_t) {
       qxCFTPP(&bars(), &output(0), &output(1), &output(2), &output(3), &output(4), 0);
     }},
    {"qxOBVolMv fractional", true,
     [](int32_t p) { qxOBVolMv(&fractionalBars(), &output(), p, 0); }},
};

[[maybe_unused]] const size_t kRegistered = qxbench::registerStudies(kStudies);

}  // namespace
