#include "walk/open_folders.h"

#include <cerrno>
#include <utility>

namespace halvane {
namespace {

// The system finds a path of this length as fast as it lists a small folder.
constexpr std::size_t shortWay = 256;

}  // namespace

OpenFolders::OpenFolders(Descriptor top, std::size_t pathLength) : current_{pathLength, Descriptor()} {
  kept_.push_back({pathLength, std::move(top)});
}

bool OpenFolders::enter(std::string_view path, std::size_t parentLength) {
  const bool isBelowCurrent = current_.folder.isOpen() && current_.pathLength == parentLength;
  if (!isBelowCurrent) {
    current_.folder = Descriptor();
    while (kept_.back().pathLength > parentLength) kept_.pop_back();
    keepHalfOfTheWay(path.substr(0, parentLength));
  }
  Folder next{path.size(), Descriptor()};
  do {
    next.folder = openBelow(isBelowCurrent ? current_ : kept_.back(), path);
  } while (!next.folder.isOpen() && letGo());
  if (!next.folder.isOpen()) return false;
  current_ = std::move(next);
  return true;
}

Descriptor OpenFolders::open(const char* name, int flags) {
  Descriptor opened = openName(current(), name, flags);
  while (!opened.isOpen() && letGo()) opened = openName(current(), name, flags);
  return opened;
}

Descriptor OpenFolders::openBelow(const Folder& folder, std::string_view path) {
  return openPath(folder.folder.number(), path.substr(folder.pathLength + 1), toReadFolder | O_NOFOLLOW);
}

void OpenFolders::keepHalfOfTheWay(std::string_view parent) {
  while (parent.size() - kept_.back().pathLength > shortWay) {
    const std::size_t half = parent.find('/', (kept_.back().pathLength + parent.size()) / 2);
    if (half == std::string_view::npos) return;
    Descriptor folder = openBelow(kept_.back(), parent.substr(0, half));
    if (!folder.isOpen()) return;
    kept_.push_back({half, std::move(folder)});
  }
}

// When the system has no descriptor left, closes one of the folders that are kept to save time. False when
// there was none.
bool OpenFolders::letGo() {
  if ((errno != EMFILE && errno != ENFILE) || kept_.size() == 1) return false;
  kept_.pop_back();
  return true;
}

}  // namespace halvane
