#pragma once

// What the processor that this runs on can do beyond what every processor of its kind can.

namespace halvane {

/// Whether it can shuffle sixteen bytes at once, which isUtf8InBlocks needs: x86-64 ones have it since about
/// 2007 (SSSE3), 64-bit ARM ones always. On other processors the plain form stands for it.
bool canShuffleBytes();

/// Whether it works on thirty-two bytes at once: x86-64 ones mostly have since 2013 (AVX2).
bool hasWideBlocks();

}  // namespace halvane
