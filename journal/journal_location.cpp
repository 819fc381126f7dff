#include "journal/journal_location.h"

#include <array>

#include "system/accounts.h"
#include "system/paths.h"

namespace halvane {
namespace {

// The companion application's bundle identifier and its earlier one. Settings under the first take
// precedence.
constexpr std::array<const char*, 2> suites = {HALVANE_PRIMARY_SUITE, HALVANE_LEGACY_SUITE};

}  // namespace

std::optional<Preferences> appDefaults(const std::string& suite) {
  return mainBundleIdentifier() == suite ? Preferences::standard() : Preferences::ofSuite(suite);
}

JournalLocation locateJournal() {
  JournalLocation location;
  for (const char* suite : suites) {
    const std::optional<Preferences> defaults = appDefaults(suite);
    const std::optional<std::string> path = defaults ? defaults->string("journalRoot") : std::nullopt;
    if (path) {
      location.root = {makeAbsolute(expandTilde(*path))};
      location.namedBy = suite;
      location.setting = path;
      return location;
    }
    location.askedBefore.emplace_back(suite);
  }
  location.root = {joinPath(homeDirectory(), "Documents/Halvane")};
  return location;
}

FileUrl journalRoot() {
  return locateJournal().root;
}

}  // namespace halvane
