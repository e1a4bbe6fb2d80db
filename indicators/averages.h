// Preparation shared by the averages that may work in place.
#ifndef QUORVEX_INDICATORS_AVERAGES_H
#define QUORVEX_INDICATORS_AVERAGES_H

#include <cstdint>

#include "quorvex.h"

namespace qx {

// The number of elements to compute, or a negative status. When both records hold the same block
// nothing is cleared or resized and the length is the input's. Otherwise this is qxCheckArgs,
// except that an average which writes all of its elements (`writesAll`) finds only those before its
// start index cleared.
int32_t prepareAverage(const qxArray* in, qxArray* out, int32_t start, bool writesAll);

}  // namespace qx

#endif  // QUORVEX_INDICATORS_AVERAGES_H
