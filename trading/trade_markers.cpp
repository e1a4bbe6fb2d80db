// Markers of a finished simulation's trades, one value a bar, for drawing under the prices.
#include <cstdint>

#include "core/indicator_frame.h"
#include "quorvex.h"

namespace {

enum Flag { kLongEntry = 1, kShortEntry = 2, kExitByBuy = 4, kExitBySell = 8 };

void addFlag(qxArray* markers, int32_t length, int32_t bar, int32_t flag) {
  if (bar < 0 || bar >= length) return;
  markers->data[bar] = static_cast<int32_t>(markers->data[bar]) | flag;
}

}  // namespace

int32_t qxCreateTradeGraph(const qxOrderSystem* system, qxArray* markers) {
  if (system == nullptr || markers == nullptr) return QX_ERR_INVALID_PARM;
  const int32_t length = qxCheckArgs({&system->bars}, {}, {markers});
  if (length < 1) return length;
  for (int32_t i = 0; i < system->tradecount; ++i) {
    const qxTrade& trade = system->trades[i];
    addFlag(markers, length, trade.entry.bar,
            trade.entry.direction == QX_LONG ? kLongEntry : kShortEntry);
    addFlag(markers, length, trade.exit.bar,
            trade.exit.direction == QX_BUY ? kExitByBuy : kExitBySell);
  }
  return QX_SUCCESS;
}
