#pragma once

// The tool search_entries, as a function from its arguments to its text.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace halvane {

/// The newest entries, at most `limit` (1 or more), whose bodies contain `query` (UTF-8, taken as it is)
/// without regard to letter case, and of these only those tagged `tag` (canonical) when there is one; the
/// empty query is in every body. Two lines an entry: date, tags and path, then the words around the match, or
/// the entry's first line when there is no query. One line that says so when there are none. UTF-8, without a
/// line feed at the end.
std::string searchEntries(std::string_view query, const std::optional<std::string>& tag, std::int64_t limit);

}  // namespace halvane
