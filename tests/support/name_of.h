// The names of exported functions, so that tables need not repeat them.
#ifndef QUORVEX_TESTS_SUPPORT_NAME_OF_H
#define QUORVEX_TESTS_SUPPORT_NAME_OF_H

#include <string>
#include <string_view>

namespace qxtest {

// The name as the compiler writes it behind "kExported = ", without its namespaces.
template <auto kExported>
std::string nameOf() {
  const std::string_view text = __PRETTY_FUNCTION__;
  const size_t end = text.find_first_of(";]", text.find("kExported = "));
  const size_t from = text.find_last_of(" &:", end) + 1;
  return std::string(text.substr(from, end - from));
}

}  // namespace qxtest

#endif  // QUORVEX_TESTS_SUPPORT_NAME_OF_H
