#pragma once

// The loop of FindPairs, for blocks of any processor.

#include <cstddef>
#include <cstdint>

#include "search/byte_pairs.h"

namespace halvane {

/// A set, ready to be looked for in a block.
template <typename Block, std::size_t size>
class BlockSet {
 public:
  explicit BlockSet(const ByteSet& set) {
    for (std::size_t i = 0; i < size; ++i) {
      bits_[i] = Block::all(set.pairs[i].bit);
      values_[i] = Block::all(set.pairs[i].value);
    }
  }
  Block in(Block block) const {
    Block found = (block | bits_[0]) == values_[0];
    for (std::size_t i = 1; i < size; ++i) found = found | ((block | bits_[i]) == values_[i]);
    return found;
  }

 private:
  Block bits_[size];
  Block values_[size];
};

/// Finds pairs with blocks of the type Block, a BlockOf one processor. It calls only its own functions and
/// the block's, so nothing here is shared with code compiled for another processor, not even in an
/// unoptimised build.
template <typename Block>
class BytePairFinder {
 public:
  /// A FindPairs. Each of its loops is compiled for certain sizes of the sets.
  static std::uint64_t find(const char* body, std::size_t& at, std::size_t last, std::size_t distance,
                            const ByteSet& first, const ByteSet& second) {
    static constexpr FindPairs bySizes[ByteSet::maxPairs][ByteSet::maxPairs] = {
        {findBySizes<1, 1>, findBySizes<1, 2>, findBySizes<1, 3>},
        {findBySizes<2, 1>, findBySizes<2, 2>, findBySizes<2, 3>},
        {findBySizes<3, 1>, findBySizes<3, 2>, findBySizes<3, 3>},
    };
    return bySizes[first.size - 1][second.size - 1](body, at, last, distance, first, second);
  }

 private:
  template <std::size_t firstSize, std::size_t secondSize>
  static std::uint64_t findBySizes(const char* body, std::size_t& at, std::size_t last, std::size_t distance,
                                   const ByteSet& firstBytes, const ByteSet& secondBytes) {
    constexpr std::size_t blocksAStep = bytePairStep / Block::size;
    const BlockSet<Block, firstSize> first(firstBytes);
    const BlockSet<Block, secondSize> second(secondBytes);
    for (; at <= last; at += bytePairStep) {
      Block pairs[blocksAStep];
      Block any = Block::all(0);
      for (std::size_t i = 0; i < blocksAStep; ++i) {
        const char* place = body + at + i * Block::size;
        pairs[i] = first.in(Block::load(place)) & second.in(Block::load(place + distance));
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
};

}  // namespace halvane
