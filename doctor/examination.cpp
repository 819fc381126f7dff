#include "doctor/examination.h"

#include <string_view>

#include "system/file_walk.h"
#include "user/preferences.h"

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

void examineFile(std::string_view path, std::string_view content, Examination& examination) {
  const EntryReading entry = EntryText::read(content);
  if (!entry) {
    examination.leftOut.push_back({std::string(path), entry.error(), {}});
    return;
  }
  ++examination.entries;
  for (const std::string& tag : Entry::parseTags(entry->tags.value_or(""))) ++examination.tags[tag];
}

}  // namespace

Examination examineJournal(Progress& progress) {
  Examination examination;
  examination.location = locateJournal();
  for (const std::string& suite : examination.location.askedBefore) {
    examination.settingsWithoutRoot.push_back(settingsWithoutRoot(suite));
  }
  const std::string& root = examination.location.root.path;
  examination.error = errorOpeningFolder(root);
  examination.inTheCloud = cloudFilesBelow(root);
  // Any opening will do here: a file that begins otherwise is what the person may be looking for.
  readFilesBelow(
      root, ".md", {},
      [&](std::string_view path, std::string_view content) {
        ++examination.files;
        examineFile(path, content, examination);
        progress.countFile();
      },
      [&](std::string_view path) {
        if (!path.ends_with('/')) ++examination.files;
        examination.leftOut.push_back({std::string(path), std::nullopt, errorOpening(path)});
      });
  return examination;
}

}  // namespace halvane
