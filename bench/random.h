#pragma once

#include <cstdint>

namespace halvane {

/// Numbers that look random and are the same on every machine: SplitMix64, one sequence for each seed.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    std::uint64_t mixed = state_ += 0x9E3779B97F4A7C15;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB;
    return mixed ^ (mixed >> 31);
  }

  /// From 0 to `end` - 1; `end` must fit 32 bits.
  std::uint64_t below(std::uint64_t end) { return (next() >> 32) * end >> 32; }

 private:
  std::uint64_t state_;
};

}  // namespace halvane
