#include "datafiles/text_lines.h"

#include <limits>

#include "datafiles/paths.h"
#include "dates/date_strings.h"

namespace qx {
namespace {

void examineRecord(OrderSearch* search, std::string_view text) {
  // Kept: the number of the record, not that of the line, is held against the header lines, so that
  // with two or more of them the first records do not decide.
  ++search->lineNumber;
  if (search->decided || search->lineNumber <= search->info->skip) return;
  std::string_view field;
  if (!findField(*search->delimiters, stripLeadingBlanks(text), search->info->dt, &field)) return;
  const double date = dateFromText(field, search->info->dtformat);
  if (!search->dated) {
    search->dated = true;
    search->firstDate = date;
    return;
  }
  search->decided = date != search->firstDate;
  search->descending = date < search->firstDate;
}

}  // namespace

Delimiters layoutDelimiters(const qxTXTinfo& info) {
  const std::string_view whole(info.delimit, sizeof info.delimit);
  return delimitersFrom(whole.substr(0, whole.find('\0')));
}

int32_t openDataFile(LineReader* reader, const char* folder, const char* file) {
  Path path;
  joinPath(folder, file, path);
  return openLines(reader, path, kDataLineLength);
}

RecordCount countRecords(LineReader* reader, int32_t start, OrderSearch* search) {
  RecordCount count = {0, kNoPosition};
  Line line;
  int64_t position = linePosition(*reader);
  while (readLine(reader, &line)) {
    if (!line.blank && count.records < std::numeric_limits<int32_t>::max()) {
      if (count.records == start) count.startPosition = position;
      ++count.records;
      if (search != nullptr && !search->decided) examineRecord(search, line.text);
    }
    position = linePosition(*reader);
  }
  return count;
}

void seekRecord(LineReader* reader, int64_t position, int32_t skip, int64_t start) {
  if (position != kNoPosition) {
    seekLine(reader, position);
    return;
  }
  seekLine(reader, 0);
  dropLines(reader, skip);
  Line line;
  while (start > 0 && readLine(reader, &line)) {
    if (!line.blank) --start;
  }
}

}  // namespace qx
