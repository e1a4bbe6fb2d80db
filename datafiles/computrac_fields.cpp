// Which field of a CompuTrac data record holds what.
#include <cstring>

#include "core/ascii.h"
#include "core/line_reader.h"
#include "datafiles/computrac.h"
#include "datafiles/paths.h"

namespace qx {
namespace {

struct TableRow {
  int32_t fieldCount;
  FieldMap map;
};

constexpr TableRow kDailyRows[] = {{5, {1, 0, 0, 2, 3, 4, 5, 0}},
                                   {6, {1, 0, 2, 3, 4, 5, 6, 0}},
                                   {7, {1, 0, 2, 3, 4, 5, 6, 7}},
                                   // The eighth field of a daily record is not read.
                                   {8, {1, 0, 2, 3, 4, 5, 6, 7}}};
constexpr TableRow kIntradayRows[] = {{4, {1, 2, 0, 0, 0, 3, 4, 0}},
                                      {5, {1, 2, 0, 0, 0, 3, 4, 5}},
                                      {6, {1, 2, 0, 3, 4, 5, 6, 0}},
                                      {7, {1, 2, 3, 4, 5, 6, 7, 0}},
                                      {8, {1, 2, 3, 4, 5, 6, 7, 8}}};

template <size_t N>
bool findRow(const TableRow (&rows)[N], int32_t fieldCount, FieldMap* map) {
  for (const TableRow& row : rows) {
    if (row.fieldCount != fieldCount) continue;
    *map = row.map;
    return true;
  }
  return false;
}

// The fields of an extended entry, by the bits of its set, stand in the order of the map.
bool mapFromBits(uint8_t bits, FieldMap* map) {
  constexpr uint8_t kBits[kBarFields] = {0x01, 0x80, 0x20, 0x02, 0x04, 0x08, 0x10, 0x40};
  int32_t position = 0;
  for (size_t field = 0; field < kBarFields; ++field) {
    (*map)[field] = (bits & kBits[field]) != 0 ? ++position : 0;
  }
  return position > 0;
}

struct FieldName {
  const char* text;
  int32_t field;
};

constexpr FieldName kFieldNames[] = {
    {"DATE", 0},          {"TIME", 1},     {"OPEN", 2},   {"HIGH", 3}, {"LOW", 4},
    {"CLOSE", 5},         {"VOL", 6},      {"VOLUME", 6}, {"OI", 7},   {"OPENINT", 7},
    {"OPEN INTEREST", 7}, {"OPEN INT", 7}, {"O.I.", 7}};
constexpr int32_t kUnknownField = -1;

// The field that the first quoted text of a line names.
int32_t namedField(std::string_view line) {
  const size_t open = line.find('"');
  if (open == std::string_view::npos) return kUnknownField;
  std::string_view text = line.substr(open + 1);
  text = text.substr(0, text.find('"'));
  while (!text.empty() && isWhiteSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isWhiteSpace(text.back())) text.remove_suffix(1);
  for (const FieldName& name : kFieldNames) {
    if (std::strlen(name.text) == text.size() &&
        equalIgnoringCase(name.text, text.data(), text.size())) {
      return name.field;
    }
  }
  return kUnknownField;
}

bool isEmpty(std::string_view line) {
  for (const char c : line) {
    if (!isWhiteSpace(c)) return false;
  }
  return true;
}

// Reads a field-description file: a line for each field of the record, its name in quotes first.
// False unless it names the date and the close and no more fields than a bar has.
bool readDescription(LineReader* reader, FieldMap* map) {
  FieldMap described = {};
  int32_t position = 0;
  int32_t named = 0;
  Line line;
  while (readLine(reader, &line)) {
    if (isEmpty(line.text)) continue;
    ++position;
    const int32_t field = namedField(line.text);
    if (field == kUnknownField) continue;
    ++named;
    int32_t& place = described[static_cast<size_t>(field)];
    if (place == 0) place = position;
  }
  const bool usable =
      reader->status == QX_SUCCESS && described[0] != 0 && described[5] != 0 && named <= kBarFields;
  if (usable) *map = described;
  return usable;
}

bool mapFromDescription(const char* folder, int32_t fileNumber, FieldMap* map) {
  char name[16];
  std::snprintf(name, sizeof name, "F%i.DOP", fileNumber);
  Path path;
  if (!locateInFolder(folder, name, path)) return false;
  LineReader reader;
  if (openLines(&reader, path, kDataLineLength) != QX_SUCCESS) return false;
  const bool usable = readDescription(&reader, map);
  closeLines(&reader);
  return usable;
}

}  // namespace

int32_t findFieldMap(const char* folder, const Instrument& instrument, FieldMap* map) {
  const int32_t count = instrument.fieldCount;
  if (count < 1) return QX_ERR_FILE_READ;
  bool found = mapFromDescription(folder, instrument.fileNumber, map);
  if (!found && instrument.extended) found = mapFromBits(instrument.fieldBits, map);
  if (!found && !instrument.extended) {
    found = instrument.period == 'I' ? findRow(kIntradayRows, count, map)
                                     : findRow(kDailyRows, count, map);
  }
  if (!found) return QX_ERR_FILE_READ;
  for (int32_t& position : *map) {
    if (position > count) position = 0;  // beyond the record
  }
  return QX_SUCCESS;
}

}  // namespace qx
