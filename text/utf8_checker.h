#pragma once

#include <cstddef>
#include <cstdint>

#include "text/utf8_blocks.h"

// The check of UTF-8 block by block: the method of Keiser and Lemire, "Validating UTF-8 In Less Than One
// Instruction Per Byte", 2021. A byte is wrong for its neighbours in one of the ways below, and each way
// shows in three half bytes: both halves of the byte before and the upper half of the byte itself. Three
// table look-ups give the ways that each half allows; what all three allow has happened.

namespace halvane::utf8 {

inline constexpr std::uint8_t tooShort = 1 << 0;   // a lead byte or more than one, then no continuation
inline constexpr std::uint8_t tooLong = 1 << 1;    // ASCII, then a continuation
inline constexpr std::uint8_t overlong3 = 1 << 2;  // E0 80 to E0 9F
inline constexpr std::uint8_t tooLarge = 1 << 3;   // F4 90 and beyond
inline constexpr std::uint8_t surrogate = 1 << 4;  // ED A0 to ED BF
inline constexpr std::uint8_t overlong2 = 1 << 5;  // C0, C1
inline constexpr std::uint8_t tooLarge8 = 1 << 6;  // F5 to FF, then 80 to 8F
inline constexpr std::uint8_t overlong4 = 1 << 6;  // F0 80 to F0 8F
inline constexpr std::uint8_t twoInARow = 1 << 7;  // two continuations: right only inside three or four bytes

struct Table {
  std::uint8_t ways[16];  // by half byte
};

template <typename Ways>
consteval Table tableOf(Ways waysOf) {
  Table table{};
  for (unsigned half = 0; half < 16; ++half) table.ways[half] = static_cast<std::uint8_t>(waysOf(half));
  return table;
}

inline constexpr Table byUpperHalfBefore = tableOf([](unsigned half) -> int {
  if (half < 0x8) return tooLong;
  if (half < 0xC) return twoInARow;
  if (half == 0xC) return tooShort | overlong2;
  if (half == 0xD) return tooShort;
  if (half == 0xE) return tooShort | overlong3 | surrogate;
  return tooShort | tooLarge | tooLarge8 | overlong4;
});

inline constexpr Table byLowerHalfBefore = tableOf([](unsigned half) -> int {
  constexpr int always = tooShort | tooLong | twoInARow;  // the lower half can't rule these out
  if (half == 0x0) return always | overlong3 | overlong2 | overlong4;
  if (half == 0x1) return always | overlong2;
  if (half < 0x4) return always;
  if (half == 0x4) return always | tooLarge;
  if (half == 0xD) return always | tooLarge | tooLarge8 | surrogate;
  return always | tooLarge | tooLarge8;
});

inline constexpr Table byUpperHalf = tableOf([](unsigned half) -> int {
  constexpr int continuation = tooLong | overlong2 | twoInARow;
  if (half == 0x8) return continuation | overlong3 | tooLarge8 | overlong4;
  if (half == 0x9) return continuation | overlong3 | tooLarge;
  if (half == 0xA || half == 0xB) return continuation | surrogate | tooLarge;
  return tooShort;
});

/// Checks a text block by block. Block is a BlockOf one processor. It calls only its own functions and the
/// block's, so nothing here is shared with code compiled for another processor, not even in an
/// unoptimised build.
template <typename Block>
class Checker {
 public:
  /// Whether the `length` bytes at `bytes` are well-formed UTF-8.
  static bool isUtf8(const char* bytes, std::size_t length) {
    Checker checker;
    std::size_t at = 0;
    for (; at + step <= length; at += step) checker.checkStep(bytes + at);
    char rest[step] = {};  // filled up with NULs, each a whole character
    for (std::size_t i = 0; at + i < length; ++i) rest[i] = bytes[at + i];
    checker.checkStep(rest);
    return checker.allRight();
  }

 private:
  // Several blocks at once: in most languages, so many bytes are often all ASCII, and then one look is
  // enough.
  static constexpr std::size_t step = 128;
  static constexpr std::size_t blocksAStep = step / Block::size;

  void checkStep(const char* bytes) {
    Block blocks[blocksAStep];
    Block any = Block::all(0);
    for (std::size_t i = 0; i < blocksAStep; ++i) {
      blocks[i] = Block::load(bytes + i * Block::size);
      any = any | blocks[i];
    }
    if (any.upperBits() == 0) {
      wrong_ = wrong_ | unfinished_;
      unfinished_ = Block::all(0);
      last_ = blocks[blocksAStep - 1];
    } else {
      for (const Block block : blocks) check(block);
    }
  }

  void check(Block block) {
    const Block before = block.template earlier<1>(last_);
    const Block ways = Block::lookUp(byUpperHalfBefore.ways, before.upperHalves()) &
                       Block::lookUp(byLowerHalfBefore.ways, before & Block::all(0x0F)) &
                       Block::lookUp(byUpperHalf.ways, block.upperHalves());
    // After the lead byte of a character of three or four bytes, a second or third continuation is required.
    const Block third = saturatingDifference(block.template earlier<2>(last_), Block::all(0xE0 - 0x80));
    const Block fourth = saturatingDifference(block.template earlier<3>(last_), Block::all(0xF0 - 0x80));
    wrong_ = wrong_ | (((third | fourth) & Block::all(0x80)) ^ ways);
    unfinished_ = saturatingDifference(block, Block::load(lastLeads.bytes));
    last_ = block;
  }

  bool allRight() const {
    const Block wrong = wrong_ | unfinished_;
    return (wrong == Block::all(0)).upperBits() ==
           static_cast<std::uint32_t>((std::uint64_t{1} << Block::size) - 1);
  }

  // The greatest bytes that may stand last in a block: no lead byte whose continuations are still to come.
  struct Greatest {
    std::uint8_t bytes[Block::size];
  };
  static constexpr Greatest lastLeads = [] {
    Greatest greatest{};
    for (std::uint8_t& byte : greatest.bytes) byte = 0xFF;
    greatest.bytes[Block::size - 3] = 0xF0 - 1;
    greatest.bytes[Block::size - 2] = 0xE0 - 1;
    greatest.bytes[Block::size - 1] = 0xC0 - 1;
    return greatest;
  }();

  Block wrong_ = Block::all(0);
  Block unfinished_ = Block::all(0);  // where the last block ends inside a character
  Block last_ = Block::all(0);
};

/// Whether the `length` bytes at `bytes` are well-formed UTF-8, with blocks of the type Block.
template <typename Block>
bool isUtf8By(const char* bytes, std::size_t length) {
  if constexpr (Block::canShuffle) {
    return Checker<Block>::isUtf8(bytes, length);
  } else {
    return isUtf8OneByOne(bytes, length);
  }
}

}  // namespace halvane::utf8
