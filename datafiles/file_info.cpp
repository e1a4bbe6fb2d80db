// The file information of a bar set, printed.
#include <cinttypes>
#include <cstdio>

#include "core/number_text.h"
#include "core/numeric.h"
#include "core/output.h"
#include "datafiles/code_names.h"
#include "dates/date_pictures.h"
#include "quorvex.h"

namespace qx {
namespace {

void printText(std::FILE* out, const char* key, const char* text) {
  std::fprintf(out, "%-12s %s\n", key, text);
}

// A text field of a record, terminated or not.
template <size_t N>
void printField(std::FILE* out, const char* key, const char (&field)[N]) {
  std::fprintf(out, "%-12s %.*s\n", key, static_cast<int>(N), field);
}

void printDate(std::FILE* out, const char* key, double date) {
  if (date == 0.0) return;
  char text[kDateTextSize];
  qxFormatDate(date, datePicture(), text);
  printText(out, key, text);
}

void printInformation(std::FILE* out, const qxBars& bars) {
  printText(out, "barsize", wholeText(bars.barsize).text);
  printText(out, "datasize", wholeText(bars.datasize).text);
  printText(out, "reccnt", wholeText(bars.reccnt).text);
  printField(out, "path", bars.path);
  printField(out, "name", bars.name);
  printField(out, "symbol", bars.symbol);
  printField(out, "description", bars.description);
  if (bars.cusip[0] != '\0') printField(out, "cusip", bars.cusip);
  printDate(out, "begindate", bars.begindate);
  printDate(out, "enddate", bars.enddate);
  printText(out, "frequency", frequencyName(bars.frequency));
  printText(out, "datatype", dataTypeName(bars.datatype));
  if (bars.optiontype != 0) printText(out, "optiontype", optionTypeName(bars.optiontype));
  printDate(out, "deliverydate", bars.deliverydate);
  if (bars.strikeprice != 0.0) {
    std::fprintf(out, "%-12s %8s.%02" PRId32 "\n", "strikeprice",
                 wholeText(truncateToInt64(bars.strikeprice)).text,
                 qxDecimals(bars.strikeprice, 2));
  }
  printText(out, "filetype", fileTypeName(bars.filetype));
}

}  // namespace
}  // namespace qx

int32_t qxFILEprintinfo(const qxBars* bars, const char* outfile, int32_t append) {
  if (bars == nullptr || outfile == nullptr) return QX_ERR_INVALID_PARM;
  qx::Output output;
  const int32_t status = qx::openOutput(outfile, append, &output);
  if (status != QX_SUCCESS) return status;
  qx::printInformation(output.file, *bars);
  return qx::closeOutput(&output);
}
