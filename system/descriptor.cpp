#include "system/descriptor.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string>

namespace halvane {

Descriptor::~Descriptor() {
  if (number_ >= 0) close(number_);
}

Descriptor openName(int folder, const char* name, int flags) {
  int number;
  do {
    number = openat(folder, name, flags);
  } while (number < 0 && errno == EINTR);
  return Descriptor(number);
}

// The system takes at most PATH_MAX bytes at once, so we walk a longer path in pieces, folder by folder.
Descriptor openPath(int folder, std::string_view path, int flags) {
  if (path.find('\0') != std::string_view::npos) return Descriptor();
  Descriptor reached;
  while (path.size() >= PATH_MAX) {
    const std::size_t slash = path.rfind('/', PATH_MAX - 2);
    if (slash == std::string_view::npos || slash == 0) return Descriptor();
    reached = openName(folder, std::string(path.substr(0, slash)).c_str(), toReadFolder);
    if (!reached.isOpen()) return Descriptor();
    folder = reached.number();
    path.remove_prefix(std::min(path.find_first_not_of('/', slash), path.size()));
  }
  return openName(folder, std::string(path).c_str(), flags);
}

}  // namespace halvane
