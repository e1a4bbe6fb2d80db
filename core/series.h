// Facts about series records that several sources of the library need.
#ifndef QUORVEX_CORE_SERIES_H
#define QUORVEX_CORE_SERIES_H

#include <cstdint>

#include "quorvex.h"

namespace qx {

// The most elements that an allocation asks for; a larger size is cut to it.
inline constexpr int32_t kMaxElements = 1 << 30;

}  // namespace qx

#endif  // QUORVEX_CORE_SERIES_H
