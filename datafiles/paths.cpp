#include "datafiles/paths.h"

#include <algorithm>
#include <cstring>

#include "platform/platform.h"

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

namespace {

// The first file of a folder that matches.
struct FirstFile {
  bool found;
  ListedFile file;
};

bool takeFirst(void* context, const ListedFile& file) {
  *static_cast<FirstFile*>(context) = {true, file};
  return false;
}

// That file joined with the folder; false when there is none.
bool findInFolder(const char* folder, const char* pattern, Path& path) {
  joinPath(folder, "", path);
  FirstFile first;
  first.found = false;
  visitFiles(path, pattern, takeFirst, &first);
  if (first.found) joinPath(folder, first.file.name, path);
  return first.found;
}

}  // namespace

bool locateInFolder(const char* folder, const char* file, Path& path) {
  joinPath(folder, file, path);
  std::FILE* const opened = openFile(path, "rb");
  if (opened == nullptr) return findInFolder(folder, file, path);
  std::fclose(opened);
  return true;
}

std::FILE* openInFolder(const char* folder, const char* file) {
  Path path;
  return locateInFolder(folder, file, path) ? openFile(path, "rb") : nullptr;
}

bool isInFolder(const char* folder, const char* pattern) {
  Path path;
  return findInFolder(folder, pattern, path);
}

void copyText(const char* source, size_t length, char* target, size_t targetSize) {
  const size_t copied = std::min(length, targetSize - 1);
  std::memcpy(target, source, copied);
  std::memset(target + copied, 0, targetSize - copied);
}

}  // namespace qx
