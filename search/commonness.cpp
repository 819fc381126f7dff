#include "search/commonness.h"

#include <array>
#include <cstdint>

namespace halvane {
namespace {

// How many of a thousand bytes have this value.
unsigned commonness(std::uint8_t byte) {
  constexpr std::array<std::uint8_t, 26> letters = {
      65, 12, 23, 33, 100, 18, 16, 50, 57, 1, 6, 33, 20, 57, 62, 15, 1, 50, 52, 75, 23, 8, 18, 2, 16, 1,
  };
  if (byte == ' ') return 160;
  if (byte >= 0xC3) return byte == 0xC3 || byte == 0xE2 || byte >= 0xEE ? 20 : 200;
  if (byte >= 0x80) return 15;
  const unsigned letter = (byte | 0x20U) - 'a';
  if (letter >= letters.size()) return 8;
  return (byte & 0x20) != 0 ? letters[letter] : 3;
}

// With a blank after each.
constexpr std::u32string_view pairsOftenTogether =
    U"th he in er an re nd at on nt ha es st en ed to it ou ea hi is or ti as te et ng of al de se le sa si ar ve ra ld ur ch sc ei ie un ic qu ee ai me ne ro ma li la co om ca io el di";

}  // namespace

unsigned commonness(const ByteSet& set) {
  unsigned sum = 0;
  for (std::size_t i = 0; i < set.size; ++i) {
    const auto [bit, value] = set.pairs[i];
    sum += commonness(value) + (bit != 0 ? commonness(static_cast<std::uint8_t>(value ^ bit)) : 0);
  }
  return sum;
}

bool areOftenTogether(std::u32string_view letters) {
  if (letters.size() != 2) return false;
  if (letters[0] == letters[1]) return true;
  for (std::size_t i = 0; i < pairsOftenTogether.size(); i += 3) {
    if (pairsOftenTogether.substr(i, 2) == letters) return true;
  }
  return false;
}

}  // namespace halvane
