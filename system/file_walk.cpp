#include "system/file_walk.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "system/directory.h"
#include "system/open_folders.h"

namespace halvane {
namespace {

using Kind = Directory::Kind;

// The listing's word is taken where it has one; it costs a system call an item to ask again.
Kind kindOf(const Directory& directory, const Directory::Item& item, int folder) {
  if (item.kind != Kind::unknown) return item.kind;
  struct stat state;
  if (fstatat(folder, directory.name(item).data(), &state, AT_SYMLINK_NOFOLLOW) != 0) return Kind::other;
  if (S_ISDIR(state.st_mode)) return Kind::folder;
  return S_ISREG(state.st_mode) || S_ISLNK(state.st_mode) ? Kind::link : Kind::other;
}

std::string withoutSlashAtItsEnd(const std::string& path) {
  return path.ends_with('/') ? path.substr(0, path.size() - 1) : path;
}

// One walk: lists a folder, reads its files, enters the next one.
class FileWalk {
 public:
  FileWalk(const std::string& root, Descriptor top, std::string_view suffix, Openings openings,
           const FileVisitor& visit, const PassedOver& passOver)
      : suffix_(suffix),
        openings_(openings),
        visit_(visit),
        passOver_(passOver),
        path_(withoutSlashAtItsEnd(root)),
        folders_(std::move(top), path_.size()) {}

  void run() {
    do {
      listFolder();
      for (const Directory::Item& file : files_) readAndShow(file);
    } while (enterNextFolder());
  }

 private:
  // The walk goes depth first, so what stands in `path_` before a waiting folder's name is always its parent.
  struct WaitingFolder {
    std::size_t parentLength;
    std::string name;
  };

  bool hasSuffix(std::string_view name) const {
    return name.size() > suffix_.size() && name.ends_with(suffix_);
  }

  // Notes the current folder's files that are to be read, and its sub-folders, the first one on top.
  void listFolder() {
    directory_.read(folders_.current());
    files_.clear();
    const std::size_t firstWaiting = waiting_.size();
    for (Directory::Item item : directory_.items()) {
      const std::string_view name = directory_.name(item);
      item.kind = kindOf(directory_, item, folders_.current());
      if (item.kind == Kind::folder) waiting_.push_back({path_.size(), std::string(name)});
      const bool isFile = item.kind == Kind::regular || item.kind == Kind::link;
      if (isFile && hasSuffix(name)) files_.push_back(item);
    }
    std::reverse(waiting_.begin() + static_cast<std::ptrdiff_t>(firstWaiting), waiting_.end());
  }

  void readAndShow(const Directory::Item& file) {
    const std::optional<std::string_view> content = read(file);
    const std::size_t folderLength = path_.size();
    path_.append("/").append(directory_.name(file));
    if (content) {
      visit_(path_, *content);
    } else {
      passOver_(path_);
    }
    path_.resize(folderLength);
  }

  // A file that the listing has as regular is not asked for its kind again, and must not have become a link.
  std::optional<std::string_view> read(const Directory::Item& item) {
    const bool isKnown = item.kind == Kind::regular;
    const Descriptor file =
        folders_.open(directory_.name(item).data(), isKnown ? toReadFile | O_NOFOLLOW : toReadFile);
    if (!file.isOpen() || !(isKnown || isRegular(file))) return std::nullopt;
    return readToEnd(file, openings_, buffer_);
  }

  // False when no folder is left.
  bool enterNextFolder() {
    while (!waiting_.empty()) {
      const WaitingFolder next = std::move(waiting_.back());
      waiting_.pop_back();
      path_.resize(next.parentLength);
      path_.append("/").append(next.name);
      if (folders_.enter(path_, next.parentLength)) return true;
      passOver_(path_ + "/");
    }
    return false;
  }

  std::string_view suffix_;
  Openings openings_;
  const FileVisitor& visit_;
  const PassedOver& passOver_;
  std::string path_;  // of the current folder
  OpenFolders folders_;
  std::vector<WaitingFolder> waiting_;
  Directory directory_;
  std::vector<Directory::Item> files_;
  ByteBuffer buffer_;
};

}  // namespace

void readFilesBelow(const std::string& root, std::string_view suffix, Openings openings,
                    const FileVisitor& visit, const PassedOver& passOver) {
  Descriptor top = openPath(AT_FDCWD, root, toReadFolder);
  if (top.isOpen()) FileWalk(root, std::move(top), suffix, openings, visit, passOver).run();
}

}  // namespace halvane
