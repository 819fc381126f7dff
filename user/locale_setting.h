#pragma once

// What each system keeps as the user's locale, before anybody asks whether it is known.

#include <string>

namespace halvane {

/// The identifier of the locale that is set at this moment, by which dates are written: as ICU would write it
/// where it is well formed. Empty when none is set, and for C and POSIX. It may hold any bytes.
std::string localeSetting();

}  // namespace halvane
