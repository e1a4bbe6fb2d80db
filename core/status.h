// The text of a status code, for the library's own messages.
#ifndef QUORVEX_CORE_STATUS_H
#define QUORVEX_CORE_STATUS_H

#include <cstdint>

namespace qx {

const char* statusText(int32_t code);

}  // namespace qx

#endif  // QUORVEX_CORE_STATUS_H
