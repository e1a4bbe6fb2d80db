#include "core/output.h"

#include "core/ascii.h"
#include "platform/platform.h"
#include "quorvex.h"

namespace qx {

bool isStandardOutput(const char* name) {
  return equalIgnoringCase(name, "STDOUT");
}

int32_t openOutput(const char* name, int32_t append, Output* output) {
  output->standard = isStandardOutput(name);
  output->file = output->standard ? stdout : openFile(name, append != 0 ? "at" : "wt");
  return output->file == nullptr ? QX_ERR_FILE_OPEN : QX_SUCCESS;
}

int32_t closeOutput(Output* output) {
  bool failed = std::ferror(output->file) != 0;
  if (output->standard) {
    failed = std::fflush(output->file) != 0 || failed;
    std::clearerr(output->file);
  } else {
    failed = std::fclose(output->file) != 0 || failed;
  }
  output->file = nullptr;
  return failed ? QX_ERR_FILE_WRITE : QX_SUCCESS;
}

}  // namespace qx
