#include <string>

#include "doctor/report_sections.h"
#include "system/paths.h"
#include "user/preferences.h"

namespace halvane {
namespace {

void describe(const SettingsWithoutRoot& settings, Page& page) {
  if (!settings.file) return;  // the system keeps them, and they don't name a journal
  const std::string& place = *settings.file;
  switch (settings.cause) {
    case SettingsWithoutRoot::Cause::absent:
      return page.line(place + ": not found.");
    case SettingsWithoutRoot::Cause::nameNone:
      return page.line(place + ": it has no text under the key journalRoot.");
    case SettingsWithoutRoot::Cause::unreadable:
      return page.attention(place + ": it can't be read: " + settings.error.message());
    case SettingsWithoutRoot::Cause::damaged:
      return page.attention(place + ": it is not a property list, or it is longer than 16 MiB.");
  }
}

void describeSource(const JournalLocation& location, Page& page) {
  if (!location.namedBy) return page.line("This is the default folder: no preferences name another.");
  page.line("The preferences of " + *location.namedBy + " name this folder.");
  if (const auto file = Preferences::fileOfSuite(*location.namedBy)) page.line("They are kept in " + *file);
}

// A relative path counts from the server's current folder, which is seldom the doctor's.
void describeRelativeSetting(const std::string& setting, Page& page) {
  if (setting.empty()) {
    page.attention(
        "The preference journalRoot is empty. The server uses the folder in which its client starts it.");
  } else if (!expandTilde(setting).starts_with('/')) {
    page.attention("The preference journalRoot is not an absolute path. The server looks for " + setting +
                   " below the folder in which its client starts it.");
  }
}

}  // namespace

void describeLocation(const Examination& examination, Page& page) {
  const JournalLocation& location = examination.location;
  page.heading("Where the journal is");
  page.line(location.root.path);
  describeSource(location, page);
  if (location.setting) describeRelativeSetting(*location.setting, page);
  for (const SettingsWithoutRoot& settings : examination.settingsWithoutRoot) describe(settings, page);
  if (examination.rootWithoutVariable) {
    page.attention(
        "XDG_CONFIG_HOME is set here. If the client starts the server without it, the server looks in " +
        examination.rootWithoutVariable->path);
  }
}

}  // namespace halvane
