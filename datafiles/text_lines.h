// What the readers of text price files share: counting and finding records, cutting out fields.
#ifndef QUORVEX_DATAFILES_TEXT_LINES_H
#define QUORVEX_DATAFILES_TEXT_LINES_H

#include <cstdint>
#include <string_view>

#include "core/line_reader.h"
#include "core/text_fields.h"
#include "quorvex.h"

namespace qx {

// A line of 254 characters has at most 127 fields; higher field numbers are always absent.
inline constexpr int32_t kMostFields = 127;

// The delimiter set of a layout, which has no terminator when it fills its 16 characters.
Delimiters layoutDelimiters(const qxTXTinfo& info);

// Opens the joined path for data lines. QX_ERR_FILE_OPEN when it cannot be opened.
int32_t openDataFile(LineReader* reader, const char* folder, const char* file);

// Decides by its first two different dates whether a file runs forwards or backwards in time.
struct OrderSearch {
  const qxTXTinfo* info;
  const Delimiters* delimiters;
  int64_t lineNumber;  // of the last record seen; the last header line counts as number 1
  bool dated;          // whether firstDate was found
  double firstDate;
  bool decided;
  bool descending;
};

// A counting pass over the rest of a file.
struct RecordCount {
  int32_t records;
  int64_t startPosition;  // where record `start` begins, or kNoPosition
};
inline constexpr int64_t kNoPosition = -1;

// Counts the lines that are not blank: no characters before the newline. (A line of blanks counts
// here and is passed over when bars are read.) `search` may be null.
RecordCount countRecords(LineReader* reader, int32_t start, OrderSearch* search);

// Goes to a position that countRecords gave, or without one to record `start` behind `skip` header
// lines.
void seekRecord(LineReader* reader, int64_t position, int32_t skip, int64_t start);

}  // namespace qx

#endif  // QUORVEX_DATAFILES_TEXT_LINES_H
