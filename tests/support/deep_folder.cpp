#include "tests/support/deep_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <stdexcept>

namespace halvane {
namespace {

void must(bool done) {
  if (!done) throw std::runtime_error("can't write deep below a folder");
}

int enter(int folder, const std::string& name) {
  must(mkdirat(folder, name.c_str(), 0755) == 0);
  const int inner = openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  must(inner >= 0);
  close(folder);
  return inner;
}

}  // namespace

std::string writeFileDeepBelow(const std::string& path, const std::string& name, std::size_t levels,
                               const std::string& file, std::string_view content) {
  std::string reached = path;
  int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  must(folder >= 0);
  for (; levels > 0; --levels) {
    folder = enter(folder, name);
    reached += "/" + name;
  }
  const int descriptor = openat(folder, file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  must(descriptor >= 0);
  must(write(descriptor, content.data(), content.size()) == static_cast<ssize_t>(content.size()));
  close(descriptor);
  close(folder);
  return reached + "/" + file;
}

}  // namespace halvane
