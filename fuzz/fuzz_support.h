// What the fuzzers share: taking an input apart, files with given bytes, a check that ends the run.
#ifndef QUORVEX_FUZZ_FUZZ_SUPPORT_H
#define QUORVEX_FUZZ_FUZZ_SUPPORT_H

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "quorvex.h"

namespace qxfuzz {

// An input, taken apart from the front. Past its end every byte is 0 and every text empty.
struct Input {
  const uint8_t* data;
  size_t size;
};

inline uint8_t takeByte(Input* input) {
  if (input->size == 0) return 0;
  --input->size;
  return *input->data++;
}

inline int8_t takeSigned(Input* input) {
  return static_cast<int8_t>(takeByte(input));
}

inline size_t takeLength(Input* input) {
  const size_t low = takeByte(input);
  return low + 256u * takeByte(input);
}

inline std::string takeBytes(Input* input, size_t length) {
  length = std::min(length, input->size);
  std::string bytes(reinterpret_cast<const char*>(input->data), length);
  input->data += length;
  input->size -= length;
  return bytes;
}

// The bytes before the next newline, which is dropped.
inline std::string takeLine(Input* input) {
  size_t length = 0;
  while (length < input->size && input->data[length] != '\n') ++length;
  std::string line = takeBytes(input, length);
  takeByte(input);
  return line;
}

inline std::string takeRest(Input* input) {
  return takeBytes(input, input->size);
}

// Ends the run, so that the input is kept as a finding.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

// The folder of this process's files, below the folder for temporary files.
inline const std::string& scratchFolder() {
  static const std::string folder = [] {
    std::string path = (std::filesystem::temp_directory_path() / "quorvex-fuzz-XXXXXX").string();
    require(mkdtemp(path.data()) != nullptr, "a temporary folder can be made");
    return path;
  }();
  return folder;
}

inline std::string scratchFile(const char* name) {
  return scratchFolder() + "/" + name;
}

// Creates or replaces a file of the folder and returns its path.
inline std::string writeScratch(const char* name, const std::string& bytes) {
  const std::string path = scratchFile(name);
  std::FILE* file = std::fopen(path.c_str(), "wb");
  require(file != nullptr, "a temporary file can be made");
  const bool whole = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  require(std::fclose(file) == 0 && whole, "a temporary file can be written");
  return path;
}

// What holds for a record whatever was read into it.
inline void requireSound(const qxArray& array) {
  require(array.size >= 0 && array.size <= array.datasize, "size within capacity");
  require(array.datasize == 0 || array.data != nullptr, "capacity has storage");
  volatile double sum = 0.0;
  for (int32_t i = 0; i < array.size; ++i) sum = sum + array.data[i];
}

inline void requireSound(const qxBars& bars) {
  for (const qxArray* series :
       {&bars.date, &bars.open, &bars.high, &bars.low, &bars.close, &bars.volume, &bars.openint}) {
    requireSound(*series);
    require(series->size == bars.barsize, "all series have the set's size");
  }
}

}  // namespace qxfuzz

#endif  // QUORVEX_FUZZ_FUZZ_SUPPORT_H
