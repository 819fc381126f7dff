#pragma once

// A few byte values that the search looks for together.

#include <cstddef>
#include <cstdint>

namespace halvane {

/// A set of byte values: at most three pairs. The two values of a pair differ in a single bit, as a capital
/// and a small letter do in most alphabets. After setting that bit, one comparison finds both.
struct ByteSet {
  struct Pair {
    std::uint8_t bit;    // in which the two differ; 0 when there is only one
    std::uint8_t value;  // the one that has the bit
  };
  static constexpr std::size_t maxPairs = 3;

  // The fields are public for the vector code, which must not call functions.
  std::size_t size = 0;  // in pairs
  Pair pairs[maxPairs] = {};

  /// False when there is no room for another value.
  [[nodiscard]] bool add(std::uint8_t byte);
  bool holds(std::uint8_t byte) const;
};

}  // namespace halvane
