#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/search_filter.h"

// The two loops that look at every byte of a journal, once more for processors that work on thirty-two bytes
// at once: half the instructions. Only where hasWideBlocks().

namespace halvane {

/// Whether this processor has what the functions below need: x86-64 ones mostly have since 2013 (AVX2).
bool hasWideBlocks();

/// The same answer as isUtf8.
bool isUtf8InWideBlocks(std::string_view bytes);

/// See FindPairs.
std::uint64_t findPairsInWideBlocks(const char* body, std::size_t& at, std::size_t last, std::size_t distance,
                                    const ByteSet& here, const ByteSet& there);

}  // namespace halvane
