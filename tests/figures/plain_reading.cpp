#include "tests/figures/plain_reading.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <memory>
#include <stdexcept>

namespace halvane {
namespace {

std::array<char, 131072> block;

std::size_t readBlock(int descriptor) {
  const ssize_t count = read(descriptor, block.data(), block.size());
  if (count < 0) throw std::runtime_error("can't read");
  return static_cast<std::size_t>(count);
}

std::size_t readFileIn(int folder, const char* name) {
  const int file = openat(folder, name, O_RDONLY | O_CLOEXEC);
  if (file < 0) throw std::runtime_error(std::string("can't open ") + name);
  const std::size_t size = readToEnd(file);
  close(file);
  return size;
}

}  // namespace

std::size_t readFilesIn(const std::string& folder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder.c_str()), &closedir);
  if (!listing) throw std::runtime_error("can't open " + folder);
  std::size_t size = 0;
  while (const dirent* item = readdir(listing.get()))
    if (item->d_type == DT_REG) size += readFileIn(dirfd(listing.get()), item->d_name);
  return size;
}

std::size_t readWholeFile(const std::string& path) {
  return readFileIn(AT_FDCWD, path.c_str());
}

std::size_t readToEnd(int descriptor) {
  std::size_t size = 0;
  for (std::size_t count; (count = readBlock(descriptor)) > 0;) size += count;
  return size;
}

std::size_t readReply(int descriptor) {
  std::size_t size = 0;
  for (std::size_t count; (count = readBlock(descriptor)) > 0;) {
    size += count;
    if (block[count - 1] == '\n') break;
  }
  return size;
}

}  // namespace halvane
