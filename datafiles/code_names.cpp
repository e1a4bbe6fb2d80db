#include "datafiles/code_names.h"

#include <cstddef>

namespace qx {
namespace {

// Indexed by the code.
constexpr const char* kFileTypes[] = {"Unknown",   "CSI",          "CompuTrac",
                                      "Dow Jones", "FutureSource", "TeleChart",
                                      "TechTools", "Text",         "AIQ"};
constexpr const char* kFrequencies[] = {"Unknown", "Intraday",  "Daily", "Weekly",
                                        "Monthly", "Quarterly", "Yearly"};
constexpr const char* kDataTypes[] = {"Unknown", "Bond",  "Commodity", "Mutual Fund",
                                      "Option",  "Stock", "Index"};
constexpr const char* kOptionTypes[] = {" ", "Call", "Put"};

template <size_t N>
const char* nameOf(const char* const (&names)[N], int32_t code) {
  return names[code >= 0 && static_cast<size_t>(code) < N ? code : 0];
}

}  // namespace

const char* fileTypeName(int32_t fileType) {
  return nameOf(kFileTypes, fileType);
}
const char* frequencyName(int32_t frequency) {
  return nameOf(kFrequencies, frequency);
}
const char* dataTypeName(int32_t dataType) {
  return nameOf(kDataTypes, dataType);
}
const char* optionTypeName(int32_t optionType) {
  return nameOf(kOptionTypes, optionType);
}

}  // namespace qx
