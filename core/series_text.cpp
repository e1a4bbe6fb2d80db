// Plain series in text files: one column read in, any number of series printed side by side.
#include <algorithm>
#include <cstdarg>

#include "core/ascii.h"
#include "core/decimal_text.h"
#include "core/indicator_frame.h"
#include "core/line_reader.h"
#include "core/number_conversion.h"
#include "core/numeric.h"
#include "core/output.h"
#include "core/text_fields.h"
#include "platform/platform.h"
#include "quorvex.h"

namespace qx {
namespace {

int32_t readColumn(LineReader* reader, qxArray* array, const Delimiters& delimiters,
                   int32_t skipLines, int32_t column) {
  Line line;
  int64_t lines = 0;
  dropLines(reader, skipLines);
  while (readLine(reader, &line)) lines += line.blank ? 0 : 1;
  if (reader->status != QX_SUCCESS) return reader->status;
  const int32_t status = qxAllocArray(array, saturateToInt32(lines));
  if (status != QX_SUCCESS) return status;

  seekLine(reader, 0);
  dropLines(reader, skipLines);
  for (int32_t i = 0; i < array->size && readLine(reader, &line);) {
    if (line.blank) continue;
    std::string_view field;
    const bool found = findField(delimiters, line.text, column, &field);
    array->data[i++] = found ? decimalFromText(field) : 0.0;
  }
  return reader->status;
}

// A stretch of a format: literal text, or a conversion without its percent sign, of which `letter`
// is the last character.
struct Piece {
  std::string_view text;
  char letter;  // f, i, u or d takes a series, r the row number; 0 is literal text
};

bool takesSeries(const Piece& piece) {
  return piece.letter != 0 && piece.letter != 'r';
}

// Takes the next stretch off the front of a format; false at its end. A conversion ends at the
// first of f, i, r and u, else at the first d; one that never ends is literal text.
bool takePiece(std::string_view* format, Piece* piece) {
  if (format->empty()) return false;
  const std::string_view rest = *format;
  size_t taken = rest.find('%');
  if (taken != 0) {
    taken = std::min(taken, rest.size());
    *piece = {rest.substr(0, taken), 0};
  } else if (rest.substr(0, 2) == "%%") {
    taken = 2;
    *piece = {rest.substr(0, 1), 0};
  } else {
    size_t last = rest.find_first_of("firu", 1);
    if (last == std::string_view::npos) last = rest.find('d', 1);
    const bool ends = last != std::string_view::npos;
    taken = ends ? last + 1 : rest.size();
    *piece = ends ? Piece{rest.substr(1, last), rest[last]} : Piece{rest, 0};
  }
  format->remove_prefix(taken);
  return true;
}

void print(std::FILE* file, std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), file);
}

bool beginsWith(std::string_view text, std::string_view code) {
  return text.size() >= code.size() && equalIgnoringCase(text.data(), code.data(), code.size());
}

bool asksForSeparators(std::string_view conversion, size_t at) {
  return at < conversion.size() && (conversion[at] == 'i' || conversion[at] == 'u');
}

// The picture that a date or time code at the start of a conversion asks for, or null.
const char* pictureOf(std::string_view conversion) {
  struct DateCode {
    std::string_view code;
    const char* compact;
    const char* slashed;
  };
  constexpr DateCode kDateCodes[] = {
      {"YMD", "YYMMDD", "YY/MM/DD"}, {"CYMD", "YYYYMMDD", "YYYY/MM/DD"},
      {"MDY", "MMDDYY", "MM/DD/YY"}, {"MDCY", "MMDDYYYY", "MM/DD/YYYY"},
      {"DMY", "DDMMYY", "DD/MM/YY"}, {"DMCY", "DDMMYYYY", "DD/MM/YYYY"}};
  for (const DateCode& known : kDateCodes) {
    if (!beginsWith(conversion, known.code.substr(0, 3))) continue;
    return asksForSeparators(conversion, known.code.size()) ? known.slashed : known.compact;
  }
  // Kept: the codes are paired crosswise, HM with seconds and HMS without; callers rely on it.
  if (beginsWith(conversion, "HMS")) return asksForSeparators(conversion, 3) ? "HH:MM" : "HHMM";
  if (beginsWith(conversion, "HM")) {
    return asksForSeparators(conversion, 2) ? "HH:MM:SS" : "HHMMSS";
  }
  return nullptr;
}

