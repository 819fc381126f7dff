#include "tests/wire/process_state.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace halvane {
namespace {

std::string folderOf(pid_t process) {
  return "/proc/" + std::to_string(process);
}

// The pages that a process holds; the first number tells its addresses, the second what is resident.
std::size_t pages(pid_t process, int which) {
  std::ifstream file(folderOf(process) + "/statm");
  std::size_t count = 0;
  for (int number = 0; number <= which; ++number) file >> count;
  if (!file) throw std::runtime_error("no such process");
  return count * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// The number of kibibytes after the word `name` in the process's file `file`, in bytes.
std::size_t bytesIn(pid_t process, const char* file, std::string_view name) {
  std::ifstream stream(folderOf(process) + "/" + file);
  for (std::string word; stream >> word;) {
    std::size_t kibibytes = 0;
    if (word == name && stream >> kibibytes) return kibibytes * 1024;
  }
  throw std::runtime_error("no such process");
}

}  // namespace

std::size_t residentMemory(pid_t process) {
  return pages(process, 1);
}

std::size_t addressSpace(pid_t process) {
  return pages(process, 0);
}

std::size_t peakMemory(pid_t process) {
  return bytesIn(process, "status", "VmHWM:");
}

std::size_t countedMemory(pid_t process) {
  return bytesIn(process, "smaps_rollup", "Rss:");
}

std::size_t openFiles(pid_t process) {
  const std::filesystem::directory_iterator files(folderOf(process) + "/fd");
  return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

}  // namespace halvane
