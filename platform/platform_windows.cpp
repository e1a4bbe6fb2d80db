// The platform layer on Windows.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "platform/platform.h"
#include "quorvex.h"

namespace qx {
namespace {

constexpr size_t kPathSize = 4096;

double modificationDate(const FILETIME& written) {
  FILETIME local;
  SYSTEMTIME parts;
  if (!FileTimeToLocalFileTime(&written, &local) || !FileTimeToSystemTime(&local, &parts)) {
    return 0.0;
  }
  return qxYMDtoDate(parts.wYear, parts.wMonth, parts.wDay, parts.wHour, parts.wMinute,
                     std::min<int32_t>(parts.wSecond, 59));
}

void copyName(const char* source, char* name, size_t size) {
  const size_t length = std::min(std::strlen(source), size - 1);
  std::memcpy(name, source, length);
  name[length] = '\0';
}

}  // namespace

std::FILE* openFile(const char* path, const char* mode) {
  const DWORD attributes = GetFileAttributesA(path);
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return nullptr;
  }
  return std::fopen(path, mode);
}

bool seekFile(std::FILE* file, int64_t position) {
  return _fseeki64(file, position, SEEK_SET) == 0;
}

bool fileSize(std::FILE* file, int64_t* size) {
  if (_fseeki64(file, 0, SEEK_END) != 0) return false;
  *size = _ftelli64(file);
  return *size >= 0;
}

int32_t showErrorMessage(const char* message) {
  return MessageBoxA(nullptr, message, "Error", MB_OK | MB_ICONSTOP);
}

void visitFiles(const char* folder, const char* pattern, ListedFileVisitor visit, void* context) {
  char query[kPathSize];
  const size_t length = std::strlen(folder);
  if (length + 1 + std::strlen(pattern) + 1 > sizeof query) return;
  std::memcpy(query, folder, length + 1);
  if (length > 0 && std::strchr("\\/:", folder[length - 1]) == nullptr) std::strcat(query, "\\");
  std::strcat(query, pattern);
  WIN32_FIND_DATAA found;
  const HANDLE search = FindFirstFileA(query, &found);
  if (search == INVALID_HANDLE_VALUE) return;
  bool wanted = true;
  do {
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) continue;
    ListedFile file;
    copyName(found.cFileName, file.name, sizeof file.name);
    const bool hasShort = found.cAlternateFileName[0] != '\0';
    copyName(hasShort ? found.cAlternateFileName : found.cFileName, file.shortName,
             sizeof file.shortName);
    file.modified = modificationDate(found.ftLastWriteTime);
    wanted = visit(context, file);
  } while (wanted && FindNextFileA(search, &found));
  FindClose(search);
}

void shortFileName(const char* path, char* name, uint64_t nameSize) {
  char shortPath[kPathSize];
  const DWORD length = GetShortPathNameA(path, shortPath, sizeof shortPath);
  const char* full = length > 0 && length < sizeof shortPath ? shortPath : path;
  const char* last = full;
  for (const char* p = full; *p != '\0'; ++p) {
    if (*p == '\\' || *p == '/' || *p == ':') last = p + 1;
  }
  copyName(last, name, nameSize);
}

uint32_t systemColour(int32_t index) {
  return GetSysColor(index);
}

void readMonthNames(MonthNames* names) {
  SYSTEMTIME day = {};
  day.wYear = 1999;
  day.wDay = 1;
  for (WORD month = 0; month < 12; ++month) {
    day.wMonth = static_cast<WORD>(month + 1);
    char text[128];
    if (GetDateFormatA(LOCALE_USER_DEFAULT, 0, &day, "MMMM", text, sizeof text) > 0) {
      copyName(text, names->full[month], sizeof names->full[month]);
    }
    if (GetDateFormatA(LOCALE_USER_DEFAULT, 0, &day, "MMM", text, sizeof text) > 0) {
      copyName(text, names->abbreviated[month], sizeof names->abbreviated[month]);
    }
  }
}

int32_t dotsPerInch(void* deviceContext) {
  if (deviceContext == nullptr) return 96;
  const int dots = GetDeviceCaps(static_cast<HDC>(deviceContext), LOGPIXELSX);
  return dots > 0 ? dots : 96;
}

}  // namespace qx
