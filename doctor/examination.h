#pragma once

// What the doctor finds out: where the journal is, what is in it, what is left out and why.

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "doctor/icloud.h"
#include "doctor/progress.h"
#include "journal/entry.h"
#include "journal/entry_parser.h"
#include "journal/journal_location.h"

namespace halvane {

/// Settings that might have said where the journal is, and why they don't.
struct SettingsWithoutRoot {
  enum class Cause {
    absent,      ///< there are none
    unreadable,  ///< the system doesn't let us read them
    damaged,     ///< they are no property list, or one beyond all measure
    nameNone     ///< they say nothing of a journal
  };

  std::string suite;                ///< the bundle identifier that they are kept under
  std::optional<std::string> file;  ///< where they are or would be; nothing where they are in no file
  Cause cause;
  std::error_code error;  ///< the system's on opening the file
};

/// A file or folder below the journal from which no entry comes.
struct LeftOut {
  std::string path;            ///< absolute, raw bytes; a folder's ends in a slash
  std::optional<Refusal> why;  ///< nothing when it can't be read
  std::error_code error;       ///< the system's on opening it
};

/// What the server has before it when it reads the journal, and why it doesn't have more.
struct Examination {
  JournalLocation location;
  std::vector<SettingsWithoutRoot> settingsWithoutRoot;
  std::error_code error;  ///< the system's on opening the journal folder
  std::size_t files = 0;  ///< that are named like entries
  std::size_t entries = 0;
  std::vector<LeftOut> leftOut;
  CloudFiles inTheCloud;                    ///< before they were read
  std::string_view notRefused;              ///< what sandbox::enterReadOnly() returned
  std::map<std::string, std::size_t> tags;  ///< each with the number of entries that carry it
};

/// Looks for the journal and reads it whole, as the server does for a question.
Examination examineJournal(Progress& progress);

}  // namespace halvane
