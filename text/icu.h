#pragma once

// What every use of ICU has in common: how its failures are taken.

#include <unicode/utypes.h>

#include <new>

namespace halvane {

/// Throws std::bad_alloc when `status` is a failure. ICU's data is linked in and its arguments are valid, so
/// memory is all that a call can lack.
inline void check(UErrorCode status) {
  if (U_FAILURE(status)) throw std::bad_alloc();
}

}  // namespace halvane
