// Volatility, bands and channels over a million bars, with a short and a long period.
#include "bench/bench_support.h"

namespace {

using qxbench::bars;
using qxbench::output;
using qxbench::prices;
using qxbench::Study;

const Study kStudies[] = {
    {"qxATR", true, [](int32_t p) { qxATR(&bars(), &output(), p, 0); }},
    {"qxBollinger", true,
     [](int32_t p) { qxBollinger(&bars(), &output(0), &output(1), &output(2), 2.0, p, 0); }},
    {"qxBollingerWidth", true, [](int32_t p) { qxBollingerWidth(&bars(), &output(), 2.0, p, 0); }},
    {"qxEnvelope", false,
     [](int32_t) { qxEnvelope(&prices(), &prices(2), &output(0), &output(1), 0.1, 0); }},
    {"qxEnvelopePct", false,
     [](int32_t) { qxEnvelopePct(&prices(), &output(0), &output(1), 0.1, 0); }},
    {"qxMAEnvelope", true,
     [](int32_t p) { qxMAEnvelope(&prices(), &output(0), &output(1), 0.1, QX_MA_SIMPLE, p, 0); }},
    {"qxMAHighLow", true,
     [](int32_t p) { qxMAHighLow(&bars(), &output(0), &output(1), QX_MA_SIMPLE, p, 0); }},
    {"qxStdErrBands", true,
     [](int32_t p) { qxStdErrBands(&prices(), &output(0), &output(1), &output(2), 2.0, p, 0); }},
    {"qxPriceChannels", true,
     [](int32_t p) { qxPriceChannels(&bars(), &output(0), &output(1), p, 0); }},
    {"qxProjectionBands", true,
     [](int32_t p) { qxProjectionBands(&bars(), &output(0), &output(1), p, 0); }},
    {"qxProjectionBandwidth", true,
     [](int32_t p) { qxProjectionBandwidth(&bars(), &output(), p, 0); }},
    {"qxProjectionOscillator", true,
     [](int32_t p) { qxProjectionOscillator(&bars(), &output(), p, 3, 0); }},
    {"qxChaikinVolatility", true, [](int32_t p) { qxChaikinVolatility(&bars(), &output(), p, 0); }},
    {"qxMassIndex", true, [](int32_t p) { qxMassIndex(&bars(), &output(), p, 0); }},
    {"qxWellesVolatility", true,
     [](int32_t p) {
       qxWellesVolatility(&bars(), &output(0), &output(1), &output(2), &output(3), 3.0, p, 0);
     }},
};

[[maybe_unused]] const size_t kRegistered = qxbench::registerStudies(kStudies);

}  // namespace
