// The record of a date in a delimited text file.
#include <algorithm>

#include "datafiles/date_search.h"
#include "datafiles/text_lines.h"
#include "dates/date_strings.h"
#include "quorvex.h"

namespace qx {
namespace {

// Kept: the date field sets the number and the time field adds to it, so a time that stands before
// the date is lost.
double recordDate(const qxTXTinfo& info, const Delimiters& delimiters, std::string_view text) {
  const int32_t fieldCount = std::max(info.dt, info.ti);
  double date = 0.0;
  std::string_view field;
  for (int32_t f = 1; f <= fieldCount && takeField(delimiters, &text, &field); ++f) {
    if (f == info.dt) {
      date = dateFromText(field, info.dtformat);
    } else if (f == info.ti) {
      date += timeFromText(field);
    }
  }
  return date;
}

int32_t findRecord(LineReader* reader, const qxTXTinfo& info, double target, double* foundDate) {
  const Delimiters delimiters = layoutDelimiters(info);
  dropLines(reader, info.skip);
  DateSearch search = {target, 0, 0.0};
  Line line;
  while (readLine(reader, &line)) {
    const std::string_view text = stripLeadingBlanks(line.text);
    if (text.empty()) continue;
    int32_t found = 0;
    if (endsSearch(&search, recordDate(info, delimiters, text), &found, foundDate)) return found;
  }
  return reader->status == QX_SUCCESS ? QX_ERR_RECORD_NOT_FOUND : reader->status;
}

}  // namespace
}  // namespace qx

int32_t qxTXTfindrec(const char* folder, const char* file, const qxTXTinfo* info, double date,
                     double* founddate) {
  if (folder == nullptr || file == nullptr || info == nullptr) return QX_ERR_INVALID_PARM;
  qx::LineReader reader;
  const int32_t opened = qx::openDataFile(&reader, folder, file);
  if (opened != QX_SUCCESS) return opened;
  double found = 0.0;
  const int32_t record = qx::findRecord(&reader, *info, date, &found);
  qx::closeLines(&reader);
  if (record >= 0 && founddate != nullptr) *founddate = found;
  return record;
}
