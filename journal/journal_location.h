#pragma once

// Where the journal is, and which settings say so.

#include <optional>
#include <string>
#include <vector>

#include "journal/entry.h"
#include "user/preferences.h"

namespace halvane {

/// The settings kept under the bundle identifier `suite`, which are this process's own if it runs under that
/// identifier; nothing when there are none.
std::optional<Preferences> appDefaults(const std::string& suite);

/// Where the journal is, and who says so.
struct JournalLocation {
  FileUrl root;
  /// The companion application's bundle identifier whose settings name the folder; nothing when no settings
  /// do, and it is the default folder.
  std::optional<std::string> namedBy;
  /// The path in these settings, unchanged: it may be empty or relative. Nothing when `namedBy` is nothing.
  std::optional<std::string> setting;
  /// The identifiers whose settings were read before these and don't name a folder, in the order of reading.
  std::vector<std::string> askedBefore;
};

/// The same as journalRoot, and how the folder was found.
JournalLocation locateJournal();

/// The journal folder, absolute but neither standardised nor resolved: the one that the companion
/// application's settings name, otherwise Documents/Halvane in the home directory. It may not exist. Reads
/// the settings at each call, so a change of them counts at once.
FileUrl journalRoot();

}  // namespace halvane
