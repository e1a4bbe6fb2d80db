// The printed names of a bar set's codes.
#ifndef QUORVEX_DATAFILES_CODE_NAMES_H
#define QUORVEX_DATAFILES_CODE_NAMES_H

#include <cstdint>

namespace qx {

// Each gives "Unknown" for a code outside its table; an option type outside is a blank.
const char* fileTypeName(int32_t fileType);
const char* frequencyName(int32_t frequency);
const char* dataTypeName(int32_t dataType);
const char* optionTypeName(int32_t optionType);

}  // namespace qx

#endif  // QUORVEX_DATAFILES_CODE_NAMES_H
