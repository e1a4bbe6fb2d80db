// One column of a delimited text file.
#include "fuzz/fuzz_support.h"

using namespace qxfuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input input = {data, size};
  const int32_t skip = takeSigned(&input);
  const int32_t column = takeSigned(&input);
  const std::string delimiters = takeLine(&input);
  const std::string path = writeScratch("column.txt", takeRest(&input));
  qxArray array = {};
  const int32_t status = qxTXT2Array(path.c_str(), &array, delimiters.c_str(), skip, column);
  require(status == QX_SUCCESS, "any text has columns");
  requireSound(array);
  qxFreeArray(&array);
  return 0;
}
