#pragma once

#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_folder.h"

namespace halvane {

/// The bundle identifiers under which the companion application keeps its settings.
inline constexpr std::string_view primarySuite = HALVANE_PRIMARY_SUITE;
inline constexpr std::string_view legacySuite = HALVANE_LEGACY_SUITE;

/// A user of our own, until this ends: an empty home directory, no settings, an American locale, UTC.
class TemporaryHome {
 public:
  TemporaryHome();
  ~TemporaryHome();
  TemporaryHome(const TemporaryHome&) = delete;
  TemporaryHome& operator=(const TemporaryHome&) = delete;

  const std::string& path() const { return folder_.path(); }
  std::string below(std::string_view name) const { return folder_.below(name); }
  /// The journal folder that is taken without settings; not made before something is written in it.
  std::string journal() const { return folder_.below("Documents/Halvane"); }
  /// Writes the file `name` below the journal folder; the result is its path.
  std::string write(std::string_view name, std::string_view content) const;
  /// Keeps the text `path` as the journal's folder in the settings of the application `suite`.
  void setJournalRoot(std::string_view suite, std::string_view path) const;
  /// Where the settings of the application `suite` lie, whether there are any or not.
  std::string settings(std::string_view suite) const;
  /// Makes `locale`, such as de_DE, the user's.
  void setLocale(std::string_view locale);

 private:
  void set(const std::vector<std::string>& variables);

  TemporaryFolder folder_;
  std::list<ScopedVariable> variables_;
};

}  // namespace halvane
