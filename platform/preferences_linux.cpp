#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/accounts.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/preferences.h"

namespace halvane {
namespace {

constexpr std::size_t longestList = 16 << 20;

std::string settingsFolder() {
  const char* folder = std::getenv("XDG_CONFIG_HOME");
  return folder != nullptr && *folder == '/' ? folder : joinPath(homeDirectory(), ".config");
}

}  // namespace

struct Preferences::Store {
  plist_t list = nullptr;

  Store() = default;
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;
  ~Store() { plist_free(list); }
};

std::optional<std::string> mainBundleIdentifier() {
  return std::nullopt;
}

std::optional<Preferences> Preferences::standard() {
  return std::nullopt;
}

std::optional<Preferences> Preferences::ofSuite(const std::string& suite) {
  ByteBuffer buffer;
  const std::optional<std::string_view> file =
      readFile(joinPath(settingsFolder(), suite + ".plist"), {}, buffer, longestList);
  if (!file) return std::nullopt;
  auto store = std::make_shared<Store>();
  plist_from_memory(file->data(), static_cast<std::uint32_t>(file->size()), &store->list);
  if (store->list == nullptr || plist_get_node_type(store->list) != PLIST_DICT) return std::nullopt;
  return Preferences(std::move(store));
}

std::optional<std::string> Preferences::string(const std::string& key) const {
  plist_t value = plist_dict_get_item(store_->list, key.c_str());
  if (value == nullptr || plist_get_node_type(value) != PLIST_STRING) return std::nullopt;
  std::uint64_t length = 0;
  const char* text = plist_get_string_ptr(value, &length);
  return std::string(text, length);
}

}  // namespace halvane
