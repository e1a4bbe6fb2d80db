// The platform layer on POSIX systems.
#include <dirent.h>
#include <fnmatch.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <ctime>

#include "platform/platform.h"
#include "quorvex.h"

namespace qx {
namespace {

constexpr size_t kPathSize = 4096;

// The path with backslashes turned into slashes; false when it does not fit.
bool nativePath(const char* path, char (&native)[kPathSize]) {
  const size_t length = std::strlen(path);
  if (length >= kPathSize) return false;
  std::replace_copy(path, path + length + 1, native, '\\', '/');
  return true;
}

double modificationDate(const struct stat& facts) {
  std::tm local;
  if (localtime_r(&facts.st_mtime, &local) == nullptr) return 0.0;
  return qxYMDtoDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                     local.tm_min, std::min(local.tm_sec, 59));
}

void copyName(const char* source, char* name, size_t size) {
  const size_t length = std::min(std::strlen(source), size - 1);
  std::memcpy(name, source, length);
  name[length] = '\0';
}

}  // namespace

std::FILE* openFile(const char* path, const char* mode) {
  char native[kPathSize];
  if (!nativePath(path, native)) return nullptr;
  struct stat facts;
  if (stat(native, &facts) == 0 && S_ISDIR(facts.st_mode)) return nullptr;
  // The "t" of Windows text modes means nothing here.
  char plain[8];
  size_t length = 0;
  for (const char* m = mode; *m != '\0' && length + 1 < sizeof plain; ++m) {
    if (*m != 't') plain[length++] = *m;
  }
  plain[length] = '\0';
  return std::fopen(native, plain);
}

bool seekFile(std::FILE* file, int64_t position) {
  return fseeko(file, static_cast<off_t>(position), SEEK_SET) == 0;
}

bool fileSize(std::FILE* file, int64_t* size) {
  if (fseeko(file, 0, SEEK_END) != 0) return false;
  *size = ftello(file);
  return *size >= 0;
}

int32_t showErrorMessage(const char* message) {
  std::fprintf(stderr, "%s\n", message);
  return 1;
}

void visitFiles(const char* folder, const char* pattern, ListedFileVisitor visit, void* context) {
  char native[kPathSize];
  if (!nativePath(*folder == '\0' ? "." : folder, native)) return;
  DIR* const directory = opendir(native);
  if (directory == nullptr) return;
  bool wanted = true;
  while (wanted) {
    const dirent* const entry = readdir(directory);
    if (entry == nullptr) break;
    if (fnmatch(pattern, entry->d_name, FNM_CASEFOLD | FNM_NOESCAPE) != 0) continue;
    struct stat facts;
    if (fstatat(dirfd(directory), entry->d_name, &facts, 0) != 0) continue;
    if (!S_ISREG(facts.st_mode)) continue;
    ListedFile file;
    copyName(entry->d_name, file.name, sizeof file.name);
    copyName(entry->d_name, file.shortName, sizeof file.shortName);
    file.modified = modificationDate(facts);
    wanted = visit(context, file);
  }
  closedir(directory);
}

void shortFileName(const char* path, char* name, uint64_t nameSize) {
  const char* last = path;
  for (const char* p = path; *p != '\0'; ++p) {
    if (*p == '\\' || *p == '/') last = p + 1;
  }
  copyName(last, name, nameSize);
}

uint32_t systemColour(int32_t index) {
  switch (index) {
    case 3:   // inactive caption
    case 17:  // grey text
      return 0x7F7F7F;
    case 5:  // window background
      return 0xFFFFFF;
    case 15:  // button face
    case 19:  // inactive caption text
      return 0xC0C0C0;
    default:  // texts
      return 0x000000;
  }
}

void readMonthNames(MonthNames*) {}

int32_t dotsPerInch(void*) {
  return 96;
}

}  // namespace qx
