// A strategy on the crossing of two moving averages, shared by the demo and the parameter sweep.
//
// It enters by market order when the averages cross, and re-enters in the direction of the trend
// either on a breakout (stop order) or on a pullback to the slower average (limit order). Every
// position is guarded by a protective stop and a limit target, and left at the market when it has
// been held for too long.
#ifndef QUORVEX_EXAMPLES_CROSSING_STRATEGY_H
#define QUORVEX_EXAMPLES_CROSSING_STRATEGY_H

#include "quorvex.h"

struct CrossingParameters {
  int32_t fastPeriod;    // bars of the faster average
  int32_t slowPeriod;    // bars of the slower average
  double stopPercent;    // protective stop, percent away from the average entry price
  double targetPercent;  // limit target, percent away from it
};

struct Averages {
  qxArray fast, slow;
};

// Prepares a system for an index quoted in hundredths: one unit earns 1 for each point.
int32_t openSystem(qxOrderSystem* system, const char* name, const qxBars* bars);

// Computes both averages of the closes. The records must be zero-filled or hold earlier averages.
int32_t computeAverages(const qxBars* bars, const CrossingParameters& parameters,
                        Averages* averages);
void freeAverages(Averages* averages);

// Runs the strategy over all bars of the system from the start.
void runStrategy(qxOrderSystem* system, const Averages& averages,
                 const CrossingParameters& parameters);

// Reads a price file under the description file "txtinfo.txt" of its folder; on failure says why on
// standard error.
int32_t readPrices(const char* folder, const char* file, qxBars* bars);

#endif  // QUORVEX_EXAMPLES_CROSSING_STRATEGY_H
