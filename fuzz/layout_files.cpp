// Description files of text folders.
#include "fuzz/fuzz_support.h"

using namespace qxfuzz;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input input = {data, size};
  writeScratch("txtinfo.txt", takeRest(&input));
  const char* folder = scratchFolder().c_str();
  qxTXTinfo info;
  require(qxTXTreadinfo(folder, "txtinfo.txt", &info) == QX_SUCCESS, "any text is a layout");
  require(qxTXTwriteinfo(folder, "written.txt", &info) == QX_SUCCESS, "any layout can be written");
  qxTXTinfo again;
  qxTXTreadinfo(folder, "written.txt", &again);
  for (int32_t qxTXTinfo::*field :
       {&qxTXTinfo::dt, &qxTXTinfo::ti, &qxTXTinfo::op, &qxTXTinfo::hi, &qxTXTinfo::lo,
        &qxTXTinfo::cl, &qxTXTinfo::vol, &qxTXTinfo::oi, &qxTXTinfo::dtformat, &qxTXTinfo::skip}) {
    require(info.*field == again.*field, "a written layout reads back");
  }
  return 0;
}
