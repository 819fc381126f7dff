#pragma once

#include <string>
#include <string_view>

#include "bench/child.h"

namespace halvane {

// The lines that a client sends, each with its line feed. Queries and tags must need no escapes in JSON.

inline constexpr std::string_view initializeLine =
    R"({"jsonrpc":"2.0","id":1,"method":"initialize","params":{"protocolVersion":"2025-06-18"}}
)";
inline constexpr std::string_view pingLine = R"({"jsonrpc":"2.0","id":1,"method":"ping"}
)";

std::string searchLine(std::string_view query);
std::string tagLine(std::string_view tag);
std::string recentLine(int days);

/// Sends `line` and waits for the answer, which is valid until the next one.
std::string_view ask(Child& child, std::string_view line);

/// The seconds until the answer to `line`.
double secondsToAnswer(Child& child, std::string_view line);

}  // namespace halvane
