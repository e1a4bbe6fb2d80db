// Folder and file names, as every data-file operation takes them.
#ifndef QUORVEX_DATAFILES_PATHS_H
#define QUORVEX_DATAFILES_PATHS_H

#include <cstddef>
#include <cstdio>

namespace qx {

inline constexpr size_t kPathSize = 256;  // the joined path with its terminator
using Path = char[kPathSize];

// Joins a folder and a file name: white space around both is dropped, a backslash stands between
// them, and what does not fit is cut. An empty file name leaves the folder with its backslash.
void joinPath(const char* folder, const char* file, Path& path);

// Opens a file of a folder for binary reading, by its name as given or else in any letter case.
// Null when there is none.
std::FILE* openInFolder(const char* folder, const char* file);

// The joined path of a file as openInFolder finds it; false when there is none.
bool locateInFolder(const char* folder, const char* file, Path& path);

// True when the folder holds a file whose name matches the pattern, in any letter case.
bool isInFolder(const char* folder, const char* pattern);

// Copies a text, cut to the target, and clears the rest of it.
void copyText(const char* source, size_t length, char* target, size_t targetSize);

}  // namespace qx

#endif  // QUORVEX_DATAFILES_PATHS_H
