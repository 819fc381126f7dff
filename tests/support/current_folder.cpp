#include "tests/support/current_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>

namespace halvane {

CurrentFolder::CurrentFolder(const std::string& path)
    : before_(open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (before_ < 0 || chdir(path.c_str()) != 0) throw std::runtime_error("can't enter " + path);
}

CurrentFolder::~CurrentFolder() {
  static_cast<void>(!fchdir(before_));
  close(before_);
}

}  // namespace halvane
