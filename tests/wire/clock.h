#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace halvane {

/// The variables for a server's environment that stop its real clock at `seconds` since 1970. Throws where
/// nobody can do that, as on a Mac.
std::vector<std::string> clockAt(std::int64_t seconds);

/// The seconds since 1970 of `moment`, such as 2025-11-10T10:00:00Z.
std::int64_t secondsOf(std::string_view moment);

/// The moment `seconds` after the start of 1970, such as 2025-11-10T10:00:00Z.
std::string momentOf(std::int64_t seconds);

}  // namespace halvane
