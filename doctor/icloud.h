#pragma once

// Entries that iCloud Drive keeps only in the cloud.

#include <cstddef>
#include <string>

namespace halvane {

struct CloudFiles {
  /// For each of these, there is only a small hidden file, `.name.md.icloud`, and the server doesn't see the
  /// entry.
  std::size_t placeholders = 0;
  /// These are listed like others, but their content is missing. Reading one waits until it is downloaded.
  std::size_t withoutContent = 0;
};

/// The files below the folder `root`, an absolute path, that are named like entries and are only in the
/// cloud. Doesn't download them. None on Linux, which has no iCloud Drive.
CloudFiles cloudFilesBelow(const std::string& root);

}  // namespace halvane
