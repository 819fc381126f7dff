#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>

namespace halvane {

/// The memory that a process holds at this moment, in bytes: resident, and as addresses.
std::size_t residentMemory(pid_t process);
std::size_t addressSpace(pid_t process);

/// The most resident memory that a process has held so far, in bytes.
std::size_t peakMemory(pid_t process);

/// The resident memory counted page by page: residentMemory() may lag by some dozens of pages.
std::size_t countedMemory(pid_t process);

/// How many files a process has open.
std::size_t openFiles(pid_t process);

/// The processor time that a process has used so far.
std::chrono::nanoseconds processorTime(pid_t process);

/// Waits until a process sleeps, as it does while it waits for its input or output; some seconds at most.
/// Whether it does: one that has ended never will.
bool waitUntilAsleep(pid_t process);

}  // namespace halvane
