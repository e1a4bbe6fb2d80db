// CompuTrac folders: both directories, a field description and a data file.
#include "fuzz/fuzz_support.h"

using namespace qxfuzz;

namespace {

void readInstrument(const char* folder, const char* name) {
  qxBars bars = {};
  qxCTread(&bars, folder, name, 0, -1);
  requireSound(bars);
  qxCTread(&bars, folder, name, -2, 2);
  requireSound(bars);
  qxFreeBars(&bars);
  for (const int32_t field : {1, 2, 6}) {
    qxArray array = {};
    qxCTreadarray(&array, folder, name, field, field - 4, -1);
    requireSound(array);
    qxFreeArray(&array);
  }
  double found = 0.5;
  const int32_t record = qxCTfindrec(folder, name, 36164.0, &found);
  require(record >= 0 || found == 0.5, "no date without a record");
}

}  // namespace

// Two bytes give the length of each of the first three files.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input input = {data, size};
  for (const char* name : {"master", "xmaster", "F1.DOP"}) {
    const size_t length = takeLength(&input);
    writeScratch(name, takeBytes(&input, length));
  }
  const std::string records = takeRest(&input);
  writeScratch("F1.DAT", records);
  writeScratch("F256.MWD", records);

  const char* folder = scratchFolder().c_str();
  for (const char* name : {"F1.DAT", "F256.MWD", "ABC@D"}) readInstrument(folder, name);
  qxCTlist(folder, scratchFile("listing.out").c_str(), 0);
  return 0;
}
