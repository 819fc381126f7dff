#include "walk/file_finder.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "system/files.h"

namespace halvane {
namespace {

using Kind = Directory::Kind;

// We use the kind in the listing if there is one: to ask again costs a system call for each item.
Kind kindOf(const Directory& directory, const Directory::Item& item, int folder) {
  if (item.kind != Kind::unknown) return item.kind;
  struct stat state;
  if (fstatat(folder, directory.name(item).data(), &state, AT_SYMLINK_NOFOLLOW) != 0) return Kind::other;
  if (S_ISDIR(state.st_mode)) return Kind::folder;
  return S_ISREG(state.st_mode) || S_ISLNK(state.st_mode) ? Kind::link : Kind::other;
}

std::string withSlashAtItsEnd(const std::string& path) {
  return path.ends_with('/') ? path : path + '/';
}

bool noDescriptorIsLeft() {
  return errno == EMFILE || errno == ENFILE;
}

}  // namespace

FileFinder::FileFinder(const std::string& root, Descriptor top, std::string_view suffix,
                       const FolderVisitor& seeFolder)
    : suffix_(suffix),
      seeFolder_(seeFolder),
      path_(withSlashAtItsEnd(root)),
      folders_(std::move(top), path_.size() - 1) {
  listFolder();
}

bool FileFinder::next(FoundFile& found, bool mayTryAgain) {
  while (files_.empty()) {
    if (waiting_.empty()) return false;
    const bool isEntered = enterFolder(waiting_.back());
    if (!isEntered && mayTryAgain && noDescriptorIsLeft()) return false;
    waiting_.pop_back();
    if (isEntered) {
      listFolder();
    } else {
      found.path.assign(path_);
      return true;
    }
  }
  const Directory::Item item = files_.back();
  found.file = openFile(item);
  if (!found.file.isOpen() && mayTryAgain && noDescriptorIsLeft()) return false;
  files_.pop_back();
  found.path.assign(path_).append(directory_.name(item));
  return true;
}

bool FileFinder::isWanted(std::string_view name, Kind kind) const {
  const bool isFile = kind == Kind::regular || kind == Kind::link;
  return isFile && name.size() > suffix_.size() && name.ends_with(suffix_);
}

// Notes the current folder's files that are to be read, and its sub-folders. We take both from the end. The
// files are not sorted: that would take time, and most file systems find them faster in their own order.
void FileFinder::listFolder() {
  directory_.read(folders_.current());
  seeFolder_(folderPath(), directory_);
  files_.clear();
  const auto firstWaiting = static_cast<std::ptrdiff_t>(waiting_.size());
  for (Directory::Item item : directory_.items()) {
    const std::string_view name = directory_.name(item);
    item.kind = kindOf(directory_, item, folders_.current());
    if (item.kind == Kind::folder) waiting_.push_back({path_.size(), std::string(name)});
    if (isWanted(name, item.kind)) files_.push_back(item);
  }
  std::sort(waiting_.begin() + firstWaiting, waiting_.end(),
            [](const WaitingFolder& left, const WaitingFolder& right) { return left.name < right.name; });
}

// If the listing says that a file is regular, we don't ask again, but the file must not have become a link.
Descriptor FileFinder::openFile(const Directory::Item& item) {
  const bool isKnown = item.kind == Kind::regular;
  Descriptor file =
      folders_.open(directory_.name(item).data(), isKnown ? toReadFile | O_NOFOLLOW : toReadFile);
  if (!isKnown && file.isOpen() && !isRegular(file)) {
    file = Descriptor();
    errno = 0;
  }
  return file;
}

bool FileFinder::enterFolder(const WaitingFolder& folder) {
  path_.resize(folder.parentLength);
  path_.append(folder.name).append("/");
  return folders_.enter(folderPath(), folder.parentLength - 1);
}

}  // namespace halvane
