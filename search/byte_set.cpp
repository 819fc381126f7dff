#include "search/byte_set.h"

#include <algorithm>
#include <bit>
#include <span>

namespace halvane {

bool ByteSet::add(std::uint8_t byte) {
  if (holds(byte)) return true;
  for (Pair& pair : std::span(pairs, size)) {
    const auto difference = static_cast<std::uint8_t>(pair.value ^ byte);
    if (pair.bit != 0 || !std::has_single_bit(difference)) continue;
    pair = {difference, static_cast<std::uint8_t>(pair.value | byte)};
    return true;
  }
  if (size == maxPairs) return false;
  pairs[size++] = {0, byte};
  return true;
}

bool ByteSet::holds(std::uint8_t byte) const {
  return std::any_of(pairs, pairs + size, [byte](Pair pair) { return (byte | pair.bit) == pair.value; });
}

}  // namespace halvane
