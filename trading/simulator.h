// The inner operations of the trading simulator, shared by its sources.
#ifndef QUORVEX_TRADING_SIMULATOR_H
#define QUORVEX_TRADING_SIMULATOR_H

#include <cstdint>
#include <cstring>
#include <limits>

#include "core/memory.h"
#include "quorvex.h"

// Opens a position for a filled entry and, where the system reverses, closes the other direction.
// QX_ERR_MALLOC when the position finds no room; the fill is then lost.
int32_t qxOpenPosition(qxOrderSystem* system, const qxOrder* order, int32_t direction,
                       double price);

// Closes positions, oldest first, for a filled exit.
void qxClosePositions(qxOrderSystem* system, qxOrder* order, int32_t direction, double price);

// Closes the positions that a new entry turns around.
void qxCloseOpposite(qxOrderSystem* system, const qxOrder* order, int32_t direction, double price);

// Books the closing of `volume` units of a position: statistics, trade table, remaining volume.
void qxAddTrade(qxOrderSystem* system, const qxOrder* order, int32_t direction, double price,
                qxPosition* position, int32_t volume);

// Values what is open at the current bar's close and derives the market position from it.
void qxUpdateOpenPositions(qxOrderSystem* system);

namespace qx {

// Bars that the system can read in full: date, open, high, low and close.
int32_t barCount(const qxOrderSystem& system);

// Date and close of a bar, 0.0 outside the bars.
double barDate(const qxOrderSystem& system, int64_t bar);
double barClose(const qxOrderSystem& system, int64_t bar);

// Profit of a closed trade after costs and deduction.
double tradeProfit(const qxOrderSystem& system, const qxPosition& entry, const qxPosition& exit);

// Profit, before costs, of the open part of a position at a price.
double openProfit(const qxOrderSystem& system, const qxPosition& position, double price);

// Adds a closed piece to the statistics of its direction and of all trades. The position is taken
// as it stood before the closing.
void recordTrade(qxOrderSystem* system, const qxPosition& position, const qxPosition& exit);

// A table with room for `capacity` elements and one more, so that the slot after the last element
// always exists. The old table, if there is one, is grown; its new part is cleared. Null when there
// is no memory, with the old table left alone.
template <typename Record>
Record* grownTable(Record* table, int32_t oldCapacity, int64_t capacity) {
  if (capacity > std::numeric_limits<int32_t>::max()) return nullptr;
  const uint64_t wanted = static_cast<uint64_t>(capacity) + 1;
  if (table == nullptr) return static_cast<Record*>(allocateZeroed(wanted, sizeof(Record)));
  const uint64_t held = static_cast<uint64_t>(oldCapacity) + 1;
  auto* grown = static_cast<Record*>(reallocate(table, wanted, sizeof(Record)));
  if (grown != nullptr) std::memset(grown + held, 0, (wanted - held) * sizeof(Record));
  return grown;
}

// Copies a text into a field, cut to it and terminated; what follows the terminator stays.
template <size_t N>
void copyText(char (&field)[N], const char* text) {
  size_t length = 0;
  while (length < N - 1 && text[length] != '\0') ++length;
  std::memmove(field, text, length);
  field[length] = '\0';
}

}  // namespace qx

#endif  // QUORVEX_TRADING_SIMULATOR_H
