#pragma once

// Which version of the server this is.

namespace halvane {

/// The server's own version, as "initialize" tells it.
inline constexpr const char* serverVersion = "1.0.0";

}  // namespace halvane
