#pragma once

// The loop that rules out nearly every place of nearly every body.

#include <cstddef>
#include <cstdint>

#include "search/byte_set.h"

namespace halvane {

/// How many places one step looks at.
inline constexpr std::size_t bytePairStep = 64;

/// Moves `at` to the first step in which a byte of the set `first` is `distance` places before a byte of the
/// set `second`. `last` is the start of the last step. Neither set may be empty. `body` has at least `last` +
/// `bytePairStep` + `distance` bytes. Returns the places in that step as bits, the first one lowest; when
/// there are none, 0, with `at` past `last`.
using FindPairs = std::uint64_t (*)(const char* body, std::size_t& at, std::size_t last, std::size_t distance,
                                    const ByteSet& first, const ByteSet& second);

/// A FindPairs for every processor, sixteen bytes at a time.
std::uint64_t findPairsInBlocks(const char* body, std::size_t& at, std::size_t last, std::size_t distance,
                                const ByteSet& first, const ByteSet& second);

/// The same, thirty-two bytes at a time: half the instructions. Only where hasWideBlocks().
std::uint64_t findPairsInWideBlocks(const char* body, std::size_t& at, std::size_t last, std::size_t distance,
                                    const ByteSet& first, const ByteSet& second);

}  // namespace halvane
