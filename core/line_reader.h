// Text files read line by line through one buffer, with CRLF and LF alike on every system.
#ifndef QUORVEX_CORE_LINE_READER_H
#define QUORVEX_CORE_LINE_READER_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

namespace qx {

// Characters of a line of a data file, its newline included. A longer line is read as several.
inline constexpr size_t kDataLineLength = 254;

// One line without its newline. A zero byte ends the text, as it ends any string.
struct Line {
  std::string_view text;
  bool blank;  // nothing but a newline, not even a blank before it
};

// An open text file; about 64 KiB, meant for the stack. The texts of lines point into the buffer
// and hold until the next call.
struct LineReader {
  std::FILE* file;
  size_t maxLength;
  int64_t bufferStart;  // file position of buffer[0]
  size_t next;          // first character that was not handed out
  size_t end;           // end of the text in the buffer
  bool atEnd;           // the buffer holds the file's last character
  bool hasZeros;
  int32_t status;  // QX_ERR_FILE_READ or QX_ERR_FILE_SEEK once that happened, else QX_SUCCESS
  char buffer[65536];
};

// Opens a file for lines of at most `maxLength` characters, the newline included. As in text files
// of the system this comes from, a control-Z ends the text. QX_ERR_FILE_OPEN, with nothing to
// close, when it cannot be opened.
int32_t openLines(LineReader* reader, const char* path, size_t maxLength);
void closeLines(LineReader* reader);

// The next line, or false at the end of the text and after an error; `status` tells which.
bool readLine(LineReader* reader, Line* line);

// Drops up to `count` lines.
void dropLines(LineReader* reader, int64_t count);

// Where the next line begins, and back to such a place. A failed seek ends the text.
int64_t linePosition(const LineReader& reader);
void seekLine(LineReader* reader, int64_t position);

}  // namespace qx

#endif  // QUORVEX_CORE_LINE_READER_H
