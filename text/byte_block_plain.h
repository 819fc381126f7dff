#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

// Sixteen bytes on any processor, without instructions of one kind of processor. The compiler uses the
// vectors that the processor has. Only the search for pairs of bytes gains from this. The check of UTF-8
// would lose more by looking up bytes one by one than it saves, so there is no lookUp.

namespace halvane {

struct AnyProcessor {
  using Bytes [[gnu::vector_size(16)]] = std::uint8_t;

  static std::uint32_t upperBits(Bytes bytes) {
    std::uint64_t halves[2];
    std::memcpy(halves, &bytes, sizeof(bytes));
    if (((halves[0] | halves[1]) & 0x8080808080808080) == 0) return 0;  // as nearly always
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < sizeof(bytes); ++i) bits |= static_cast<std::uint32_t>(bytes[i] >> 7) << i;
    return bits;
  }
};

using CompiledFor = AnyProcessor;

}  // namespace halvane
