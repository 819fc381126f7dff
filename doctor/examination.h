#pragma once

// What the doctor finds out: where the journal is, what is in it, what is left out and why.

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "doctor/finding.h"
#include "doctor/icloud.h"
#include "doctor/progress.h"
#include "journal/entry.h"
#include "journal/journal_location.h"

namespace halvane {

/// Settings that could name the journal folder, and why they don't.
struct SettingsWithoutRoot {
  enum class Cause {
    absent,      ///< there are none
    unreadable,  ///< the system doesn't let us read them
    damaged,     ///< they are not a property list, or longer than 16 MiB
    nameNone     ///< they don't name a journal
  };

  std::string suite;                ///< the bundle identifier that they are kept under
  std::optional<std::string> file;  ///< where they are or would be; nothing when they are not in a file
  Cause cause;
  std::error_code error;  ///< the system's on opening the file
};

/// What the server finds when it reads the journal, and why it doesn't find more.
struct Examination {
  JournalLocation location;
  std::vector<SettingsWithoutRoot> settingsWithoutRoot;
  /// Where the server would look without XDG_CONFIG_HOME, if that is another folder. Most clients start the
  /// server without the variables of the shell.
  std::optional<FileUrl> rootWithoutVariable;
  std::error_code error;  ///< the system's on opening the journal folder
  std::size_t files = 0;  ///< files whose names end in .md
  std::size_t entries = 0;
  Instant oldest = Instant::max();  ///< the date of the oldest entry, where there is one
  Instant newest = Instant::min();  ///< the date of the newest
  std::size_t inFuture = 0;         ///< entries dated in the future
  std::vector<Finding> findings;
  CloudFiles inTheCloud;                    ///< before the examination reads them
  std::string_view notRefused;              ///< what sandbox::enterReadOnly() returned
  std::map<std::string, std::size_t> tags;  ///< each with the number of entries that carry it
};

/// Looks for the journal and reads it whole, as the server does for a question.
Examination examineJournal(Progress& progress);

}  // namespace halvane
