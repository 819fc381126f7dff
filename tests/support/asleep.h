#pragma once

#include <sys/types.h>

namespace halvane {

/// Waits until a process sleeps, as it does while it waits for its input or output; some seconds at most.
/// Whether it does: one that has ended never will.
bool waitUntilAsleep(pid_t process);

}  // namespace halvane
