// Lines cut into fields at runs of delimiters.
#ifndef QUORVEX_CORE_TEXT_FIELDS_H
#define QUORVEX_CORE_TEXT_FIELDS_H

#include <array>
#include <cstdint>
#include <string_view>

namespace qx {

// Which of the 256 characters separate fields.
using Delimiters = std::array<bool, 256>;

inline Delimiters delimitersFrom(std::string_view characters) {
  Delimiters delimiters = {};
  for (const char c : characters) delimiters[static_cast<unsigned char>(c)] = true;
  return delimiters;
}

// The text without the blanks in front of it.
inline std::string_view stripLeadingBlanks(std::string_view text) {
  size_t blanks = 0;
  while (blanks < text.size() && text[blanks] == ' ') ++blanks;
  return text.substr(blanks);
}

inline std::string_view trimBlanks(std::string_view text) {
  std::string_view trimmed = stripLeadingBlanks(text);
  while (!trimmed.empty() && trimmed.back() == ' ') trimmed.remove_suffix(1);
  return trimmed;
}

// Takes the next field off the front of `rest`; false when none is left. Fields are never empty: a
// run of delimiters separates once.
inline bool takeField(const Delimiters& delimiters, std::string_view* rest,
                      std::string_view* field) {
  const char* at = rest->data();
  const char* const end = at + rest->size();
  while (at != end && delimiters[static_cast<unsigned char>(*at)]) ++at;
  const char* const first = at;
  while (at != end && !delimiters[static_cast<unsigned char>(*at)]) ++at;
  *field = std::string_view(first, static_cast<size_t>(at - first));
  *rest = std::string_view(at, static_cast<size_t>(end - at));
  return first != at;
}

// Field number `number`, counted from 1, of a text; false when there is no such field.
inline bool findField(const Delimiters& delimiters, std::string_view text, int32_t number,
                      std::string_view* field) {
  if (number < 1) return false;
  while (takeField(delimiters, &text, field)) {
    if (--number == 0) return true;
  }
  return false;
}

}  // namespace qx

#endif  // QUORVEX_CORE_TEXT_FIELDS_H
