#pragma once

// What lies beside the entries and looks as if the server should read it, but is not read.

#include <optional>
#include <string>
#include <string_view>

#include "doctor/finding.h"
#include "system/directory.h"

namespace halvane {

/// Why the server passes over what is listed as `name`, of the given kind, at `path` (absolute, raw bytes),
/// though a person may take it for an entry or a part of the journal. Nothing for all else: files that the
/// server reads or tries to, folders, and what is no such thing to anybody.
std::optional<Trouble> nearMiss(std::string_view name, Directory::Kind kind, const std::string& path);

}  // namespace halvane
