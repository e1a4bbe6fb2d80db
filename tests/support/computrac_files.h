// The files of a CompuTrac folder, made byte by byte.
#ifndef QUORVEX_TESTS_SUPPORT_COMPUTRAC_FILES_H
#define QUORVEX_TESTS_SUPPORT_COMPUTRAC_FILES_H

#include <cstdint>
#include <string>
#include <vector>

#include "quorvex.h"

namespace qxtest {

inline std::string mbf(float value) {
  std::string bytes(4, '\0');
  qxIEEEtoMS(&value, bytes.data());
  return bytes;
}

inline std::string little(uint32_t value, size_t width) {
  std::string bytes;
  for (size_t i = 0; i < width; ++i) bytes += static_cast<char>(value >> (8 * i));
  return bytes;
}

inline void put(std::string& record, size_t offset, const std::string& bytes) {
  record.replace(offset, bytes.size(), bytes);
}

// An entry of "master".
struct Entry {
  int number;
  int fields;
  std::string name, symbol;
  char period;
};

inline std::string masterEntry(const Entry& e) {
  std::string record(53, '\0');
  record[0] = static_cast<char>(e.number);
  record[4] = static_cast<char>(e.fields);
  put(record, 7, std::string(16, ' '));
  put(record, 7, e.name);
  put(record, 25, mbf(990104));
  put(record, 29, mbf(1000107));  // 7 January 2000
  record[33] = e.period;
  put(record, 36, std::string(16, ' '));
  put(record, 36, e.symbol);
  return record;
}

inline std::string master(const std::vector<Entry>& entries) {
  std::string bytes = little(static_cast<uint32_t>(entries.size()), 2) + std::string(51, '\0');
  for (const Entry& e : entries) bytes += masterEntry(e);
  return bytes;
}

// A data file whose field f of bar k is `firstDate + k` for the date and 10 f + k for the others.
inline std::string dataFile(int fields, int bars, float firstDate, int storedCount) {
  std::string bytes(4 * static_cast<size_t>(fields), '\0');
  put(bytes, 2, little(static_cast<uint32_t>(storedCount), 2));
  for (int k = 0; k < bars; ++k) {
    for (int f = 1; f <= fields; ++f) {
      bytes += mbf(f == 1 ? firstDate + static_cast<float>(k) : static_cast<float>(10 * f + k));
    }
  }
  return bytes;
}

// An "xmaster" of one intraday instrument, symbol BIG; `fields` is the set of its field bits.
inline std::string extendedMaster(uint32_t number, int fields) {
  std::string header(150, '\0');
  put(header, 0, std::string("\x5D\xFEXM", 4));
  put(header, 10, little(1, 2));
  std::string entry(150, '\0');
  entry[0] = 1;
  put(entry, 1, std::string("BIG\0junk", 8));
  put(entry, 16, "A long instrument name");
  entry[62] = 'I';
  put(entry, 65, little(number, 2));
  entry[70] = static_cast<char>(fields);
  put(entry, 108, little(19990104, 4));
  put(entry, 116, little(20000107, 4));
  return header + entry;
}

}  // namespace qxtest

#endif  // QUORVEX_TESTS_SUPPORT_COMPUTRAC_FILES_H
