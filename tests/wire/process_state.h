#pragma once

#include <sys/types.h>

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

}  // namespace halvane
