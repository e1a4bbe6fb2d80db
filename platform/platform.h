// What the operating system gives, behind one header with a source for each system.
#ifndef QUORVEX_PLATFORM_PLATFORM_H
#define QUORVEX_PLATFORM_PLATFORM_H

#include <cstdint>
#include <cstdio>

namespace qx {

// Opens a file with the C library's modes. A backslash separates folders on every system. A folder
// is not a file: null.
std::FILE* openFile(const char* path, const char* mode);

// Moves to a byte of an open file, beyond 2 GiB too. False when that is impossible.
bool seekFile(std::FILE* file, int64_t position);

// The bytes of an open file, whose position moves to its end. False when that is impossible.
bool fileSize(std::FILE* file, int64_t* size);

// Shows a modal error box and returns its answer; without windows, a line on standard error and 1.
int32_t showErrorMessage(const char* message);

// One file of a folder listing.
struct ListedFile {
  char name[260];       // long name
  char shortName[260];  // 8.3 name, or the long name where there is none
  double modified;      // date number of the last modification, local time
};

// Takes one listed file; returns whether to go on.
using ListedFileVisitor = bool (*)(void* context, const ListedFile& file);

// Visits the files (no folders) of a folder whose names match a pattern of literal characters, "*"
// and "?", compared without regard to case. A folder that cannot be listed has no files.
void visitFiles(const char* folder, const char* pattern, ListedFileVisitor visit, void* context);

// The 8.3 name of an existing file without its folder, or its plain name where there is none.
void shortFileName(const char* path, char* name, uint64_t nameSize);

// A system colour (0x00BBGGRR) by its Windows index; without windows the classic one.
uint32_t systemColour(int32_t index);

// The months in words, full and cut to three characters.
struct MonthNames {
  char full[12][32];
  char abbreviated[12][4];
};

// Reads the month names of the user's locale; without locales the names are left alone.
void readMonthNames(MonthNames* names);

// Horizontal dots per inch of a device context, 96 for null and where there are none.
int32_t dotsPerInch(void* deviceContext);

}  // namespace qx

#endif  // QUORVEX_PLATFORM_PLATFORM_H
