#include <cstdlib>
#include <string_view>
#include <utility>

#include "system/accounts.h"
#include "system/files.h"
#include "system/paths.h"
#include "user/preferences.h"
#include "user/property_list.h"

namespace halvane {
namespace {

constexpr std::size_t longestList = 16 << 20;

std::string settingsFolder() {
  const char* folder = std::getenv("XDG_CONFIG_HOME");
  return folder != nullptr && *folder == '/' ? folder : joinPath(homeDirectory(), ".config");
}

std::string fileOf(const std::string& suite) {
  return joinPath(settingsFolder(), suite + ".plist");
}

}  // namespace

struct Preferences::Store {
  PropertyTexts texts;
};

std::optional<std::string> mainBundleIdentifier() {
  return std::nullopt;
}

std::optional<Preferences> Preferences::standard() {
  return std::nullopt;
}

std::optional<Preferences> Preferences::ofSuite(const std::string& suite) {
  ByteBuffer buffer;
  const std::optional<std::string_view> file = readFile(fileOf(suite), {}, buffer, longestList);
  if (!file) return std::nullopt;
  std::optional<PropertyTexts> texts = textsOfPropertyList(*file);
  if (!texts) return std::nullopt;
  return Preferences(std::make_shared<Store>(Store{std::move(*texts)}));
}

std::optional<std::string> Preferences::fileOfSuite(const std::string& suite) {
  return fileOf(suite);
}

std::optional<std::string> Preferences::string(const std::string& key) const {
  const auto found = store_->texts.find(key);
  return found == store_->texts.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace halvane
