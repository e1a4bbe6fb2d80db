// The directory files of a CompuTrac folder: "master" with 53-byte entries, and "xmaster" with
// 150-byte entries for the file numbers that do not fit the first.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/ascii.h"
#include "core/binary_numbers.h"
#include "datafiles/computrac.h"
#include "datafiles/paths.h"

namespace qx {
namespace {

constexpr size_t kMasterEntry = 53;
constexpr size_t kExtendedEntry = 150;
constexpr unsigned char kExtendedMagic[] = {0x5D, 0xFE, 'X', 'M'};

// Copies a fixed field as text: cut at the first zero byte, without surrounding blanks.
template <size_t N>
void copyField(const unsigned char* field, size_t length, char (&target)[N]) {
  const char* text = reinterpret_cast<const char*>(field);
  const void* zero = std::memchr(text, 0, length);
  if (zero != nullptr) length = static_cast<size_t>(static_cast<const char*>(zero) - text);
  while (length > 0 && text[length - 1] == ' ') --length;
  while (length > 0 && *text == ' ') ++text, --length;
  copyText(text, length, target, N);
}

double dateFromDigits(uint32_t yyyymmdd) {
  const auto number = static_cast<int32_t>(std::min<uint32_t>(yyyymmdd, INT32_MAX));
  return qxYMDtoDate(number / 10000, number / 100 % 100, number % 100, 0, 0, 0);
}

void readMasterEntry(const unsigned char* entry, Instrument* instrument) {
  *instrument = {};
  instrument->fileNumber = entry[0];
  instrument->fieldCount = entry[4];
  instrument->period = static_cast<char>(entry[33]);
  copyField(entry + 7, 16, instrument->name);
  copyField(entry + 36, 16, instrument->symbol);
  instrument->beginDate = qxNumToDate(wholeMbf(entry + 25));
  instrument->endDate = qxNumToDate(wholeMbf(entry + 29));
  std::snprintf(instrument->fileName, sizeof instrument->fileName, "F%i.DAT",
                instrument->fileNumber);
}

void readExtendedEntry(const unsigned char* entry, Instrument* instrument) {
  *instrument = {};
  instrument->extended = true;
  instrument->fileNumber = unsigned16(entry + 65);
  instrument->fieldBits = entry[70];
  instrument->fieldCount = std::popcount(instrument->fieldBits);
  instrument->period = static_cast<char>(entry[62]);
  copyField(entry + 16, 45, instrument->name);
  copyField(entry + 1, 14, instrument->symbol);
  instrument->beginDate = dateFromDigits(unsigned32(entry + 108));
  instrument->endDate = dateFromDigits(unsigned32(entry + 116));
  std::snprintf(instrument->fileName, sizeof instrument->fileName, "F%i.MWD",
                instrument->fileNumber);
}

// True when a requested name means the instrument.
bool isNamed(const Instrument& instrument, const char* wanted) {
  const char* const symbol = instrument.symbol;
  const size_t symbolLength = std::strlen(symbol);
  if (equalIgnoringCase(instrument.fileName, wanted)) return true;
  if (equalIgnoringCase(symbol, wanted)) return true;
  const size_t length = std::strlen(wanted);
  if (length == symbolLength + 2 && wanted[symbolLength] == '@' &&
      toUpper(wanted[symbolLength + 1]) == toUpper(instrument.period) &&
      equalIgnoringCase(symbol, wanted, symbolLength)) {
    return true;
  }
  const char* const blank = std::strchr(symbol, ' ');
  if (blank != nullptr && length == static_cast<size_t>(blank - symbol) &&
      equalIgnoringCase(symbol, wanted, length)) {
    return true;
  }
  return equalIgnoringCase(instrument.name, wanted);
}

}  // namespace

bool openDirectory(Directory* directory, const char* folder, bool extended) {
  *directory = {openInFolder(folder, extended ? "xmaster" : "master"), extended, 0, QX_SUCCESS};
  if (directory->file == nullptr) return false;
  unsigned char header[kExtendedEntry];
  const size_t size = extended ? kExtendedEntry : kMasterEntry;
  bool good = std::fread(header, 1, size, directory->file) == size;
  if (good && extended) {
    good = std::memcmp(header, kExtendedMagic, sizeof kExtendedMagic) == 0;
    directory->left = unsigned16(header + 10);
  } else if (good) {
    directory->left = signed16(header);
  }
  if (!good && std::ferror(directory->file) != 0) directory->status = QX_ERR_FILE_READ;
  if (!good) closeDirectory(directory);
  return good;
}

bool nextInstrument(Directory* directory, Instrument* instrument) {
  unsigned char entry[kExtendedEntry];
  const size_t size = directory->extended ? kExtendedEntry : kMasterEntry;
  while (directory->left > 0) {
    --directory->left;
    if (std::fread(entry, 1, size, directory->file) != size) {
      if (std::ferror(directory->file) != 0) directory->status = QX_ERR_FILE_READ;
      directory->left = 0;
      break;
    }
    if (directory->extended) {
      readExtendedEntry(entry, instrument);
      return true;
    }
    if (std::memcmp(entry + 18, "<DIR>", 5) == 0) continue;
    readMasterEntry(entry, instrument);
    return true;
  }
  return false;
}

void closeDirectory(Directory* directory) {
  if (directory->file != nullptr) std::fclose(directory->file);
  directory->file = nullptr;
}

int32_t findInstrument(const char* folder, const char* file, Instrument* instrument) {
  for (const bool extended : {false, true}) {
    Directory directory;
    bool found = false;
    if (openDirectory(&directory, folder, extended)) {
      while (!found && nextInstrument(&directory, instrument)) found = isNamed(*instrument, file);
      closeDirectory(&directory);
    }
    if (found) return QX_SUCCESS;
    if (directory.status != QX_SUCCESS) return directory.status;
  }
  return QX_ERR_FILE_NOT_FOUND;
}

int32_t frequencyOf(char period) {
  switch (period) {
    case 'D':
      return QX_FREQ_DAILY;
    case 'I':
      return QX_FREQ_INTRADAY;
    case 'W':
      return QX_FREQ_WEEKLY;
    case 'M':
      return QX_FREQ_MONTHLY;
    case 'Q':
      return QX_FREQ_QUARTERLY;
    case 'Y':
      return QX_FREQ_YEARLY;
    default:
      return QX_FREQ_UNKNOWN;
  }
}

}  // namespace qx
