#pragma once

// Whether bytes are UTF-8, many bytes at a time.

#include <cstddef>

namespace halvane {

/// What isUtf8 says of the `length` bytes at `bytes`, found sixteen bytes at a time. Reading a journal from
/// memory is so fast that a check of one code point after the other would take half as long again. Only where
/// canShuffleBytes().
bool isUtf8InBlocks(const char* bytes, std::size_t length);

/// The same, thirty-two bytes at a time: half the instructions. Only where hasWideBlocks().
bool isUtf8InWideBlocks(const char* bytes, std::size_t length);

/// The same for every processor: eight bytes at a time while they are ASCII, else one code point after the
/// other.
bool isUtf8OneByOne(const char* bytes, std::size_t length);

}  // namespace halvane
