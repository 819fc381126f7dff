#include "walk/file_walk.h"

#include <array>
#include <optional>
#include <utility>

#include "system/descriptor.h"
#include "system/read_ahead.h"
#include "walk/file_finder.h"

namespace halvane {
namespace {

// Opens files ahead of their turn if that pays, and reads them in turn.
class FileWalk {
 public:
  FileWalk(FileFinder finder, const Beginning& beginning, const FileVisitor& visit,
           const PassedOver& passOver)
      : finder_(std::move(finder)), beginning_(beginning), visit_(visit), passOver_(passOver) {}

  void run() {
    for (findAhead(); count_ > 0; findAhead()) {
      show(found_[first_]);
      first_ = (first_ + 1) % found_.size();
      --count_;
    }
  }

 private:
  // When the system has no more descriptors, we leave some for others.
  void findAhead() {
    const std::size_t wanted = readAhead_.pays() ? mostAhead_ : 1;
    while (count_ < wanted) {
      FoundFile& found = found_[(first_ + count_) % found_.size()];
      if (!finder_.next(found, count_ > 0)) {
        mostAhead_ = count_ / 2 + 1;
        return;
      }
      ++count_;
      if (wanted > 1 && found.file.isOpen()) ReadAhead::announce(found.file);
    }
  }

  void show(FoundFile& found) {
    const std::optional<std::string_view> content = readAndClose(found.file);
    if (content) {
      visit_(found.path, *content);
    } else {
      passOver_(found.path);
    }
  }

  std::optional<std::string_view> readAndClose(Descriptor& opened) {
    const Descriptor file = std::move(opened);
    if (!file.isOpen()) return std::nullopt;
    return readToEnd(file, beginning_, buffer_, readAhead_);
  }

  FileFinder finder_;
  const Beginning& beginning_;
  const FileVisitor& visit_;
  const PassedOver& passOver_;
  ReadAhead readAhead_;
  ByteBuffer buffer_;
  std::array<FoundFile, 32> found_;  // a ring: `count_` files that are open and not read yet
  std::size_t first_ = 0;
  std::size_t count_ = 0;
  std::size_t mostAhead_ = found_.size();
};

}  // namespace

void readFilesBelow(const std::string& root, std::string_view suffix, const Beginning& beginning,
                    const FileVisitor& visit, const PassedOver& passOver, const FolderVisitor& seeFolder) {
  Descriptor top = openPath(AT_FDCWD, root, toReadFolder);
  if (!top.isOpen()) return;
  FileWalk(FileFinder(root, std::move(top), suffix, seeFolder), beginning, visit, passOver).run();
}

}  // namespace halvane
