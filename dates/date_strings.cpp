// Dates and times read from text, in one of three orders or in compact form.
#include "dates/date_strings.h"

#include <algorithm>
#include <array>

#include "core/ascii.h"
#include "core/numeric.h"
#include "dates/calendar.h"
#include "quorvex.h"

namespace qx {
namespace {

struct DateTimeParts {
  int32_t year, month, day, hour, minute, second;
};

constexpr size_t kFieldCount = 8;
constexpr size_t kFieldSize = 8;

enum CharacterClass : uint8_t { kSeparator, kLetter, kDigit };

constexpr std::array<CharacterClass, 256> kClasses = [] {
  std::array<CharacterClass, 256> classes{};
  for (size_t c = '0'; c <= '9'; ++c) classes[c] = kDigit;
  for (size_t c = 'A'; c <= 'Z'; ++c) classes[c] = classes[c - 'A' + 'a'] = kLetter;
  return classes;
}();

CharacterClass classOf(char c) {
  return kClasses[static_cast<unsigned char>(c)];
}

// The fields of a date text: slots 0 to 2 are the date in its order, 3 to 5 hour, minute, second.
struct Fields {
  std::array<std::string_view, kFieldCount> slots;
  size_t count;
};

// A field runs over characters of one class. The first character always belongs to field 0, so a
// leading separator leaves that field empty.
Fields split(std::string_view text) {
  Fields fields = {};
  fields.count = 1;
  size_t i = 0;
  while (i < text.size()) {
    const CharacterClass kind = classOf(text[i]);
    size_t end = i + 1;
    while (end < text.size() && classOf(text[end]) == kind) ++end;
    if (kind != kSeparator) {
      if (i > 0 && ++fields.count > kFieldCount) {
        fields.count = kFieldCount;
        break;
      }
      fields.slots[fields.count - 1] = text.substr(i, std::min(end - i, kFieldSize));
    }
    i = end;
  }
  return fields;
}

// Up to `length` characters from `from` on, empty beyond the end.
std::string_view part(std::string_view text, size_t from, size_t length) {
  return from < text.size() ? text.substr(from, length) : std::string_view();
}

// One or two fields are a compact date, and a compact time in the second.
void splitCompactForms(Fields& fields, int32_t order) {
  const std::string_view date = fields.slots[0];
  const std::string_view time = fields.slots[1];
  if (fields.count == 2) {
    for (size_t i = 0; i < 3; ++i) fields.slots[3 + i] = part(time, 2 * i, 2);
  }
  const size_t first = date.size() < 7 || order != QX_ORDER_YMD ? 2 : 4;
  fields.slots[0] = part(date, 0, first);
  fields.slots[1] = part(date, first, 2);
  fields.slots[2] = part(date, first + 2, 4);
  fields.count = fields.count == 2 ? 6 : 3;
}

// The leading digits of a field; none give 0.
int32_t number(std::string_view field) {
  int32_t value = 0;
  for (const char c : field) {
    if (!isDigit(c)) break;
    value = value * 10 + (c - '0');
  }
  return value;
}

int32_t monthByName(std::string_view field) {
  constexpr char kMonths[] = "JANFEBMARAPRMAYJUNJULAUGSEPOCTNOVDEC";
  if (field.size() < 3) return 0;
  for (int32_t month = 1; month <= 12; ++month) {
    if (equalIgnoringCase(field.data(), kMonths + 3 * (month - 1), 3)) return month;
  }
  return 0;
}

bool startsWithP(std::string_view field) {
  return !field.empty() && toUpper(field[0]) == 'P';
}

// Reads the form that most files hold, ten characters such as 1999/03/15 or 15.03.1999, as the
// fields would give it. False for any other form.
bool parsePlainDate(std::string_view text, int32_t order, DateTimeParts* parts) {
  struct Places {
    uint8_t year, month, day, separators[2];
  };
  constexpr Places kPlaces[] = {{0, 5, 8, {4, 7}}, {6, 0, 3, {2, 5}}, {6, 3, 0, {2, 5}}};
  if (text.size() != 10) return false;
  const Places& at = kPlaces[order];
  for (const uint8_t place : at.separators) {
    if (classOf(text[place]) != kSeparator) return false;
  }
  unsigned highest = 0;
  const auto digit = [&](unsigned place) {
    const unsigned value = static_cast<unsigned char>(text[place]) - unsigned{'0'};
    highest = std::max(highest, value);
    return static_cast<int32_t>(value);
  };
  const auto twoDigits = [&](unsigned place) { return digit(place) * 10 + digit(place + 1); };
  const int32_t year = twoDigits(at.year) * 100 + twoDigits(at.year + 2u);
  *parts = {saturateToInt32(expandYear(year)), twoDigits(at.month), twoDigits(at.day), 0, 0, 0};
  return highest <= 9;
}

void parseDate(std::string_view text, int32_t order, DateTimeParts* parts) {
  struct Slots {
    uint8_t year, month, day;
  };
  constexpr Slots kSlots[] = {{0, 1, 2}, {2, 0, 1}, {2, 1, 0}};  // by date order
  if (order < QX_ORDER_YMD || order > QX_ORDER_DMY) order = QX_ORDER_YMD;
  if (parsePlainDate(text, order, parts)) return;

  Fields fields = split(text);
  if (fields.count <= 2) splitCompactForms(fields, order);
  const Slots slots = kSlots[order];
  parts->year = saturateToInt32(expandYear(number(fields.slots[slots.year])));
  parts->month = number(fields.slots[slots.month]);
  if (parts->month == 0) parts->month = monthByName(fields.slots[slots.month]);
  parts->day = number(fields.slots[slots.day]);
  // Slots that were not filled are empty and read as 0.
  parts->hour = number(fields.slots[3]);
  parts->minute = number(fields.slots[4]);
  parts->second = number(fields.slots[5]);
  // A morning marker changes nothing. Kept: 12:30 AM stays 12:30.
  if (fields.count >= 4 && startsWithP(fields.slots[fields.count - 1]) && parts->hour < 12) {
    parts->hour += 12;
  }
}

// A number ends at two digits or at a separator; a separator that follows another one ends an empty
// number, which is 0.
void parseTime(std::string_view text, DateTimeParts* parts) {
  int32_t numbers[3] = {};
  size_t index = 0;
  int digits = 0;
  bool started = false;
  for (const char c : text) {
    started = started || isDigit(c);
    if (!started) continue;
    if (!isDigit(c) || digits == 2) {
      digits = 0;
      if (++index == 3) break;
    }
    if (isDigit(c)) {
      numbers[index] = numbers[index] * 10 + (c - '0');
      ++digits;
    }
  }
  const bool afternoon = text.find_first_of("Pp") != std::string_view::npos;
  if (afternoon && numbers[0] < 12) numbers[0] += 12;
  *parts = {0, 0, 0, numbers[0], numbers[1], numbers[2]};
}

// 0.0 when the parts are not valid.
double dateNumber(const DateTimeParts& p) {
  return qxYMDtoDate(p.year, p.month, p.day, p.hour, p.minute, p.second);
}

int32_t validity(const DateTimeParts& p) {
  return qxDateValidate(p.year, p.month, p.day, p.hour, p.minute, p.second);
}

void store(int32_t* target, int32_t value) {
  if (target != nullptr) *target = value;
}

}  // namespace

double dateFromText(std::string_view text, int32_t order) {
  DateTimeParts parts;
  parseDate(text, order, &parts);
  return dateNumber(parts);
}

double timeFromText(std::string_view text) {
  DateTimeParts parts;
  parseTime(text, &parts);
  return dateNumber(parts);
}

}  // namespace qx

