#pragma once

// Entries that iCloud Drive keeps in the cloud and not on this disk.

#include <cstddef>
#include <string>

namespace halvane {

struct CloudFiles {
  /// A small hidden file stands for each of these, `.name.md.icloud`, so that the server doesn't see the
  /// entry.
  std::size_t placeholders = 0;
  /// These are listed like others and have no content here: who reads one waits until it is fetched.
  std::size_t withoutContent = 0;
};

/// The files below the folder `root`, an absolute path, that are named like entries and are only in the
/// cloud. Fetches none of them. None on Linux, which has no iCloud Drive.
CloudFiles cloudFilesBelow(const std::string& root);

}  // namespace halvane
