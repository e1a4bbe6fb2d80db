// Folders of the vendors that are recognised only, and the one directory that is listed.
#include "fuzz/fuzz_support.h"

using namespace qxfuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input input = {data, size};
  constexpr const char* kNames[] = {"qmaster",  "QMASTER",  "mapinfo.dat", "fsfracs.fil",
                                    "some.NDX", "some.TTD", "some.DTA"};
  const std::string name = kNames[takeByte(&input) % std::size(kNames)];
  const std::string path = writeScratch(name.c_str(), takeRest(&input));
  const char* folder = scratchFolder().c_str();
  const std::string listing = scratchFile("listing.out");
  int32_t recognised = 0;
  for (const char* type : {"CSI", "DJ", "FS", "TC", "TT", "AIQ"}) {
    qxBars bars = {};
    double found = 0.0;
    const int32_t record = qxFILEfindrec(type, folder, name.c_str(), 36164.0, &found);
    require(record == QX_ERR_UNKNOWN || record == QX_ERR_FILE_NOT_FOUND, "nothing is found");
    require(qxFILEread(type, &bars, folder, name.c_str(), 0, -1) == record, "nothing is read");
    recognised += record == QX_ERR_UNKNOWN ? 1 : 0;
    const int32_t listed = qxFILElist(type, folder, listing.c_str(), 0);
    require(listed == record || listed == QX_SUCCESS, "the listing agrees");
  }
  require(recognised == 1, "one vendor is recognised");
  std::filesystem::remove(path);
  return 0;
}
