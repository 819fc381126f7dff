#pragma once

#include <cstddef>

namespace halvane {

/// Lets this process open no more than `count` further file descriptors at a time. For use in a child
/// process.
void limitFurtherDescriptors(std::size_t count);

/// Whether the system lets a process have less memory than there is. A Mac doesn't, and neither does qemu
/// when it runs a program for another processor.
bool canLimitMemory();

/// Lets this process have no more than about `bytes` of further memory. For use in a child process.
void limitFurtherMemory(std::size_t bytes);

}  // namespace halvane
