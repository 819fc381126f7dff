#pragma once

#include <cstddef>
#include <string>

#include "bench/hostile.h"
#include "bench/journal_text.h"

namespace halvane {

/// A journal on the disk: a home directory with the journal in its default folder.
struct Journal {
  std::string home;
  std::string folder() const { return home + "/Documents/Halvane"; }
};

/// Writes the journal below the folder `cache`, or finds it there from an earlier run with the same plan.
/// Throws when it can't be written.
Journal writeJournal(const std::string& cache, const JournalPlan& plan);
Journal writeJournal(const std::string& cache, const HostileJournal& hostile);

/// The size in bytes of the largest file of the journal.
std::size_t largestFile(const Journal& journal);

/// How many folders the journal has, its own included.
std::size_t countFolders(const Journal& journal);

}  // namespace halvane
