#pragma once

// Files and links that look like entries but that the server doesn't read.

#include <optional>
#include <string>
#include <string_view>

#include "doctor/finding.h"
#include "system/directory.h"

namespace halvane {

/// Why the server passes over what is listed as `name`, of the given kind, at `path` (absolute, raw bytes),
/// although a person may take it for a part of the journal. Nothing for anything else: files that the server
/// reads or tries to read, folders, and files that don't look like entries.
std::optional<Trouble> nearMiss(std::string_view name, Directory::Kind kind, const std::string& path);

}  // namespace halvane
