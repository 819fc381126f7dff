#include "tests/support/process_limits.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <fstream>
#include <stdexcept>
#include <string>

#include "tests/support/child_process.h"

namespace halvane {
namespace {

constexpr const char* ownMemory = "/proc/self/statm";

void check(bool done) {
  if (!done) throw std::runtime_error("can't set a limit");
}

bool isGiven(std::size_t bytes) {
  return mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) != MAP_FAILED;
}

}  // namespace

void limitFurtherDescriptors(std::size_t count) {
  int number = 0;
  for (std::size_t free = 0; free < count; ++number) free += fcntl(number, F_GETFD) < 0 ? 1 : 0;
  const rlimit limits{static_cast<rlim_t>(number), static_cast<rlim_t>(number)};
  check(setrlimit(RLIMIT_NOFILE, &limits) == 0);
}

bool canLimitMemory() {
  if (access(ownMemory, R_OK) != 0) return false;
  return inChildProcess([] {
           limitFurtherMemory(16 << 20);
           return std::string(isGiven(64 << 20) ? "given" : "refused");
         }) == "refused";
}

void limitFurtherMemory(std::size_t bytes) {
  std::size_t pages = 0;
  std::ifstream(ownMemory) >> pages;
  check(pages > 0);
  const rlim_t most = pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + bytes;
  const rlimit limits{most, most};
  check(setrlimit(RLIMIT_AS, &limits) == 0);
}

}  // namespace halvane
