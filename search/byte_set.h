#pragma once

// A few byte values that are looked for together.

#include <cstddef>
#include <cstdint>

namespace halvane {

/// Byte values any of which will do: at most three pairs that differ in a single bit, as the capital and the
/// small letter of most alphabets do. One comparison tells both of a pair, once that bit is set.
struct ByteSet {
  struct Pair {
    std::uint8_t bit;    // in which the two differ; 0 when they are one
    std::uint8_t value;  // the one that has the bit
  };
  static constexpr std::size_t maxPairs = 3;

  // The fields are open to the vector code, which may call nothing.
  std::size_t size = 0;  // in pairs
  Pair pairs[maxPairs] = {};

  /// False when there is no room for another value.
  [[nodiscard]] bool add(std::uint8_t byte);
  bool holds(std::uint8_t byte) const;
};

}  // namespace halvane
