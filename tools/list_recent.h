#pragma once

// The tool list_recent, as a function from its arguments to its text.

#include <cstdint>
#include <optional>
#include <string>

namespace halvane {

/// The entries of the last `days` calendar days (1 or more) and of the future, newest first; with a canonical
/// `tag`, only those with that tag. Two lines for each entry: date, tags and first line, then the path. One
/// line that says so when there are none. UTF-8, without a line feed at the end.
std::string listRecent(std::int64_t days, const std::optional<std::string>& tag);

}  // namespace halvane
