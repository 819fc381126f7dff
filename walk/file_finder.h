#pragma once

// How the files below a folder are found and opened, one after the other.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "system/descriptor.h"
#include "system/directory.h"
#include "walk/open_folders.h"

namespace halvane {

/// Called with a folder's absolute path (raw bytes, without a slash at its end) and its listing, which an
/// error may have broken off. Both are valid only during the call.
using FolderVisitor = std::function<void(std::string_view path, const Directory& listing)>;

/// The next file, or a file or folder that can't be opened. In that case, `file` is not open.
struct FoundFile {
  std::string path;  // absolute, raw bytes; a folder's ends in a slash
  Descriptor file;
};

/// Goes through a folder in the order of readFilesBelow: lists a folder, opens its files, enters the next
/// one.
class FileFinder {
 public:
  /// Begins at the open folder `top`, whose path is `root`; finds files whose name ends in `suffix`, which
  /// must outlive the finder, as must `seeFolder`, which is shown each folder before its files are opened.
  FileFinder(const std::string& root, Descriptor top, std::string_view suffix,
             const FolderVisitor& seeFolder);

  /// Finds the next one. False at the end, and, if `mayTryAgain`, when no file descriptor is left. Then close
  /// some and call again: the same one comes next.
  bool next(FoundFile& found, bool mayTryAgain);

 private:
  // The finder goes depth first, so the part of `path_` before a waiting folder's name is always its parent.
  struct WaitingFolder {
    std::size_t parentLength;
    std::string name;
  };

  bool isWanted(std::string_view name, Directory::Kind kind) const;
  std::string_view folderPath() const { return std::string_view(path_).substr(0, path_.size() - 1); }
  void listFolder();
  Descriptor openFile(const Directory::Item& item);
  bool enterFolder(const WaitingFolder& folder);

  std::string_view suffix_;
  const FolderVisitor& seeFolder_;
  std::string path_;  // of the current folder, with a slash at its end
  OpenFolders folders_;
  std::vector<WaitingFolder> waiting_;
  Directory directory_;
  std::vector<Directory::Item> files_;  // of the current folder, those that are left
};

}  // namespace halvane
