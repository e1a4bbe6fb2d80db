// Character tests and comparisons on ASCII, whatever the C locale says.
#ifndef QUORVEX_CORE_ASCII_H
#define QUORVEX_CORE_ASCII_H

#include <cstddef>

namespace qx {

inline bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
inline char toUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
inline bool isLetter(char c) {
  return toUpper(c) >= 'A' && toUpper(c) <= 'Z';
}

// Blank, tab, newline, vertical tab, form feed and carriage return.
inline bool isWhiteSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

inline bool equalIgnoringCase(const char* a, const char* b) {
  for (; toUpper(*a) == toUpper(*b); ++a, ++b) {
    if (*a == '\0') return true;
  }
  return false;
}

// As above, over the first `count` characters at most.
inline bool equalIgnoringCase(const char* a, const char* b, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    if (toUpper(a[i]) != toUpper(b[i])) return false;
    if (a[i] == '\0') return true;
  }
  return true;
}

}  // namespace qx

#endif  // QUORVEX_CORE_ASCII_H
