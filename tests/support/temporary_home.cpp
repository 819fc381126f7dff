#include "tests/support/temporary_home.h"

#include "tests/support/property_list.h"
#include "tests/support/written_file.h"

namespace halvane {

TemporaryHome::TemporaryHome()
    : home_("HOME", folder_.path()),
      settingsFolder_("XDG_CONFIG_HOME", std::nullopt),
      locale_("LC_ALL", "en_US.UTF-8"),
      zone_("TZ", "UTC") {}

std::string TemporaryHome::write(std::string_view name, std::string_view content) const {
  const std::string path = journal() + "/" + std::string(name);
  writeFile(path, content);
  return path;
}

void TemporaryHome::setJournalRoot(std::string_view suite, std::string_view path) const {
  writeFile(below(".config/" + std::string(suite) + ".plist"), propertyListOfText("journalRoot", path));
}

}  // namespace halvane
