#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

// Bytes that are worked on all at once, in one register of the processor.

// Most of it is written once for every processor, in the vector extension of g++ and clang++. The few
// operations that the extension lacks are in one file for each processor. (A library of vectors such as
// Highway would only save those files. It takes as many instructions, but needs eight compiler flags for AVX2
// where we need one, and its version in Debian 12 offers nothing between SSSE3 and one byte at a time.)
#if defined(HALVANE_PLAIN_BLOCKS)
#include "text/byte_block_plain.h"
#elif defined(__AVX2__)
#include "text/byte_block_avx2.h"
#elif defined(__x86_64__)
#include "text/byte_block_sse.h"
#elif defined(__aarch64__)
#include "text/byte_block_neon.h"
#else
#include "text/byte_block_plain.h"
#endif

namespace halvane {

/// As many bytes as one register of a kind of processor holds. Each operation works on every byte separately.
/// A comparison gives 0xFF where it holds and 0 elsewhere. `Processor` is one of the structs in the files
/// above. It is part of the type, so the linker never takes code compiled for one processor for code compiled
/// for another.
template <typename Processor>
struct BlockOf {
  using Bytes = typename Processor::Bytes;
  static constexpr std::size_t size = sizeof(Bytes);
  /// Whether there are the operations from `saturatingDifference` on.
  static constexpr bool canShuffle = requires(Bytes bytes) { Processor::lookUp(nullptr, bytes); };

  Bytes bytes;

  static BlockOf load(const void* from) {
    BlockOf block;
    std::memcpy(&block.bytes, from, size);
    return block;
  }
  static BlockOf all(std::uint8_t byte) { return {Bytes{} + byte}; }

  friend BlockOf operator|(BlockOf a, BlockOf b) { return {a.bytes | b.bytes}; }
  friend BlockOf operator&(BlockOf a, BlockOf b) { return {a.bytes & b.bytes}; }
  friend BlockOf operator^(BlockOf a, BlockOf b) { return {a.bytes ^ b.bytes}; }
  friend BlockOf operator==(BlockOf a, BlockOf b) { return {reinterpret_cast<Bytes>(a.bytes == b.bytes)}; }
  /// Each byte's upper half, as a number from 0 to 15.
  BlockOf upperHalves() const { return {bytes >> 4}; }

  /// The upper bits of the bytes as one number. The first byte's bit is the lowest.
  std::uint32_t upperBits() const { return Processor::upperBits(bytes); }

  /// a - b, 0 where that would be negative.
  friend BlockOf saturatingDifference(BlockOf a, BlockOf b) {
    return {Processor::saturatingDifference(a.bytes, b.bytes)};
  }
  /// The entry of the table of sixteen at each index from 0 to 15.
  static BlockOf lookUp(const std::uint8_t* table, BlockOf indices) {
    return {Processor::lookUp(table, indices.bytes)};
  }
  /// For each byte, the byte `distance` places before it. `before` is the block before this one.
  template <int distance>
  BlockOf earlier(BlockOf before) const {
    return {Processor::template earlier<distance>(before.bytes, bytes)};
  }
};

/// The block of the processor that the including file is compiled for.
using ByteBlock = BlockOf<CompiledFor>;

}  // namespace halvane
