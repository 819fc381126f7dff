#pragma once

// The folders that a walk keeps open to get from one to the next, at any depth, with few descriptors.

#include <cstddef>
#include <string_view>
#include <vector>

#include "system/descriptor.h"

namespace halvane {

/// Opens the folders of a walk that goes depth first. Opens a sub-folder from the current folder. Opens any
/// other folder by its path, from the top or, if that path is long, from the nearest folder that is kept
/// open. On a long way, the folder half-way down is kept open, another one half-way down the rest, and so on.
/// All ways back together then take little more time than the way down.
class OpenFolders {
 public:
  /// Begins at the folder `top`, whose path is `pathLength` bytes long.
  OpenFolders(Descriptor top, std::size_t pathLength);

  /// Goes to the folder at `path`, which begins with the top's path; its parent's path is the first
  /// `parentLength` bytes of it. False when it can't be opened; the walk may go on to the next one.
  bool enter(std::string_view path, std::size_t parentLength);

  /// Opens the file or folder `name` (ending in a NUL) in the current folder.
  Descriptor open(const char* name, int flags);

  /// The descriptor of the current folder.
  int current() const {
    return current_.folder.isOpen() ? current_.folder.number() : kept_.front().folder.number();
  }

 private:
  struct Folder {
    std::size_t pathLength;
    Descriptor folder;
  };

  static Descriptor openBelow(const Folder& folder, std::string_view path);
  void keepHalfOfTheWay(std::string_view parent);
  bool letGo();

  std::vector<Folder> kept_;  // the top, and others that lie one below the other
  Folder current_;            // not open while the top is the current one
};

}  // namespace halvane
