// Market breadth, relative performance, cycles and bar formations over a million elements, with a
// short and a long period where a study has one.
#include "bench/bench_support.h"

namespace {

using qxbench::bars;
using qxbench::output;
using qxbench::prices;

const qxbench::Study kStudies[] = {
    {"qxADIssues", false, [](int32_t) { qxADIssues(&prices(1), &prices(2), &output(), 0); }},
    {"qxUpDownVolume", false,
     [](int32_t) { qxUpDownVolume(&prices(1), &prices(2), &output(), 0); }},
    {"qxABI", false, [](int32_t) { qxABI(&prices(1), &prices(2), &output(), 0); }},
    {"qxADRatio", false, [](int32_t) { qxADRatio(&prices(1), &prices(2), &output(), 0); }},
    {"qxUpDownRatio", false, [](int32_t) { qxUpDownRatio(&prices(1), &prices(2), &output(), 0); }},
    {"qxADLineBreadth", false,
     [](int32_t) { qxADLineBreadth(&prices(1), &prices(2), &output(), 0); }},
    {"qxTRIN", false,
     [](int32_t) { qxTRIN(&prices(1), &prices(2), &prices(3), &prices(4), &output(), 0); }},
    {"qxArmsIdx", false,
     [](int32_t) {
       qxArmsIdx(&prices(1), &prices(2), &prices(3), &prices(4), &output(), 0, qxbench::kElements);
     }},
    {"qxADLine", false, [](int32_t) { qxADLine(&prices(1), &prices(2), &output(), 0); }},
    {"qxCVI", false, [](int32_t) { qxCVI(&prices(1), &prices(2), &output(), 0); }},
    {"qxBoltonTremblay", false,
     [](int32_t) { qxBoltonTremblay(&prices(1), &prices(2), &prices(3), &output(), 0); }},
    {"qxOverBoughtSold", false,
     [](int32_t) { qxOverBoughtSold(&prices(1), &prices(2), &output(), 0); }},
    {"qxSTIX", true, [](int32_t p) { qxSTIX(&prices(1), &prices(2), &output(), p, 0); }},
    {"qxBreadthThrust", false,
     [](int32_t) { qxBreadthThrust(&prices(1), &prices(2), &output(), 0); }},
    {"qxOpen10TRIN", false,
     [](int32_t) { qxOpen10TRIN(&prices(1), &prices(2), &prices(3), &prices(4), &output(), 0); }},
    {"qxBretzTRIN5", false,
     [](int32_t) { qxBretzTRIN5(&prices(1), &prices(2), &prices(3), &prices(4), &output(), 0); }},
    {"qxMcClellanOscillator", true,
     [](int32_t p) { qxMcClellanOscillator(&prices(1), &prices(2), &output(), 5, p, 0); }},
    {"qxMcClellanSummation", true,
     [](int32_t p) { qxMcClellanSummation(&prices(1), &prices(2), &output(), 5, p, 0); }},
    {"qxMcClellanOscSum", true,
     [](int32_t p) { qxMcClellanOscSum(&prices(1), &prices(2), &output(0), &output(1), 5, p, 0); }},
    {"qxCompPerformance", false,
     [](int32_t) { qxCompPerformance(&bars(), &bars(), &output(), 0); }},
    {"qxCompStrength", false, [](int32_t) { qxCompStrength(&bars(), &bars(), &output(), 0); }},
    {"qxSpread", false, [](int32_t) { qxSpread(&bars(), &bars(), &output(), 0); }},
    {"qxRSIC", true, [](int32_t p) { qxRSIC(&bars(), &bars(), &output(), p, 0); }},
    {"qxPerformancePct", false, [](int32_t) { qxPerformancePct(&prices(), &output(), 0); }},
    {"qxDeTrend", false, [](int32_t) { qxDeTrend(&prices(), &output(), 0, qxbench::kElements); }},
    {"qxCSIndex", true, [](int32_t p) { qxCSIndex(&bars(), &output(), p, 50, 2000, 25, 0); }},
    {"qxMESAsinewave", true,
     [](int32_t p) { qxMESAsinewave(&prices(), &output(0), &output(1), p, 0); }},
    {"qxFillInterval", true, [](int32_t p) { qxFillInterval(&bars(), &output(), p, 0); }},
    {"qxFormationFill qxCPR", false,
     [](int32_t) { qxFormationFill(&bars(), &output(), "qxCPR", 0, qxbench::kElements); }},
    {"qxFormationFill qxGap", false,
     [](int32_t) { qxFormationFill(&bars(), &output(), "qxGap", 0, qxbench::kElements); }},
    {"qxFormationFill qxGapDown", false,
     [](int32_t) { qxFormationFill(&bars(), &output(), "qxGapDown", 0, qxbench::kElements); }},
    {"qxFormationFill qxGapUp", false,
     [](int32_t) { qxFormationFill(&bars(), &output(), "qxGapUp", 0, qxbench::kElements); }},
    {"qxFormationFill qxIslandReversal", false,
     [](int32_t) {
       qxFormationFill(&bars(), &output(), "qxIslandReversal", 0, qxbench::kElements);
     }},
    {"qxFormationFill qxInsideBar", false,
     [](int32_t) { qxFormationFill(&bars(), &output(), "qxInsideBar", 0, qxbench::kElements); }},
    {"qxFormationFill qxKeyReversal", false,
     [](int32_t) { qxFormationFill(&bars(), &output(), "qxKeyReversal", 0, qxbench::kElements); }},
    {"qxFormationFill qxOutsideBar", false,
     [](int32_t) { qxFormationFill(&bars(), &output(), "qxOutsideBar", 0, qxbench::kElements); }},
    {"qxCrossOverFill", false,
     [](int32_t) { qxCrossOverFill(&prices(1), &prices(2), &output(), 0, qxbench::kElements); }},
    {"qxTurnFill", false, [](int32_t) { qxTurnFill(&prices(), &output(), 0, qxbench::kElements); }},
};

[[maybe_unused]] const size_t kRegistered = qxbench::registerStudies(kStudies);

}  // namespace
