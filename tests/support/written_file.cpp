#include "tests/support/written_file.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace halvane {

void writeFile(const std::string& path, std::string_view content) {
  makeFolder(std::filesystem::path(path).parent_path());
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  file.close();
  if (!file) throw std::runtime_error("can't write " + path);
}

void makeFolder(const std::string& path) {
  std::filesystem::create_directories(path);
}

void makeLink(const std::string& path, const std::string& target) {
  makeFolder(std::filesystem::path(path).parent_path());
  std::filesystem::create_symlink(target, path);
}

}  // namespace halvane
