#pragma once

#include <sys/types.h>

#include <chrono>

namespace halvane {

/// Whether the system tells how long another process has worked. A Mac tells it only through an interface of
/// its own.
bool tellsProcessorTime();

/// The processor time that a process has used so far.
std::chrono::nanoseconds processorTime(pid_t process);

}  // namespace halvane
