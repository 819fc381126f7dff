#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <filesystem>

#include "system/descriptor.h"
#include "tests/support/cold_file.h"

namespace halvane {
namespace {

// Reading is no way to find out: a quick disk brings the file back at once.
bool beginsInMemory(const Descriptor& file) {
  void* const beginning = mmap(nullptr, 1, PROT_READ, MAP_SHARED, file.number(), 0);
  if (beginning == MAP_FAILED) return true;
  unsigned char state = 1;
  const bool isKnown = mincore(beginning, 1, &state) == 0;
  munmap(beginning, 1);
  return !isKnown || (state & 1) != 0;
}

}  // namespace

bool forgetFile(const std::string& path) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.isOpen() || fsync(file.number()) != 0) return false;
  return posix_fadvise(file.number(), 0, 0, POSIX_FADV_DONTNEED) == 0 && !beginsInMemory(file);
}

bool forgetFilesBelow(const std::string& folder) {
  for (const auto& item : std::filesystem::recursive_directory_iterator(folder)) {
    if (item.is_regular_file() && !item.is_symlink() && !forgetFile(item.path())) return false;
  }
  return true;
}

}  // namespace halvane
