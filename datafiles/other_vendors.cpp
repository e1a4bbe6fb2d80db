// Vendors whose data files have no public layout: their folders are recognised, not read. The one
// directory with a public layout, "qmaster", is listed.
#include <algorithm>
#include <cstring>

#include "core/numeric.h"
#include "core/output.h"
#include "datafiles/code_names.h"
#include "datafiles/listing.h"
#include "datafiles/paths.h"
#include "platform/platform.h"
#include "quorvex.h"

namespace qx {
namespace {

// The file by which a folder of a vendor is known, in any letter case.
constexpr char kCsiDirectory[] = "qmaster";
constexpr char kDowJonesIndex[] = "mapinfo.dat";
constexpr char kFutureSourceIndex[] = "fsfracs.fil";
constexpr char kTeleChartIndexes[] = "*.NDX";
constexpr char kTechToolsFiles[] = "*.TTD";
constexpr char kAiqFiles[] = "*.DTA";

int32_t probe(const char* folder, const char* pattern) {
  return isInFolder(folder, pattern) ? QX_ERR_UNKNOWN : QX_ERR_FILE_NOT_FOUND;
}

int32_t findRecord(const char* folder, const char* file, const char* pattern) {
  return folder == nullptr || file == nullptr ? QX_ERR_INVALID_PARM : probe(folder, pattern);
}

int32_t readBars(const qxBars* bars, const char* folder, const char* file, const char* pattern) {
  return bars == nullptr ? QX_ERR_INVALID_PARM : findRecord(folder, file, pattern);
}

// A listing of nothing but the header, so that the output is well-formed.
int32_t listNothing(const char* folder, const char* outfile, int32_t append, const char* pattern) {
  if (folder == nullptr || outfile == nullptr) return QX_ERR_INVALID_PARM;
  Output output;
  const int32_t opened = openOutput(outfile, append, &output);
  if (opened != QX_SUCCESS) return opened;
  printListingHeader(output.file);
  const int32_t closed = closeOutput(&output);
  return closed == QX_SUCCESS ? probe(folder, pattern) : closed;
}

// A record of "qmaster": 64 characters of text. Record n describes data file n, from 1.
constexpr size_t kCsiRecord = 64;

// A column of the record, from 1, without surrounding blanks.
template <size_t N>
void copyColumn(const char* record, size_t column, char (&text)[N]) {
  const char* from = record + column - 1;
  size_t length = N - 1;
  const void* zero = std::memchr(from, 0, length);
  if (zero != nullptr) length = static_cast<size_t>(static_cast<const char*>(zero) - from);
  while (length > 0 && from[length - 1] == ' ') --length;
  while (length > 0 && *from == ' ') ++from, --length;
  copyText(from, length, text, N);
}

int32_t csiFrequency(char type) {
  switch (type) {
    case 'D':
      return QX_FREQ_DAILY;
    case 'W':
      return QX_FREQ_WEEKLY;
    case 'M':
      return QX_FREQ_MONTHLY;
    default:
      return QX_FREQ_UNKNOWN;
  }
}

void printCsiRecord(std::FILE* out, const char* record, int32_t number) {
  char name[21];
  char symbol[7];
  char commodity[3];
  copyColumn(record, 5, name);
  copyColumn(record, 46, symbol);
  copyColumn(record, 37, commodity);
  if (name[0] == '\0' && symbol[0] == '\0' && commodity[0] == '\0') return;  // an unused record
  char fileName[20];
  std::snprintf(fileName, sizeof fileName, number < 1000 ? "F%03i.DTA" : "F%07i.DTA", number);
  printListingRow(out, {fileName, symbol[0] != '\0' ? symbol : commodity, name,
                        frequencyName(csiFrequency(record[24])), "", ""});
}

int32_t printCsiDirectory(std::FILE* out, const char* folder) {
  std::FILE* directory = openInFolder(folder, kCsiDirectory);
  if (directory == nullptr) return QX_ERR_FILE_NOT_FOUND;
  // The size is taken once: the listing may go to the directory file itself.
  int64_t size = 0;
  if (!fileSize(directory, &size) || !seekFile(directory, 0)) {
    std::fclose(directory);
    return QX_ERR_FILE_SEEK;
  }
  const int32_t records = saturateToInt32(size / static_cast<int64_t>(kCsiRecord));
  char record[kCsiRecord];
  int32_t number = 0;
  while (number < records && std::fread(record, 1, sizeof record, directory) == sizeof record) {
    printCsiRecord(out, record, ++number);
  }
  const bool failed = std::ferror(directory) != 0;
  std::fclose(directory);
  return failed ? QX_ERR_FILE_READ : QX_SUCCESS;
}

}  // namespace
}  // namespace qx

