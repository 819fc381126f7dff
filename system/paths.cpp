#include "system/paths.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "system/accounts.h"

namespace halvane {
namespace {

std::string currentDirectory() {
  const std::unique_ptr<char, void (*)(void*)> path(getcwd(nullptr, 0), &std::free);
  return path ? std::string(path.get()) : "/";
}

}  // namespace

std::string expandTilde(std::string_view path) {
  if (!path.starts_with('~')) return std::string(path);
  const std::size_t slash = std::min(path.find('/'), path.size());
  const std::string_view name = path.substr(1, slash - 1);
  const std::optional<std::string> home = name.empty() ? homeDirectory() : homeDirectoryOf(name);
  if (!home) return std::string(path);
  const std::string_view rest = path.substr(slash);
  return rest.empty() ? *home : joinPath(*home, rest.substr(1));
}

std::string makeAbsolute(std::string_view path) {
  if (path.starts_with('/')) return std::string(path);
  return path.empty() ? currentDirectory() : joinPath(currentDirectory(), path);
}

std::string standardisePath(std::string_view path) {
  std::string standard;
  for (std::size_t begin = 0; begin < path.size();) {
    const std::size_t end = std::min(path.find('/', begin), path.size());
    const std::string_view component = path.substr(begin, end - begin);
    if (component == "..") {
      standard.resize(standard.empty() ? 0 : standard.rfind('/'));
    } else if (!component.empty() && component != ".") {
      standard.append("/").append(component);
    }
    begin = end + 1;
  }
  return standard.empty() ? "/" : standard;
}

std::string joinPath(std::string_view folder, std::string_view name) {
  std::string path(folder);
  if (!path.ends_with('/')) path += '/';
  return path.append(name);
}

}  // namespace halvane
