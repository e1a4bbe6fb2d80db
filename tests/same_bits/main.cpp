// Computes every function that computes numbers over a price file and prints the bits of the
// results, so that two platforms can be compared: scripts/compare_bits.py.
#include <cstdio>

#include "tests/same_bits/recorder.h"

int main(int argumentCount, char** arguments) {
  same_bits::Prices prices;
  if (argumentCount != 2 || !same_bits::loadPrices(arguments[1], &prices)) {
    std::fprintf(stderr, "usage: quorvex_same_bits PRICES.csv > FILE\n");
    return 2;
  }
  same_bits::computeStudies(prices);
  same_bits::computeCases(prices);
  same_bits::computeTrading(prices);
  same_bits::freePrices(&prices);
  return 0;
}
