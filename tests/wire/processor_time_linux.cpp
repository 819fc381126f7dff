#include "tests/wire/processor_time.h"

#include <ctime>
#include <stdexcept>

namespace halvane {

bool tellsProcessorTime() {
  return true;
}

std::chrono::nanoseconds processorTime(pid_t process) {
  clockid_t clock;
  std::timespec time{};
  if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &time) != 0) {
    throw std::runtime_error("no such process");
  }
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace halvane
