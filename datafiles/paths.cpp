#include "datafiles/paths.h"

#include <algorithm>
#include <cstring>

namespace qx {
namespace {

bool isPathSpace(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\n';
}

const char* skipSpace(const char* text) {
  while (isPathSpace(*text)) ++text;
  return text;
}

size_t withoutTrailingSpace(const char* text, size_t length) {
  while (length > 0 && isPathSpace(text[length - 1])) --length;
  return length;
}

}  // namespace

void joinPath(const char* folder, const char* file, Path& path) {
  const char* const name = skipSpace(folder);
  size_t length = std::min(std::strlen(name), kPathSize - 1);
  std::memcpy(path, name, length);
  length = withoutTrailingSpace(path, length);
  const bool open = length > 0 && path[length - 1] != ':' && path[length - 1] != '\\';
  if (open && length < kPathSize - 2) path[length++] = '\\';

  const char* const last = skipSpace(file);
  const size_t added = std::min(std::strlen(last), kPathSize - 1 - length);
  std::memcpy(path + length, last, added);
  length = withoutTrailingSpace(path, length + added);
  path[length] = '\0';
}

void copyText(const char* source, size_t length, char* target, size_t targetSize) {
  const size_t copied = std::min(length, targetSize - 1);
  std::memcpy(target, source, copied);
  std::memset(target + copied, 0, targetSize - copied);
}

}  // namespace qx
