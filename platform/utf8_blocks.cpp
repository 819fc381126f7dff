#include "platform/utf8_blocks.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/byte_block.h"

// A byte of UTF-8 is wrong for its neighbours in one of the ways below, and each way shows in three half
// bytes: both halves of the byte before and the upper half of the byte itself. Three table look-ups give the
// ways that each half allows; what all three allow has happened (the method of Keiser and Lemire, "Validating
// UTF-8 In Less Than One Instruction Per Byte", 2021).

namespace halvane {
namespace {

constexpr std::uint8_t tooShort = 1 << 0;   // a lead byte or more than one, then no continuation
constexpr std::uint8_t tooLong = 1 << 1;    // ASCII, then a continuation
constexpr std::uint8_t overlong3 = 1 << 2;  // E0 80 to E0 9F
constexpr std::uint8_t tooLarge = 1 << 3;   // F4 90 and beyond
constexpr std::uint8_t surrogate = 1 << 4;  // ED A0 to ED BF
constexpr std::uint8_t overlong2 = 1 << 5;  // C0, C1
constexpr std::uint8_t tooLarge8 = 1 << 6;  // F5 to FF, then 80 to 8F
constexpr std::uint8_t overlong4 = 1 << 6;  // F0 80 to F0 8F
constexpr std::uint8_t twoInARow = 1 << 7;  // two continuations: right only inside three or four bytes

using Table = std::array<std::uint8_t, 16>;

template <typename Ways>
constexpr Table tableOf(Ways waysOf) {
  Table table{};
  for (unsigned half = 0; half < table.size(); ++half) table[half] = static_cast<std::uint8_t>(waysOf(half));
  return table;
}

constexpr Table byUpperHalfBefore = tableOf([](unsigned half) -> int {
  if (half < 0x8) return tooLong;
  if (half < 0xC) return twoInARow;
  if (half == 0xC) return tooShort | overlong2;
  if (half == 0xD) return tooShort;
  if (half == 0xE) return tooShort | overlong3 | surrogate;
  return tooShort | tooLarge | tooLarge8 | overlong4;
});

constexpr Table byLowerHalfBefore = tableOf([](unsigned half) -> int {
  constexpr int always = tooShort | tooLong | twoInARow;  // the lower half can't rule these out
  if (half == 0x0) return always | overlong3 | overlong2 | overlong4;
  if (half == 0x1) return always | overlong2;
  if (half < 0x4) return always;
  if (half == 0x4) return always | tooLarge;
  if (half == 0xD) return always | tooLarge | tooLarge8 | surrogate;
  return always | tooLarge | tooLarge8;
});

constexpr Table byUpperHalf = tableOf([](unsigned half) -> int {
  constexpr int continuation = tooLong | overlong2 | twoInARow;
  if (half == 0x8) return continuation | overlong3 | tooLarge8 | overlong4;
  if (half == 0x9) return continuation | overlong3 | tooLarge;
  if (half == 0xA || half == 0xB) return continuation | surrogate | tooLarge;
  return tooShort;
});

class Checker {
 public:
  // A step at once: in most languages' journals these bytes are often ASCII alone, and then one look is
  // enough.
  static constexpr std::size_t step = 8 * ByteBlock::size;

  void check(const char* bytes) {
    ByteBlock blocks[8];
    for (std::size_t i = 0; i < 8; ++i) blocks[i] = ByteBlock::load(bytes + i * ByteBlock::size);
    const ByteBlock any = ((blocks[0] | blocks[1]) | (blocks[2] | blocks[3])) |
                          ((blocks[4] | blocks[5]) | (blocks[6] | blocks[7]));
    if (any.upperBits() == 0) {
      wrong_ = wrong_ | unfinished_;
      unfinished_ = ByteBlock::all(0);
      last_ = blocks[7];
    } else {
      for (const ByteBlock block : blocks) check(block);
    }
  }

  void check(ByteBlock block) {
    const ByteBlock before = block.earlier<1>(last_);
    const ByteBlock ways =
        ByteBlock::lookUp(ByteBlock::load(byUpperHalfBefore.data()), before.upperHalves()) &
        ByteBlock::lookUp(ByteBlock::load(byLowerHalfBefore.data()), before & ByteBlock::all(0x0F)) &
        ByteBlock::lookUp(ByteBlock::load(byUpperHalf.data()), block.upperHalves());
    // Behind a lead byte of three or four, a second or third continuation has to be there and is right.
    const ByteBlock third = saturatingDifference(block.earlier<2>(last_), ByteBlock::all(0xE0 - 0x80));
    const ByteBlock fourth = saturatingDifference(block.earlier<3>(last_), ByteBlock::all(0xF0 - 0x80));
    wrong_ = wrong_ | (((third | fourth) & ByteBlock::all(0x80)) ^ ways);
    unfinished_ = saturatingDifference(block, ByteBlock::load(lastLeads.data()));
    last_ = block;
  }

  bool allRight() const {
    const ByteBlock wrong = wrong_ | unfinished_;
    return (wrong == ByteBlock::all(0)).upperBits() == 0xFFFF;
  }

 private:
  // The greatest bytes that may stand last in the text: no lead byte whose continuations are still to come.
  static constexpr Table lastLeads = tableOf([](unsigned place) -> int {
    return place == 13 ? 0xF0 - 1 : place == 14 ? 0xE0 - 1 : place == 15 ? 0xC0 - 1 : 0xFF;
  });

  ByteBlock wrong_ = ByteBlock::all(0);
  ByteBlock unfinished_ = ByteBlock::all(0);  // where the last block ends inside a character
  ByteBlock last_ = ByteBlock::all(0);
};

}  // namespace

bool isUtf8InBlocks(std::string_view bytes) {
  Checker checker;
  std::size_t at = 0;
  for (; at + Checker::step <= bytes.size(); at += Checker::step) checker.check(bytes.data() + at);
  std::array<char, Checker::step> rest{};  // ended by NULs, which are characters of their own
  std::copy(bytes.begin() + static_cast<std::ptrdiff_t>(at), bytes.end(), rest.begin());
  checker.check(rest.data());
  return checker.allRight();
}

bool canCheckInBlocks() {
#if defined(__x86_64__)
  return __builtin_cpu_supports("ssse3") != 0;
#else
  return true;
#endif
}

}  // namespace halvane
