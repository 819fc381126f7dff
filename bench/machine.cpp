#include "bench/machine.h"

#include <unistd.h>

#include <cmath>
#include <fstream>
#include <string_view>
#include <thread>

namespace halvane {
namespace {

// What stands after `label` in the first line of the file `path` that begins with it, without quotes.
std::string valueIn(const char* path, std::string_view label) {
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with(label)) continue;
    const std::size_t begin = line.find_first_not_of(" \t:=\"", label.size());
    return begin == std::string::npos ? "" : line.substr(begin, line.find_last_not_of('"') + 1 - begin);
  }
  return "unknown";
}

}  // namespace

std::string machineInWords() {
  const auto bytes =
      static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE));
  const long gibibytes = std::lround(bytes / (1 << 30));
  return valueIn("/proc/cpuinfo", "model name") + ", " + std::to_string(std::thread::hardware_concurrency()) +
         " cores, " + std::to_string(gibibytes) + " GiB of memory, " +
         valueIn("/etc/os-release", "PRETTY_NAME") + ", Linux " + valueIn("/proc/sys/kernel/osrelease", "");
}

}  // namespace halvane
