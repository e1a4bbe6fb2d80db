// The listing of a folder's text files, and text written to a file or to standard output.
#include <cstring>

#include "core/ascii.h"
#include "core/output.h"
#include "datafiles/listing.h"
#include "datafiles/paths.h"
#include "dates/date_pictures.h"
#include "platform/platform.h"
#include "quorvex.h"

namespace qx {
namespace {

constexpr const char* kPatterns[] = {"*.ASC", "*.CSV", "*.PRN", "*.TXT"};
constexpr char kLayoutFile[] = "TXTINFO.TXT";

void printFile(std::FILE* out, const ListedFile& file) {
  char symbol[sizeof file.shortName];
  copyText(file.shortName, std::strcspn(file.shortName, "."), symbol, sizeof symbol);
  char modified[kDateTextSize];
  qxFormatDate(file.modified, datePicture(), modified);
  printListingRow(out, {file.shortName, symbol, file.name, "Unknown", "Unknown", modified});
}

bool printListed(void* out, const ListedFile& file) {
  if (!equalIgnoringCase(file.shortName, kLayoutFile)) {
    printFile(static_cast<std::FILE*>(out), file);
  }
  return true;
}

void printFiles(std::FILE* out, const char* folder, const char* pattern) {
  Path path;
  joinPath(folder, "", path);
  visitFiles(path, pattern, printListed, out);
}

int32_t writeText(const char* text, const char* outfile, int32_t append, const char* ending) {
  if (text == nullptr || outfile == nullptr) return QX_ERR_INVALID_PARM;
  Output output;
  const int32_t status = openOutput(outfile, append, &output);
  if (status != QX_SUCCESS) return status;
  std::fputs(text, output.file);
  std::fputs(ending, output.file);
  return closeOutput(&output);
}

}  // namespace
}  // namespace qx

int32_t qxTXTlist(const char* folder, const char* outfile, int32_t append) {
  if (folder == nullptr || outfile == nullptr) return QX_ERR_INVALID_PARM;
  qx::Output output;
  const int32_t status = qx::openOutput(outfile, append, &output);
  if (status != QX_SUCCESS) return status;
  qx::printListingHeader(output.file);
  for (const char* pattern : qx::kPatterns) qx::printFiles(output.file, folder, pattern);
  return qx::closeOutput(&output);
}

int32_t qxTXTwrite(const char* text, const char* outfile, int32_t append) {
  return qx::writeText(text, outfile, append, "");
}

int32_t qxTXTwriteline(const char* text, const char* outfile, int32_t append) {
  return qx::writeText(text, outfile, append, "\n");
}
