// Text price files: a layout from the first bytes, then the file.
#include "fuzz/fuzz_support.h"

using namespace qxfuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input input = {data, size};
  qxTXTinfo info = {};
  for (int32_t* field : {&info.dt, &info.ti, &info.op, &info.hi, &info.lo, &info.cl, &info.vol,
                         &info.oi, &info.dtformat, &info.skip}) {
    *field = takeSigned(&input);
  }
  const int32_t start = takeSigned(&input);
  const int32_t count = takeSigned(&input);
  const std::string delimiters = takeLine(&input).substr(0, sizeof info.delimit);
  delimiters.copy(info.delimit, sizeof info.delimit);
  writeScratch("prices.txt", takeRest(&input));
  const char* folder = scratchFolder().c_str();

  qxBars bars = {};
  if (qxTXTread(&bars, folder, "prices.txt", &info, 0, -1) == QX_SUCCESS) {
    require(bars.barsize <= bars.reccnt, "no more bars than records");
  }
  requireSound(bars);
  // Once more into the storage that is there, a part of the file.
  qxTXTread(&bars, folder, "prices.txt", &info, start, count);
  requireSound(bars);
  qxFreeBars(&bars);

  qxArray array = {};
  for (const int32_t first : {int32_t{0}, start}) {
    qxTXTreadarray(&array, folder, "prices.txt", delimiters.c_str(), info.skip, info.cl, first,
                   first == 0 ? -1 : count);
    requireSound(array);
  }
  qxFreeArray(&array);

  for (const double date : {0.0, 36000.5, -36000.0}) {
    double found = 0.5;
    const int32_t record = qxTXTfindrec(folder, "prices.txt", &info, date, &found);
    require(record >= 0 || found == 0.5, "no date without a record");
  }
  return 0;
}
