#pragma once

// Where the journal is, and by whose word.

#include <optional>
#include <string>
#include <vector>

#include "journal/entry.h"
#include "user/preferences.h"

namespace halvane {

/// The settings kept under the bundle identifier `suite`: this process's own when that is what it runs under;
/// nothing when there are none.
std::optional<Preferences> appDefaults(const std::string& suite);

/// Where the journal is, and who says so.
struct JournalLocation {
  FileUrl root;
  /// The companion application's bundle identifier under which the settings name it; nothing where none do
  /// and it is the usual folder.
  std::optional<std::string> namedBy;
  /// What they name, as it is written there: it may be empty or relative. Nothing where `namedBy` is.
  std::optional<std::string> setting;
  /// The identifiers whose settings were asked before and name none, in the order of asking.
  std::vector<std::string> askedBefore;
};

/// The same as journalRoot, with how it was found.
JournalLocation locateJournal();

/// The folder that holds the journal, absolute but neither standardised nor resolved, and perhaps not there:
/// what the companion application's settings name, otherwise Documents/Halvane in the home directory. Asked
/// afresh at each call, so that a change of the settings shows at once.
FileUrl journalRoot();

}  // namespace halvane
