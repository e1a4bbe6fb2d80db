// The destination of reports and listings: standard output or a text file.
#ifndef QUORVEX_CORE_OUTPUT_H
#define QUORVEX_CORE_OUTPUT_H

#include <cstdint>
#include <cstdio>

namespace qx {

struct Output {
  std::FILE* file;
  bool standard;  // standard output is flushed, never closed
};

// True when the name means standard output, in any case.
bool isStandardOutput(const char* name);

// Opens "STDOUT" (any case) or a text file, to append or to replace. QX_ERR_FILE_OPEN when it
// cannot be opened.
int32_t openOutput(const char* name, int32_t append, Output* output);

// Flushes and closes. QX_ERR_FILE_WRITE when anything written to it was lost, else QX_SUCCESS.
int32_t closeOutput(Output* output);

}  // namespace qx

#endif  // QUORVEX_CORE_OUTPUT_H
