#pragma once

// Whether bytes are UTF-8, asked of many at once.

#include <cstddef>

namespace halvane {

/// The same answer as isUtf8 of the `length` bytes at `bytes`, sixteen bytes at a time: most of a journal is
/// read at the speed of memory, and asking one code point after the other would cost half of that again. Only
/// where canShuffleBytes().
bool isUtf8InBlocks(const char* bytes, std::size_t length);

/// The same, thirty-two bytes at a time: half the instructions. Only where hasWideBlocks().
bool isUtf8InWideBlocks(const char* bytes, std::size_t length);

/// The same for every processor: eight bytes at a time while they are ASCII, else one code point after the
/// other.
bool isUtf8OneByOne(const char* bytes, std::size_t length);

}  // namespace halvane
