#include "bench/memory.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace halvane {

double memoryOf(pid_t pid, std::string_view name) {
  std::ifstream status("/proc/" + std::to_string(pid) + "/status");
  const std::string wanted = std::string(name) + ":";
  std::string word;
  while (status >> word) {
    double kibibytes = 0;
    if (word == wanted && status >> kibibytes) return kibibytes * 1024 / 1e6;
  }
  throw std::runtime_error("no " + wanted + " in the state of process " + std::to_string(pid));
}

}  // namespace halvane
