#pragma once

#include <string>

namespace halvane {

/// Writes what `path` holds to the disk and lets the system forget it. False when it stays in memory: some
/// file systems have no disk, or don't tell.
bool forgetFile(const std::string& path);

/// The same for all files below `folder`.
bool forgetFilesBelow(const std::string& folder);

}  // namespace halvane
