#pragma once

// The tool read_entry, as a function from its argument to its text.

#include <string>
#include <string_view>

namespace halvane {

/// The whole entry in the file at `path` (UTF-8; absolute, from "~", or relative to the current directory):
/// date, duration, clean-up flag and tags, an empty line, the body. A refusal when the path, as text, doesn't
/// lie below the journal folder. A line that says so when there is no entry at the path.
std::string readEntry(std::string_view path);

}  // namespace halvane
