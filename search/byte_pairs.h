#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "search/search_filter.h"

// The loop that rules out nearly every place of nearly every body, block by block.

namespace halvane {

/// How many places one step looks at.
inline constexpr std::size_t bytePairStep = 64;

/// Goes on from `at` to the first step in which a byte of the set `here` stands `distance` places before one
/// of the set `there`, and no further than `last`, the start of the last step. The places in it as bits, the
/// first one lowest; 0 when there are none.
using FindPairs = std::uint64_t (*)(const char* body, std::size_t& at, std::size_t last, std::size_t distance,
                                    const ByteSet& here, const ByteSet& there);

// A set, ready to be looked for in a block.
template <typename Block, std::size_t count>
class BlockSet {
 public:
  explicit BlockSet(const ByteSet& set) {
    for (std::size_t i = 0; i < count; ++i) {
      bits_[i] = Block::all(set.pairs()[i].bit);
      values_[i] = Block::all(set.pairs()[i].value);
    }
  }
  Block in(Block block) const {
    Block found = (block | bits_[0]) == values_[0];
    for (std::size_t i = 1; i < count; ++i) found = found | ((block | bits_[i]) == values_[i]);
    return found;
  }

 private:
  Block bits_[count];
  Block values_[count];
};

template <typename Block, std::size_t hereCount, std::size_t thereCount>
std::uint64_t findPairsOfSizes(const char* body, std::size_t& at, std::size_t last, std::size_t distance,
                               const ByteSet& hereSet, const ByteSet& thereSet) {
  constexpr std::size_t blocksAStep = bytePairStep / Block::size;
  const BlockSet<Block, hereCount> here(hereSet);
  const BlockSet<Block, thereCount> there(thereSet);
  for (; at <= last; at += bytePairStep) {
    Block pairs[blocksAStep];
    Block any = Block::all(0);
    for (std::size_t i = 0; i < blocksAStep; ++i) {
      const char* place = body + at + i * Block::size;
      pairs[i] = here.in(Block::load(place)) & there.in(Block::load(place + distance));
      any = any | pairs[i];
    }
    if (any.upperBits() == 0) continue;
    std::uint64_t places = 0;
    for (std::size_t i = 0; i < blocksAStep; ++i)
      places |= std::uint64_t{pairs[i].upperBits()} << (i * Block::size);
    return places;
  }
  return 0;
}

/// A FindPairs that works on blocks of the type Block. The sizes of the sets are known to each of its loops.
template <typename Block>
std::uint64_t findPairsBy(const char* body, std::size_t& at, std::size_t last, std::size_t distance,
                          const ByteSet& here, const ByteSet& there) {
  static constexpr FindPairs bySizes[ByteSet::most][ByteSet::most] = {
      {findPairsOfSizes<Block, 1, 1>, findPairsOfSizes<Block, 1, 2>, findPairsOfSizes<Block, 1, 3>},
      {findPairsOfSizes<Block, 2, 1>, findPairsOfSizes<Block, 2, 2>, findPairsOfSizes<Block, 2, 3>},
      {findPairsOfSizes<Block, 3, 1>, findPairsOfSizes<Block, 3, 2>, findPairsOfSizes<Block, 3, 3>}};
  return bySizes[here.size() - 1][there.size() - 1](body, at, last, distance, here, there);
}

/// A FindPairs for thirty-two bytes at once: half the instructions. Only where hasWideBlocks().
std::uint64_t findPairsInWideBlocks(const char* body, std::size_t& at, std::size_t last, std::size_t distance,
                                    const ByteSet& here, const ByteSet& there);

}  // namespace halvane