int32_t qxCSIfindrec(const char* folder, const char* file, double, double*) {
  return qx::findRecord(folder, file, qx::kCsiDirectory);
}

int32_t qxCSIlist(const char* folder, const char* outfile, int32_t append) {
  if (folder == nullptr || outfile == nullptr) return QX_ERR_INVALID_PARM;
  qx::Output output;
  const int32_t opened = qx::openOutput(outfile, append, &output);
  if (opened != QX_SUCCESS) return opened;
  qx::printListingHeader(output.file);
  const int32_t status = qx::printCsiDirectory(output.file, folder);
  const int32_t closed = qx::closeOutput(&output);
  return closed == QX_SUCCESS ? status : closed;
}

int32_t qxCSIread(qxBars* bars, const char* folder, const char* file, int32_t, int32_t) {
  return qx::readBars(bars, folder, file, qx::kCsiDirectory);
}

int32_t qxDJfindrec(const char* folder, const char* file, double, double*) {
  return qx::findRecord(folder, file, qx::kDowJonesIndex);
}

int32_t qxDJlist(const char* folder, const char* outfile, int32_t append) {
  return qx::listNothing(folder, outfile, append, qx::kDowJonesIndex);
}

int32_t qxDJread(qxBars* bars, const char* folder, const char* file, int32_t, int32_t) {
  return qx::readBars(bars, folder, file, qx::kDowJonesIndex);
}

int32_t qxFSfindrec(const char* folder, const char* file, double, double*) {
  return qx::findRecord(folder, file, qx::kFutureSourceIndex);
}

int32_t qxFSlist(const char* folder, const char* outfile, int32_t append) {
  return qx::listNothing(folder, outfile, append, qx::kFutureSourceIndex);
}

int32_t qxFSread(qxBars* bars, const char* folder, const char* file, int32_t, int32_t) {
  return qx::readBars(bars, folder, file, qx::kFutureSourceIndex);
}

int32_t qxTCfindrec(const char* folder, const char* file, double, double*) {
  return qx::findRecord(folder, file, qx::kTeleChartIndexes);
}

int32_t qxTClist(const char* folder, const char* outfile, int32_t append) {
  return qx::listNothing(folder, outfile, append, qx::kTeleChartIndexes);
}

int32_t qxTCread(qxBars* bars, const char* folder, const char* file, int32_t, int32_t) {
  return qx::readBars(bars, folder, file, qx::kTeleChartIndexes);
}

int32_t qxTTfindrec(const char* folder, const char* file, double, double*) {
  return qx::findRecord(folder, file, qx::kTechToolsFiles);
}

int32_t qxTTlist(const char* folder, const char* outfile, int32_t append) {
  return qx::listNothing(folder, outfile, append, qx::kTechToolsFiles);
}

int32_t qxTTread(qxBars* bars, const char* folder, const char* file, int32_t, int32_t) {
  return qx::readBars(bars, folder, file, qx::kTechToolsFiles);
}

int32_t qxAIQfindrec(const char* folder, const char* file, double, double*) {
  return qx::findRecord(folder, file, qx::kAiqFiles);
}

int32_t qxAIQlist(const char* folder, const char* outfile, int32_t append) {
  return qx::listNothing(folder, outfile, append, qx::kAiqFiles);
}

int32_t qxAIQread(qxBars* bars, const char* folder, const char* file, int32_t, int32_t) {
  return qx::readBars(bars, folder, file, qx::kAiqFiles);
}
