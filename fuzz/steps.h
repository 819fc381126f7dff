#pragma once

// What work costs, counted instead of timed.

#include <cstddef>
#include <cstdint>

namespace halvane {

/// How many steps this process has taken so far: the comparisons that the project's code has made, the bytes
/// of the paths that it has opened, and the bytes of memory that anybody has been given, ICU and Expat too.
/// Unlike time this is the same on every machine. The compiler calls a function at each comparison, for the
/// fuzzer's sake.
std::uint64_t stepsTaken();

/// What some work may cost.
struct Cost {
  std::uint64_t atMost;  ///< steps for work on nothing
  std::uint64_t aByte;   ///< steps for each byte more

  /// Where `steps` for work on `bytes` are more, this run is a finding. When the process ends, standard error
  /// tells the largest share of its cost that any work has taken.
  void mustCover(std::uint64_t steps, std::size_t bytes) const;
};

}  // namespace halvane
