#include <dirent.h>

#include <array>
#include <cerrno>

#include "system/directory.h"

namespace halvane {
namespace {

Directory::Kind kindOf(unsigned char type) {
  switch (type) {
    case DT_REG:
      return Directory::Kind::regular;
    case DT_DIR:
      return Directory::Kind::folder;
    case DT_LNK:
      return Directory::Kind::link;
    case DT_UNKNOWN:
      return Directory::Kind::unknown;
    default:
      return Directory::Kind::other;
  }
}

}  // namespace

// We call getdents64(2), because readdir(3) takes one or two more system calls for each folder.
void Directory::read(int descriptor) {
  items_.clear();
  names_.clear();
  error_.clear();
  alignas(dirent64) std::array<char, 32768> block;
  for (;;) {
    const ssize_t size = getdents64(descriptor, block.data(), block.size());
    if (size < 0 && errno == EINTR) continue;
    if (size < 0) error_ = {errno, std::system_category()};
    if (size <= 0) break;
    for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
      const auto* item = reinterpret_cast<const dirent64*>(block.data() + at);
      at += item->d_reclen;
      if (item->d_name[0] == '.') continue;
      add(item->d_name, kindOf(item->d_type));
    }
  }
}

}  // namespace halvane
