#pragma once

// The tool list_recent, as a function from its arguments to its text.

#include <cstdint>
#include <optional>
#include <string>

namespace halvane {

/// The entries of the last `days` calendar days (1 or more), newest first, later ones than now included, and
/// of these only those tagged `tag` (canonical) when there is one. Two lines an entry: date, tags and first
/// line, then the path. One line that says so when there are none. UTF-8, without a line feed at the end.
std::string listRecent(std::int64_t days, const std::optional<std::string>& tag);

}  // namespace halvane
