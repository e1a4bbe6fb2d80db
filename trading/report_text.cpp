#include "trading/report_text.h"

#include <cstring>

namespace qx {

DateText dateText(double date) {
  DateText result;
  qxFormatDate(date, datePicture(), result.text);
  return result;
}

DateText dateTimeText(double date) {
  DateText result;
  qxFormatDate(date, dateTimePicture(), result.text);
  return result;
}

const char* orderTypeText(int32_t orderType) {
  constexpr const char* kTexts[] = {"", "Market", "Stop", "Limit", "Close"};
  const bool known = orderType >= QX_ORDER_MARKET && orderType <= QX_ORDER_CLOSE;
  return kTexts[known ? orderType : 0];
}

const char* orderKindText(int32_t kind) {
  return kind == QX_KIND_EXIT ? "Exit" : "Entry";
}

const char* timeInForceText(int32_t inForce) {
  return inForce == QX_FORCE_BAR ? "Bar" : "GTC";
}

int32_t openReport(ColumnWriter* writer, const Layout& layout, const char* outfile, int32_t append,
                   const char* delimiter, int32_t header) {
  writer->layout = &layout;
  writer->delimiter = delimiter;
  writer->fixed = std::strcmp(delimiter, " ") == 0;
  const int32_t status = openOutput(outfile, append, &writer->output);
  if (status != QX_SUCCESS || header == 0) return status;
  std::FILE* file = writer->output.file;
  if (writer->fixed) {
    std::fputs(layout.fixedHeader, file);
    return QX_SUCCESS;
  }
  for (int32_t i = 0; i < layout.count; ++i) {
    std::fprintf(file, "%s%s", i == 0 ? "" : delimiter, layout.columns[i].word);
  }
  std::fputc('\n', file);
  return QX_SUCCESS;
}

void writeRow(const ColumnWriter& writer, const char* const* texts) {
  std::FILE* file = writer.output.file;
  for (int32_t i = 0; i < writer.layout->count; ++i) {
    const int width = writer.fixed ? writer.layout->columns[i].width : 0;
    std::fprintf(file, "%s%*s", i == 0 ? "" : writer.delimiter, width, texts[i]);
  }
  std::fputc('\n', file);
}

}  // namespace qx
