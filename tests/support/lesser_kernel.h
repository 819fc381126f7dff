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

/// For a child process: from here on its kernel refuses `calls`, to it and to what it becomes. Throws where
/// the kernel takes no filter.
void refuseCalls(const std::vector<RefusedCall>& calls);

/// The version of this kernel's Landlock; 0 where it has none.
long versionOfLandlock();

/// What to refuse for a kernel without Landlock, as one from before 2021.
std::vector<RefusedCall> callsOfLandlock();

/// What to refuse for a kernel that takes no filter of system calls, such as one that a container allows
/// none.
std::vector<RefusedCall> callsOfFilters();

}  // namespace halvane
