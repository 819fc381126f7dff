#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace halvane {

/// A system call that is not made but answers `error`, an errno: always, or only where the lower half of
/// `argument`, counted from 0, is `value`.
struct RefusedCall {
  long number;
  int error;
  unsigned argument = 0;
  std::optional<std::uint32_t> value = std::nullopt;
};

/// Whether this kernel offers a filter of system calls. qemu doesn't when it runs a program for another
/// processor.
bool canRefuseCalls();

/// For a child process: from now on, its kernel refuses `calls`, to this process and to the program that it
/// becomes. Throws when the kernel offers no filter.
void refuseCalls(const std::vector<RefusedCall>& calls);

/// The version of this kernel's Landlock; 0 where it has none.
long versionOfLandlock();

/// The calls to refuse to imitate a kernel without Landlock, such as one from before 2021.
std::vector<RefusedCall> callsOfLandlock();

/// The calls to refuse to imitate a kernel without filters of system calls, as in some containers.
std::vector<RefusedCall> callsOfFilters();

}  // namespace halvane
