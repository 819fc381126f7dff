#include "tests/support/temporary_folder.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace halvane {

TemporaryFolder::TemporaryFolder() {
  std::string pattern =
      std::filesystem::canonical(std::filesystem::temp_directory_path()) / "halvane-test-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TemporaryFolder::below(std::string_view name) const {
  return path_ + "/" + std::string(name);
}

}  // namespace halvane
