#pragma once

#include <chrono>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "bench/languages.h"

namespace halvane {

/// A made-up journal: `entries` of them, spread evenly over the twenty years before `until`, whose languages
/// take turns. The same plan gives the same bytes on every machine.
struct JournalPlan {
  std::string_view name;
  std::span<const Language> languages;
  std::size_t entries;
  std::chrono::sys_days until;
};

/// Every tenth entry has this tag.
inline constexpr std::string_view knownTag = "garden";

struct JournalFile {
  std::string path;  // below the journal folder: year/month/moment.md
  std::string text;
};

/// The entry number `index`, the oldest being 0.
JournalFile journalFile(const JournalPlan& plan, std::size_t index);

/// A body of about `size` bytes in `language`, the `number`th of its kind, with the markers that are its due.
std::string journalBody(const Language& language, std::size_t number, std::size_t size);

}  // namespace halvane