int32_t qxDateStrToYMD(const char* text, int32_t order, int32_t* year, int32_t* month, int32_t* day,
                       int32_t* hour, int32_t* minute, int32_t* second) {
  if (text == nullptr) return 0;
  qx::DateTimeParts parts;
  qx::parseDate(text, order, &parts);
  qx::store(year, parts.year);
  qx::store(month, parts.month);
  qx::store(day, parts.day);
  qx::store(hour, parts.hour);
  qx::store(minute, parts.minute);
  qx::store(second, parts.second);
  return qx::validity(parts);
}

int32_t qxDateStrValidate(const char* text, int32_t order) {
  return qxDateStrToYMD(text, order, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
}

double qxDateStrToDate(const char* text, int32_t order) {
  return text == nullptr ? 0.0 : qx::dateFromText(text, order);
}

int32_t qxTimeStrToHMS(const char* text, int32_t* hour, int32_t* minute, int32_t* second) {
  if (text == nullptr) return 0;
  qx::DateTimeParts parts;
  qx::parseTime(text, &parts);
  qx::store(hour, parts.hour);
  qx::store(minute, parts.minute);
  qx::store(second, parts.second);
  return qx::validity(parts);
}

double qxTimeStrToTime(const char* text) {
  return text == nullptr ? 0.0 : qx::timeFromText(text);
}
