// Every momentum oscillator over a million elements, with a short and a long period.
#include "bench/bench_support.h"

namespace {

using qxbench::bars;
using qxbench::output;
using qxbench::prices;
using qxbench::Study;

const Study kStudies[] = {
    {"qxOscillator", false, [](int32_t) { qxOscillator(&prices(), &prices(2), &output(), 0); }},
    {"qxOscillatorPct", false,
     [](int32_t) { qxOscillatorPct(&prices(), &prices(2), &output(), 0); }},
    {"qxRatio", false, [](int32_t) { qxRatio(&prices(), &prices(2), &output(), 0); }},
    {"qxMomentum", true, [](int32_t p) { qxMomentum(&prices(), &output(), p, 0); }},
    {"qxRateOfChange", true, [](int32_t p) { qxRateOfChange(&prices(), &output(), 100.0, p, 0); }},
    {"qxRMI", true, [](int32_t p) { qxRMI(&prices(), &output(), p, 5, 0); }},
    {"qxRSI", true, [](int32_t p) { qxRSI(&prices(), &output(), p, 0); }},
    {"qxUpAverage", true, [](int32_t p) { qxUpAverage(&prices(), &output(), p, 0); }},
    {"qxDownAverage", true, [](int32_t p) { qxDownAverage(&prices(), &output(), p, 0); }},
    {"qxPriceOscillator", true,
     [](int32_t p) { qxPriceOscillator(&prices(), &output(), p, 2 * p, QX_MA_SIMPLE, 0); }},
    {"qxPriceOscillatorPct", true,
     [](int32_t p) { qxPriceOscillatorPct(&prices(), &output(), p, 2 * p, QX_MA_SIMPLE, 0); }},
    {"qxDPO", true, [](int32_t p) { qxDPO(&prices(), &output(), p, 0); }},
    {"qxStochastic", true, [](int32_t p) { qxStochastic(&prices(), &output(), p, 0); }},
    {"qxRawK", true, [](int32_t p) { qxRawK(&bars(), &output(), p, 0); }},
    {"qxFastD", true, [](int32_t p) { qxFastD(&bars(), &output(), p, 3, 0); }},
    {"qxSlowD", true, [](int32_t p) { qxSlowD(&bars(), &output(), p, 3, 3, 0); }},
    {"qxStochasticOscillator", true,
     [](int32_t p) {
       qxStochasticOscillator(&bars(), &output(0), &output(1), QX_MA_SIMPLE, p, 3, 3, 0);
     }},
    {"qxStochRSI", true, [](int32_t p) { qxStochRSI(&prices(), &output(), p, 0); }},
    {"qxWilliamsR", true, [](int32_t p) { qxWilliamsR(&bars(), &output(), p, 0); }},
    {"qxSMI", true, [](int32_t p) { qxSMI(&bars(), &output(0), &output(1), p, 25, 2, 9, 0); }},
    {"qxMACD", true, [](int32_t p) { qxMACD(&prices(), &output(0), &output(1), p, 0); }},
    {"qxMACDx", true,
     [](int32_t p) {
       qxMACDx(&prices(), &output(0), &output(1), &output(2), &output(3), &output(4), p, 2 * p, 9,
               0);
     }},
    {"qxTRIX", true, [](int32_t p) { qxTRIX(&prices(), &output(), p, 0); }},
    {"qxTSI", true, [](int32_t p) { qxTSI(&prices(), &output(), p, 13, 0); }},
    {"qxRVIoriginal", true, [](int32_t p) { qxRVIoriginal(&prices(), &output(), p, 0); }},
    {"qxRVI", true, [](int32_t p) { qxRVI(&bars(), &output(), p, 0); }},
    {"qxInertia", true, [](int32_t p) { qxInertia(&bars(), &output(), 14, p, 0); }},
    {"qxCCI", true, [](int32_t p) { qxCCI(&bars(), &output(), p, 0); }},
    {"qxUltimateOsc", true,
     [](int32_t p) { qxUltimateOsc(&bars(), &output(), p, 2 * p, 4 * p, 0); }},
    {"qxIMI", true, [](int32_t p) { qxIMI(&bars(), &output(), p, 0); }},
    {"qxNMO", true, [](int32_t p) { qxNMO(&prices(), &output(), p, 0); }},
    {"qxQstick", true, [](int32_t p) { qxQstick(&bars(), &output(), p, 0); }},
    {"qxLineOsc", true, [](int32_t p) { qxLineOsc(&prices(), &output(), p, 0); }},
    {"qxForecastOscillator", true,
     [](int32_t p) { qxForecastOscillator(&prices(), &output(), p, 0); }},
};

[[maybe_unused]] const size_t kRegistered = qxbench::registerStudies(kStudies);

}  // namespace
