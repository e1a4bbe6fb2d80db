// The chart of a price file: candles with two averages and the trades of a simulation, volume, and
// the relative strength index below.
#ifndef QUORVEX_EXAMPLES_PRICE_CHART_H
#define QUORVEX_EXAMPLES_PRICE_CHART_H

#include "crossing_strategy.h"
#include "quorvex.h"

// The graph and the series that were computed for it. Bars and averages stay the caller's and must
// outlive the chart.
struct PriceChart {
  qxGraph graph;
  qxArray trades;
  qxArray volume;    // in millions
  qxArray strength;  // relative strength index
};

// Builds the chart of a finished simulation over `bars`. The record must be zero-filled.
int32_t buildPriceChart(PriceChart* chart, const qxBars& bars, const Averages& averages,
                        const CrossingParameters& parameters, const qxOrderSystem& system);
void freePriceChart(PriceChart* chart);

// Places the chart in an area of this size at the origin.
void placeChart(PriceChart* chart, int32_t width, int32_t height);

// Brings as many bars into view as fit, `last` being the last of them.
void showBars(PriceChart* chart, int32_t last);

// The bars that fit into the bar area of the last painting; before the first one a guess.
int32_t barsThatFit(const PriceChart& chart);

#endif  // QUORVEX_EXAMPLES_PRICE_CHART_H
