#pragma once

// The system's setting for the user's locale, whether the locale is known or not.

#include <string>

namespace halvane {

/// The identifier of the locale that is set now for dates, in ICU's spelling if it is well formed. Empty when
/// none is set, and for C and POSIX. It may contain any bytes.
std::string localeSetting();

}  // namespace halvane
