// One entry point for each job that every file format offers, with the format given as text.
#include "core/ascii.h"
#include "core/decimal_text.h"
#include "quorvex.h"

namespace qx {
namespace {

struct ShortName {
  const char* name;
  int32_t code;
};

constexpr ShortName kShortNames[] = {{"AIQ", QX_FILE_AIQ},          {"CSI", QX_FILE_CSI},
                                     {"CT", QX_FILE_COMPUTRAC},     {"DJ", QX_FILE_DOW_JONES},
                                     {"FS", QX_FILE_FUTURE_SOURCE}, {"TC", QX_FILE_TELECHART},
                                     {"TT", QX_FILE_TECHTOOLS}};

using FindRecord = int32_t (*)(const char* folder, const char* file, double date,
                               double* founddate);
using List = int32_t (*)(const char* folder, const char* outfile, int32_t append);
using Read = int32_t (*)(qxBars* bars, const char* folder, const char* file, int32_t start,
                         int32_t count);

struct Format {
  FindRecord findRecord;
  List list;
  Read read;
};

// Indexed by the file-type code. Text has no row: its jobs need a layout.
constexpr Format kFormats[] = {
    {nullptr, nullptr, nullptr},         {qxCSIfindrec, qxCSIlist, qxCSIread},
    {qxCTfindrec, qxCTlist, qxCTread},   {qxDJfindrec, qxDJlist, qxDJread},
    {qxFSfindrec, qxFSlist, qxFSread},   {qxTCfindrec, qxTClist, qxTCread},
    {qxTTfindrec, qxTTlist, qxTTread},   {nullptr, nullptr, nullptr},
    {qxAIQfindrec, qxAIQlist, qxAIQread}};

// The description file that a text type names: itself, unless it is the plain name of the format.
const char* layoutFile(const char* type) {
  const bool plain = (type[0] == '7' && type[1] == '\0') || equalIgnoringCase(type, "TXT");
  return plain ? "txtinfo.txt" : type;
}

}  // namespace
}  // namespace qx

int32_t qxFILEtype(const char* type) {
  if (type == nullptr) return QX_FILE_UNKNOWN;
  const int32_t code = qx::integerFromText(type);
  if (code >= QX_FILE_CSI && code <= QX_FILE_AIQ) return code;
  for (const qx::ShortName& known : qx::kShortNames) {
    if (qx::equalIgnoringCase(type, known.name)) return known.code;
  }
  // Kept: any other name is the text format, whose description file it may name.
  return QX_FILE_TEXT;
}

int32_t qxFILEfindrec(const char* type, const char* folder, const char* file, double date,
                      double* founddate) {
  if (type == nullptr || folder == nullptr || file == nullptr) return QX_ERR_INVALID_PARM;
  if (founddate != nullptr) *founddate = 0.0;
  const int32_t code = qxFILEtype(type);
  if (code != QX_FILE_TEXT) return qx::kFormats[code].findRecord(folder, file, date, founddate);
  qxTXTinfo info;
  const int32_t status = qxTXTreadinfo(folder, qx::layoutFile(type), &info);
  return status == QX_SUCCESS ? qxTXTfindrec(folder, file, &info, date, founddate) : status;
}

int32_t qxFILElist(const char* type, const char* folder, const char* outfile, int32_t append) {
  if (type == nullptr || folder == nullptr || outfile == nullptr) return QX_ERR_INVALID_PARM;
  const int32_t code = qxFILEtype(type);
  if (code != QX_FILE_TEXT) return qx::kFormats[code].list(folder, outfile, append);
  return qxTXTlist(folder, outfile, append);
}

int32_t qxFILEread(const char* type, qxBars* bars, const char* folder, const char* file,
                   int32_t start, int32_t count) {
  if (type == nullptr || bars == nullptr || folder == nullptr || file == nullptr) {
    return QX_ERR_INVALID_PARM;
  }
  const int32_t code = qxFILEtype(type);
  if (code != QX_FILE_TEXT) return qx::kFormats[code].read(bars, folder, file, start, count);
  qxTXTinfo info;
  const int32_t status = qxTXTreadinfo(folder, qx::layoutFile(type), &info);
  return status == QX_SUCCESS ? qxTXTread(bars, folder, file, &info, start, count) : status;
}
