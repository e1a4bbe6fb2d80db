// Which records of a file a reader puts into a bar set.
#ifndef QUORVEX_DATAFILES_RANGE_RULE_H
#define QUORVEX_DATAFILES_RANGE_RULE_H

#include <cstdint>

#include "quorvex.h"

namespace qx {

// Bars that a set has room for: its capacity, within that of each of its series.
int32_t barCapacity(const qxBars& bars);

// Allocates `count` bars for a set without storage (none when `count` is 0) and limits `count` to
// the set's capacity.
int32_t provideBars(qxBars* bars, int32_t* count);

// The range rule of every reader, for a file of `records` records: a `count` below 0 means all
// records from `start` on, a `start` below 0 the last `count` records. Resolves both, allocating
// bars for a set without storage. QX_ERR_RECORD_NOT_FOUND when `start` lies past the records, or
// an allocation status.
int32_t applyRangeRule(qxBars* bars, int32_t records, int32_t* start, int32_t* count);

}  // namespace qx

#endif  // QUORVEX_DATAFILES_RANGE_RULE_H
