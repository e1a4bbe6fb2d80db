// The seven series of a bar set, in record order.
#ifndef QUORVEX_CORE_BARS_H
#define QUORVEX_CORE_BARS_H

#include <array>

#include "quorvex.h"

namespace qx {

inline std::array<qxArray*, 7> seriesOf(qxBars& bars) {
  return {&bars.date, &bars.open, &bars.high, &bars.low, &bars.close, &bars.volume, &bars.openint};
}

inline std::array<const qxArray*, 7> seriesOf(const qxBars& bars) {
  return {&bars.date, &bars.open, &bars.high, &bars.low, &bars.close, &bars.volume, &bars.openint};
}

}  // namespace qx

#endif  // QUORVEX_CORE_BARS_H
