#pragma once

// What this processor can do that not every processor of its kind can.

namespace halvane {

/// Whether it can shuffle sixteen bytes at once, which isUtf8InBlocks needs. x86-64 can since about 2007
/// (SSSE3), 64-bit ARM always could. Other processors answer true too, because their isUtf8InBlocks is the
/// plain form.
bool canShuffleBytes();

/// Whether it works on thirty-two bytes at once. Most x86-64 processors since 2013 do (AVX2).
bool hasWideBlocks();

}  // namespace halvane
