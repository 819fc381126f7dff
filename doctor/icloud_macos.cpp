#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "doctor/icloud.h"

namespace halvane {
namespace {

// SF_DATALESS of <sys/stat.h>. Only a Mac's files have flags; elsewhere this file still compiles.
template <typename State>
bool isWithoutContent(const State& state) {
  constexpr std::uint32_t dataless = 0x40000000;
  if constexpr (requires { state.st_flags; }) {
    return (state.st_flags & dataless) != 0;
  } else {
    return false;
  }
}

bool isWithoutContent(const std::filesystem::path& path) {
  struct stat state;
  return lstat(path.c_str(), &state) == 0 && isWithoutContent<struct stat>(state);
}

void count(const std::filesystem::path& path, CloudFiles& found) {
  const std::string name = path.filename();
  const bool isHidden = name.starts_with('.');
  if (isHidden && name.ends_with(".md.icloud")) ++found.placeholders;
  if (!isHidden && name.ends_with(".md") && isWithoutContent(path)) ++found.withoutContent;
}

}  // namespace

CloudFiles cloudFilesBelow(const std::string& root) {
  namespace fs = std::filesystem;
  CloudFiles found;
  std::error_code error;
  fs::recursive_directory_iterator item(root, fs::directory_options::skip_permission_denied, error);
  for (; !error && item != fs::recursive_directory_iterator(); item.increment(error)) {
    const bool isFolder = item->is_directory(error);
    error.clear();  // a file that has disappeared must not end the loop
    if (!isFolder) count(item->path(), found);
    if (isFolder && item->path().filename().string().starts_with('.')) item.disable_recursion_pending();
  }
  return found;
}

}  // namespace halvane