void printElement(std::FILE* file, const Piece& piece, double value) {
  constexpr size_t kDateTextSize = 64;  // beyond the longest of the pictures above
  if (piece.letter == 'f') {
    printReal(file, parseConversion(piece.text), value);
  } else if (const char* picture = pictureOf(piece.text)) {
    char text[kDateTextSize];
    qxFormatDate(value, picture, text);
    std::fputs(text, file);
  } else {
    printInteger(file, parseConversion(piece.text), truncateToInt64(value));
  }
}

// The series that follow a format, taken one after the other.
struct Arguments {
  std::va_list list;
};

void printRow(std::FILE* file, std::string_view format, int32_t k, Arguments* arguments) {
  Piece piece;
  while (takePiece(&format, &piece)) {
    if (piece.letter == 0) {
      print(file, piece.text);
    } else if (piece.letter == 'r') {
      printInteger(file, parseConversion(piece.text), k);
    } else {
      // The callers have begun the list. NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
      const qxArray* array = va_arg(arguments->list, const qxArray*);
      if (k < heldSize(*array)) printElement(file, piece, array->data[k]);
    }
  }
}

// The header is a format too, but one without arguments: only "%%" means anything.
void printHeader(std::FILE* file, std::string_view header) {
  for (size_t i = 0; i < header.size(); ++i) {
    std::fputc(header[i], file);
    if (header.substr(i, 2) == "%%") ++i;
  }
}

// The greatest size among the series that a format takes, or -1 when one of them is null.
int32_t greatestSize(std::string_view format, Arguments* arguments) {
  int32_t greatest = 0;
  Piece piece;
  while (takePiece(&format, &piece)) {
    if (!takesSeries(piece)) continue;
    // The callers have begun the list. NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
    const qxArray* array = va_arg(arguments->list, const qxArray*);
    if (array == nullptr) return -1;
    greatest = std::max(greatest, heldSize(*array));
  }
  return greatest;
}

}  // namespace
}  // namespace qx

int32_t qxTXT2Array(const char* fileName, qxArray* array, const char* delimiters, int32_t skipLines,
                    int32_t column) {
  if (fileName == nullptr || array == nullptr || delimiters == nullptr) return QX_ERR_INVALID_PARM;
  qx::LineReader reader;
  const int32_t opened = qx::openLines(&reader, fileName, qx::kDataLineLength);
  if (opened != QX_SUCCESS) return opened;
  const int32_t status =
      qx::readColumn(&reader, array, qx::delimitersFrom(delimiters), skipLines, column);
  qx::closeLines(&reader);
  return status;
}

int32_t qxArrayPrintf(const char* fileName, int32_t append, int32_t start, int32_t end,
                      const char* header, const char* format, ...) {
  if (fileName == nullptr || format == nullptr) return QX_ERR_INVALID_PARM;
  qx::Arguments arguments;
  va_start(arguments.list, format);
  const int32_t greatest = qx::greatestSize(format, &arguments);
  va_end(arguments.list);
  if (greatest < 0) return QX_ERR_INVALID_PARM;
  // Kept: the name is used as it stands, "STDOUT" is a file.
  qx::Output output = {qx::openFile(fileName, append != 0 ? "at" : "wt"), false};
  if (output.file == nullptr) return QX_ERR_FILE_OPEN;
  if (header != nullptr) qx::printHeader(output.file, header);
  const int32_t last = std::min(end, greatest - 1);
  for (int32_t k = std::max(start, 0); k <= last; ++k) {
    va_start(arguments.list, format);
    qx::printRow(output.file, format, k, &arguments);
    va_end(arguments.list);
  }
  return qx::closeOutput(&output);
}
