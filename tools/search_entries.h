#pragma once

// The tool search_entries, as a function from its arguments to its text.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace halvane {

/// The newest entries, at most `limit` (1 or more), whose bodies contain `query` (UTF-8, unchanged) in
/// capital or small letters; with a canonical `tag`, only those with that tag. Every body contains the empty
/// query. Two lines for each entry: date, tags and path, then the text around the match, or the entry's first
/// line when the query is empty. One line that says so when there are none. UTF-8, without a line feed at the
/// end.
std::string searchEntries(std::string_view query, const std::optional<std::string>& tag, std::int64_t limit);

}  // namespace halvane
