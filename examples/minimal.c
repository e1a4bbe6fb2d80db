/* Reads a price file, averages its closes and prints the last value. */
#include <stdio.h>

#include "quorvex.h"

int main(int argc, char** argv) {
  qxBars bars = {0};
  qxArray average = {0};
  qxTXTinfo layout;
  if (argc != 3) return fprintf(stderr, "Usage: %s FOLDER FILE\n", argv[0]), 2;
  if (qxTXTreadinfo(argv[1], "txtinfo.txt", &layout) != QX_SUCCESS) return 1;
  if (qxTXTread(&bars, argv[1], argv[2], &layout, 0, -1) != QX_SUCCESS) return 1;
  if (qxSimpleMA(&bars.close, &average, 20, 0) != QX_SUCCESS) return 1;
  printf("%s: %d bars, last 20-bar average %.2f\n", bars.symbol, (int)bars.barsize,
         qxGetArrayItem(&average, average.size - 1));
  qxFreeArray(&average);
  qxFreeBars(&bars);
  return 0;
}
