/* A caller's first program, valid as C99 and as C++17: it allocates, computes and releases. */
#include "quorvex.h"

/* The header comes first on purpose: it must compile alone. */
#include <stdio.h>
#include <string.h>

int main(void) {
  qxArray prices;
  qxArray average;
  int32_t i;
  int good;
  memset(&prices, 0, sizeof prices);
  memset(&average, 0, sizeof average);
  if (qxAllocArray(&prices, 5) != QX_SUCCESS) return 1;
  for (i = 0; i < prices.size; ++i) qxSetArrayItem(&prices, i, i + 1.0);
  if (qxSimpleMA(&prices, &average, 3, 0) != QX_SUCCESS) return 1;
  good = average.firstvalid == 2 && qxGetArrayItem(&average, 4) == 4.0 && sizeof(qxBars) == 548 &&
         sizeof(qxOrderSystem) == 1364;
  qxFreeArray(&average);
  qxFreeArray(&prices);
  puts(good ? "client: good" : "client: wrong");
  return good ? 0 : 1;
}
