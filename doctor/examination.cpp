#include "doctor/examination.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "doctor/near_misses.h"
#include "user/dates.h"
#include "user/preferences.h"
#include "walk/file_walk.h"

namespace halvane {
namespace {

SettingsWithoutRoot::Cause causeOf(const SettingsWithoutRoot& settings) {
  using Cause = SettingsWithoutRoot::Cause;
  if (settings.error == std::errc::no_such_file_or_directory) return Cause::absent;
  if (settings.error) return Cause::unreadable;
  return appDefaults(settings.suite) ? Cause::nameNone : Cause::damaged;
}

SettingsWithoutRoot settingsWithoutRoot(const std::string& suite) {
  SettingsWithoutRoot settings{suite, Preferences::fileOfSuite(suite), {}, {}};
  if (settings.file) settings.error = errorOpening(*settings.file);
  settings.cause = causeOf(settings);
  return settings;
}

// Where a server that is started without the environment variable `name` looks for the journal; nothing when
// that is the same folder.
std::optional<FileUrl> rootWithout(const char* name, const FileUrl& root) {
  const char* const value = std::getenv(name);
  if (value == nullptr) return std::nullopt;
  const std::string kept = value;
  unsetenv(name);
  FileUrl other = journalRoot();
  setenv(name, kept.c_str(), 1);
  return other == root ? std::nullopt : std::optional(std::move(other));
}

// Whether the lines after the tags line list its tags one by one, as other programs allow. `tags`, what that
// line says, is a part of `content`.
bool hasListBelow(std::string_view tags, std::string_view content) {
  std::string_view rest =
      content.substr(static_cast<std::size_t>(tags.data() - content.data()) + tags.size());
  rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
  return rest.starts_with("- ");
}

// One journal's entries as they are read, for an examination.
class Reading {
 public:
  Reading(Examination& examination, Progress& progress) : examination_(examination), progress_(progress) {}

  void seeFolder(std::string_view path, const Directory& listing) {
    progress_.countFolder();
    const std::string folder = std::string(path) + "/";
    if (listing.error()) note(folder, listing.error());
    for (const Directory::Item& item : listing.items()) {
      const std::string itemPath = folder + std::string(listing.name(item));
      if (const auto trouble = nearMiss(listing.name(item), item.kind, itemPath)) note(itemPath, *trouble);
    }
  }

  void seeFile(std::string_view path, std::string_view content) {
    progress_.countFile();
    ++examination_.files;
    const EntryReading entry = EntryText::read(content);
    if (!entry) return note(path, entry.error());
    seeDate(entry->date);
    if (entry->tags) seeTags(path, *entry->tags, content);
  }

  void passOver(std::string_view path) {
    const bool isFolder = path.ends_with('/');
    if (!isFolder) ++examination_.files;
    const std::error_code error = isFolder ? errorOpeningFolder(path) : errorOpening(path);
    if (error) return note(path, error);
    const bool isLinkToFolder = !isFolder && !errorOpeningFolder(path);
    note(path, isLinkToFolder ? Trouble::linkToFolder : Trouble::notReadToItsEnd);
  }

 private:
  template <typename Why>
  void note(std::string_view path, Why why) {
    examination_.findings.push_back({std::string(path), why});
  }

  void seeDate(Instant date) {
    ++examination_.entries;
    examination_.oldest = std::min(examination_.oldest, date);
    examination_.newest = std::max(examination_.newest, date);
    if (date > present_) ++examination_.inFuture;
  }

  void seeTags(std::string_view path, std::string_view value, std::string_view content) {
    const std::vector<std::string> tags = Entry::parseTags(value);
    for (const std::string& tag : tags) ++examination_.tags[tag];
    const bool isBlank = value.find_first_not_of("[] \t") == std::string_view::npos;
    if (tags.empty() && (!isBlank || hasListBelow(value, content))) note(path, Trouble::noTag);
  }

  Examination& examination_;
  Progress& progress_;
  Instant present_ = now();
};

}  // namespace

Examination examineJournal(Progress& progress) {
  Examination examination;
  examination.location = locateJournal();
  for (const std::string& suite : examination.location.askedBefore) {
    examination.settingsWithoutRoot.push_back(settingsWithoutRoot(suite));
  }
  const FileUrl& root = examination.location.root;
  examination.rootWithoutVariable = rootWithout("XDG_CONFIG_HOME", root);
  examination.error = errorOpeningFolder(root.path);
  examination.inTheCloud = cloudFilesBelow(root.path);
  Reading reading(examination, progress);
  // We read files with any opening: the person may be looking for one that doesn't begin like an entry.
  readFilesBelow(
      root.path, ".md", {},
      [&](std::string_view path, std::string_view content) { reading.seeFile(path, content); },
      [&](std::string_view path) { reading.passOver(path); },
      [&](std::string_view path, const Directory& listing) { reading.seeFolder(path, listing); });
  std::stable_sort(examination.findings.begin(), examination.findings.end(),
                   [](const Finding& left, const Finding& right) { return left.path < right.path; });
  return examination;
}

}  // namespace halvane
