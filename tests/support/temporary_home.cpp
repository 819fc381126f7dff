#include "tests/support/temporary_home.h"

#include "tests/support/property_list.h"
#include "tests/support/user_settings.h"
#include "tests/support/written_file.h"

namespace halvane {

TemporaryHome::TemporaryHome() {
  variables_.emplace_back("XDG_CONFIG_HOME", std::nullopt);
  set(variablesOfHome(path()));
  set({"TZ=UTC"});
  setLocale("en_US");
}

TemporaryHome::~TemporaryHome() {
  while (!variables_.empty()) variables_.pop_back();
}

std::string TemporaryHome::write(std::string_view name, std::string_view content) const {
  const std::string path = journal() + "/" + std::string(name);
  writeFile(path, content);
  return path;
}

void TemporaryHome::setJournalRoot(std::string_view suite, std::string_view path) const {
  writeFile(settings(suite), propertyListOfText("journalRoot", path));
}

std::string TemporaryHome::settings(std::string_view suite) const {
  return settingsFile(path(), suite);
}

void TemporaryHome::setLocale(std::string_view locale) {
  set(chooseLocale(path(), locale));
}

void TemporaryHome::set(const std::vector<std::string>& variables) {
  for (const std::string& variable : variables) {
    const std::size_t nameEnd = variable.find('=');
    variables_.emplace_back(variable.substr(0, nameEnd), variable.substr(nameEnd + 1));
  }
}

}  // namespace halvane
