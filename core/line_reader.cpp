#include "core/line_reader.h"

#include <algorithm>
#include <cstring>

#include "platform/platform.h"
#include "quorvex.h"

namespace qx {
namespace {

constexpr char kEndOfText = '\x1A';

// Moves what was not handed out to the front of the buffer and fills the rest from the file.
void refill(LineReader* reader) {
  const size_t kept = reader->end - reader->next;
  std::memmove(reader->buffer, reader->buffer + reader->next, kept);
  reader->bufferStart += static_cast<int64_t>(reader->next);
  reader->next = 0;
  char* const fresh = reader->buffer + kept;
  const size_t room = sizeof reader->buffer - kept;
  size_t length = std::fread(fresh, 1, room, reader->file);
  if (length < room) {
    reader->atEnd = true;
    if (std::ferror(reader->file) != 0) reader->status = QX_ERR_FILE_READ;
  }
  if (const void* stop = std::memchr(fresh, kEndOfText, length)) {
    length = static_cast<size_t>(static_cast<const char*>(stop) - fresh);
    reader->atEnd = true;
  }
  if (std::memchr(fresh, '\0', length) != nullptr) reader->hasZeros = true;
  reader->end = kept + length;
}

}  // namespace

int32_t openLines(LineReader* reader, const char* path, size_t maxLength) {
  reader->file = openFile(path, "rb");
  if (reader->file == nullptr) return QX_ERR_FILE_OPEN;
  reader->maxLength = maxLength;
  reader->bufferStart = 0;
  reader->next = 0;
  reader->end = 0;
  reader->atEnd = false;
  reader->hasZeros = false;
  reader->status = QX_SUCCESS;
  return QX_SUCCESS;
}

void closeLines(LineReader* reader) {
  std::fclose(reader->file);
  reader->file = nullptr;
}

bool readLine(LineReader* reader, Line* line) {
  // The longest line that fits: its characters before the newline, a carriage return, the newline.
  const size_t longest = reader->maxLength + 1;
  if (reader->end - reader->next < longest && !reader->atEnd) refill(reader);
  const size_t held = reader->end - reader->next;
  if (held == 0 || reader->status != QX_SUCCESS) return false;

  const char* const text = reader->buffer + reader->next;
  const void* const newline = std::memchr(text, '\n', std::min(held, longest));
  size_t length = std::min(held, reader->maxLength);
  size_t consumed = length;
  bool ended = false;
  if (newline != nullptr) {
    const size_t at = static_cast<size_t>(static_cast<const char*>(newline) - text);
    const size_t shown = at > 0 && text[at - 1] == '\r' ? at - 1 : at;
    ended = shown < reader->maxLength;
    if (ended) {
      length = shown;
      consumed = at + 1;
    }
  }
  reader->next += consumed;
  line->blank = ended && length == 0;
  line->text = std::string_view(text, length);
  if (reader->hasZeros) line->text = line->text.substr(0, line->text.find('\0'));
  return true;
}

void dropLines(LineReader* reader, int64_t count) {
  Line line;
  while (count-- > 0 && readLine(reader, &line)) {
  }
}

int64_t linePosition(const LineReader& reader) {
  return reader.bufferStart + static_cast<int64_t>(reader.next);
}

void seekLine(LineReader* reader, int64_t position) {
  const int64_t bufferEnd = reader->bufferStart + static_cast<int64_t>(reader->end);
  if (position >= reader->bufferStart && position <= bufferEnd) {
    reader->next = static_cast<size_t>(position - reader->bufferStart);
    return;
  }
  reader->bufferStart = position;
  reader->next = 0;
  reader->end = 0;
  reader->atEnd = false;
  if (!seekFile(reader->file, position)) {
    reader->atEnd = true;
    reader->status = QX_ERR_FILE_SEEK;
  }
}

}  // namespace qx
