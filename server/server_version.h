#pragma once

// The version of the server.

namespace halvane {

/// The server's version, as "initialize" returns it.
inline constexpr const char* serverVersion = "1.0.0";

}  // namespace halvane
