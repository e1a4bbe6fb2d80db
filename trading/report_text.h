// What the trading reports share: dates, direction letters, and rows of columns that are written
// either at fixed widths or with a delimiter.
#ifndef QUORVEX_TRADING_REPORT_TEXT_H
#define QUORVEX_TRADING_REPORT_TEXT_H

#include <cstdint>
#include <cstdio>

#include "core/number_text.h"
#include "core/output.h"
#include "dates/date_pictures.h"
#include "quorvex.h"

namespace qx {

// A date number in the default date order, without and with its time of day.
struct DateText {
  char text[kDateTextSize];
};
DateText dateText(double date);
DateText dateTimeText(double date);

// "B" for a buy or long, "S" for a sell or short.
inline const char* directionLetter(int32_t direction) {
  return direction == QX_BUY ? "B" : "S";
}

const char* orderTypeText(int32_t orderType);  // "Market", "Stop", "Limit" or "Close"
const char* orderKindText(int32_t kind);       // "Entry" or "Exit"
const char* timeInForceText(int32_t inForce);  // "Bar" or "GTC"

// One column of a report: the word of its delimited header, and its width in the fixed form
// (negative: to the left; 0: as wide as its text).
struct Column {
  const char* word;
  int32_t width;
};

// A report of columns. `fixedHeader` is the heading of the fixed form, its rule included.
struct Layout {
  const char* fixedHeader;
  const Column* columns;
  int32_t count;
};

// A destination that is written in one form. A delimiter of a single blank means fixed widths.
struct ColumnWriter {
  Output output;
  const Layout* layout;
  const char* delimiter;
  bool fixed;
};

// Opens the report and writes its header when asked to. QX_ERR_FILE_OPEN.
int32_t openReport(ColumnWriter* writer, const Layout& layout, const char* outfile, int32_t append,
                   const char* delimiter, int32_t header);

// Writes one line of `layout->count` texts.
void writeRow(const ColumnWriter& writer, const char* const* texts);

}  // namespace qx

#endif  // QUORVEX_TRADING_REPORT_TEXT_H
