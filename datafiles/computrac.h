// CompuTrac folders: the directory entry of an instrument and the bars of its data file.
#ifndef QUORVEX_DATAFILES_COMPUTRAC_H
#define QUORVEX_DATAFILES_COMPUTRAC_H

#include <array>
#include <cstdint>
#include <cstdio>

#include "quorvex.h"

namespace qx {

// The fields of a bar in record order: date, time, open, high, low, close, volume, open interest.
// For each its position in the data record, counted from 1, or 0 when it is absent.
inline constexpr int32_t kBarFields = 8;
using FieldMap = std::array<int32_t, kBarFields>;

// One entry of a directory file.
struct Instrument {
  int32_t fileNumber;
  char fileName[16];  // "F%i.DAT", or "F%i.MWD" for an entry of "xmaster"
  char symbol[17];
  char name[46];
  char period;         // D, I, W, M, Q or Y
  int32_t fieldCount;  // fields of a data record, 4 bytes each
  bool extended;       // of "xmaster"
  uint8_t fieldBits;   // extended entries: which fields the record has
  double beginDate;
  double endDate;
};

// An open directory file, "master" or "xmaster".
struct Directory {
  std::FILE* file;
  bool extended;
  int32_t left;    // entries that were not read yet
  int32_t status;  // QX_ERR_FILE_READ once reading failed
};

// False when the folder has no such directory or its header is no good; `status` tells whether
// reading it failed.
bool openDirectory(Directory* directory, const char* folder, bool extended);
// The next entry that is a data file, or false at the end.
bool nextInstrument(Directory* directory, Instrument* instrument);
void closeDirectory(Directory* directory);

// Finds an instrument by its file name, symbol or name, in "master" and then in "xmaster".
// QX_ERR_FILE_NOT_FOUND, or QX_ERR_FILE_READ when a directory could not be read.
int32_t findInstrument(const char* folder, const char* file, Instrument* instrument);

// The QX_FREQ_... of a period letter.
int32_t frequencyOf(char period);

// Where the fields of an instrument's records stand: as its field-description file says, else by
// the directory entry. QX_ERR_FILE_READ when neither gives a map.
int32_t findFieldMap(const char* folder, const Instrument& instrument, FieldMap* map);

}  // namespace qx

#endif  // QUORVEX_DATAFILES_COMPUTRAC_H
